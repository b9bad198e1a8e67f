# Installs the build BUILD into an empty folder WORK/built.
file(REMOVE_RECURSE "${WORK}")
execute_process(
    COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/built"
    COMMAND_ERROR_IS_FATAL ANY)

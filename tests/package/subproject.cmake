# Includes the library by add_subdirectory() without options, and checks that it would install nothing.
#   SOURCE the project, LIBRARY the library's sources, WORK an empty folder, GENERATOR, COMPILER
file(REMOVE_RECURSE "${WORK}")
execute_process(
    COMMAND "${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${SOURCE}" -B "${WORK}/build"
        "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DVEXATRANSFERLIB_SOURCE_DIR=${LIBRARY}"
    COMMAND_ERROR_IS_FATAL ANY)
execute_process(
    COMMAND "${CMAKE_COMMAND}" --install "${WORK}/build" --prefix "${WORK}/installed"
    COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE installed "${WORK}/installed/*")
if(installed)
    message(FATAL_ERROR "A host would install ${installed}")
endif()

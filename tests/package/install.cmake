# Installs the build BUILD into an empty folder WORK/built.
include("${CMAKE_CURRENT_LIST_DIR}/manifest.cmake")

file(REMOVE_RECURSE "${WORK}")
vexa_keep_manifest()
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/built" RESULT_VARIABLE result)
vexa_restore_manifest()
if(result)
    message(FATAL_ERROR "The build cannot be installed.")
endif()

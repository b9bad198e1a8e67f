# Installs the build BUILD into the folder WORK/prefix, which already contains a file, and uninstalls it.
include("${CMAKE_CURRENT_LIST_DIR}/manifest.cmake")

file(REMOVE_RECURSE "${WORK}")
set(others "${WORK}/prefix/include/other.h" "${WORK}/prefix/share/vexaTransferLib/other.xsd")
foreach(other IN LISTS others)
    file(WRITE "${other}" "")
endforeach()

vexa_keep_manifest()
execute_process(
    COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/prefix" OUTPUT_VARIABLE output
    RESULT_VARIABLE installed)
file(GLOB_RECURSE before "${WORK}/prefix/*")
execute_process(COMMAND "${CMAKE_COMMAND}" --build "${BUILD}" --target uninstall RESULT_VARIABLE uninstalled)
vexa_restore_manifest()
if(installed OR uninstalled)
    message(FATAL_ERROR "Installing ended with ${installed}, uninstalling with ${uninstalled}: ${output}")
endif()

file(GLOB_RECURSE left "${WORK}/prefix/*")
list(LENGTH before count)
if(count LESS 10 OR NOT left STREQUAL others)
    message(FATAL_ERROR "Of ${count} files these are left: ${left}")
endif()
file(GLOB_RECURSE folders LIST_DIRECTORIES true "${WORK}/prefix/*")
list(REMOVE_ITEM folders ${others})
list(TRANSFORM folders REPLACE "^${WORK}/prefix/" "")
if(NOT folders STREQUAL "include;share;share/vexaTransferLib")
    message(FATAL_ERROR "These folders are left: ${folders}")
endif()

# Below a system prefix, folders that other software shares are kept, even if they are empty.
vexa_keep_manifest()
set(ENV{DESTDIR} "${WORK}/staged")
execute_process(
    COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix /usr/local OUTPUT_VARIABLE output
    RESULT_VARIABLE installed)
execute_process(COMMAND "${CMAKE_COMMAND}" --build "${BUILD}" --target uninstall RESULT_VARIABLE uninstalled)
vexa_restore_manifest()
file(GLOB_RECURSE folders LIST_DIRECTORIES true "${WORK}/staged/*")
list(FILTER folders INCLUDE REGEX "/usr/local/include$|/vexaTransferLib(/|$)")
if(installed OR uninstalled OR NOT folders STREQUAL "${WORK}/staged/usr/local/include")
    message(FATAL_ERROR "Installing ended with ${installed}, uninstalling with ${uninstalled}, leaving ${folders}")
endif()

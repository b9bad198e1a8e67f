# Removes the files that the last installation of a build wrote, MANIFEST being its list of them, and the folders of
# the library's own that are empty then.
if(NOT EXISTS "${MANIFEST}")
    message(FATAL_ERROR "Nothing was installed from this build: there is no ${MANIFEST}")
endif()
file(STRINGS "${MANIFEST}" files ENCODING UTF-8)

set(folders "")
foreach(file IN LISTS files)
    set(file "$ENV{DESTDIR}${file}")
    if(EXISTS "${file}" OR IS_SYMLINK "${file}")
        message(STATUS "Removing: ${file}")
        file(REMOVE "${file}")
    else()
        message(STATUS "Not there: ${file}")
    endif()

    # include/vexaTransferLib/common and include/vexaTransferLib, but not include.
    get_filename_component(folder "${file}" DIRECTORY)
    while(folder MATCHES "/vexaTransferLib(/|$)")
        list(APPEND folders "${folder}")
        get_filename_component(folder "${folder}" DIRECTORY)
    endwhile()
endforeach()

# The deepest first.
list(REMOVE_DUPLICATES folders)
list(SORT folders ORDER DESCENDING)
foreach(folder IN LISTS folders)
    file(GLOB left "${folder}/*" "${folder}/.*")
    list(FILTER left EXCLUDE REGEX "/\\.\\.?$")
    if(IS_DIRECTORY "${folder}" AND left STREQUAL "")
        message(STATUS "Removing: ${folder}")
        file(REMOVE_RECURSE "${folder}")
    endif()
endforeach()

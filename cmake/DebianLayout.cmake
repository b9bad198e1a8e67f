# Run by cpack on the installed components before it packs them: moves the files that Debian has in other
# places, and adds those that it requires.
find_program(GZIP gzip REQUIRED)

function(vexa_gzip file)
    execute_process(COMMAND "${GZIP}" -9nf "${file}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# The time of the packages, which SOURCE_DATE_EPOCH in the environment sets.
string(TIMESTAMP VEXA_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${component}" upper)
    set(share "${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}/share")
    file(REMOVE_RECURSE "${share}/doc")

    set(docdir "${share}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
    configure_file("${CPACK_VEXA_SOURCE_DIR}/LICENSE" "${docdir}/copyright" COPYONLY)
    configure_file("${CPACK_VEXA_SOURCE_DIR}/CHANGELOG.md" "${docdir}/CHANGELOG.md" COPYONLY)
    vexa_gzip("${docdir}/CHANGELOG.md")
    configure_file("${CMAKE_CURRENT_LIST_DIR}/debian-changelog.in" "${docdir}/changelog" @ONLY)
    vexa_gzip("${docdir}/changelog")

    file(GLOB pages "${share}/man/man1/*.1")
    foreach(page IN LISTS pages)
        vexa_gzip("${page}")
    endforeach()
    set(overrides "${CMAKE_CURRENT_LIST_DIR}/${component}.lintian-overrides")
    if(EXISTS "${overrides}")
        configure_file("${overrides}" "${share}/lintian/overrides/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}" COPYONLY)
    endif()
    # Debian's zsh does not look into site-functions below /usr.
    if(EXISTS "${share}/zsh/site-functions")
        file(RENAME "${share}/zsh/site-functions" "${share}/zsh/vendor-completions")
    endif()
endforeach()

# Run by cpack on the installed components before it packs them: moves and adds what Debian wants elsewhere.
find_program(GZIP gzip REQUIRED)

function(vexa_gzip file)
    execute_process(COMMAND "${GZIP}" -9nf "${file}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${component}" upper)
    set(share "${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}/share")
    file(REMOVE_RECURSE "${share}/doc")

    set(docdir "${share}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
    configure_file("${CPACK_VEXA_SOURCE_DIR}/LICENSE" "${docdir}/copyright" COPYONLY)
    configure_file("${CPACK_VEXA_SOURCE_DIR}/CHANGELOG.md" "${docdir}/CHANGELOG.md" COPYONLY)
    vexa_gzip("${docdir}/CHANGELOG.md")

    file(GLOB pages "${share}/man/man1/*.1")
    foreach(page IN LISTS pages)
        vexa_gzip("${page}")
    endforeach()
    # Debian's zsh does not look into site-functions below /usr.
    if(EXISTS "${share}/zsh/site-functions")
        file(RENAME "${share}/zsh/site-functions" "${share}/zsh/vendor-completions")
    endif()
endforeach()

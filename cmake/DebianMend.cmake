# Run by cpack on the finished packages: makes changes in them for which cpack has no setting.
find_program(DPKG_DEB dpkg-deb REQUIRED)
find_program(OBJCOPY objcopy REQUIRED)

# A trigger of dpkg registers the library, instead of scripts that call ldconfig.
function(vexa_use_trigger folder)
    if(EXISTS "${folder}/DEBIAN/shlibs")
        file(REMOVE "${folder}/DEBIAN/postinst" "${folder}/DEBIAN/postrm")
        file(WRITE "${folder}/DEBIAN/triggers" "activate-noawait ldconfig\n")
    endif()
endfunction()

# The documents of debug symbols are those of the package that they depend on.
function(vexa_link_documents folder package)
    if(package MATCHES "-dbgsym$")
        string(REGEX REPLACE "-dbgsym$" "" owner "${package}")
        file(MAKE_DIRECTORY "${folder}/usr/share/doc")
        file(CREATE_LINK "${owner}" "${folder}/usr/share/doc/${package}" SYMBOLIC)
    endif()
endfunction()

# Removes the name of the compiler, which is of no use in a program.
function(vexa_trim_binaries folder)
    file(GLOB_RECURSE binaries "${folder}/usr/bin/*" "${folder}/usr/lib*/*.so.*")
    foreach(file IN LISTS binaries)
        execute_process(COMMAND "${OBJCOPY}" --remove-section=.comment "${file}" COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
endfunction()

# Sets the permissions, so that they depend neither on the umask of the build nor on the files in the
# repository.
function(vexa_set_permissions folder)
    set(readable OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    file(GLOB_RECURSE places LIST_DIRECTORIES true "${folder}/usr/*")
    foreach(place IN LISTS places)
        if(IS_SYMLINK "${place}")
            continue()
        elseif(IS_DIRECTORY "${place}" OR place MATCHES "/usr/bin/")
            file(CHMOD "${place}" PERMISSIONS ${readable} OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)
        else()
            file(CHMOD "${place}" PERMISSIONS ${readable})
        endif()
    endforeach()
endfunction()

# Writes the checksums again, because those of cpack name debug symbols by their place on this machine.
function(vexa_write_checksums folder)
    file(GLOB_RECURSE files RELATIVE "${folder}" LIST_DIRECTORIES false "${folder}/usr/*")
    set(lines "")
    foreach(file IN LISTS files)
        if(NOT IS_SYMLINK "${folder}/${file}")
            file(MD5 "${folder}/${file}" sum)
            string(APPEND lines "${sum}  ${file}\n")
        endif()
    endforeach()
    file(WRITE "${folder}/DEBIAN/md5sums" "${lines}")
endfunction()

foreach(file IN LISTS CPACK_PACKAGE_FILES)
    set(folder "${CPACK_TEMPORARY_DIRECTORY}/mended")
    file(REMOVE_RECURSE "${folder}")
    execute_process(COMMAND "${DPKG_DEB}" --raw-extract "${file}" "${folder}" COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND "${DPKG_DEB}" --field "${file}" Package
        OUTPUT_VARIABLE package OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    vexa_use_trigger("${folder}")
    vexa_link_documents("${folder}" "${package}")
    vexa_trim_binaries("${folder}")
    vexa_set_permissions("${folder}")
    vexa_write_checksums("${folder}")
    execute_process(COMMAND "${DPKG_DEB}" --root-owner-group -Zgzip --build "${folder}" "${file}"
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE_RECURSE "${folder}")
endforeach()

# The installation of a test must not change the list of files that `uninstall` removes.
set(manifest "${BUILD}/install_manifest.txt")

function(vexa_keep_manifest)
    if(EXISTS "${manifest}")
        file(RENAME "${manifest}" "${manifest}.kept")
    endif()
endfunction()

function(vexa_restore_manifest)
    file(REMOVE "${manifest}")
    if(EXISTS "${manifest}.kept")
        file(RENAME "${manifest}.kept" "${manifest}")
    endif()
endfunction()

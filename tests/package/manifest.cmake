# A test's installation must not become what `uninstall` removes.
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

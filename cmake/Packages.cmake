# Debian packages, made by `cpack`: the libraries, the files that hosts are built with, the tool, and their
# debug symbols. scripts/make-packages builds them as Debian lays them out.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vexaTransferLib)
set(CPACK_PACKAGE_VENDOR "vexaTransferLib developers")
set(CPACK_PACKAGE_CONTACT "vexaTransferLib developers <vexaTransferLib@example.org>")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_THREADS 0)
# Changes the layout of an installation to that of Debian.
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/DebianLayout.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/DebianMend.cmake")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE vexatransferlib)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/LibCore" "${PROJECT_BINARY_DIR}/LibTrack")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
if(CMAKE_BUILD_TYPE MATCHES "^(Debug|RelWithDebInfo)$")
    set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
else()
    set(CPACK_STRIP_FILES ON)
endif()

set(runtime_package "libvexatransferlib${VEXATRANSFERLIB_SOVERSION}")
set(track_package "libvexatracklib${VEXATRANSFERLIB_SOVERSION}")
set(CPACK_COMPONENTS_ALL development)
# Each package has its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
string(CONCAT about
    "GPX is the format in which GPS devices and programs exchange waypoints,\n"
    "routes and tracks.\n\n")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvexatransferlib-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libicu-dev, libxerces-c-dev (>= 3.2), libboost-dev (>= 1.74)")
string(CONCAT CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "library that reads, holds and writes GPX files (development)\n${about}"
    "This package holds what programs that use the library are built with.")
if(VEXATRANSFERLIB_STATIC)
    string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libminizip-dev, zlib1g-dev")
    if(TARGET vexaTrackLib)
        string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libgeographiclib-dev")
    endif()
else()
    list(APPEND CPACK_COMPONENTS_ALL runtime)
    string(PREPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION}), ")
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime_package}")
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
    string(CONCAT CPACK_DEBIAN_RUNTIME_DESCRIPTION
        "library that reads, holds and writes GPX files\n${about}"
        "This package holds the shared library.")
    if(TARGET vexaTrackLib)
        list(APPEND CPACK_COMPONENTS_ALL track)
        string(PREPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${track_package} (= ${PROJECT_VERSION}), ")
        set(CPACK_DEBIAN_TRACK_PACKAGE_NAME "${track_package}")
        set(CPACK_DEBIAN_TRACK_PACKAGE_SECTION libs)
        set(CPACK_DEBIAN_TRACK_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
        string(CONCAT CPACK_DEBIAN_TRACK_DESCRIPTION
            "library that computes lengths, heights and times of GPX files\n${about}"
            "This package holds the shared library.")
    endif()
endif()

if(TARGET vexagpx)
    list(APPEND CPACK_COMPONENTS_ALL tool)
    set(CPACK_DEBIAN_TOOL_PACKAGE_NAME vexagpx)
    set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
    # The font of the pictures, which no library names.
    set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "fonts-dejavu-core")
    if(NOT VEXATRANSFERLIB_STATIC)
        # The same version, because the tool's dump reads private fields of the library's classes.
        string(PREPEND CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS
            "${runtime_package} (= ${PROJECT_VERSION}), ${track_package} (= ${PROJECT_VERSION}), ")
    endif()
    string(CONCAT CPACK_DEBIAN_TOOL_DESCRIPTION
        "tool that shows, checks and converts GPX files\n${about}"
        "vexagpx shows what is in GPX files, reports what it skips of them,\n"
        "writes them again as GPX 1.0 or 1.1, prints them as JSON, and reads them\n"
        "out of ZIP archives too.")
endif()

set(CPACK_VEXA_SOURCE_DIR "${PROJECT_SOURCE_DIR}")
include(CPack)

# Four components: "runtime" and "track" are the shared libraries vexaTransferLib and vexaTrackLib, "development"
# contains the files that a host is built with, "tool" is the tool.
include(CMakePackageConfigHelpers)

set(VEXA_INSTALL_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}/vexaTransferLib")
set(VEXA_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/vexaTransferLib")
set(VEXA_INSTALL_PKGCONFIGDIR "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

list(TRANSFORM VEXA_PUBLIC_HEADERS PREPEND "${PROJECT_SOURCE_DIR}/LibCore/" OUTPUT_VARIABLE public_headers)
list(TRANSFORM VEXA_COMMON_HEADERS PREPEND "${PROJECT_SOURCE_DIR}/LibCore/" OUTPUT_VARIABLE common_headers)
install(FILES ${public_headers}
    DESTINATION "${VEXA_INSTALL_INCLUDEDIR}/vexaTransferLib" COMPONENT development)
install(FILES ${common_headers} DESTINATION "${VEXA_INSTALL_INCLUDEDIR}/common" COMPONENT development)

set_target_properties(vexa_interface PROPERTIES EXPORT_NAME headers)
if(TARGET vexaTrackLib)
    list(TRANSFORM VEXA_TRACK_HEADERS PREPEND "${PROJECT_SOURCE_DIR}/LibTrack/" OUTPUT_VARIABLE track_headers)
    install(FILES ${track_headers} DESTINATION "${VEXA_INSTALL_INCLUDEDIR}/vexaTrackLib" COMPONENT development)
    set_target_properties(vexa_track_interface PROPERTIES EXPORT_NAME track_headers)
    # It finds the other library beside it, wherever the prefix is moved.
    set_target_properties(vexaTrackLib PROPERTIES INSTALL_RPATH "$ORIGIN/")
    install(TARGETS vexaTrackLib vexa_track_interface EXPORT vexaTransferLibTargets
        LIBRARY COMPONENT track NAMELINK_COMPONENT development
        ARCHIVE COMPONENT development)
endif()
install(TARGETS vexaTransferLib vexa_interface EXPORT vexaTransferLibTargets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development)
install(EXPORT vexaTransferLibTargets NAMESPACE vexaTransferLib::
    DESTINATION "${VEXA_INSTALL_CMAKEDIR}" COMPONENT development)

# The pkg-config modules that a host of the static libraries must link itself.
set(VEXA_LINKED "")
if(VEXATRANSFERLIB_STATIC)
    set(VEXA_LINKED minizip zlib)
    if(TARGET vexaTrackLib)
        list(APPEND VEXA_LINKED geographiclib)
    endif()
endif()
configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/vexaTransferLibConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/vexaTransferLibConfig.cmake"
    INSTALL_DESTINATION "${VEXA_INSTALL_CMAKEDIR}"
    NO_SET_AND_CHECK_MACRO)
# Before 1.0 a new minor version may be incompatible with existing hosts.
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/vexaTransferLibConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(
    FILES
        "${PROJECT_BINARY_DIR}/vexaTransferLibConfig.cmake"
        "${PROJECT_BINARY_DIR}/vexaTransferLibConfigVersion.cmake"
    DESTINATION "${VEXA_INSTALL_CMAKEDIR}" COMPONENT development)

# The pkg-config file finds its prefix from its own place, so that an installed tree may be moved.
file(RELATIVE_PATH VEXA_PREFIX_FROM_PKGCONFIG
    "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" VEXA_PREFIX_FROM_PKGCONFIG "${VEXA_PREFIX_FROM_PKGCONFIG}")
# A host of the static libraries must link minizip and GeographicLib itself.
set(VEXA_PKGCONFIG_STATIC_REQUIRES "")
set(VEXA_PKGCONFIG_STATIC_TRACK_REQUIRES "")
if(VEXATRANSFERLIB_STATIC)
    set(VEXA_PKGCONFIG_STATIC_REQUIRES " minizip zlib")
    set(VEXA_PKGCONFIG_STATIC_TRACK_REQUIRES " geographiclib")
endif()
set(pkgconfig_names vexaTransferLib)
if(TARGET vexaTrackLib)
    list(APPEND pkgconfig_names vexaTrackLib)
endif()
foreach(name IN LISTS pkgconfig_names)
    configure_file("${CMAKE_CURRENT_LIST_DIR}/${name}.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${name}.pc"
        DESTINATION "${VEXA_INSTALL_PKGCONFIGDIR}" COMPONENT development)
endforeach()

install(FILES "${PROJECT_SOURCE_DIR}/schemas/tarvik-extensions.xsd"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/vexaTransferLib" COMPONENT development)
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT development)

if(TARGET vexagpx)
    # The installed tool finds the library beside it, wherever the prefix is moved.
    file(RELATIVE_PATH libdir_from_bindir "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    set_target_properties(vexagpx PROPERTIES INSTALL_RPATH "$ORIGIN/${libdir_from_bindir}")
    install(TARGETS vexagpx RUNTIME COMPONENT tool)

    install(FILES "${VEXAGPX_MANUAL_DIR}/vexagpx.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tool)
    install(FILES "${VEXAGPX_MANUAL_DIR}/vexagpx.bash"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME vexagpx COMPONENT tool)
    install(FILES "${VEXAGPX_MANUAL_DIR}/_vexagpx"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" COMPONENT tool)
    install(FILES "${VEXAGPX_MANUAL_DIR}/vexagpx.fish"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" COMPONENT tool)
endif()

if(PROJECT_IS_TOP_LEVEL)
    add_custom_target(uninstall
        COMMAND "${CMAKE_COMMAND}" "-DMANIFEST=${PROJECT_BINARY_DIR}/install_manifest.txt"
            "-DLICENSE=${CMAKE_INSTALL_DOCDIR}/LICENSE" -P "${CMAKE_CURRENT_LIST_DIR}/Uninstall.cmake"
        VERBATIM)
endif()

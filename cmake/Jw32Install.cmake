# cmake --install: headers, libraries, the CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)

# Installed, the library finds the platform's beside itself, wherever that is.
if(NOT WIN32)
    set_target_properties(jw32 PROPERTIES INSTALL_RPATH "$ORIGIN")
endif()
install(TARGETS jw32 jw32_platform EXPORT jw32Targets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/include/jw32 ${CMAKE_BINARY_DIR}/include/jw32
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
if(WIN32)
    set(platform_headers ${CMAKE_SOURCE_DIR}/platform/windows/)
else()
    set(platform_headers ${CMAKE_SOURCE_DIR}/platform/include/)
endif()
install(DIRECTORY ${platform_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/jw32/platform
        FILES_MATCHING PATTERN "*.h")

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/jw32)
install(EXPORT jw32Targets NAMESPACE jw32:: DESTINATION ${package_folder})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/jw32Config.cmake.in
    ${CMAKE_BINARY_DIR}/jw32Config.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/jw32ConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/jw32Config.cmake ${CMAKE_BINARY_DIR}/jw32ConfigVersion.cmake
        ${CMAKE_CURRENT_LIST_DIR}/Jw32Resources.cmake ${JW32_MODULE_START}
        DESTINATION ${package_folder})

if(WIN32)
    set(pc_flags "-I\${includedir}/jw32/platform")
    get_target_property(pc_name jw32 OUTPUT_NAME)
    set(pc_libs "-l${pc_name}")
else()
    set(pc_flags "-I\${includedir}/jw32/platform -fshort-wchar")
    set(pc_libs "-ljw32 -ljw32platform")
endif()
# The prefix counts from the file itself, as it is known at the installation only.
file(RELATIVE_PATH pc_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/jw32.pc.in ${CMAKE_BINARY_DIR}/jw32.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/jw32.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

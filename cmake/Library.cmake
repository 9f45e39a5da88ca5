# SPDX-License-Identifier: MIT
# The shared library, its CMake package and its pkg-config file.
include(CMakePackageConfigHelpers)

add_library(kstnedit SHARED ${public_headers})
add_library(KestrinProductEditor::kstnedit ALIAS kstnedit)
target_link_libraries(kstnedit PRIVATE $<LINK_LIBRARY:WHOLE_ARCHIVE,kstnedit-core>)
# Hidden visibility keeps our own internals in; the script keeps the standard library's templates in, too.
target_link_options(kstnedit PRIVATE LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/kstnedit.map)
set_target_properties(kstnedit PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    LINKER_LANGUAGE CXX
    INSTALL_RPATH "$ORIGIN"
    LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/kstnedit.map)
target_compile_features(kstnedit INTERFACE cxx_std_20)
target_include_directories(kstnedit INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)

install(TARGETS kstnedit EXPORT KestrinProductEditorTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${public_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/KestrinProductEditor)
install(EXPORT KestrinProductEditorTargets
    NAMESPACE KestrinProductEditor::
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KestrinProductEditor)
configure_package_config_file(cmake/KestrinProductEditorConfig.cmake.in
    ${PROJECT_BINARY_DIR}/KestrinProductEditorConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KestrinProductEditor)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KestrinProductEditorConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KestrinProductEditorConfig.cmake
              ${PROJECT_BINARY_DIR}/KestrinProductEditorConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KestrinProductEditor)

# The prefix is told relative to the file, so that an installation may be moved, or made with --prefix.
file(RELATIVE_PATH prefix_from_pkgconfig
    ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/kstnedit.pc.in ${PROJECT_BINARY_DIR}/kstnedit.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kstnedit.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

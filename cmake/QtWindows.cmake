# SPDX-License-Identifier: MIT
# The windows of Qt: a library of their own, which the component loads at its first form.
find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets)
find_package(PkgConfig REQUIRED)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)

file(GLOB qt_sources CONFIGURE_DEPENDS src/platform/qt/*.cpp src/platform/qt/*.h src/platform/qt/*.ui)
add_library(kstnedit-qt-backend STATIC ${qt_sources})
set_target_properties(kstnedit-qt-backend PROPERTIES AUTOUIC ON)
target_include_directories(kstnedit-qt-backend PUBLIC src)
target_link_libraries(kstnedit-qt-backend PUBLIC kstnedit-core Qt6::Widgets PRIVATE PkgConfig::XCB)

# It takes from the core what it needs; nothing but its entry is seen from outside.
add_library(kstnedit-qt SHARED src/platform/ui/ToolkitEntry.h)
target_link_libraries(kstnedit-qt PRIVATE $<LINK_LIBRARY:WHOLE_ARCHIVE,kstnedit-qt-backend>)
target_link_options(kstnedit-qt PRIVATE LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/kstnedit-qt.map)
set_target_properties(kstnedit-qt PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    LINKER_LANGUAGE CXX
    LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/kstnedit-qt.map)
install(TARGETS kstnedit-qt LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_SKIP)

# SPDX-License-Identifier: MIT
# The Windows face: kstnedit.dll, an automation server with its type library inside.
set(server_folder ${PROJECT_SOURCE_DIR}/src/server/windows)
set(generated ${PROJECT_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${generated})
find_program(WIDL x86_64-w64-mingw32-widl REQUIRED)

# The system's own library, to which ours refers, and what the compiler has to know of it are not on this system.
add_custom_command(
    OUTPUT ${generated}/kstnedit.tlb ${generated}/kstnedit.h ${generated}/kstnedit_i.c
    COMMAND ${WIDL} -m64 -t -o ${generated}/stdole2.tlb ${server_folder}/idl/stdole2.idl
    COMMAND ${WIDL} -m64 -I ${server_folder}/idl -L ${generated} -t -o ${generated}/kstnedit.tlb kstnedit.idl
    COMMAND ${WIDL} -m64 -I ${server_folder}/idl -L ${generated} -h -o ${generated}/kstnedit.h kstnedit.idl
    COMMAND ${WIDL} -m64 -I ${server_folder}/idl -L ${generated} -u -o ${generated}/kstnedit_i.c kstnedit.idl
    WORKING_DIRECTORY ${server_folder}
    DEPENDS ${server_folder}/kstnedit.idl ${server_folder}/idl/oaidl.idl ${server_folder}/idl/stdole2.idl
    VERBATIM)
add_custom_target(kstnedit-idl DEPENDS ${generated}/kstnedit.tlb ${generated}/kstnedit.h ${generated}/kstnedit_i.c)

# What the identifiers in the generated header are, for the server and for early-bound clients.
add_library(kstnedit-interfaces STATIC ${generated}/kstnedit_i.c)
target_compile_options(kstnedit-interfaces PRIVATE -w)
target_include_directories(kstnedit-interfaces SYSTEM PUBLIC ${generated})
add_dependencies(kstnedit-interfaces kstnedit-idl)

file(GLOB server_sources CONFIGURE_DEPENDS ${server_folder}/*.cpp ${server_folder}/*.h)
list(REMOVE_ITEM server_sources ${server_folder}/Exports.cpp)
add_library(kstnedit-server STATIC ${server_sources})
target_include_directories(kstnedit-server PUBLIC src)
# The system's interfaces have no virtual destructors; objects end in Release.
target_compile_options(kstnedit-server PUBLIC -Wno-non-virtual-dtor)
target_link_libraries(kstnedit-server PUBLIC kstnedit-core kstnedit-interfaces ole32 oleaut32 uuid)

string(REPLACE "." "," version_numbers "${PROJECT_VERSION}.0")
add_library(kstnedit SHARED ${server_folder}/Exports.cpp ${server_folder}/kstnedit.def ${server_folder}/kstnedit.rc
    ${PROJECT_SOURCE_DIR}/src/platform/win32/kstnedit-windows.rc)
target_link_libraries(kstnedit PRIVATE kstnedit-server)
set_target_properties(kstnedit PROPERTIES PREFIX "")
set_source_files_properties(${server_folder}/kstnedit.rc PROPERTIES
    INCLUDE_DIRECTORIES "${generated};${server_folder}"
    COMPILE_DEFINITIONS KSTNEDIT_VERSION_NUMBERS=${version_numbers}
    OBJECT_DEPENDS "${generated}/kstnedit.tlb;${server_folder}/kstnedit.manifest")

include(cmake/ComManifest.cmake)
include(cmake/WindowsPackage.cmake)

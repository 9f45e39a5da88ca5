# SPDX-License-Identifier: MIT
# For use without registration, from the list of identifiers: KestrinProductEditor.manifest, which lies beside
# kstnedit.dll, and host.exe.manifest, an example of what a program's own manifest says.
set(identifiers ${PROJECT_SOURCE_DIR}/src/server/windows/identifiers.txt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${identifiers})

set(manifest_version ${PROJECT_VERSION}.0)
set(manifest_classes)
set(manifest_interfaces)
set(guid "({[-0-9A-F]+})")
file(STRINGS ${identifiers} lines REGEX "^(library|class|interface) ")
foreach(line IN LISTS lines)
    if(line MATCHES "^library ([^ ]+) ([^ ]+) ${guid}$")
        set(library_name ${CMAKE_MATCH_1})
        set(library_version ${CMAKE_MATCH_2})
        set(library_id ${CMAKE_MATCH_3})
    elseif(line MATCHES "^class ([^ ]+) ${guid} creatable$")
        string(APPEND manifest_classes
            "\n    <comClass clsid=\"${CMAKE_MATCH_2}\" progid=\"${library_name}.${CMAKE_MATCH_1}\""
            "\n              threadingModel=\"Apartment\" tlbid=\"${library_id}\"/>")
    elseif(line MATCHES "^interface ([^ ]+) ${guid}$")
        string(APPEND manifest_interfaces
            "\n  <comInterfaceExternalProxyStub name=\"${CMAKE_MATCH_1}\" iid=\"${CMAKE_MATCH_2}\""
            "\n                                 tlbid=\"${library_id}\""
            "\n                                 proxyStubClsid32=\"{00020424-0000-0000-C000-000000000046}\"/>")
    endif()
endforeach()
foreach(manifest KestrinProductEditor.manifest host.exe.manifest)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/${manifest}.in ${PROJECT_BINARY_DIR}/bin/${manifest}
        @ONLY)
endforeach()

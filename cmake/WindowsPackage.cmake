# SPDX-License-Identifier: MIT
# The zip for makers of hosts: cpack makes it.
configure_file(packaging/windows/register.cmd ${generated}/register.cmd @ONLY NEWLINE_STYLE CRLF)
install(TARGETS kstnedit RUNTIME DESTINATION .)
install(FILES ${generated}/kstnedit.tlb ${generated}/kstnedit.h ${generated}/kstnedit_i.c ${generated}/register.cmd
              ${PROJECT_BINARY_DIR}/bin/KestrinProductEditor.manifest ${PROJECT_BINARY_DIR}/bin/host.exe.manifest
              src/server/windows/kstnedit.idl
              packaging/windows/README.md LICENSE
    DESTINATION .)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME kstnedit)
set(CPACK_PACKAGE_FILE_NAME kstnedit-${PROJECT_VERSION}-windows-x86_64)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CHECKSUM SHA256)
include(CPack)

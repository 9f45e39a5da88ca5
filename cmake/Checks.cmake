# SPDX-License-Identifier: MIT
# The tests that are no C++: of the scripts, and of what is installed and delivered.
add_test(NAME source-checks-find-faults COMMAND ${PROJECT_SOURCE_DIR}/tools/check-sources-test)

# A host cannot load a sanitized library into a plain process.
if(NOT KSTNEDIT_SANITIZE)
    add_test(NAME installed-package COMMAND ${PROJECT_SOURCE_DIR}/tools/check-package ${PROJECT_BINARY_DIR})
    add_test(NAME man-page
        COMMAND ${PROJECT_SOURCE_DIR}/tools/check-man-page $<TARGET_FILE:kstnedit-program>)
    set_tests_properties(installed-package PROPERTIES TIMEOUT 600)
    if(KSTNEDIT_QT)
        add_test(NAME typical-road COMMAND ${PROJECT_SOURCE_DIR}/tools/check-road ${PROJECT_BINARY_DIR})
        set_tests_properties(typical-road PROPERTIES TIMEOUT 600 RUN_SERIAL ON)
        add_test(NAME pictures
            COMMAND ${PROJECT_SOURCE_DIR}/tools/make-pictures ${PROJECT_BINARY_DIR} ${PROJECT_BINARY_DIR}/pictures)
        set_tests_properties(pictures PROPERTIES TIMEOUT 600)
    endif()
endif()

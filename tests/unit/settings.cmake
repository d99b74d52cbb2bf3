# The tests of the file helpers, the ini engine and the place of the settings.
cv_test(config_initext_test
    PURE
        config/initext_test.cpp
    LINK config_initext
    LABELS unit
)
cv_test(support_byteordermark_test
    PURE
        support/byte_order_mark_test.cpp
    LINK support_mark
    LABELS unit
)
cv_test(support_pathrules_test
    PURE
        config/path_rules_test.cpp
    LINK config_paths
    LABELS unit
)
cv_test(support_files_test
    WINDOWS
        support/files_test.cpp
    LINK support_files
    LABELS unit
)
if(WIN32)
    add_executable(settings_helper ../testing/settings_helper.cpp)
    target_link_libraries(settings_helper PRIVATE config_inifile cv_warnings)
endif()
cv_test(config_inifile_test
    WINDOWS
        config/inifile_test.cpp
        config/shared_file_test.cpp
    LINK config_inifile
    LABELS unit
)
if(WIN32)
    add_dependencies(config_inifile_test settings_helper)
endif()
cv_test(config_inifilecv_test
    WINDOWS
        config/inifilecv_test.cpp
    LINK config_inifilecv
    LABELS unit
)
cv_test(config_profile_difference_test
    WINDOWS
        config/profile_difference_test.cpp
    LINK config_inifile
    LABELS unit
)

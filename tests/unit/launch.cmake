# The tests of starting other programs, help, profiles and the options dialog.
cv_test(support_exectext_test
    PURE
        shell/exec_text_test.cpp
        shell/help_window_test.cpp
    LINK shell_exectext
    LABELS unit
)
cv_test(support_launch_test
    WINDOWS
        shell/launch_test.cpp
    LINK shell_launch
    LABELS unit
    LOCKS focus
)
if(WIN32)
    add_dependencies(support_launch_test recorder)
endif()
cv_test(support_help_test
    WINDOWS
        shell/help_test.cpp
    LINK shell_help
    LABELS unit
    LOCKS focus
)
if(WIN32)
    add_dependencies(support_help_test recorder)
endif()
cv_test(bridge_profilenames_test
    PURE
        bridge/profile_names_test.cpp
    LINK bridge_profilenames
    LABELS unit
)
cv_test(bridge_profiles_test
    WINDOWS
        bridge/profiles_test.cpp
    LINK bridge_profiles
    LABELS unit
)
cv_test(bridge_optionslayout_test
    PURE
        bridge/options_layout_test.cpp
    LINK bridge_optionslayout
    LABELS unit
)
cv_test(bridge_options_test
    WINDOWS
        bridge/options_test.cpp
    LINK bridge_options
    LABELS unit
    LOCKS focus
)
if(WIN32)
    add_dependencies(bridge_options_test recorder)
    string(REPLACE "/" "\\\\" languages "Z:${PROJECT_SOURCE_DIR}/lang/")
    target_compile_definitions(bridge_options_test PRIVATE "CV_LANGUAGE_FOLDER=\"${languages}\"")
endif()

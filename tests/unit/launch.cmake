# The tests of starting other programs, help, profiles and the options dialog.
cv_test(support_exectext_test
    PURE
        support_exectext_test.cpp
        support_helpwindow_test.cpp
    LINK support_exectext
    LABELS unit
)
cv_test(support_launch_test
    WINDOWS
        support_launch_test.cpp
    LINK support_launch
    LABELS unit
    LOCKS focus
)
if(WIN32)
    add_dependencies(support_launch_test recorder)
endif()
cv_test(support_help_test
    WINDOWS
        support_help_test.cpp
    LINK support_help
    LABELS unit
    LOCKS focus
)
if(WIN32)
    add_dependencies(support_help_test recorder)
endif()
cv_test(bridge_profilenames_test
    PURE
        bridge_profilenames_test.cpp
    LINK bridge_profilenames
    LABELS unit
)
cv_test(bridge_profiles_test
    WINDOWS
        bridge_profiles_test.cpp
    LINK bridge_profiles
    LABELS unit
)
cv_test(bridge_optionslayout_test
    PURE
        bridge_optionslayout_test.cpp
    LINK bridge_optionslayout
    LABELS unit
)
cv_test(bridge_options_test
    WINDOWS
        bridge_options_test.cpp
    LINK bridge_options
    LABELS unit
    LOCKS focus
)
if(WIN32)
    add_dependencies(bridge_options_test recorder)
    string(REPLACE "/" "\\\\" languages "Z:${PROJECT_SOURCE_DIR}/lang/")
    target_compile_definitions(bridge_options_test PRIVATE "CV_LANGUAGE_FOLDER=\"${languages}\"")
endif()

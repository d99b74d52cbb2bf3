# Forms and the question box.
cv_test(platform_form_test
    WINDOWS
        platform/forms/form_test.cpp
    LINK platform
    LABELS unit
)
cv_test(question_rules_test
    PURE
        question/layout_test.cpp
        question/rules_test.cpp
    LINK question_rules
    LABELS unit
)
cv_test(support_metrics_test
    WINDOWS
        shell/metrics_test.cpp
    LINK shell_metrics
    LABELS unit
)
cv_test(question_box_test
    WINDOWS
        question/box_test.cpp
    LINK question
    LABELS unit
)
if(WIN32)
    add_dependencies(support_metrics_test recorder)
    target_compile_definitions(question_box_test PRIVATE CV_LANGUAGE_FOLDER="Z:${PROJECT_SOURCE_DIR}/lang")
endif()
if(WIN32)
    add_test(NAME platform_form_resolutions COMMAND python3
        ${CMAKE_CURRENT_SOURCE_DIR}/platform/forms/resolutions_test.py $<TARGET_FILE:platform_form_test>)
    set_tests_properties(platform_form_resolutions PROPERTIES LABELS unit TIMEOUT 300)
endif()

# The shell's pure rules without a display ("unit"), and the application, its
# windows, the sidebar, the split and the first-run guide on real GTK under Xvfb.
add_executable(kelmo_app_unit_tests
  ${CMAKE_CURRENT_LIST_DIR}/../support/core_test_main.cpp
  ${CMAKE_CURRENT_LIST_DIR}/shell_rules_test.cpp
)
target_link_libraries(kelmo_app_unit_tests PRIVATE kelmo_app kelmo_test_support GTest::gtest)
gtest_add_tests(TARGET kelmo_app_unit_tests TEST_LIST appUnitTests)
set_tests_properties(${appUnitTests} PROPERTIES LABELS unit)

add_executable(kelmo_app_display_tests
  ${CMAKE_CURRENT_LIST_DIR}/shell_fixture.cpp
  ${CMAKE_CURRENT_LIST_DIR}/sidebar_view_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/content_view_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/onboarding_view_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/duskwell_app_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/settings_view_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/about_view_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/head_start_test.cpp
)
target_link_libraries(kelmo_app_display_tests PRIVATE kelmo_display_test_main kelmo_app
  kelmo_test_support GTest::gtest)
add_dependencies(kelmo_app_display_tests kelmo_resources)
gtest_add_tests(TARGET kelmo_app_display_tests TEST_LIST appDisplayTests)
set_tests_properties(${appDisplayTests} PROPERTIES LABELS "display;app" TIMEOUT 120)

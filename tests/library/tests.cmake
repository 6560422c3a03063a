# The palette, the colour rule and the library's layout rules without a display
# ("unit"), and the stylesheet's button styles and the library view on real widgets
# under Xvfb.
add_executable(kelmo_library_unit_tests
  ${CMAKE_CURRENT_LIST_DIR}/../support/core_test_main.cpp
  ${CMAKE_CURRENT_LIST_DIR}/color_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/library_rules_test.cpp
)
target_link_libraries(kelmo_library_unit_tests PRIVATE kelmo_palette kelmo_test_support GTest::gtest)
target_compile_definitions(kelmo_library_unit_tests PRIVATE
  KELMO_STYLESHEET="${PROJECT_SOURCE_DIR}/resources/style.css")
gtest_add_tests(TARGET kelmo_library_unit_tests TEST_LIST libraryUnitTests)
set_tests_properties(${libraryUnitTests} PROPERTIES LABELS unit)

add_executable(kelmo_library_display_tests
  ${CMAKE_CURRENT_LIST_DIR}/../app/shell_fixture.cpp
  ${CMAKE_CURRENT_LIST_DIR}/library_view_test.cpp
)
target_link_libraries(kelmo_library_display_tests PRIVATE kelmo_display_test_main kelmo_library
  kelmo_test_support GTest::gtest)
add_dependencies(kelmo_library_display_tests kelmo_resources)
gtest_add_tests(TARGET kelmo_library_display_tests TEST_LIST libraryDisplayTests)
set_tests_properties(${libraryDisplayTests} PROPERTIES LABELS "display;library" TIMEOUT 120)

# The runtime's suites: the scheme handlers and the artifacts' storage without a
# display ("unit"), and the web view host with the player page, its libraries and
# the artifacts of tests/artifacts in a real WebKit view under Xvfb.
add_executable(kelmo_runtime_unit_tests
  ${CMAKE_CURRENT_LIST_DIR}/../support/core_test_main.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_scheme_handler_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_storage_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compile_cache_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/player_rules_test.cpp
)
target_link_libraries(kelmo_runtime_unit_tests PRIVATE kelmo_runtime_schemes kelmo_player_rules
  kelmo_test_support
  GTest::gtest)
# Tests are found by scanning the sources, so that each gets both labels (discovery
# flattens a list of labels) and listing them needs no display.
gtest_add_tests(TARGET kelmo_runtime_unit_tests TEST_LIST runtimeUnitTests)
set_tests_properties(${runtimeUnitTests} PROPERTIES LABELS "unit;runtime")

add_executable(kelmo_runtime_display_tests
  ${CMAKE_CURRENT_LIST_DIR}/web_view_fixture.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_web_view_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_library_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/../app/shell_fixture.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_detail_view_test.cpp
)
target_link_libraries(kelmo_runtime_display_tests PRIVATE kelmo_display_test_main kelmo_runtime
  kelmo_test_support GTest::gtest)
target_compile_definitions(kelmo_runtime_display_tests PRIVATE
  KELMO_EXAMPLES_DIR="${PROJECT_SOURCE_DIR}/examples"
  KELMO_TEST_ARTIFACTS_DIR="${PROJECT_SOURCE_DIR}/tests/artifacts")
# The player page and its scripts are read from the build's resources.
add_dependencies(kelmo_runtime_display_tests kelmo_resources)
gtest_add_tests(TARGET kelmo_runtime_display_tests TEST_LIST runtimeDisplayTests)
set_tests_properties(${runtimeDisplayTests} PROPERTIES LABELS "display;runtime" TIMEOUT 300)

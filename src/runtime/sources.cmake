# The artifact runtime. The scheme handlers' routing and serving, and the artifacts'
# storage, are free of WebKit (and unit-tested without a display); the web view host links WebKit and GTK.
add_library(kelmo_runtime_schemes STATIC
  ${CMAKE_CURRENT_LIST_DIR}/scheme_support.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_scheme_handler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_file_scheme_handler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_storage.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compile_cache.cpp
  ${CMAKE_CURRENT_LIST_DIR}/handed_over_compile.cpp
  ${CMAKE_CURRENT_LIST_DIR}/child_output.cpp
)
target_link_libraries(kelmo_runtime_schemes PUBLIC kelmo_core)

# The player's pure rules: the viewport modes and the stage's checkerboard.
add_library(kelmo_player_rules STATIC
  ${CMAKE_CURRENT_LIST_DIR}/viewport_mode.cpp
  ${CMAKE_CURRENT_LIST_DIR}/checkerboard.cpp
)
target_link_libraries(kelmo_player_rules PUBLIC kelmo_core)

# Babel in JavaScriptCore's shell or in a JavaScript context of its own, and the helper
# program that compiles with it for the application and, in its head-start mode, for
# the launcher.
add_library(kelmo_babel_context STATIC
  ${CMAKE_CURRENT_LIST_DIR}/babel_context.cpp
  ${CMAKE_CURRENT_LIST_DIR}/javascript_shell.cpp
)
target_include_directories(kelmo_babel_context PUBLIC ${PROJECT_SOURCE_DIR}/src)
target_link_libraries(kelmo_babel_context PUBLIC PkgConfig::JSC kelmo_runtime_schemes)
# JavaScriptCore's command-line shell keeps the bytecode of the scripts it runs between
# runs, which the library does not: the helper compiles in it when it is there.
find_program(KELMO_JAVASCRIPT_SHELL jsc PATHS /usr/bin NO_DEFAULT_PATH)
if(KELMO_JAVASCRIPT_SHELL)
  target_compile_definitions(kelmo_babel_context PUBLIC
    KELMO_JAVASCRIPT_SHELL="${KELMO_JAVASCRIPT_SHELL}")
else()
  message(STATUS "No JavaScriptCore shell (jsc): Babel compiles without a bytecode cache")
endif()
add_executable(kelmo-compile ${CMAKE_CURRENT_LIST_DIR}/compile_tool.cpp)
target_link_libraries(kelmo-compile PRIVATE kelmo_babel_context kelmo_launch kelmo_runtime_schemes)
set_target_properties(kelmo-compile PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/libexec/kelmo)
install(TARGETS kelmo-compile RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/kelmo)

# Babel's bytecode for first runs, made by compiling the examples in the shell.
if(KELMO_JAVASCRIPT_SHELL)
  set(KELMO_BYTECODE_SEED ${CMAKE_BINARY_DIR}/share/kelmo/javascript-bytecode)
  set(KELMO_BYTECODE_SAMPLES
    ${PROJECT_SOURCE_DIR}/examples/task-board.tsx ${PROJECT_SOURCE_DIR}/examples/counter.jsx)
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/javascript-bytecode.stamp
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${KELMO_BYTECODE_SEED}
    COMMAND $<TARGET_FILE:kelmo-compile> --seed-bytecode ${KELMO_BYTECODE_SEED}
      ${KELMO_BYTECODE_SAMPLES}
    COMMAND ${CMAKE_COMMAND} -E touch ${CMAKE_BINARY_DIR}/javascript-bytecode.stamp
    DEPENDS kelmo-compile kelmo_resources ${KELMO_JAVASCRIPT_SHELL} ${KELMO_BYTECODE_SAMPLES}
      ${KELMO_RESOURCES_BUILD_DIR}/babel.min.js ${KELMO_RESOURCES_BUILD_DIR}/artifact-compiler.js
      ${KELMO_RESOURCES_BUILD_DIR}/compile-in-shell.js
    COMMENT "Keeping Babel's bytecode for first runs"
    VERBATIM)
  add_custom_target(kelmo_javascript_bytecode ALL
    DEPENDS ${CMAKE_BINARY_DIR}/javascript-bytecode.stamp)
  install(DIRECTORY ${KELMO_BYTECODE_SEED} DESTINATION ${CMAKE_INSTALL_DATADIR}/kelmo)
endif()

add_library(kelmo_runtime STATIC
  ${CMAKE_CURRENT_LIST_DIR}/web_view_schemes.cpp
  ${CMAKE_CURRENT_LIST_DIR}/background_compiler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_web_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_web_view_coordinator.cpp
  ${CMAKE_CURRENT_LIST_DIR}/player_background.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_detail_view.cpp
)
# The player shows the library's type badge, button styles and symbols.
target_link_libraries(kelmo_runtime PUBLIC kelmo_runtime_schemes kelmo_player_rules kelmo_library
  PkgConfig::GTKMM PkgConfig::WEBKIT)
add_dependencies(kelmo_runtime kelmo-compile)

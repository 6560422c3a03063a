# The artifact runtime. The scheme handlers' routing and serving, the compiler's
# reading of esbuild's answers, and the artifacts' storage are free of WebKit (and
# unit-tested without a display); the web view host links WebKit and GTK.
add_library(kelmo_runtime_schemes STATIC
  ${CMAKE_CURRENT_LIST_DIR}/scheme_support.cpp
  ${CMAKE_CURRENT_LIST_DIR}/source_file.cpp
  ${CMAKE_CURRENT_LIST_DIR}/source_watch.cpp
  ${CMAKE_CURRENT_LIST_DIR}/package_fetcher.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_origin.cpp
  ${CMAKE_CURRENT_LIST_DIR}/navigation_policy.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_scheme_handler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_file_scheme_handler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_storage.cpp
  ${CMAKE_CURRENT_LIST_DIR}/styles_cache.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_compiler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/icon_table.cpp
)
target_link_libraries(kelmo_runtime_schemes PUBLIC kelmo_core)

# The player's pure rules: the viewport modes and the stage's checkerboard.
add_library(kelmo_player_rules STATIC
  ${CMAKE_CURRENT_LIST_DIR}/viewport_mode.cpp
  ${CMAKE_CURRENT_LIST_DIR}/checkerboard.cpp
)
target_link_libraries(kelmo_player_rules PUBLIC kelmo_core)

# esbuild, which compiles JSX and TSX: the native program of the platform package that
# package-lock.json pins, beside the application as libexec/kelmo/esbuild (the build
# tree mirrors the installed layout).
set(KELMO_ESBUILD_SOURCE ${PROJECT_SOURCE_DIR}/node_modules/@esbuild/linux-x64/bin/esbuild)
if(NOT EXISTS ${KELMO_ESBUILD_SOURCE})
  message(FATAL_ERROR "Missing ${KELMO_ESBUILD_SOURCE}: the compiler is not installed. "
    "Run `npm ci` in ${PROJECT_SOURCE_DIR} (scripts/setup.sh does it).")
endif()
add_custom_command(OUTPUT ${KELMO_ESBUILD}
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${KELMO_ESBUILD_SOURCE} ${KELMO_ESBUILD}
  DEPENDS ${KELMO_ESBUILD_SOURCE}
  COMMENT "Placing esbuild beside the application"
  VERBATIM)
add_custom_target(kelmo_esbuild ALL DEPENDS ${KELMO_ESBUILD})
install(PROGRAMS ${KELMO_ESBUILD} DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/kelmo)

add_library(kelmo_runtime STATIC
  ${CMAKE_CURRENT_LIST_DIR}/web_view_schemes.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_web_context.cpp
  ${CMAKE_CURRENT_LIST_DIR}/script_dialog.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_web_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_web_view_coordinator.cpp
  ${CMAKE_CURRENT_LIST_DIR}/player_background.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_detail_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/html_export.cpp
  ${CMAKE_CURRENT_LIST_DIR}/page_snapshot.cpp
  ${CMAKE_CURRENT_LIST_DIR}/save_dialog.cpp
  ${CMAKE_CURRENT_LIST_DIR}/export_dialog.cpp
)
target_compile_definitions(kelmo_runtime PRIVATE KELMO_VERSION="${PROJECT_VERSION}")
# The player shows the library's type badge, button styles and symbols.
target_link_libraries(kelmo_runtime PUBLIC kelmo_runtime_schemes kelmo_player_rules kelmo_library
  PkgConfig::GTKMM PkgConfig::WEBKIT)
add_dependencies(kelmo_runtime kelmo_esbuild)

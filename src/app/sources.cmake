# The application shell: windows, menus, the sidebar, the first-run guide and the
# executable.

# The maker's data shown in About; a packager supplies the real ones.
set(KELMO_MAKER_INITIALS "KP" CACHE STRING "The maker's initials in About's maker card")
set(KELMO_MAKER_ROLE "Makers of Kelmo" CACHE STRING "The maker's one-line role in About")
set(KELMO_MAKER_DOMAIN "kelmo.example" CACHE STRING "The maker's web domain in About")
set(KELMO_ABOUT_FOOTER "Made with care for people who prototype." CACHE STRING
  "The one-line note at the foot of About")

add_library(kelmo_app STATIC
  ${CMAKE_CURRENT_LIST_DIR}/command_line.cpp
  ${CMAKE_CURRENT_LIST_DIR}/file_chooser_open_panel.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app_logo.cpp
  ${CMAKE_CURRENT_LIST_DIR}/window_keys.cpp
  ${CMAKE_CURRENT_LIST_DIR}/sidebar_badges.cpp
  ${CMAKE_CURRENT_LIST_DIR}/sidebar_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/onboarding_steps.cpp
  ${CMAKE_CURRENT_LIST_DIR}/onboarding_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/placeholder_views.cpp
  ${CMAKE_CURRENT_LIST_DIR}/standard_detail_views.cpp
  ${CMAKE_CURRENT_LIST_DIR}/content_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/main_window.cpp
  ${CMAKE_CURRENT_LIST_DIR}/contact_link.cpp
  ${CMAKE_CURRENT_LIST_DIR}/about_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/about_window.cpp
  ${CMAKE_CURRENT_LIST_DIR}/settings_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/settings_window.cpp
  ${CMAKE_CURRENT_LIST_DIR}/shortcuts_window.cpp
  ${CMAKE_CURRENT_LIST_DIR}/duskwell_app.cpp
  ${CMAKE_CURRENT_LIST_DIR}/renderer_choice.cpp
  ${CMAKE_CURRENT_LIST_DIR}/light_theme.cpp
)
target_include_directories(kelmo_app PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(kelmo_app PUBLIC kelmo_core kelmo_library kelmo_runtime PkgConfig::GTKMM
  PkgConfig::EPOXY)
target_compile_definitions(kelmo_app PUBLIC
  KELMO_VERSION="${PROJECT_VERSION}"
  KELMO_APP_ID="${KELMO_APP_ID}"
  KELMO_MAKER_NAME="${KELMO_MAKER_NAME}"
  KELMO_MAKER_INITIALS="${KELMO_MAKER_INITIALS}"
  KELMO_MAKER_ROLE="${KELMO_MAKER_ROLE}"
  KELMO_MAKER_EMAIL="${KELMO_MAKER_EMAIL}"
  KELMO_MAKER_DOMAIN="${KELMO_MAKER_DOMAIN}"
  KELMO_ABOUT_FOOTER="${KELMO_ABOUT_FOOTER}")

add_executable(kelmo ${CMAKE_CURRENT_LIST_DIR}/main.cpp ${CMAKE_CURRENT_LIST_DIR}/batch_commands.cpp)
target_link_libraries(kelmo PRIVATE kelmo_app)
add_dependencies(kelmo kelmo_resources)
install(TARGETS kelmo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# The palette and the colour rule (no GTK, unit-tested without a display), and the
# application stylesheet with its button styles.
add_library(kelmo_palette STATIC
  ${CMAKE_CURRENT_LIST_DIR}/color.cpp
  ${CMAKE_CURRENT_LIST_DIR}/palette.cpp
  ${CMAKE_CURRENT_LIST_DIR}/type_appearance.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_text.cpp
  ${CMAKE_CURRENT_LIST_DIR}/library_rules.cpp
)
target_link_libraries(kelmo_palette PUBLIC kelmo_core PkgConfig::ICU)

set(KELMO_ICONS_DIR ${CMAKE_CURRENT_LIST_DIR}/icons)
configure_file(${KELMO_ICONS_DIR}/kelmo-icons.gresource.xml.in
  ${CMAKE_CURRENT_BINARY_DIR}/kelmo-icons.gresource.xml @ONLY)
file(GLOB KELMO_ICON_FILES CONFIGURE_DEPENDS ${KELMO_ICONS_DIR}/*.svg)
find_program(GLIB_COMPILE_RESOURCES glib-compile-resources REQUIRED)
add_custom_command(
  OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/kelmo-icons.c
  COMMAND ${GLIB_COMPILE_RESOURCES} --generate-source --manual-register --c-name kelmo_icons
    --sourcedir=${KELMO_ICONS_DIR} --sourcedir=${PROJECT_SOURCE_DIR}/resources
    --target=${CMAKE_CURRENT_BINARY_DIR}/kelmo-icons.c
    ${CMAKE_CURRENT_BINARY_DIR}/kelmo-icons.gresource.xml
  DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/kelmo-icons.gresource.xml ${KELMO_ICON_FILES}
    ${PROJECT_SOURCE_DIR}/resources/AppLogo.svg)

add_library(kelmo_library STATIC
  ${CMAKE_CURRENT_LIST_DIR}/app_style.cpp
  ${CMAKE_CURRENT_LIST_DIR}/type_badge.cpp
  ${CMAKE_CURRENT_LIST_DIR}/file_manager.cpp
  ${CMAKE_CURRENT_LIST_DIR}/symbols.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_item.cpp
  ${CMAKE_CURRENT_LIST_DIR}/card_thumbnail.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_card_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_row_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/card_grid_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/library_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/library_view_drop.cpp
  ${CMAKE_CURRENT_BINARY_DIR}/kelmo-icons.c
)
target_link_libraries(kelmo_library PUBLIC kelmo_palette PkgConfig::GTKMM)

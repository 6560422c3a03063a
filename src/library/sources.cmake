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

include(${CMAKE_CURRENT_LIST_DIR}/icons/icons.cmake)

add_library(kelmo_library STATIC
  ${CMAKE_CURRENT_LIST_DIR}/app_style.cpp
  ${CMAKE_CURRENT_LIST_DIR}/accessible_name.cpp
  ${CMAKE_CURRENT_LIST_DIR}/type_badge.cpp
  ${CMAKE_CURRENT_LIST_DIR}/file_manager.cpp
  ${CMAKE_CURRENT_LIST_DIR}/symbols.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_item.cpp
  ${CMAKE_CURRENT_LIST_DIR}/card_thumbnail.cpp
  ${CMAKE_CURRENT_LIST_DIR}/card_pictures.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_card_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_row_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/card_grid_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/headered_scrollable.cpp
  ${CMAKE_CURRENT_LIST_DIR}/library_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/library_view_drop.cpp
  ${CMAKE_CURRENT_BINARY_DIR}/kelmo-icons.c
)
target_link_libraries(kelmo_library PUBLIC kelmo_palette PkgConfig::GTKMM)

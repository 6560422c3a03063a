# The palette and the colour rule (no GTK, unit-tested without a display), and the
# application stylesheet with its button styles.
add_library(kelmo_palette STATIC
  ${CMAKE_CURRENT_LIST_DIR}/color.cpp
  ${CMAKE_CURRENT_LIST_DIR}/palette.cpp
  ${CMAKE_CURRENT_LIST_DIR}/type_appearance.cpp
  ${CMAKE_CURRENT_LIST_DIR}/artifact_text.cpp
)
target_link_libraries(kelmo_palette PUBLIC kelmo_core PkgConfig::ICU)

add_library(kelmo_library STATIC
  ${CMAKE_CURRENT_LIST_DIR}/app_style.cpp
  ${CMAKE_CURRENT_LIST_DIR}/type_badge.cpp
  ${CMAKE_CURRENT_LIST_DIR}/file_manager.cpp
)
target_link_libraries(kelmo_library PUBLIC kelmo_palette PkgConfig::GTKMM)

# The palette and the colour rule (no GTK, unit-tested without a display), and the
# application stylesheet with its button styles.
add_library(kelmo_palette STATIC
  ${CMAKE_CURRENT_LIST_DIR}/color.cpp
  ${CMAKE_CURRENT_LIST_DIR}/palette.cpp
)
target_link_libraries(kelmo_palette PUBLIC kelmo_core)

add_library(kelmo_library STATIC
  ${CMAKE_CURRENT_LIST_DIR}/app_style.cpp
)
target_link_libraries(kelmo_library PUBLIC kelmo_palette PkgConfig::GTKMM)

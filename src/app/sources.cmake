# The application shell: windows, menus and the executable.
add_library(kelmo_app STATIC
  ${CMAKE_CURRENT_LIST_DIR}/file_chooser_open_panel.cpp
)
target_include_directories(kelmo_app PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(kelmo_app PUBLIC kelmo_core PkgConfig::GTKMM)
target_compile_definitions(kelmo_app PRIVATE KELMO_VERSION="${PROJECT_VERSION}")

add_executable(kelmo ${CMAKE_CURRENT_LIST_DIR}/main.cpp)
target_link_libraries(kelmo PRIVATE kelmo_app)
install(TARGETS kelmo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

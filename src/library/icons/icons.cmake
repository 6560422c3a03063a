# The application's icons, compiled into the executable as PNG: symbolic icons encoded
# by gtk4-encode-symbolic-svg (GTK recolours them like its SVG ones) and the logo at
# the hicolor theme's sizes. Keeping SVG out of the bundle means a start never loads
# the SVG decoder (librsvg, several MiB per process).
#
# Our own icons come from this folder. Every other icon name that the symbol table or
# the style sheet asks for (kelmo-NAME-symbolic) is Adwaita's NAME-symbolic, taken
# from the theme installed on the build machine and renamed with our prefix, so it
# looks the same under any icon theme and is found in the bundle rather than as the
# theme's scalable SVG. A name with neither stops the configure step.
set(KELMO_ICON_SOURCE_DIR ${CMAKE_CURRENT_LIST_DIR})
set(KELMO_ICON_BUILD_DIR ${CMAKE_CURRENT_BINARY_DIR}/icons)
set(KELMO_ADWAITA_DIR /usr/share/icons/Adwaita CACHE PATH "The Adwaita icon theme to take theme icons from")
set(KELMO_SYMBOLIC_ICON_SIZES 16 22 24 32 36 48 64 96)
set(KELMO_APP_ICON_SIZES 16 22 24 32 48 64 72 96 128 192 256)
find_program(KELMO_ENCODE_SYMBOLIC_SVG gtk4-encode-symbolic-svg REQUIRED)
find_program(KELMO_RSVG_CONVERT rsvg-convert REQUIRED)

# name -> source SVG, for every symbolic icon of the bundle.
file(GLOB KELMO_OWN_ICON_FILES CONFIGURE_DEPENDS ${KELMO_ICON_SOURCE_DIR}/kelmo-*-symbolic.svg)
set(KELMO_SYMBOLIC_ICONS)
foreach(source ${KELMO_OWN_ICON_FILES})
  get_filename_component(name ${source} NAME_WE)
  set(KELMO_ICON_SOURCE_${name} ${source})
  list(APPEND KELMO_SYMBOLIC_ICONS ${name})
endforeach()

# The theme icons: each name used with our prefix that has no drawing here.
set(KELMO_ICON_USERS ${PROJECT_SOURCE_DIR}/src/library/symbols.cpp
  ${PROJECT_SOURCE_DIR}/resources/style.css)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${KELMO_ICON_USERS})
set(KELMO_USED_ICONS)
foreach(user ${KELMO_ICON_USERS})
  file(STRINGS ${user} lines REGEX "kelmo-[a-z0-9-]+-symbolic")
  string(REGEX MATCHALL "kelmo-[a-z0-9-]+-symbolic" names "${lines}")
  list(APPEND KELMO_USED_ICONS ${names})
endforeach()
list(REMOVE_DUPLICATES KELMO_USED_ICONS)
foreach(name ${KELMO_USED_ICONS})
  if(DEFINED KELMO_ICON_SOURCE_${name})
    continue()
  endif()
  string(REGEX REPLACE "^kelmo-(.*)-symbolic$" "\\1" theme_name ${name})
  file(GLOB candidates ${KELMO_ADWAITA_DIR}/scalable/*/${theme_name}-symbolic.svg
    ${KELMO_ADWAITA_DIR}/scalable-up-to-32/*/${theme_name}-symbolic.svg)
  if(NOT candidates)
    message(FATAL_ERROR "${name} has no drawing in ${KELMO_ICON_SOURCE_DIR}, and the Adwaita "
      "icon theme in ${KELMO_ADWAITA_DIR} has no ${theme_name}-symbolic.svg (scripts/setup.sh "
      "installs adwaita-icon-theme).")
  endif()
  list(GET candidates 0 source)
  set(KELMO_ICON_SOURCE_${name} ${source})
  list(APPEND KELMO_SYMBOLIC_ICONS ${name})
endforeach()

set(KELMO_ICON_OUTPUTS)
set(KELMO_ICON_RESOURCE_ENTRIES "")
foreach(name ${KELMO_SYMBOLIC_ICONS})
  set(source ${KELMO_ICON_SOURCE_${name}})
  set(renamed ${KELMO_ICON_BUILD_DIR}/svg/${name}.svg)
  set(commands COMMAND ${CMAKE_COMMAND} -E copy ${source} ${renamed})
  set(outputs)
  foreach(size ${KELMO_SYMBOLIC_ICON_SIZES})
    set(folder ${size}x${size}/actions)
    list(APPEND commands
      COMMAND ${CMAKE_COMMAND} -E make_directory ${KELMO_ICON_BUILD_DIR}/${folder}
      COMMAND ${KELMO_ENCODE_SYMBOLIC_SVG} -o ${KELMO_ICON_BUILD_DIR}/${folder} ${renamed} ${size}x${size})
    list(APPEND outputs ${KELMO_ICON_BUILD_DIR}/${folder}/${name}.symbolic.png)
    string(APPEND KELMO_ICON_RESOURCE_ENTRIES
      "    <file>${folder}/${name}.symbolic.png</file>\n")
  endforeach()
  add_custom_command(OUTPUT ${outputs}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${KELMO_ICON_BUILD_DIR}/svg
    ${commands}
    DEPENDS ${source}
    VERBATIM)
  list(APPEND KELMO_ICON_OUTPUTS ${outputs})
endforeach()

set(app_logo ${PROJECT_SOURCE_DIR}/resources/AppLogo.svg)
set(commands)
set(outputs)
foreach(size ${KELMO_APP_ICON_SIZES})
  set(folder ${size}x${size}/apps)
  list(APPEND commands
    COMMAND ${CMAKE_COMMAND} -E make_directory ${KELMO_ICON_BUILD_DIR}/${folder}
    COMMAND ${KELMO_RSVG_CONVERT} -w ${size} -h ${size}
      -o ${KELMO_ICON_BUILD_DIR}/${folder}/kelmo-app-logo.png ${app_logo})
  list(APPEND outputs ${KELMO_ICON_BUILD_DIR}/${folder}/kelmo-app-logo.png)
  string(APPEND KELMO_ICON_RESOURCE_ENTRIES "    <file>${folder}/kelmo-app-logo.png</file>\n")
endforeach()
add_custom_command(OUTPUT ${outputs} ${commands} DEPENDS ${app_logo} VERBATIM)
list(APPEND KELMO_ICON_OUTPUTS ${outputs})

file(WRITE ${KELMO_ICON_BUILD_DIR}/kelmo-icons.gresource.xml.new
  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
  "<gresources>\n"
  "  <gresource prefix=\"/org/kelmo/Kelmo/icons\">\n"
  "${KELMO_ICON_RESOURCE_ENTRIES}"
  "  </gresource>\n"
  "</gresources>\n")
configure_file(${KELMO_ICON_BUILD_DIR}/kelmo-icons.gresource.xml.new
  ${KELMO_ICON_BUILD_DIR}/kelmo-icons.gresource.xml COPYONLY)

find_program(GLIB_COMPILE_RESOURCES glib-compile-resources REQUIRED)
add_custom_command(
  OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/kelmo-icons.c
  COMMAND ${GLIB_COMPILE_RESOURCES} --generate-source --manual-register --c-name kelmo_icons
    --sourcedir=${KELMO_ICON_BUILD_DIR}
    --target=${CMAKE_CURRENT_BINARY_DIR}/kelmo-icons.c
    ${KELMO_ICON_BUILD_DIR}/kelmo-icons.gresource.xml
  DEPENDS ${KELMO_ICON_BUILD_DIR}/kelmo-icons.gresource.xml ${KELMO_ICON_OUTPUTS}
  VERBATIM)

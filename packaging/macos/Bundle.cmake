# Perchly.app: the program with its description, its icon and its resources.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(ICONUTIL iconutil REQUIRED)

set(drawing ${PROJECT_SOURCE_DIR}/resources/org.perchly.Perchly.svg)
set(icon_set ${PROJECT_BINARY_DIR}/Perchly.iconset)
set(icon ${PROJECT_BINARY_DIR}/Perchly.icns)
set(draw_icons "")
foreach(points 16 32 128 256 512)
  math(EXPR pixels "2 * ${points}")
  list(APPEND draw_icons
    COMMAND ${RSVG_CONVERT} -w ${points} -h ${points} -o ${icon_set}/icon_${points}x${points}.png ${drawing}
    COMMAND ${RSVG_CONVERT} -w ${pixels} -h ${pixels} -o ${icon_set}/icon_${points}x${points}@2x.png ${drawing})
endforeach()
add_custom_command(OUTPUT ${icon}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${icon_set}
  ${draw_icons}
  COMMAND ${ICONUTIL} -c icns -o ${icon} ${icon_set}
  DEPENDS ${drawing}
  COMMENT "Drawing the application icon" VERBATIM)

set(bundle_resources
  ${icon}
  ${PROJECT_SOURCE_DIR}/resources/AppStatusBarIcon.svg)
set_source_files_properties(${bundle_resources} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
target_sources(perchly PRIVATE ${bundle_resources})
set_target_properties(perchly PROPERTIES
  OUTPUT_NAME Perchly
  MACOSX_BUNDLE ON
  MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_LIST_DIR}/Info.plist.in)

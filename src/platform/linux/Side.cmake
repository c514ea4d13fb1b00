# The Linux side: GIO is linked; pictures, windows and pages come from libraries that are bound when first needed.
find_package(PkgConfig REQUIRED)
pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0 gio-unix-2.0)
pkg_check_modules(DRAWING REQUIRED librsvg-2.0 cairo gdk-pixbuf-2.0 pangocairo)
pkg_check_modules(TOOLKIT REQUIRED gtk4 gtk4-x11 x11 xi)
pkg_check_modules(ENGINE REQUIRED webkitgtk-6.0)
include(LateBinding)

target_link_libraries(perchly_foundation PUBLIC PkgConfig::GIO)

target_sources(perchly_platform PRIVATE
  linux/appkit/MenuRows.cpp
  linux/desktop/ConstraintView.cpp
  linux/desktop/ExportedObject.cpp
  linux/desktop/FirstResponder.cpp
  linux/desktop/MenuInterface.cpp
  linux/desktop/MenuServer.cpp
  linux/desktop/MenuTree.cpp
  linux/desktop/Monitors.cpp
  linux/desktop/Picture.cpp
  linux/desktop/Pointer.cpp
  linux/desktop/PopoverBackground.cpp
  linux/desktop/PopoverDismissal.cpp
  linux/desktop/PopoverPlacement.cpp
  linux/desktop/PopoverWindow.cpp
  linux/desktop/PressWatch.cpp
  linux/desktop/StatusNotifierItem.cpp
  linux/desktop/StatusNotifierWatcher.cpp
  linux/desktop/Toolkit.cpp
  linux/desktop/X11Window.cpp
  linux/webkit/EngineWidget.cpp
  linux/webkit/MediaSilencer.cpp
  linux/webkit/PageDialogs.cpp
  linux/webkit/PageRecovery.cpp)
target_include_directories(perchly_platform SYSTEM PRIVATE
  ${DRAWING_INCLUDE_DIRS} ${TOOLKIT_INCLUDE_DIRS} ${ENGINE_INCLUDE_DIRS})

add_late_binding(perchly_platform
  SOURCES linux/desktop/LateBinding.cpp linux/desktop/LateBindingEntries.S
  DRAWING rsvg-2 cairo gdk_pixbuf-2.0 pango-1.0 pangocairo-1.0
  TOOLKIT gtk-4 graphene-1.0 X11 Xi
  ENGINE webkitgtk-6.0 javascriptcoregtk-6.0 soup-3.0)

# Pictures of status items and menu rows are drawn by a program of their own, so that an idle process stays light.
pkg_check_modules(PICTURES REQUIRED IMPORTED_TARGET librsvg-2.0 pangocairo)
add_executable(perchly-draw linux/desktop/PictureDrawer.cpp)
target_link_libraries(perchly-draw PRIVATE PkgConfig::PICTURES)
set_target_properties(perchly-draw PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/libexec/perchly)
install(TARGETS perchly-draw DESTINATION libexec/perchly)
# Not linked, but nothing shows a picture without it.
add_dependencies(perchly_platform perchly-draw)

# The Linux side: GIO is linked; windows and pages come from libraries that are bound when first needed.
find_package(PkgConfig REQUIRED)
pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0 gio-unix-2.0)
pkg_check_modules(TOOLKIT REQUIRED gtk4 gtk4-x11 x11 xi)
pkg_check_modules(ENGINE REQUIRED webkitgtk-6.0)
include(LateBinding)

target_link_libraries(perchly_foundation PUBLIC PkgConfig::GIO)

target_sources(perchly_platform PRIVATE
  linux/appkit/MenuKeys.cpp
  linux/appkit/MenuRows.cpp
  linux/desktop/AlertWindow.cpp
  linux/desktop/ConstraintView.cpp
  linux/desktop/Pointer.cpp
  linux/desktop/SymbolPaintable.cpp
  linux/desktop/Toolkit.cpp
  linux/popover/FirstResponder.cpp
  linux/popover/Monitors.cpp
  linux/popover/PopoverBackground.cpp
  linux/popover/PopoverDismissal.cpp
  linux/popover/PopoverPlacement.cpp
  linux/popover/PopoverWindow.cpp
  linux/popover/PressWatch.cpp
  linux/popover/X11Window.cpp
  linux/statusarea/ExportedObject.cpp
  linux/statusarea/MenuInterface.cpp
  linux/statusarea/MenuLabel.cpp
  linux/statusarea/MenuServer.cpp
  linux/statusarea/MenuTree.cpp
  linux/statusarea/Picture.cpp
  linux/statusarea/StatusNotifierItem.cpp
  linux/statusarea/StatusNotifierWatcher.cpp
  linux/webkit/EngineWidget.cpp
  linux/webkit/MediaSilencer.cpp
  linux/webkit/PageDialogs.cpp
  linux/webkit/PageRecovery.cpp)
target_include_directories(perchly_platform SYSTEM PRIVATE
  ${TOOLKIT_INCLUDE_DIRS} ${ENGINE_INCLUDE_DIRS})

add_late_binding(perchly_platform
  SOURCES linux/desktop/LateBinding.cpp linux/desktop/LateBindingEntries.S
  TOOLKIT gtk-4 cairo pango-1.0 gdk_pixbuf-2.0 graphene-1.0 X11 Xi
  ENGINE webkitgtk-6.0 javascriptcoregtk-6.0)

# Pictures of status items and menu rows are drawn by a program of their own, so that an idle process stays light.
pkg_check_modules(PICTURES REQUIRED IMPORTED_TARGET librsvg-2.0 pangocairo)
add_executable(perchly-draw linux/statusarea/PictureDrawer.cpp)
target_link_libraries(perchly-draw PRIVATE PkgConfig::PICTURES)
set_target_properties(perchly-draw PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/libexec/perchly)
install(TARGETS perchly-draw DESTINATION libexec/perchly)
# Not linked, but nothing shows a picture without it.
add_dependencies(perchly_platform perchly-draw)

# The Linux side: GIO is linked; windows and pages come from libraries that are bound when first needed.
find_package(PkgConfig REQUIRED)
pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0 gio-unix-2.0)
pkg_check_modules(TOOLKIT REQUIRED gtk4 gtk4-x11 x11 xi)
pkg_check_modules(ENGINE REQUIRED webkitgtk-6.0)
include(LateBinding)

target_link_libraries(perchly_foundation PUBLIC PkgConfig::GIO)
target_sources(perchly_foundation PRIVATE linux/network/Messages.cpp linux/network/ProgramConnection.cpp)

target_sources(perchly_platform PRIVATE
  linux/appkit/ColorNative.cpp
  linux/appkit/FilePanel.cpp
  linux/appkit/FontNative.cpp
  linux/appkit/MenuKeys.cpp
  linux/appkit/MenuRows.cpp
  linux/appkit/TableCells.cpp
  linux/appkit/WindowKeys.cpp
  linux/desktop/ActivationWatch.cpp
  linux/desktop/AlertWindow.cpp
  linux/desktop/AxisLayout.cpp
  linux/desktop/ConstraintView.cpp
  linux/desktop/DrawingPaintable.cpp
  linux/desktop/FirstResponder.cpp
  linux/desktop/FrontWindow.cpp
  linux/desktop/Monitors.cpp
  linux/desktop/Pointer.cpp
  linux/desktop/Shortcut.cpp
  linux/desktop/ShownText.cpp
  linux/desktop/StackContainer.cpp
  linux/desktop/StartUp.cpp
  linux/desktop/SymbolPaintable.cpp
  linux/desktop/Toolkit.cpp
  linux/desktop/UnfinishedWork.cpp
  linux/desktop/WindowContent.cpp
  linux/desktop/WindowIcon.cpp
  linux/desktop/X11Pointer.cpp
  linux/desktop/X11Property.cpp
  linux/desktop/X11Window.cpp
  linux/popover/FramePicture.cpp
  linux/popover/PopoverBackground.cpp
  linux/popover/PopoverDismissal.cpp
  linux/popover/PopoverPlacement.cpp
  linux/popover/PopoverWindow.cpp
  linux/popover/PressWatch.cpp
  linux/popover/RoundedContent.cpp
  linux/statusarea/DecodedPicture.cpp
  linux/statusarea/DrawingProgram.cpp
  linux/statusarea/ExportedObject.cpp
  linux/statusarea/MenuInterface.cpp
  linux/statusarea/MenuLabel.cpp
  linux/statusarea/MenuServer.cpp
  linux/statusarea/MenuTree.cpp
  linux/statusarea/Picture.cpp
  linux/statusarea/RegistrationQueue.cpp
  linux/statusarea/StatusNotifierItem.cpp
  linux/statusarea/StatusNotifierWatcher.cpp
  linux/statusarea/SymbolicIcon.cpp
  linux/table/ColumnLayout.cpp
  linux/table/RowGeometry.cpp
  linux/table/Table.cpp
  linux/table/TableKeyboard.cpp
  linux/table/TableRows.cpp
  linux/table/TableStrip.cpp
  linux/table/TableWidget.cpp
  linux/webkit/EngineWidget.cpp
  linux/webkit/MediaSilencer.cpp
  linux/webkit/PageDialogs.cpp
  linux/webkit/PageRecovery.cpp
  linux/webkit/StorageFolders.cpp
  linux/webkit/TabKey.cpp)
target_include_directories(perchly_platform SYSTEM PRIVATE
  ${TOOLKIT_INCLUDE_DIRS} ${ENGINE_INCLUDE_DIRS})

add_late_binding(perchly_platform
  SOURCES linux/desktop/LateBinding.cpp linux/desktop/LateBindingEntries.S
  TOOLKIT gtk-4 cairo pango-1.0 gdk_pixbuf-2.0 graphene-1.0 X11 Xi
  ENGINE webkitgtk-6.0 javascriptcoregtk-6.0)

# Pictures of status items and menu rows are drawn by a program of their own, so that an idle process stays light.
pkg_check_modules(PICTURES REQUIRED IMPORTED_TARGET librsvg-2.0 pangocairo gdk-pixbuf-2.0 libwebp)
add_executable(perchly-draw
  linux/drawing/IconFile.cpp
  linux/drawing/Outline.cpp
  linux/drawing/Output.cpp
  linux/drawing/Painter.cpp
  linux/drawing/PictureDrawer.cpp
  linux/drawing/PictureFile.cpp
  linux/drawing/TextPainter.cpp)
target_include_directories(perchly-draw PRIVATE ${PROJECT_SOURCE_DIR}/src)
target_link_libraries(perchly-draw PRIVATE PkgConfig::PICTURES)
set_target_properties(perchly-draw PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/libexec/perchly)
install(TARGETS perchly-draw DESTINATION libexec/perchly)
# What is downloaded comes through a program of its own, so that an idle process holds neither HTTP nor TLS.
pkg_check_modules(FETCHING REQUIRED IMPORTED_TARGET libsoup-3.0)
add_executable(perchly-fetch linux/network/Fetcher.cpp linux/network/Messages.cpp)
target_include_directories(perchly-fetch PRIVATE ${PROJECT_SOURCE_DIR}/src)
target_link_libraries(perchly-fetch PRIVATE PkgConfig::FETCHING PkgConfig::GIO)
set_target_properties(perchly-fetch PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/libexec/perchly)
install(TARGETS perchly-fetch DESTINATION libexec/perchly)
add_dependencies(perchly_platform perchly-fetch)
# Not linked, but nothing shows a picture without it.
add_dependencies(perchly_platform perchly-draw)

# The macOS side: the system's own frameworks, and the helper objects that the classes share.
target_sources(perchly_foundation PRIVATE
  macos/foundation/KeyValueObserver.mm)
target_sources(perchly_platform PRIVATE
  macos/appkit/ActionTarget.mm
  macos/appkit/HostedViewController.mm
  macos/appkit/MenuNative.mm
  macos/appkit/PlainView.mm
  macos/webkit/WebViewDelegate.mm)

target_link_libraries(perchly_foundation PUBLIC "-framework Foundation")
target_link_libraries(perchly_platform PUBLIC "-framework AppKit" "-framework UniformTypeIdentifiers"
  "-framework WebKit")

# The program, which is made after the platform library, becomes a bundle.
cmake_language(DEFER DIRECTORY ${PROJECT_SOURCE_DIR}/src
  CALL include ${PROJECT_SOURCE_DIR}/packaging/macos/Bundle.cmake)

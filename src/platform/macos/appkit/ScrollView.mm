#include "platform/appkit/ScrollView.h"

#include "platform/macos/appkit/ViewNative.h"

namespace appkit {

ScrollView::ScrollView()
    : View(makeNative([[NSScrollView alloc] init]))
{
}

void ScrollView::setHasVerticalScroller(bool has)
{
    nativeView<NSScrollView>(*this).hasVerticalScroller = has;
}

void ScrollView::setHasHorizontalScroller(bool has)
{
    nativeView<NSScrollView>(*this).hasHorizontalScroller = has;
}

void ScrollView::setAutohidesScrollers(bool autohides)
{
    nativeView<NSScrollView>(*this).autohidesScrollers = autohides;
}

void ScrollView::setBorderType(BorderType type)
{
    nativeView<NSScrollView>(*this).borderType = static_cast<NSBorderType>(type);
}

void ScrollView::setDocumentView(std::shared_ptr<View> view)
{
    NSView* native = nativeView(*view);
    native.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    nativeView<NSScrollView>(*this).documentView = native;
    documentView_ = std::move(view);
}

} // namespace appkit

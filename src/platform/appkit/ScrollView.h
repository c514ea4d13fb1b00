#pragma once

#include "platform/appkit/View.h"

#include <memory>

namespace appkit {

enum class BorderType { None = 0, Bezel = 2 };

/// A frame through which a part of a larger view is seen.
class ScrollView : public View {
public:
    ScrollView();

    void setHasVerticalScroller(bool has);
    void setHasHorizontalScroller(bool has);
    /// Scrollers are there only while there is something to scroll.
    void setAutohidesScrollers(bool autohides);
    void setBorderType(BorderType type);

    /// The view's width and height follow the scroll view's.
    void setDocumentView(std::shared_ptr<View> view);
    [[nodiscard]] const std::shared_ptr<View>& documentView() const { return documentView_; }

private:
    std::shared_ptr<View> documentView_;
};

} // namespace appkit

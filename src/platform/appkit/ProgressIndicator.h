#pragma once

#include "platform/appkit/View.h"

namespace appkit {

enum class ProgressIndicatorStyle { Spinning = 1 };
enum class ControlSize { Regular, Small };

class ProgressIndicator : public View {
public:
    ProgressIndicator();

    void setStyle(ProgressIndicatorStyle style);
    void setControlSize(ControlSize size);

    /// Off: the view is visible only while it animates.
    void setDisplayedWhenStopped(bool displayed);

    void startAnimation();
    void stopAnimation();

private:
    bool isDisplayedWhenStopped_ = true;
};

} // namespace appkit

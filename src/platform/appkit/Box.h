#pragma once

#include "platform/appkit/View.h"

#include <memory>

namespace appkit {

class Box : public View {
public:
    /// A thin horizontal line.
    [[nodiscard]] static std::shared_ptr<Box> separator();

private:
    using View::View;
};

} // namespace appkit

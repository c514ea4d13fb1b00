#pragma once

#include "platform/appkit/Alert.h"
#include "platform/foundation/DispatchQueue.h"

#include <gtest/gtest.h>

#include <functional>

/// Does what opens a modal alert; the user looks at that, and clicks a button of it.
inline void openAndAnswer(
    const std::function<void()>& open, std::size_t button,
    const std::function<void(appkit::Alert&)>& look = [](appkit::Alert&) {})
{
    auto wasShown = false;
    foundation::dispatchMainAsync([&] {
        auto* alert = appkit::Alert::running();
        ASSERT_NE(alert, nullptr);
        wasShown = true;
        look(*alert);
        alert->performClick(button);
    });
    open();
    EXPECT_TRUE(wasShown);
    EXPECT_EQ(appkit::Alert::running(), nullptr);
}

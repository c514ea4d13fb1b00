#pragma once

#include "platform/appkit/View.h"

#include <memory>

namespace appkit {

/// Owns a view, which it builds when it is first asked for it.
class ViewController {
public:
    virtual ~ViewController() = default;
    ViewController(const ViewController&) = delete;
    ViewController& operator=(const ViewController&) = delete;

    [[nodiscard]] const std::shared_ptr<View>& view()
    {
        loadViewIfNeeded();
        return view_;
    }

    void loadViewIfNeeded()
    {
        if (!view_)
            loadView();
    }

    [[nodiscard]] bool isViewLoaded() const { return view_ != nullptr; }

    /// The size, in points, that the view would like to be shown at; the one it was built with until another is set.
    [[nodiscard]] foundation::Size preferredContentSize() const { return preferredContentSize_; }
    void setPreferredContentSize(foundation::Size size) { preferredContentSize_ = size; }

protected:
    ViewController() = default;

    /// Builds the view and hands it to setView.
    virtual void loadView() = 0;
    void setView(std::shared_ptr<View> view)
    {
        view_ = std::move(view);
        if (preferredContentSize_ == foundation::Size {})
            preferredContentSize_ = view_->frame().size;
    }

private:
    std::shared_ptr<View> view_;
    foundation::Size preferredContentSize_;
};

} // namespace appkit

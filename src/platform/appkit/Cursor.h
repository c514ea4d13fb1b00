#pragma once

#include <memory>

namespace appkit {

/// A picture of the pointer, in the desktop's own look.
class Cursor {
public:
    [[nodiscard]] static std::shared_ptr<Cursor> resizeLeftRightCursor();
    [[nodiscard]] static std::shared_ptr<Cursor> resizeUpDownCursor();
    ~Cursor();
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;

    struct Native;
    [[nodiscard]] const Native& native() const { return *native_; }

private:
    explicit Cursor(std::unique_ptr<Native> native);
    std::unique_ptr<Native> native_;
};

} // namespace appkit

#include "bookmarks/Bookmark.h"

namespace {

/// Folds values into one hash, in order.
class Hasher {
public:
    template <class Value>
    Hasher& combine(const Value& value)
    {
        constexpr std::size_t goldenRatio = static_cast<std::size_t>(0x9E3779B97F4A7C15);
        state_ ^= std::hash<Value>()(value) + goldenRatio + (state_ << 6) + (state_ >> 2);
        return *this;
    }

    /// An absent value and an empty one differ by the presence marker.
    template <class Value>
    Hasher& combine(const std::optional<Value>& value)
    {
        combine(value.has_value());
        return value ? combine(*value) : *this;
    }

    [[nodiscard]] std::size_t result() const { return state_; }

private:
    std::size_t state_ = 0;
};

} // namespace

std::size_t std::hash<perchly::Bookmark>::operator()(const perchly::Bookmark& bookmark) const noexcept
{
    return Hasher()
        .combine(bookmark.id)
        .combine(bookmark.title)
        .combine(bookmark.url)
        .combine(bookmark.isPinned)
        .combine(bookmark.isAddedToMenuBar)
        .combine(bookmark.iconURL)
        .combine(bookmark.createdAt.timeIntervalSinceReferenceDate)
        .combine(bookmark.preferredWidth)
        .combine(bookmark.preferredHeight)
        .combine(bookmark.shouldReloadOnOpen)
        .combine(bookmark.isAlwaysOnTop)
        .combine(bookmark.prefersDetached)
        .combine(bookmark.openInSystemBrowser)
        .combine(bookmark.userAgent)
        .combine(bookmark.customEmoji)
        .combine(bookmark.sfSymbolName)
        .combine(bookmark.menubarIconSize)
        .result();
}

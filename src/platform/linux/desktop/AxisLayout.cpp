#include "platform/linux/desktop/AxisLayout.h"

#include <algorithm>

namespace desktop {

AxisLayout::AxisLayout(const std::vector<Equation>& equations, const std::vector<Lengths>& views)
    : views_(views.size() + 1)
    , lengths_(views)
{
    views_[0][Attribute::Start] = Value {};
    views_[0][Attribute::Length] = Value { .share = 1 };
    complete(views_[0]);
    do
        propagate(equations);
    while (assume());
}

void AxisLayout::propagate(const std::vector<Equation>& equations)
{
    for (auto isLearning = true; isLearning;) {
        isLearning = false;
        for (const auto& [first, second, constant] : equations) {
            const Value offset { .constant = constant };
            auto& left = views_[first.view][first.attribute];
            if (!second) {
                if (!left) {
                    left = offset;
                    complete(views_[first.view]);
                    isLearning = true;
                }
                continue;
            }
            auto& right = views_[second->view][second->attribute];
            if (left.has_value() == right.has_value())
                continue;
            if (right)
                left = *right + offset;
            else
                right = *left - offset;
            complete(views_[first.view]);
            complete(views_[second->view]);
            isLearning = true;
        }
    }
}

/// Two of its values tell the others.
void AxisLayout::complete(View& view)
{
    auto& start = view[Attribute::Start];
    auto& end = view[Attribute::End];
    auto& center = view[Attribute::Center];
    auto& length = view[Attribute::Length];
    if (start && end)
        length = *end - *start;
    else if (start && center)
        length = (*center - *start) * 2;
    else if (end && center)
        length = (*end - *center) * 2;
    if (!length)
        return;
    if (!start && end)
        start = *end - *length;
    else if (!start && center)
        start = *center - *length * 0.5;
    if (!start)
        return;
    end = *start + *length;
    center = *start + *length * 0.5;
}

/// Makes the first assumption that is needed; false when nothing is open.
bool AxisLayout::assume()
{
    for (std::size_t index = 1; index < views_.size(); ++index) {
        auto& view = views_[index];
        if (!view[Attribute::Length]) {
            view[Attribute::Length] = Value { .constant = lengths_[index - 1].natural };
            complete(view);
            return true;
        }
    }
    for (std::size_t index = 1; index < views_.size(); ++index) {
        auto& view = views_[index];
        if (!view[Attribute::Start]) {
            view[Attribute::Start] = Value {};
            complete(view);
            return true;
        }
    }
    return false;
}

std::vector<AxisLayout::Span> AxisLayout::place(double containerLength) const
{
    std::vector<Span> spans;
    spans.reserve(lengths_.size());
    for (auto view = views_.begin() + 1; view != views_.end(); ++view) {
        spans.push_back({ view->known(Attribute::Start).at(containerLength),
            std::max(0.0, view->known(Attribute::Length).at(containerLength)) });
    }
    return spans;
}

AxisLayout::Lengths AxisLayout::containerLengths() const
{
    return { neededFor(&Lengths::minimum), neededFor(&Lengths::natural) };
}

double AxisLayout::neededFor(double Lengths::*length) const
{
    auto needed = 0.0;
    // The container is at least so long that the value, which grows with it, reaches the bound.
    const auto require = [&needed](const Value& value, double bound) {
        if (value.share > 0)
            needed = std::max(needed, (bound - value.constant) / value.share);
    };
    for (std::size_t index = 1; index < views_.size(); ++index) {
        const auto& view = views_[index];
        require(view.known(Attribute::Length), lengths_[index - 1].*length);
        require(view.known(Attribute::Start), 0);
        require(Value { .share = 1 } - view.known(Attribute::End), 0);
    }
    return needed;
}

} // namespace desktop

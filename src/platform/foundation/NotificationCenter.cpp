#include "platform/foundation/NotificationCenter.h"

#include "platform/foundation/FatalError.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace foundation {

struct NotificationCenter::Observer {
    std::function<void()> handler;
    bool isObserving = true;
};

ObservationToken::ObservationToken(std::function<void()> end)
    : end_(std::move(end))
{
}

ObservationToken::ObservationToken(ObservationToken&& other) noexcept
    : end_(std::exchange(other.end_, nullptr))
{
}

ObservationToken& ObservationToken::operator=(ObservationToken&& other) noexcept
{
    // The former observation ends with `former`, after this token holds the new one.
    const ObservationToken former(std::move(*this));
    end_ = std::exchange(other.end_, nullptr);
    return *this;
}

ObservationToken::~ObservationToken()
{
    if (end_)
        end_();
}

NotificationCenter& NotificationCenter::defaultCenter()
{
    static NotificationCenter center;
    return center;
}

ObservationToken NotificationCenter::addObserver(std::string_view name, std::function<void()> handler)
{
    assertMainThread();
    auto observer = std::make_shared<Observer>(Observer { std::move(handler) });
    observers_->emplace(name, observer);

    return ObservationToken([observers = std::weak_ptr(observers_), observer = std::move(observer)] {
        assertMainThread();
        observer->isObserving = false;
        if (const auto all = observers.lock())
            std::erase_if(*all, [&](const auto& entry) { return entry.second == observer; });
    });
}

void NotificationCenter::post(std::string_view name)
{
    assertMainThread();
    // A copy, because handlers may add and remove observers.
    std::vector<std::shared_ptr<Observer>> observers;
    const auto [first, last] = observers_->equal_range(name);
    std::transform(first, last, std::back_inserter(observers), [](const auto& entry) { return entry.second; });

    for (const auto& observer : observers) {
        if (observer->isObserving)
            observer->handler();
    }
}

} // namespace foundation

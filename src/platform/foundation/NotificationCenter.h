#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace foundation {

/// Ends an observation when it goes. Outliving the centre is allowed.
class ObservationToken {
public:
    ObservationToken() = default;
    explicit ObservationToken(std::function<void()> end);
    ObservationToken(ObservationToken&& other) noexcept;
    ObservationToken& operator=(ObservationToken&& other) noexcept;
    ~ObservationToken();

private:
    std::function<void()> end_;
};

/// Delivers named notifications, without payload, to their observers at once, in the order of observing.
/// Observers may come and go during a delivery; one that went is not called any more. Main thread.
class NotificationCenter {
public:
    static NotificationCenter& defaultCenter();

    [[nodiscard]] ObservationToken addObserver(std::string_view name, std::function<void()> handler);
    void post(std::string_view name);

private:
    struct Observer;
    using Observers = std::multimap<std::string, std::shared_ptr<Observer>, std::less<>>;

    std::shared_ptr<Observers> observers_ = std::make_shared<Observers>();
};

} // namespace foundation

#include "platform/linux/statusarea/RegistrationQueue.h"

#include "platform/linux/desktop/Environment.h"

#include <utility>

namespace desktop {
namespace {

/// How long an item is waited for that no area answers, or no host reads.
constexpr unsigned patienceMilliseconds = 1000;

/// What the panel takes to write an item down, from when it has read it; it reads in several steps.
constexpr unsigned takeUpMilliseconds = 50;

bool panelLosesItems()
{
    return namesDesktop(environment("XDG_CURRENT_DESKTOP"), "XFCE");
}

} // namespace

RegistrationQueue& RegistrationQueue::shared()
{
    static RegistrationQueue queue;
    return queue;
}

void RegistrationQueue::enter(GDBusConnection* item, Connection connection, std::function<void()> registerItem)
{
    std::erase_if(waiting_, [item](const Entry& entry) { return entry.item == item; });
    waiting_.push_back({ item, connection, std::move(registerItem) });
    if (!current_)
        next();
}

void RegistrationQueue::itemWasRegistered(GDBusConnection* item)
{
    if (item == current_ && !panelLosesItems())
        next();
}

void RegistrationQueue::itemWasRead(GDBusConnection* item)
{
    if (item == current_ && panelLosesItems())
        end_ = callAfter(takeUpMilliseconds, [this] { next(); });
}

void RegistrationQueue::leave(GDBusConnection* item)
{
    std::erase_if(waiting_, [item](const Entry& entry) { return entry.item == item; });
    if (item == current_)
        next();
}

void RegistrationQueue::next()
{
    end_.reset();
    current_ = nullptr;
    while (!waiting_.empty() && !current_) {
        const auto entry = std::move(waiting_.front());
        waiting_.pop_front();
        if (entry.connection == Connection::Own || panelLosesItems()) {
            current_ = entry.item;
            end_ = callAfter(patienceMilliseconds, [this] { next(); });
        }
        entry.registerItem();
    }
}

} // namespace desktop

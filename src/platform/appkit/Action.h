#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace appkit {

/// What sends actions: controls and menu items.
class Sender {
public:
    virtual ~Sender() = default;

protected:
    Sender() = default;
    Sender(const Sender&) = default;
    Sender& operator=(const Sender&) = default;
};

/// What a control or menu item does: the operation's name and a weakly bound member function.
/// One without a target goes to the first responder, the view that has the keyboard.
class Action {
public:
    /// No action at all.
    Action() = default;

    /// An action for the first responder.
    explicit Action(std::string name)
        : name_(std::move(name))
    {
    }

    template <class Target>
    Action(std::string name, std::weak_ptr<Target> target, void (Target::*operation)())
        : name_(std::move(name))
        , invoke_([target = std::move(target), operation](Sender&) {
            if (auto self = target.lock())
                (self.get()->*operation)();
        })
    {
    }

    /// The operation is not called for a sender of another type.
    template <class Target, class SenderType>
    Action(std::string name, std::weak_ptr<Target> target, void (Target::*operation)(SenderType&))
        : name_(std::move(name))
        , invoke_([target = std::move(target), operation](Sender& sender) {
            auto* typed = dynamic_cast<SenderType*>(&sender);
            auto self = target.lock();
            if (typed && self)
                (self.get()->*operation)(*typed);
        })
    {
    }

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] bool hasTarget() const { return static_cast<bool>(invoke_); }
    explicit operator bool() const { return !name_.empty(); }

    /// Calls the bound operation while its target lives; does nothing otherwise.
    void send(Sender& sender) const
    {
        if (invoke_)
            invoke_(sender);
    }

private:
    std::string name_;
    std::function<void(Sender&)> invoke_;
};

} // namespace appkit

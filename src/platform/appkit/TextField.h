#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/Font.h"
#include "platform/appkit/View.h"

#include <memory>
#include <string>
#include <string_view>

namespace appkit {

class TextField;

class TextFieldDelegate {
public:
    virtual ~TextFieldDelegate() = default;

    /// A key asks for an editing command ("insertNewline:", "cancelOperation:", "insertTab:", ...).
    /// True: handled; the field does nothing more.
    virtual bool controlDoCommandBySelector(TextField& field, std::string_view selector) = 0;
};

/// One line of text. Return sends the action unless the delegate took it.
class TextField : public View {
public:
    TextField();

    /// A text that the user can neither edit nor select.
    [[nodiscard]] static std::shared_ptr<TextField> label(std::string_view text);

    void setFont(const Font& font);

    void setStringValue(std::string_view text);
    [[nodiscard]] std::string stringValue() const;

    /// Gives the field the keyboard, with all of its text selected.
    void selectText();

    void setPlaceholderString(std::string_view text);
    [[nodiscard]] std::string placeholderString() const;

    void setSelectable(bool selectable);
    void setBezeled(bool bezeled);
    void setBordered(bool bordered);

    /// Whether leaving the field sends the action, as Return does.
    void setSendsActionOnEndEditing(bool sends);

    void setAction(Action action) { action_ = std::move(action); }
    [[nodiscard]] const Action& action() const { return action_; }
    void setDelegate(std::weak_ptr<TextFieldDelegate> delegate) { delegate_ = std::move(delegate); }

    /// Runs an editing command as its key does: the delegate first, then the field itself. True: handled.
    bool doCommandBySelector(std::string_view selector);

private:
    explicit TextField(std::unique_ptr<Native> native);

    Action action_;
    std::weak_ptr<TextFieldDelegate> delegate_;
    bool sendsActionOnEndEditing_ = true;
};

} // namespace appkit

#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/Color.h"
#include "platform/appkit/Font.h"
#include "platform/appkit/View.h"

#include <memory>
#include <string>
#include <string_view>

namespace appkit {

class TextField;

enum class TextAlignment { Natural, Center, Right };
enum class LineBreakMode { ByClipping, ByTruncatingTail };

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

    /// A text, of one or more lines, that the user can neither edit nor select, without border and background.
    [[nodiscard]] static std::shared_ptr<TextField> label(std::string_view text);

    void setFont(const Font& font);
    /// These are for labels.
    void setTextColor(Color color);
    void setAlignment(TextAlignment alignment);
    /// What becomes of a line that is longer than the label is wide.
    void setLineBreakMode(LineBreakMode mode);

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

protected:
    /// An entry of the side's own.
    explicit TextField(std::unique_ptr<Native> native);

private:
    Action action_;
    std::weak_ptr<TextFieldDelegate> delegate_;
    bool sendsActionOnEndEditing_ = true;
};

} // namespace appkit

#pragma once

#include <QLineEdit>
#include <optional>

#include "platform/qt/ControlView.h"
#include "toolkit/Keys.h"

class QAction;

namespace FendaMaestros::qt {

/// A text box. What a person types, pastes or composes passes the form's key filter character by character.
class TextBoxView final : public ControlView {
public:
    TextBoxView(TextBox& box, FormWindow& window);

    QWidget& widget() override { return edit_; }
    void pull() override;
    bool stretches() const override;
    /// Editing keys, as long as the form takes what they do.
    bool wants(const QKeyEvent& event) override;

private:
    struct Colors {
        Color back = 16777215;
        bool locked = false;
        bool enabled = true;
        /// Of the theme's palette.
        qint64 theme = 0;
        bool operator==(const Colors&) const = default;
    };

    /// Where the caret is, and what is selected on one of its sides.
    struct Mark {
        int caret = 0;
        int start = -1;
        int length = 0;
    };

    void offerSearches();
    /// What a person chooses beside the keyboard does as the key does that is typed in the field.
    void sendKey(KeyStroke stroke);
    void changed(const QString& text);
    Mark mark() const;
    void restore(const Mark& mark);
    /// The inserted characters that the form takes.
    std::u32string accepted(const std::u32string& inserted, std::size_t room);
    void pullText();
    void pullColors();

    TextBox& box_;
    FormWindow& window_;
    QLineEdit& edit_;
    std::optional<Colors> colors_;
    bool active_ = false;
    /// As of before the change that the widget is telling about.
    Mark mark_;
};

}  // namespace FendaMaestros::qt

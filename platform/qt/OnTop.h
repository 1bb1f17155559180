#pragma once

class QWidget;
class QWindow;

namespace FendaMaestros::qt {

/// As long as it lives, a window stands over those that were there before, and they take no input. Qt's own modality
/// would throw away what was typed before the window had come up; without it the keys of the windows below reach this
/// one (see TypeAhead), and clicks on them come to nothing (see InputFilter).
class OnTop {
public:
    explicit OnTop(QWidget& window);
    OnTop(const OnTop&) = delete;
    OnTop& operator=(const OnTop&) = delete;
    ~OnTop();

    /// The last that is visible; null when there is none.
    static QWidget* window();
    /// Nothing stands over a window: it is that on top, one that belongs to it, or a list that hangs open. Always true
    /// while a dialog of Qt's own is modal, which sees to it by itself.
    static bool takesInput(const QWindow& window);

private:
    QWidget& window_;
};

}  // namespace FendaMaestros::qt

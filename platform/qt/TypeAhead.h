#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>
#include <deque>
#include <memory>

namespace FendaMaestros::qt {

class InputFilter;

/// Keeps the keys of who types faster than windows open and close. Whichever window of the program the keyboard has
/// sent a key to, it is for what stands on top; while that is still busy with the key before, or not there yet, keys
/// wait, and none overtakes another. Install one on the application.
class TypeAhead final : public QObject {
public:
    /// While `input` watches for Esc, nothing waits. It must outlive this.
    explicit TypeAhead(const InputFilter& input);
    ~TypeAhead() override { release(); }

    /// Keeps the keyboard at a window, for the moment that the desktop needs to move it to another one: meanwhile a key
    /// may come to nobody. Call it before something is shown over the window; null, or one that is hidden, does
    /// nothing.
    void hold(const QWidget* window);
    /// Gives the keyboard to what lies below a window. Call it before the window hides.
    void handOver(const QWidget& window);
    /// Takes the keys that are still on their way to a window that has been hidden; call it while the window lives.
    void collect();
    /// Leaves the keyboard to the desktop. Call it before a dialog that takes the keyboard by itself.
    void release();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool mustWait(const QWindow& window) const;
    void deliver();

    const InputFilter& input_;
    std::deque<std::unique_ptr<QKeyEvent>> keys_;
    QPointer<QWindow> holder_;
    QTimer untilFocusHasMoved_;
    QTimer nextDelivery_;
    bool collecting_ = false;
};

}  // namespace FendaMaestros::qt

#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QWindow>
#include <deque>
#include <memory>

namespace FendaMaestros::qt {

/// Keeps the keys of who types faster than windows close. While a message or screen goes away the keyboard belongs to
/// nobody for a moment, and what was typed into it would go with it; these keys wait, and reach what is on top as soon
/// as it can take them. Install one on the application.
class TypeAhead final : public QObject {
public:
    TypeAhead() = default;
    ~TypeAhead() override { release(); }

    /// Gives the keyboard to what lies below a window, for the moment that the desktop needs to do so itself. Call it
    /// before the window hides.
    void handOver(const QWidget& window);
    /// Takes the keys that are still on their way to a window that has been hidden; call it while the window lives.
    void collect();
    /// Leaves the keyboard to the desktop. Call it before something else is shown.
    void release();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void deliver();

    std::deque<std::unique_ptr<QKeyEvent>> keys_;
    QPointer<QWindow> holder_;
    bool collecting_ = false;
};

}  // namespace FendaMaestros::qt

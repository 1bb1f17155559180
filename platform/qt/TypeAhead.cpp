#include "platform/qt/TypeAhead.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include "platform/qt/FormWindow.h"

namespace FendaMaestros::qt {

namespace {

constexpr int untilKeysArrive = 10;     ///< milliseconds that keys need at most from the keyboard to the program
constexpr int untilFocusMoves = 300;    ///< milliseconds that a window manager needs at most to choose a window
constexpr int untilHandlerIsDone = 10;  ///< milliseconds between two looks at it

/// What has the keyboard now; null while a handler runs, as its screen takes nothing then.
QWidget* receiver() {
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const top = modal ? modal : QApplication::activeWindow();
    if (!top) return nullptr;
    FormWindow* const window = FormWindow::around(*top);
    if (window) return window->form().isHandling() ? nullptr : &window->keyReceiver();
    return top->focusWidget() ? top->focusWidget() : top;
}

QWindow* handleBelow(const QWidget& window) {
    QWidget* const parent = window.parentWidget();
    return parent && parent->window()->isVisible() ? parent->window()->windowHandle() : nullptr;
}

}  // namespace

void TypeAhead::handOver(const QWidget& window) {
    release();
    QWindow* const below = handleBelow(window);
    if (!below || !below->setKeyboardGrabEnabled(true)) return;
    holder_ = below;
    QTimer::singleShot(untilFocusMoves, this, [this, below = holder_] {
        if (holder_ == below) release();
    });
}

void TypeAhead::collect() {
    collecting_ = true;
    QElapsedTimer elapsed;
    elapsed.start();
    do QCoreApplication::processEvents(QEventLoop::AllEvents, untilKeysArrive);
    while (elapsed.elapsed() < untilKeysArrive);
    collecting_ = false;
    deliver();
}

void TypeAhead::release() {
    if (holder_) holder_->setKeyboardGrabEnabled(false);
    holder_.clear();
}

/// Keys are caught on their way to a window, before it knows which of its widgets they are for.
bool TypeAhead::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWindowType()) return false;
    if (event->type() == QEvent::MouseButtonPress) return collecting_;
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
    deliver();
    if (!collecting_ && keys_.empty()) return false;
    keys_.emplace_back(static_cast<QKeyEvent*>(event)->clone());
    return true;
}

void TypeAhead::deliver() {
    while (!collecting_ && !keys_.empty()) {
        QWidget* const widget = receiver();
        if (!widget) return QTimer::singleShot(untilHandlerIsDone, this, [this] { deliver(); });
        const std::unique_ptr<QKeyEvent> key = std::move(keys_.front());
        keys_.pop_front();
        QCoreApplication::sendEvent(widget, key.get());
    }
}

}  // namespace FendaMaestros::qt

#include "platform/qt/TypeAhead.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>

#include "platform/qt/FormWindow.h"
#include "platform/qt/InputFilter.h"
#include "platform/qt/OnTop.h"

namespace FendaMaestros::qt {

namespace {

using std::chrono_literals::operator""ms;

constexpr int untilKeysArrive = 10;       ///< milliseconds that keys need at most from the keyboard to the program
constexpr auto untilFocusMoves = 300ms;   ///< that a window manager needs at most to choose a window
constexpr auto untilHandlerIsDone = 2ms;  ///< between two looks at it

QWidget* topWindow() {
    if (QWidget* const dialog = QApplication::activeModalWidget()) return dialog;
    if (QWidget* const top = OnTop::window()) return top;
    return QApplication::activeWindow();
}

QWidget* focusIn(QWidget& window) { return window.focusWidget() ? window.focusWidget() : &window; }

/// What takes keys now; null while a handler runs, as its screen takes nothing then.
QWidget* receiver() {
    if (QWidget* const list = QApplication::activePopupWidget()) return focusIn(*list);
    QWidget* const top = topWindow();
    if (!top) return nullptr;
    FormWindow* const window = FormWindow::around(*top);
    if (!window) return focusIn(*top);
    return window->form().isHandling() ? nullptr : &window->keyReceiver();
}

/// A key that has waited comes too late for the shortcuts of the program's own windows.
QAction* shortcutOf(const QKeyEvent& key, const QWidget& receiver) {
    if (key.type() != QEvent::KeyPress || FormWindow::around(receiver)) return nullptr;
    const QKeySequence typed(key.keyCombination());
    const QList<QAction*> actions = receiver.window()->findChildren<QAction*>();
    const auto found = std::ranges::find_if(
        actions, [&](const QAction* action) { return action->isEnabled() && action->shortcuts().contains(typed); });
    return found == actions.end() ? nullptr : *found;
}

void send(QKeyEvent& key, QWidget& receiver) {
    if (QAction* const action = shortcutOf(key, receiver)) return action->trigger();
    QCoreApplication::sendEvent(&receiver, &key);
}

}  // namespace

TypeAhead::TypeAhead(const InputFilter& input) : input_(input) {
    for (QTimer* timer : {&untilFocusHasMoved_, &nextDelivery_}) timer->setSingleShot(true);
    untilFocusHasMoved_.setInterval(untilFocusMoves);
    connect(&untilFocusHasMoved_, &QTimer::timeout, this, &TypeAhead::release);
    connect(&nextDelivery_, &QTimer::timeout, this, &TypeAhead::deliver);
}

void TypeAhead::hold(const QWidget* window) {
    QWindow* const handle = window && window->isVisible() ? window->windowHandle() : nullptr;
    if (!handle || !handle->setKeyboardGrabEnabled(true)) return;
    holder_ = handle;
    untilFocusHasMoved_.start();
}

void TypeAhead::handOver(const QWidget& window) {
    QWidget* const below = window.parentWidget() ? window.parentWidget()->window() : nullptr;
    if (below) below->activateWindow();
    hold(below);
}

void TypeAhead::collect() {
    collecting_ = true;
    QElapsedTimer elapsed;
    elapsed.start();
    do QCoreApplication::processEvents(QEventLoop::AllEvents, untilKeysArrive);
    while (elapsed.elapsed() < untilKeysArrive);
    collecting_ = false;
    if (!keys_.empty()) nextDelivery_.start(0);
}

void TypeAhead::release() {
    untilFocusHasMoved_.stop();
    if (holder_) holder_->setKeyboardGrabEnabled(false);
    holder_.clear();
}

/// Keys are caught on their way to a window, before it knows which of its widgets they are for. One that would wait
/// presses no shortcut on its way.
bool TypeAhead::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWindowType() || input_.isWatching()) return false;
    const QEvent::Type type = event->type();
    if (type == QEvent::MouseButtonPress) return collecting_;
    const bool isKey = type == QEvent::KeyPress || type == QEvent::KeyRelease;
    if (!isKey && type != QEvent::ShortcutOverride) return false;
    if (!mustWait(*static_cast<QWindow*>(watched))) return false;
    event->accept();
    if (!isKey) return true;
    keys_.emplace_back(static_cast<QKeyEvent*>(event)->clone());
    if (!collecting_) nextDelivery_.start(0);
    return true;
}

bool TypeAhead::mustWait(const QWindow& window) const {
    if (collecting_ || !keys_.empty()) return true;
    return OnTop::window() && (!OnTop::takesInput(window) || !receiver());
}

/// One key at a time, as it may open a window.
void TypeAhead::deliver() {
    if (collecting_ || keys_.empty()) return;
    QWidget* const widget = receiver();
    if (!widget) return nextDelivery_.start(untilHandlerIsDone);
    const std::unique_ptr<QKeyEvent> key = std::move(keys_.front());
    keys_.pop_front();
    if (!keys_.empty()) nextDelivery_.start(0);
    send(*key, *widget);
}

}  // namespace FendaMaestros::qt

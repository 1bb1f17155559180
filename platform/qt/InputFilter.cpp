#include "platform/qt/InputFilter.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QWindow>

#include "platform/qt/FormWindow.h"
#include "platform/qt/KeyCodes.h"
#include "platform/qt/OnTop.h"

namespace FendaMaestros::qt {

namespace {

/// A key keeps its place on the keyboard while Shift changes what it types.
quint32 placeOf(const QKeyEvent& event) {
    constexpr quint32 scanned = 1U << 31;
    return event.nativeScanCode() ? scanned | event.nativeScanCode() : static_cast<quint32>(event.key());
}

/// A click on a field takes the focus there first; it goes no further when the form does not let the focus move.
bool clickRefused(QWidget& at) {
    FormWindow* const window = FormWindow::around(at);
    Control* const control = window ? window->controlOf(at) : nullptr;
    if (!control || !control->takesFocus() || !window->viewOf(*control).focusesFirst()) return false;
    const int before = window->form().interruptions();
    window->hand([&] { window->form().focus(*control); });
    return window->form().activeControl() != control || window->form().interruptions() != before;
}

/// What a window below another one does not hear of; for keys, see TypeAhead.
bool isForTheTop(QEvent::Type type) {
    switch (type) {
        case QEvent::Enter:
        case QEvent::MouseMove:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
        case QEvent::Close:
            return true;
        default:
            return false;
    }
}

/// A window that comes to the front below another one gives it the place again.
bool dropsBelowTop(const QWindow& window, QEvent::Type type) {
    const bool comesForward = type == QEvent::FocusIn;
    if ((!comesForward && !isForTheTop(type)) || OnTop::takesInput(window)) return false;
    if (!comesForward) return true;
    OnTop::window()->raise();
    OnTop::window()->activateWindow();
    return false;
}

}  // namespace

bool InputFilter::eventFilter(QObject* watched, QEvent* event) {
    if (watched->isWindowType()) return dropsBelowTop(*static_cast<QWindow*>(watched), event->type());
    if (!watched->isWidgetType()) return false;
    if (watching_ && dropsWhileWatching(*event)) return true;
    QWidget& at = *static_cast<QWidget*>(watched);
    switch (event->type()) {
        case QEvent::KeyPress:
            return keyPressed(at, *static_cast<QKeyEvent*>(event));
        case QEvent::KeyRelease:
            return keyReleased(at, *static_cast<QKeyEvent*>(event));
        case QEvent::ShortcutOverride:
            // The letters of the captions are the form's business.
            if (!FormWindow::around(at)) return false;
            event->accept();
            return true;
        case QEvent::MouseButtonPress:
            return mousePressed(at);
        case QEvent::MouseButtonRelease:
            mouseReleased(at);
            return false;
        case QEvent::Wheel:
            // Rolling over a list that is closed must not choose another item.
            return FormWindow::around(at) && qobject_cast<QComboBox*>(&at);
        default:
            return false;
    }
}

bool InputFilter::dropsWhileWatching(const QEvent& event) {
    switch (event.type()) {
        case QEvent::KeyPress:
            if (static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape) escapePressed_ = true;
            return true;
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::Close:
            return true;
        default:
            return false;
    }
}

bool InputFilter::mousePressed(QWidget& at) {
    auto* const edit = qobject_cast<QLineEdit*>(&at);
    const bool hadFocus = at.hasFocus();
    if (clickRefused(at)) return true;
    selectOnRelease_ = edit && !hadFocus && edit->hasSelectedText() ? edit : nullptr;
    return false;
}

void InputFilter::mouseReleased(QWidget& at) {
    QLineEdit* const edit = selectOnRelease_;
    if (edit != &at) return;
    selectOnRelease_ = nullptr;
    if (!edit->hasSelectedText()) edit->selectAll();
}

bool InputFilter::keyPressed(QWidget& at, const QKeyEvent& event) {
    FormWindow* const window = FormWindow::around(at);
    if (!event.isAutoRepeat()) pressedIn_[placeOf(event)] = window;
    if (!window) return false;
    // A key that its widget ignored comes by again on its way up.
    if (&at != &window->keyReceiver()) return true;

    Form& form = window->form();
    Control* const active = form.activeControl();
    const KeyStroke stroke = strokeOf(event);
    bool done = true;
    window->hand([&] { done = form.keyDown(stroke); });
    if (done || !active || form.activeControl() != active) return true;
    return !window->viewOf(*active).wants(event);
}

bool InputFilter::keyReleased(QWidget& at, const QKeyEvent& event) {
    FormWindow* const window = FormWindow::around(at);
    if (!window) return false;
    if (event.isAutoRepeat() || &at != &window->keyReceiver()) return true;
    const auto pressed = pressedIn_.extract(placeOf(event));
    if (!pressed || pressed.mapped() != window) return true;
    const KeyStroke stroke = strokeOf(event);
    window->hand([&] { window->form().keyUp(stroke); });
    return true;
}

}  // namespace FendaMaestros::qt

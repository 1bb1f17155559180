#include "platform/qt/Hands.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

#include "platform/qt/FormWindow.h"
#include "platform/qt/KeyCodes.h"

namespace FendaMaestros::qt::hands {

namespace {

Qt::KeyboardModifiers modifiersOf(KeyStroke stroke) {
    Qt::KeyboardModifiers held;
    if (stroke.shift & shift::Shift) held |= Qt::ShiftModifier;
    if (stroke.shift & shift::Control) held |= Qt::ControlModifier;
    if (stroke.shift & shift::Alt) held |= Qt::AltModifier;
    return held;
}

int qtKeyOf(KeyStroke stroke) {
    const bool backwards = stroke.code == key::Tab && (stroke.shift & shift::Shift);
    return backwards ? static_cast<int>(Qt::Key_Backtab) : qt::qtKeyOf(stroke.code);
}

void sendMouse(QWidget& widget, QEvent::Type type, QPoint at) {
    const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, widget.mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

void clickWith(QEvent::Type press, QWidget& widget, QPoint at) {
    const QPointer<QWidget> stays(&widget);
    sendMouse(widget, press, at);
    if (stays) sendMouse(widget, QEvent::MouseButtonRelease, at);
}

}  // namespace

void pressKey(QWidget& widget, KeyStroke stroke, const QString& typed) {
    QKeyEvent event(QEvent::KeyPress, qtKeyOf(stroke), modifiersOf(stroke), typed);
    QCoreApplication::sendEvent(&widget, &event);
}

void releaseKey(QWidget& widget, KeyStroke stroke, const QString& typed) {
    QKeyEvent event(QEvent::KeyRelease, qtKeyOf(stroke), modifiersOf(stroke), typed);
    QCoreApplication::sendEvent(&widget, &event);
}

void strike(FormWindow& window, KeyStroke stroke, const QString& typed) {
    const int before = window.form().interruptions();
    pressKey(window.keyReceiver(), stroke, typed);
    if (!window.isDone() && window.form().interruptions() == before) releaseKey(window.keyReceiver(), stroke, typed);
}

void releaseKeyLater(QWidget& widget, KeyStroke stroke) {
    QCoreApplication::postEvent(&widget, new QKeyEvent(QEvent::KeyRelease, qtKeyOf(stroke), modifiersOf(stroke)));
}

void click(QWidget& widget, QPoint at) { clickWith(QEvent::MouseButtonPress, widget, at); }

void clickCenter(QWidget& widget) { click(widget, widget.rect().center()); }

void clickAgain(QWidget& widget, QPoint at) { clickWith(QEvent::MouseButtonDblClick, widget, at); }

}  // namespace FendaMaestros::qt::hands

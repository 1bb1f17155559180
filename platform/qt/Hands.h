#pragma once

#include <QPoint>
#include <QString>

#include "toolkit/Operator.h"

class QKeyEvent;
class QWidget;

namespace FendaMaestros::qt {
class FormWindow;
}

/// Events as a keyboard and a mouse make them, sent to a widget at once.
namespace FendaMaestros::qt::hands {

void pressKey(QWidget& widget, KeyStroke stroke, const QString& typed = {});
void releaseKey(QWidget& widget, KeyStroke stroke, const QString& typed = {});
/// Presses a key in a window and, unless something was shown over its form meanwhile, releases it there.
void strike(FormWindow& window, KeyStroke stroke, const QString& typed = {});
/// The release comes when events are next handled.
void releaseKeyLater(QWidget& widget, KeyStroke stroke);
/// Presses and releases the left button; `at` in the widget's coordinates.
void click(QWidget& widget, QPoint at);
void clickCenter(QWidget& widget);
/// The second press of a double click, and its release.
void clickAgain(QWidget& widget, QPoint at);

}  // namespace FendaMaestros::qt::hands

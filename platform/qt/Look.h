#pragma once

#include <QPalette>

#include "toolkit/Controls.h"

class QApplication;

namespace FendaMaestros::qt {

/// Twips as logical pixels, which the screen's own scale enlarges.
int pixels(Twips twips);

/// The colours of a field. White stands for the theme's own field colour; any other colour is shown as it is, with a
/// text that is readable on it whatever the theme. A field that takes no text keeps the quiet colour of one.
QPalette fieldPalette(Color back, bool locked, bool enabled);

/// Gives the program its look and its Spanish texts.
void applyLook(QApplication& application);

}  // namespace FendaMaestros::qt

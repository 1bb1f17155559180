#pragma once

#include "toolkit/Keys.h"
#include "toolkit/Operator.h"

class QKeyEvent;

namespace FendaMaestros::qt {

/// The code and shift state that screens compare; keys without a code of their own give key::Other.
KeyStroke strokeOf(const QKeyEvent& event);
/// The Qt::Key of a code of toolkit/Keys.h; Qt::Key_unknown for key::Other.
int qtKeyOf(int code);

}  // namespace FendaMaestros::qt

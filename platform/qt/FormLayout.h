#pragma once

#include "toolkit/Arrangement.h"

namespace FendaMaestros {
class Form;
}

namespace FendaMaestros::qt {

class FormWindow;

/// Places the controls of a form in its window as the form's arrangement says; what the arrangement leaves out follows
/// below, in tab order.
void layOutForm(const Form& form, FormWindow& window);

}  // namespace FendaMaestros::qt

#pragma once

#include <cstdint>
#include <string_view>

#include "toolkit/Controls.h"

namespace FendaMaestros {

/// Fills a combo box with the keys of the annual withholding return (model 190), or with the sub-keys of one of them,
/// each as its code, " - " and its description, and chooses the first. Without any item the combo box is disabled.
///
/// `s` is "-" for the keys, or the letter of the key whose sub-keys are wanted; one that is unknown has none. `n` is
/// the fiscal year: outside 2008 to 2012 there is only the item that stands for no key. `bConsulta` names the first of
/// the keys as a filter does ("Todos").
void jCargaClavesRetencion(ComboBox& oCb, std::string_view s, std::int16_t n, bool bConsulta);

}  // namespace FendaMaestros

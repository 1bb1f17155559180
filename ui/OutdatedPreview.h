#pragma once

#include <stdexcept>

namespace FendaMaestros {

/// Another program has changed what a preview goes by; nothing has been written.
struct OutdatedPreview : std::runtime_error {
    OutdatedPreview()
        : std::runtime_error(
              "Otro programa ha cambiado los datos entretanto: no se ha escrito nada. Vuelva a intentarlo.") {}
};

}  // namespace FendaMaestros

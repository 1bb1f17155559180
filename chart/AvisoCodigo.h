#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace FendaMaestros {

/// What the status line tells while a code is typed with a comma.
class AvisoCodigo {
public:
    /// What the code that is being typed will become, as `completado` gives it, and the account of the official plan
    /// that it hangs from, as planAccount() looks it up: "43000005, de la cuenta 4300 Clientes". Empty without a comma,
    /// without a code, and when the database does not answer: what is wrong with it is said when the field is left, and
    /// until then a busy one is not waited for at each key.
    std::string texto(const std::string& typed, std::int16_t plan, const std::function<std::string()>& completado);
    /// The field has been left.
    void dejado() { bSinRespuesta_ = false; }

private:
    bool bSinRespuesta_ = false;
};

}  // namespace FendaMaestros

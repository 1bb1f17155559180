#include "chart/AvisoCodigo.h"

#include "chart/CodigosCuenta.h"
#include "session/ErrorBd.h"

namespace FendaMaestros {

namespace {

std::string destination(const std::string& code, std::int16_t plan) {
    if (code.empty()) return {};
    const auto account = planAccount(code, plan);
    if (!account) return code + ", de ninguna cuenta del PGC";
    return code + ", de la cuenta " + account->Fields("PCta_Cta").Value.text() + " " +
           account->Fields("PCta_Des").Value.text();
}

}  // namespace

std::string AvisoCodigo::texto(const std::string& typed, std::int16_t plan,
                               const std::function<std::string()>& completado) {
    if (bSinRespuesta_ || typed.find(',') == std::string::npos) return {};
    try {
        return destination(completado(), plan);
    } catch (const ErrorBd&) {
        bSinRespuesta_ = true;
        return {};
    }
}

}  // namespace FendaMaestros

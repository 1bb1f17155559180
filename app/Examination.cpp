#include "app/Examination.h"

#include <exception>

#include "storage/Consistency.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

void checkParameters(const ParametrosEmpresa& parameters, const Companies::Tell& tell) {
    try {
        requireUsable(parameters);
    } catch (const std::exception& error) {
        tell(error.what());
    }
}

}  // namespace

void Examination::checkShared() { sharedIsWhole_ = companies_.examine({}, of({})); }

void Examination::check(const std::string& name) {
    if (!companies_.examine(name, of(name)) || !sharedIsWhole_) return;
    const auto session = companies_.open(name);
    checkParameters(session->Parametros(), of(name));
    if (!sharedIsChecked_) storage::checkSharedRows(*session->Conexion(), of({}));
    sharedIsChecked_ = true;
    storage::checkCompanyRows(*session->Conexion(), of(name));
}

Companies::Tell Examination::of(const std::string& company) {
    return [this, where = company.empty() ? "datos comunes" : text::printable(company)](const std::string& fault) {
        found_ = true;
        tell_(where, text::printable(fault));
    };
}

}  // namespace FendaMaestros

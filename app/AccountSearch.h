#pragma once

#include "toolkit/Desktop.h"
#include "ui/ExternalComponents.h"

namespace FendaMaestros {

/// The program's own account search: the sub-accounts of the open company, those that are inactive only on request.
class AccountSearch final : public HostApplication {
public:
    /// `desktop` must outlive the component.
    explicit AccountSearch(Desktop& desktop) : desktop_(desktop) {}

    /// Throws std::logic_error, in Spanish, when MyBd has not been set.
    std::int32_t fnBuscarCuentas(std::int16_t mode, bool bTodas) override;

private:
    Desktop& desktop_;
};

}  // namespace FendaMaestros

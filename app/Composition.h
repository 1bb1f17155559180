#pragma once

#include <memory>

#include "component/FendaMaes.h"

namespace FendaMaestros {

/// Registers the external components that were built: spreadsheets, the report printer and the host's account search.
/// `desktop` must outlive the registry.
void registerComponents(ComponentRegistry& components, Desktop& desktop);

/// A company that is open: its session, and the component that works on it. While it lives it is the one that screens
/// work with, unless a newer one is made.
class OpenCompany {
public:
    /// `desktop` must outlive it. `session` is never null.
    OpenCompany(Desktop& desktop, std::unique_ptr<SesionBd> session);

    SesionBd& session() { return *session_; }
    FendaMaes& component() { return component_; }

private:
    std::unique_ptr<SesionBd> session_;
    ComponentRegistry components_;
    FendaMaes component_;
};

}  // namespace FendaMaestros

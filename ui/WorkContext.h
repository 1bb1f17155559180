#pragma once

#include <cstdint>
#include <string>

#include "session/SesionBd.h"
#include "toolkit/Desktop.h"
#include "ui/ExternalComponents.h"

namespace FendaMaestros {

/// What every screen shares of the object that the host has created: the sessions, the values handed back and forth,
/// and the place where screens are shown. Screens reach it through InstanciaActual, never through a reference of their
/// own.
class WorkContext {
public:
    WorkContext(const WorkContext&) = delete;
    WorkContext& operator=(const WorkContext&) = delete;

    /// Account code handed back by account creation.
    std::string Cuenta;
    bool bFactu = false;
    /// The plan in force, 2008 or 1990; 0 while it is not known.
    std::int16_t Plan = 0;
    /// A second session, needed only where accounts are saved. May be the same as MyBd. Not owned.
    SesionBd* MyBdorigen = nullptr;
    /// The session of every screen; must be set before any entry operation is called. Not owned.
    SesionBd* MyBd = nullptr;

    Desktop& desktop() const { return desktop_; }
    ComponentRegistry& components() const { return components_; }
    /// MyBd; throws std::logic_error, in Spanish, when it has not been set.
    SesionBd& sesion() const;
    /// MyBdorigen; throws std::logic_error, in Spanish, when it has not been set.
    SesionBd& sesionOrigen() const;

protected:
    /// Both must outlive the object, which becomes InstanciaActual.
    WorkContext(Desktop& desktop, ComponentRegistry& components);
    ~WorkContext();

private:
    Desktop& desktop_;
    ComponentRegistry& components_;
};

/// The newest object that lives: one that ends gives way to the newest of the others. Null while there is none.
extern WorkContext* InstanciaActual;

/// InstanciaActual; throws std::logic_error, in Spanish, when there is none.
WorkContext& instanciaActual();

}  // namespace FendaMaestros

#include "chartreports/ColumnasCuentas.h"

#include <array>

namespace FendaMaestros {

namespace {

constexpr const char* balanceMask = "##,###,##0.00 ";

struct Kind {
    const char* name;
    const char* layout;
};

/// In the order of TipoInforme.
constexpr std::array<Kind, 6> kinds{{{"Informe Subcuentas", "PlanCuentas1"},
                                     {"Informe Subcuentas completo", nullptr},
                                     {"Informe Cuentas-Subcuentas", nullptr},
                                     {"Informe por Departamentos", "PlanCuentasDpto"},
                                     {"Informe por Centros", "PlanCuentasCentro"},
                                     {"Informe Subcuentas con Nif", "PlanCuentasNif"}}};

const Kind& kindOf(TipoInforme tipo) { return kinds[static_cast<std::size_t>(tipo)]; }

bool isByPlace(TipoInforme tipo) { return tipo == TipoInforme::Departamentos || tipo == TipoInforme::Centros; }

}  // namespace

const char* nombreInforme(TipoInforme tipo) { return kindOf(tipo).name; }

const char* disenoInforme(TipoInforme tipo) { return kindOf(tipo).layout; }

int columnaCodigo(TipoInforme tipo) { return isByPlace(tipo) ? 2 : 1; }

std::vector<ListingColumn> columnasCuentas(TipoInforme tipo, bool conSaldo) {
    const auto balance = [conSaldo](Twips width) {
        return ListingColumn{"Saldo", conSaldo ? width : 0, Alignment::Right, balanceMask};
    };
    const auto code = [](Twips width) { return ListingColumn{"Cuenta", width, Alignment::Center, {}, true}; };
    if (isByPlace(tipo))
        return {{}, {"Departamento/Centro", 1500, Alignment::Center}, code(1200), {"Descripción", 9500}, balance(1100)};
    if (tipo != TipoInforme::Nif) return {{}, code(1500), {"Descripción", 10000}, balance(1800)};
    return {{},
            code(1200),
            {"Descripción", 3000},
            {"Nif", 1200},
            {"Razón Social/Nombre", 3000},
            {"Direccion", 1800},
            {"C.Postal", 700, Alignment::Center},
            {"Poblacion", 1800},
            {"Provincia", 1800},
            {"Pais", 1800},
            {}};
}

}  // namespace FendaMaestros

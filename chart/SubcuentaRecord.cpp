#include "chart/SubcuentaRecord.h"

#include <array>
#include <iterator>

namespace FendaMaestros {

namespace {

struct Columna {
    std::string_view nombre;
    long valor;
};

constexpr std::array columnas{
    Columna{"PCta_Cta", valor::Texto},        Columna{"PCta_Des", valor::Texto},
    Columna{"PCta_IdMasa", valor::Numero},    Columna{"PCta_IdCen", valor::Numero},
    Columna{"PCta_IdDpto", valor::Numero},    Columna{"Pcta_IdNif", valor::Numero},
    Columna{"PCta_CtaAso", valor::Texto},     Columna{"PCta_IdCtaAso", valor::Numero},
    Columna{"PCta_CtaIrpfAso", valor::Texto}, Columna{"PCta_SubCuenta", valor::Entero},
    Columna{"Pcta_Origen", valor::Entero},    Columna{"Pcta_IdOrigen", valor::Numero},
    Columna{"PCta_bActiva", valor::Entero},
};

Variant code(const std::string& account) { return account.empty() ? Variant() : Variant(account); }

}  // namespace

SubcuentaRecord leerSubcuenta(const Recordset& row) {
    const auto text = [&row](const char* column) { return row.Fields(column).Value.text(); };
    const auto number = [&row](const char* column) { return row.Fields(column).Value.integer(); };
    return {.id = number("PCta_Id"),
            .codigo = text("PCta_Cta"),
            .nombre = text("PCta_Des"),
            .idMasa = number("PCta_IdMasa"),
            .idCentro = number("PCta_IdCen"),
            .idDpto = number("PCta_IdDpto"),
            .idNif = number("Pcta_IdNif"),
            .asociada = text("PCta_CtaAso"),
            .idAsociada = number("PCta_IdCtaAso"),
            .irpf = text("PCta_CtaIrpfAso"),
            .origen = number("Pcta_Origen"),
            .idOrigen = number("Pcta_IdOrigen"),
            .activa = number("PCta_bActiva") != 0};
}

const std::vector<std::string_view>& columnasSubcuenta() {
    static const std::vector<std::string_view> names = [] {
        std::vector<std::string_view> all;
        for (const Columna& columna : columnas) all.push_back(columna.nombre);
        return all;
    }();
    return names;
}

std::vector<Variant> valoresSubcuenta(const SubcuentaRecord& account) {
    Variant values[]{account.codigo,         account.nombre,
                     account.idMasa,         account.idCentro,
                     account.idDpto,         account.idNif,
                     code(account.asociada), account.asociada.empty() ? 0 : account.idAsociada,
                     code(account.irpf),     1,
                     account.origen,         account.idOrigen,
                     account.activa ? 1 : 0};
    // A list in braces would copy every text once more.
    return std::vector<Variant>(std::move_iterator(std::begin(values)), std::move_iterator(std::end(values)));
}

void describirSubcuenta(RowWrite& write, const SubcuentaRecord& account) {
    const std::vector<Variant> values = valoresSubcuenta(account);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i].isNull())
            write.column(columnas[i].nombre, valor::Nulo, "Null");
        else
            write.column(columnas[i].nombre, columnas[i].valor, values[i]);
    }
}

void nombrarApuntes(SesionBd& session, std::int64_t idCuenta, const std::string& nombre) {
    if (nombre.empty()) return;
    RowWrite lines(session, "Apu");
    lines.column("Apu_CtaDes", valor::Texto, nombre);
    lines.update(" WHERE Apu_IdCta = " + std::to_string(idCuenta) + " AND Apu_CtaDes=''");
}

}  // namespace FendaMaestros

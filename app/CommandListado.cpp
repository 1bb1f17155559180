#include "app/CommandListado.h"

#include <array>
#include <stdexcept>

#include "app/ChosenWord.h"
#include "chart/CodigosCuenta.h"
#include "chartreports/ColumnasCuentas.h"
#include "session/TypedText.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/GridReport.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

/// In the order of TipoInforme and of EstadoCuenta.
const std::array<std::string, 6> kinds{"subcuentas", "completo", "cuentas", "departamentos", "centros", "nif"};
const std::array<std::string, 3> states{"activas", "inactivas", "todas"};

bool isBlank(const std::string& typed) { return text::trim(typed).empty(); }

// --- filters

std::string accountCode(const std::string& typed) {
    if (isBlank(typed)) return {};
    const std::size_t digits = digitosSubcuenta(instanciaActual().sesion().Parametros());
    std::string code = completedCode(text::trim(typed), digits);
    if (text::isNumericCode(code) && code.size() <= digits) return code;
    throw std::invalid_argument("La cuenta «" + typed + "» no se entiende: son hasta " + std::to_string(digits) +
                                " cifras, con una coma en lugar de los ceros que falten.");
}

std::string balance(const std::string& typed) {
    if (isBlank(typed)) return {};
    if (const auto amount = typed::amount(typed)) return format(*amount, mascaraImporte);
    throw std::invalid_argument("El saldo «" + typed + "» no se entiende: se escribe como 1.234,56.");
}

/// The identity of a department or a work centre. `table` begins the names of its columns; `what` is for a person.
std::string placeId(const std::string& typed, const std::string& table, const std::string& what) {
    if (isBlank(typed)) return {};
    const std::string wanted = text::folded(text::trim(typed));
    const auto places = read("SELECT * FROM " + table + " ORDER BY " + table + "_Des");
    std::string id;
    for (; !places->Eof(); places->MoveNext()) {
        std::string found = places->Fields(table + "_Id").Value.text();
        if (places->Fields(table + "_Cod").Value.text() == wanted) return found;
        if (text::folded(text::trim(places->Fields(table + "_Des").Value.text())) != wanted) continue;
        if (!id.empty()) throw std::invalid_argument("Hay más de un " + what + " «" + typed + "»: indique su código.");
        id = found;
    }
    if (id.empty()) throw std::invalid_argument("No hay ningún " + what + " «" + typed + "».");
    return id;
}

FiltroCuentas filterOf(const TypedListado& typed) {
    const auto tipo = static_cast<TipoInforme>(chosenWord("El tipo", typed.kind, kinds));
    if (tipo == TipoInforme::Nif && typed.withBalance)
        throw std::invalid_argument("El listado con NIF no lleva saldos.");
    return {.tipo = tipo,
            .plan = planEnVigor(),
            .desde = accountCode(typed.from),
            .hasta = accountCode(typed.to),
            .departamento = placeId(typed.department, "Dpto", "departamento"),
            .centro = placeId(typed.centre, "Centro", "centro"),
            .desdeSaldo = balance(typed.fromBalance),
            .hastaSaldo = balance(typed.toBalance),
            .nombre = typed.name,
            .enCualquierParte = typed.anywhere,
            .estado = static_cast<EstadoCuenta>(chosenWord("El estado", typed.state, states)),
            .conSaldo = typed.withBalance};
}

/// The column that orders the listing: the first one, unless another is asked for by its caption.
int orderColumn(TipoInforme tipo, const std::string& typed) {
    if (isBlank(typed)) return 1;
    std::vector<std::string> captions;
    for (int column = 1; column <= columnaCodigo(tipo) + 1; ++column)
        captions.push_back(text::folded(text::trim(ordenCuentas(tipo, column).titulo)));
    return static_cast<int>(chosenWord("El orden", typed, captions)) + 1;
}

// --- PDF

ExtremoRango endOfRange(const std::string& code) {
    if (code.empty()) return {};
    const auto found = read(sqlSubcuenta(0, code));
    return {code, found->Eof() ? cuentaInexistente : found->Fields("PCta_Des").Value.text()};
}

/// Under the layout of the screen's report, or as the grid for a kind that has none.
void writePdf(UnattendedCompany& company, const FiltroCuentas& filter, const std::string& sql,
              const std::string& path) {
    const std::string selection = textoRango(endOfRange(filter.desde), endOfRange(filter.hasta));
    if (const char* layout = disenoInforme(filter.tipo)) {
        const auto printer = instanciaActual().components().create<ReportPrinter>();
        printer->MyBd = instanciaActual().MyBd;
        printer->sAcotacion1 = selection;
        printer->svariables = filter.conSaldo ? 1 : 0;
        company.saveTo(path);
        printer->jshowInforme(layout, sql);
    } else {
        const GridReport report(nombreInforme(filter.tipo), selection, read(sql),
                                columnasCuentas(filter.tipo, filter.conSaldo));
        company.desktop().writePdf(*report.document(company.desktop().today()), path);
    }
    tellWritten(path);
}

}  // namespace

int runListado(const Place& place, const std::string& company, const TypedListado& typed, const ListingOutput& output) {
    UnattendedCompany open(place, company);
    const FiltroCuentas filter = filterOf(typed);
    const int column = orderColumn(filter.tipo, typed.order);
    const std::string sql = sqlListado(filter, column, !typed.descending);
    if (output.kind == ListingOutput::Kind::Pdf) {
        writePdf(open, filter, sql, output.path);
        return 0;
    }
    Listing listing{.what = "cuentas", .rows = read(sql), .columns = columnasCuentas(filter.tipo, filter.conSaldo)};
    if (filter.conSaldo) listing.total = read(sqlTotal(filter))->cell(0, 0);
    writeListing(open, listing, {column, ordenCuentas(filter.tipo, column).titulo, !typed.descending}, output);
    return 0;
}

}  // namespace FendaMaestros

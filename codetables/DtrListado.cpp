#include "codetables/DtrListado.h"

#include "ui/ListingHeading.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr Twips printWidth = ReportLayout::A4Width - 2 * 850;
constexpr Twips codeWidth = 1900;
constexpr Twips descriptionLeft = codeWidth + 200;
constexpr Twips descriptionWidth = printWidth - descriptionLeft;
constexpr Twips rowHeight = 300;

}  // namespace

DtrListado::DtrListado(std::string name, std::string caption, const Column& code, const Column& description)
    : BandedReport(std::move(name), std::move(caption)) {
    const Typeface heading{"Arial", 10, true, Alignment::Left};
    const Typeface row{"Arial", 10, false, Alignment::Left};
    ReportBand& top = layout_.band(BandKind::PageHeader);
    top.Height = 1560;
    addListingHeading(top, printWidth,
                      {.company = {"Etiqueta13"},
                       .title = {"Etiqueta17"},
                       .page = {"Etiqueta20", "Pagina %p de %P"},
                       .date = {"Etiqueta2", "Fecha %d"}});
    top.Labels.push_back({"Etiqueta7", code.heading, {0, 1100, codeWidth, rowHeight}, heading, true});
    top.Labels.push_back(
        {"Etiqueta6", description.heading, {descriptionLeft, 1100, descriptionWidth, rowHeight}, heading, true});
    top.Lines = {{0, 1020, printWidth}, {0, 1460, printWidth}};

    ReportBand& detail = layout_.band(BandKind::Detail);
    detail.Height = rowHeight;
    detail.Fields = {
        {"Texto7", code.field, {0, 0, codeWidth, rowHeight}, row, ""},
        {"Texto8", description.field, {descriptionLeft, 0, descriptionWidth, rowHeight}, row, ""},
    };
}

DtrListadoDepartamentos::DtrListadoDepartamentos()
    : DtrListado("DtrListadoDepartamentos", "Listado de Departamentos", {"Código ", "Codigo"},
                 {"Descripción ", "Des"}) {}

DtrListadoConceptos::DtrListadoConceptos()
    : DtrListado("DtrListadoConceptos", "Listado de Conceptos", {"Código ", "Conce_Cod"},
                 {"Descripción del concepto", "Conce_Des"}) {}

DtrListadoMasas::DtrListadoMasas()
    : DtrListado("DtrListadoMasas", "Listado de Masas", {"Activo/Pasivo", "Naturaleza"},
                 {"Descripción de la masa", "Masas_Des"}) {}

DtrListadoPaises::DtrListadoPaises()
    : DtrListado("DtrListadoPaises", "Listado de Paises", {"Código ", "Pais_Cod"}, {"Nombre ", "Pais_Nom"}) {}

void imprimirListado(DtrListado& report, const std::optional<std::string>& caption, const std::string& title,
                     std::shared_ptr<Recordset> rows) {
    if (caption) report.Caption = *caption;
    ReportBand& top = report.Section("Cabecera");
    top.Label("Etiqueta13").Caption = companyName();
    top.Label("Etiqueta17").Caption = title;
    report.DataSource = std::move(rows);
    report.Show(instanciaActual().desktop());
}

}  // namespace FendaMaestros

#include "platform/xlsx/KOffice.h"

#include "platform/xlsx/Hoja.h"
#include "ui/FileName.h"
#include "ui/PartialFile.h"

namespace FendaMaestros {

void KOffice::GridToExcel(std::shared_ptr<Recordset>& source, const DataGrid& grid) {
    if (!source) throw std::runtime_error("No hay ningún listado que exportar.");
    checkFits(*source, sTitulo);
    const auto path = desktop_.chooseSaveFile(fileNameFrom(sTitulo, "Listado") + ".xlsx", "Hoja de cálculo (*.xlsx)");
    if (!path) return;

    PartialFile file(*path);
    writeSheet(file.path(), sTitulo, *source, grid.Columns);
    file.commit();
    if (desktop_.openFile(*path)) return;
    desktop_.ask({"Se ha guardado " + *path, message::Information, sTitulo});
}

void registerKOffice(ComponentRegistry& components, Desktop& desktop) {
    components.add(SpreadsheetExporter::ProgId, [&desktop] { return std::make_unique<KOffice>(desktop); });
}

}  // namespace FendaMaestros

#include "interchange/ImportTexts.h"

#include <algorithm>
#include <vector>

#include "toolkit/Format.h"
#include "ui/Csv.h"

namespace FendaMaestros {

std::string_view wordOf(Verdict verdict) {
    switch (verdict) {
        case Verdict::New:
            return "nueva";
        case Verdict::Changes:
            return "cambia";
        case Verdict::Same:
            return "igual";
        case Verdict::Wrong:
            return "errónea";
    }
    return {};
}

std::string changesText(const ImportRow& row) {
    std::string changes;
    for (const FieldChange& change : row.changes)
        changes += (changes.empty() ? "" : ", ") + change.field + " «" + change.from + "» → «" + change.to + "»";
    return changes;
}

std::string countsText(const ImportCounts& counts) {
    const auto words = [](std::int64_t count, const char* one, const char* many) {
        return counted(static_cast<int>(count), one, many);
    };
    return words(counts.added, "nueva", "nuevas") + ", " + words(counts.changed, "con cambios", "con cambios") + ", " +
           words(counts.same, "igual", "iguales") + " y " + words(counts.wrong, "errónea", "erróneas");
}

std::string wrongRowsCsv(const ImportPreview& preview, const ImportForm& form) {
    std::string csv;
    if (form.header) {
        std::vector<std::string> headings = form.firstRow;
        headings.emplace_back("Motivo");
        csv += csvLine(headings);
    }
    for (const ImportRow& row : preview.rows()) {
        if (row.verdict != Verdict::Wrong) continue;
        std::vector<std::string> cells = row.cells;
        for (std::string& cell : cells)
            if (!cell.starts_with('\'')) cell = shieldedText(cell);
        cells.resize(std::max(cells.size(), form.firstRow.size()));
        cells.push_back(row.why);
        csv += csvLine(cells);
    }
    return csv;
}

}  // namespace FendaMaestros

#include "app/CommandImportar.h"

#include <array>
#include <filesystem>
#include <stdexcept>

#include "app/ChosenWord.h"
#include "app/Complaint.h"
#include "app/Composition.h"
#include "app/ListingOutput.h"
#include "app/ProgressLine.h"
#include "app/StandardStreams.h"
#include "app/UnattendedCompany.h"
#include "interchange/Import.h"
#include "interchange/ImportFile.h"
#include "interchange/ImportTexts.h"
#include "toolkit/Text.h"
#include "ui/Transaction.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

const std::array<std::string, 2> kinds{"cuentas", "identidades"};
const std::array<std::string, 2> encodings{"utf-8", "windows-1252"};
/// In the order of their names.
const std::array<std::string, 3> separatorNames{";", ",", "tab"};
constexpr std::array separators{';', ',', '\t'};

constexpr std::size_t blockOfOutput = 65'536;

FormChoice choiceOf(const TypedImport& typed) {
    if (typed.withHeader && typed.withoutHeader)
        throw std::invalid_argument("El fichero tiene cabecera o no la tiene: solo se puede indicar uno.");
    FormChoice choice{.columns = typed.columns};
    if (!typed.encoding.empty())
        choice.encoding =
            chosenWord("La codificación", typed.encoding, encodings) == 0 ? Encoding::Utf8 : Encoding::Windows1252;
    if (typed.separator == "\t")
        choice.separator = '\t';
    else if (!typed.separator.empty())
        choice.separator = separators[chosenWord("El separador", typed.separator, separatorNames)];
    if (typed.withHeader || typed.withoutHeader) choice.header = typed.withHeader;
    return choice;
}

/// How the file has been understood, in three lines.
std::string describe(const std::string& path, ExchangeKind kind, const ImportForm& form) {
    const std::string how = std::string(form.csv.encoding == Encoding::Utf8 ? "UTF-8" : "Windows-1252") +
                            ", separado por " +
                            (form.csv.separator == '\t' ? "tabuladores" : std::string(1, form.csv.separator));
    const std::string unused = unusedText(form);
    std::string used;
    for (const ExchangeField field : fieldsOf(kind))
        if (form.columns.has(field))
            used += (used.empty() ? "" : ", ") + std::string(captionOf(kind, field)) + " = " +
                    columnName(form, form.columns.columnOf(field));
    return "Fichero: " + std::filesystem::path(path).filename().string() + ", " + how + ", " +
           (form.header ? "con" : "sin") + " cabecera\nColumnas: " + used +
           (unused.empty() ? "\n\n" : "\nNo se usan: " + unused + "\n\n");
}

std::string listed(const std::vector<std::string>& headings) {
    std::string list;
    for (std::size_t i = 0; i < headings.size(); ++i)
        list += (i == 0 ? "" : ", ") + std::to_string(i + 1) + " «" + headings[i] + "»";
    return list;
}

/// Throws unless rows can be told apart.
void requireKey(const ImportFile& file) {
    if (file.tellsRowsApart()) return;
    const bool accounts = file.form().kind == ExchangeKind::Accounts;
    throw std::invalid_argument(std::string("No se sabe qué columna tiene ") +
                                (accounts ? "el código de la cuenta" : "el NIF") + "; las columnas del fichero son " +
                                listed(file.form().firstRow) + ". Indíquela como " + (accounts ? "cuenta" : "nif") +
                                "=1.");
}

std::string lineOf(const ImportRow& row) {
    const std::string what = row.key + (row.key.empty() || row.name.empty() ? "" : " ") + row.name;
    std::string line = "línea " + std::to_string(row.line) + ": " + std::string(wordOf(row.verdict)) + " " + what;
    if (row.verdict == Verdict::Wrong) return text::printable(line + ": " + row.why) + "\n";
    if (row.verdict == Verdict::Changes) line += ": " + changesText(row);
    return text::printable(line + (row.note.empty() ? "" : " (" + row.note + ")")) + "\n";
}

void tellRows(const ImportPreview& preview) {
    std::string lines;
    for (const ImportRow& row : preview.rows()) {
        if (row.verdict == Verdict::Same) continue;
        lines += lineOf(row);
        if (lines.size() < blockOfOutput) continue;
        writeOutput(lines);
        lines.clear();
    }
    writeOutput(lines + (lines.empty() ? "" : "\n"));
}

ImportProgress reportOn(const ProgressLine& line, const char* what) {
    return [&line, what](std::int64_t rows) {
        line.show(what, rows);
        return true;
    };
}

/// Gives the status of the command.
int importRows(UnattendedCompany& open, const ImportPreview& preview, const TypedImport& typed) {
    const ImportCounts counts = preview.counts();
    const int status = counts.wrong > 0 ? 1 : 0;
    if (!typed.apply) {
        writeOutput("No se ha escrito nada; con --aplicar se importan.\n");
        return status;
    }
    if (counts.wrong > 0 && !typed.omitWrong)
        return complain("Hay filas erróneas: no se ha escrito nada. Con --omitir-erroneas se importan las demás.",
                        status);
    const ProgressLine line;
    withPatience(open.desktop(),
                 [&] { preview.apply(instanciaActual().sesion(), typed.omitWrong, reportOn(line, "Filas escritas")); });
    writeOutput("Se han importado.\n");
    return status;
}

}  // namespace

ExchangeKind exchangeKind(const std::string& typed) {
    return chosenWord("Lo que se importa o exporta", typed, kinds) == 0 ? ExchangeKind::Accounts
                                                                        : ExchangeKind::Identities;
}

int runImportar(const Place& place, const std::string& company, const TypedImport& typed) {
    const ExchangeKind kind = exchangeKind(typed.kind);
    if (typed.file.empty()) throw std::invalid_argument("Falta el fichero que se importa.");
    UnattendedCompany open(place, company);
    const ImportFile file(typed.file, kind, choiceOf(typed));
    requireKey(file);
    writeOutput(describe(typed.file, kind, file.form()));
    const ImportPreview preview = [&] {
        const ProgressLine line;
        return ImportPreview(instanciaActual().sesion(), kind, *file.rows(), file.form().columns,
                             {.outsidePlan = typed.outsidePlan}, reportOn(line, "Filas leídas"));
    }();
    tellRows(preview);
    writeOutput(countsText(preview.counts()) + ".\n");
    if (!typed.wrongRows.empty()) {
        writeWrongRows(preview, file.form(), typed.file, typed.wrongRows);
        tellWritten(typed.wrongRows);
    }
    return importRows(open, preview, typed);
}

}  // namespace FendaMaestros

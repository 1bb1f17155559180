#include "interchange/ImportFile.h"

#include <stdexcept>
#include <utility>

namespace FendaMaestros {

namespace {

std::string listed(const std::vector<std::string>& headings) {
    std::string list;
    for (std::size_t i = 0; i < headings.size(); ++i)
        list += (i == 0 ? "" : ", ") + std::to_string(i + 1) + " «" + headings[i] + "»";
    return list;
}

/// Throws unless rows can be told apart.
void requireKey(ExchangeKind kind, const ImportForm& form) {
    using enum ExchangeField;
    const bool accounts = kind == ExchangeKind::Accounts;
    if (form.columns.has(accounts ? Account : Document) || (!accounts && form.columns.has(Name))) return;
    throw std::invalid_argument(std::string("No se sabe qué columna tiene ") +
                                (accounts ? "el código de la cuenta" : "el NIF") + "; las columnas del fichero son " +
                                listed(form.firstRow) + ". Indíquela como " + (accounts ? "cuenta" : "nif") + "=1.");
}

}  // namespace

ImportFile::ImportFile(std::string path, ExchangeKind kind, const FormChoice& choice) : path_(std::move(path)) {
    form_.csv = surveyCsv(path_, choice.encoding, choice.separator);
    if (!CsvReader(path_, form_.csv).next(form_.firstRow))
        throw std::runtime_error("El fichero no tiene ninguna fila.");
    matchColumns(kind, choice);
    requireKey(kind, form_);
}

void ImportFile::matchColumns(ExchangeKind kind, const FormChoice& choice) {
    form_.columns = matchHeadings(kind, form_.firstRow);
    bool anyMatch = false;
    for (const ExchangeField field : fieldsOf(kind)) anyMatch |= form_.columns.has(field);
    form_.header = choice.header.value_or(anyMatch);
    const std::size_t columns = form_.firstRow.size();
    if (!form_.header) form_.columns = usualColumns(kind, columns);
    assignColumns(form_.columns, kind, choice.columns, form_.header ? form_.firstRow : std::vector<std::string>(),
                  columns);
}

std::unique_ptr<RowReader> ImportFile::rows() const {
    auto reader = std::make_unique<CsvReader>(path_, form_.csv);
    std::vector<std::string> headings;
    if (form_.header) reader->next(headings);
    return reader;
}

}  // namespace FendaMaestros

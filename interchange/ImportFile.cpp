#include "interchange/ImportFile.h"

#include <stdexcept>
#include <system_error>
#include <utility>

namespace FendaMaestros {

namespace {

/// That of the headings; accounts where they say nothing.
ExchangeKind kindOf(const std::vector<std::string>& headings) {
    const ColumnMap columns = matchHeadings(ExchangeKind::Accounts, headings);
    const bool identities = columns.has(ExchangeField::Document) && !columns.has(ExchangeField::Account);
    return identities ? ExchangeKind::Identities : ExchangeKind::Accounts;
}

}  // namespace

ImportFile::ImportFile(std::string path, std::optional<ExchangeKind> kind, const FormChoice& choice)
    : path_(std::move(path)), state_(stateOf(path_)) {
    form_.csv = surveyCsv(path_, choice.encoding, choice.separator);
    if (!CsvReader(path_, form_.csv).next(form_.firstRow))
        throw std::runtime_error("El fichero no tiene ninguna fila.");
    matchColumns(kind, choice);
}

void ImportFile::matchColumns(std::optional<ExchangeKind> given, const FormChoice& choice) {
    const ExchangeKind kind = form_.kind = given.value_or(kindOf(form_.firstRow));
    form_.columns = matchHeadings(kind, form_.firstRow);
    bool anyMatch = false;
    for (const ExchangeField field : fieldsOf(kind)) anyMatch |= form_.columns.has(field);
    form_.header = choice.header.value_or(anyMatch);
    const std::size_t columns = form_.firstRow.size();
    if (!form_.header) form_.columns = usualColumns(kind, columns);
    assignColumns(form_.columns, kind, choice.columns, form_.header ? form_.firstRow : std::vector<std::string>(),
                  columns);
}

bool ImportFile::tellsRowsApart() const {
    using enum ExchangeField;
    if (form_.kind == ExchangeKind::Accounts) return form_.columns.has(Account);
    return form_.columns.has(Document) || form_.columns.has(Name);
}

/// The same for all files that are not there.
ImportFile::State ImportFile::stateOf(const std::string& path) {
    std::error_code error;
    State state{std::filesystem::file_size(path, error), {}};
    if (!error) state.written = std::filesystem::last_write_time(path, error);
    return state;
}

bool ImportFile::isUnchanged() const { return stateOf(path_) == state_; }

std::unique_ptr<RowReader> ImportFile::rows() const {
    auto reader = std::make_unique<CsvReader>(path_, form_.csv);
    std::vector<std::string> headings;
    if (form_.header) reader->next(headings);
    return reader;
}

}  // namespace FendaMaestros

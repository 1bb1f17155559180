#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "interchange/CsvReader.h"
#include "interchange/Fields.h"
#include "interchange/RowReader.h"

namespace FendaMaestros {

/// What a person says of a file; the rest is found out.
struct FormChoice {
    std::optional<Encoding> encoding = {};
    std::optional<char> separator = {};
    std::optional<bool> header = {};
    std::string columns = {};  ///< see assignColumns()
};

/// How a file has been understood.
struct ImportForm {
    CsvForm csv;
    bool header = false;
    std::vector<std::string> firstRow;  ///< the headings, when there are any
    ColumnMap columns;
};

/// A file whose rows are to be imported.
class ImportFile {
public:
    /// Looks through the file. Throws std::runtime_error, in Spanish,
    /// when it cannot be read, and std::invalid_argument when a column of `choice` is not known or the column that
    /// tells rows apart is missing.
    ImportFile(std::string path, ExchangeKind kind, const FormChoice& choice);

    const ImportForm& form() const { return form_; }
    /// The rows from the first one on, without the headings. Throws std::runtime_error, in Spanish.
    std::unique_ptr<RowReader> rows() const;

private:
    void matchColumns(ExchangeKind kind, const FormChoice& choice);

    std::string path_;
    ImportForm form_;
};

}  // namespace FendaMaestros

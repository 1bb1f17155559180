#pragma once

#include <cstdint>
#include <filesystem>
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
    ExchangeKind kind = ExchangeKind::Accounts;
    CsvForm csv;
    bool header = false;
    std::vector<std::string> firstRow;  ///< the headings, when there are any
    ColumnMap columns;
};

/// A file whose rows are to be imported.
class ImportFile {
public:
    /// Looks through the file; without a kind, its headings tell it. Throws std::runtime_error, in Spanish, when it
    /// cannot be read, and std::invalid_argument when a column of `choice` is not known.
    ImportFile(std::string path, std::optional<ExchangeKind> kind, const FormChoice& choice);

    const ImportForm& form() const { return form_; }
    /// Whether the columns hold what tells its rows apart: the code of accounts, the document or name of identities.
    bool tellsRowsApart() const;
    /// False once the file has been written to, replaced or taken away.
    bool isUnchanged() const;
    /// The rows from the first one on, without the headings. Throws std::runtime_error, in Spanish.
    std::unique_ptr<RowReader> rows() const;

private:
    /// What differs between a file and what becomes of it.
    struct State {
        std::uintmax_t size = 0;
        std::filesystem::file_time_type written;

        bool operator==(const State&) const = default;
    };

    static State stateOf(const std::string& path);
    void matchColumns(std::optional<ExchangeKind> kind, const FormChoice& choice);

    std::string path_;
    State state_;
    ImportForm form_;
};

}  // namespace FendaMaestros

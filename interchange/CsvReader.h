#pragma once

#include <array>
#include <fstream>
#include <optional>
#include <stdexcept>

#include "interchange/RowReader.h"

namespace FendaMaestros {

enum class Encoding : std::uint8_t { Utf8, Windows1252 };

/// How a CSV file is written.
struct CsvForm {
    Encoding encoding = Encoding::Utf8;
    char separator = ';';
    std::int64_t lines = 0;  ///< as many as rows, or more
};

/// Looks through a file and says how it is written; what is given is not guessed. Throws std::runtime_error, in
/// Spanish, when it cannot be opened, is empty or too large, or is no text in its encoding.
CsvForm surveyCsv(const std::string& path, std::optional<Encoding> encoding = {}, std::optional<char> separator = {});

/// The rows of a CSV file (RFC 4180) as UTF-8, read block by block. Lines end with LF, CR LF or CR; a value that begins
/// with a quote goes on, over lines too, to the quote that closes it.
class CsvReader final : public RowReader {
public:
    /// Of a file that surveyCsv() has looked through. Throws std::runtime_error, in Spanish.
    CsvReader(const std::string& path, CsvForm form);

    bool next(std::vector<std::string>& cells) override;
    std::int64_t line() const override { return rowLine_; }
    std::int64_t expectedRows() const override { return form_.lines; }

private:
    static constexpr int end = -1;

    bool readRow(std::vector<std::string>& cells);
    /// Reads a value that begins with `c`; gives the separator, '\n' or `end` behind it.
    int readCell(std::string& cell, int c);
    /// Reads up to the quote that closes it; gives what follows.
    int readQuoted(std::string& cell);
    void put(std::string& cell, int c) const;
    int get();
    bool fill();

    std::ifstream file_;
    CsvForm form_;
    std::array<char, 65'536> buffer_;
    std::size_t position_ = 0, filled_ = 0;
    std::int64_t line_ = 1, rowLine_ = 0;
};

/// A row with more values than a row may have.
struct TooManyColumns : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace FendaMaestros

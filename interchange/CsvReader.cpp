#include "interchange/CsvReader.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::array separators{';', '\t', ','};
/// The rows that tell the separator.
constexpr int rowsLookedAt = 20;

/// U+0080 to U+009F of Windows-1252; 0 where it has no character.
constexpr std::array<char32_t, 32> windowsCharacters{0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                                     0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char32_t fromWindows(unsigned char byte) { return byte >= 0x80 && byte < 0xA0 ? windowsCharacters[byte - 0x80] : byte; }

std::runtime_error refusal(const std::string& path, const std::string& why) {
    return std::runtime_error("El fichero " + fs::path(path).filename().string() + " " + why);
}

/// Whether bytes that come in pieces are UTF-8.
class Utf8Check {
public:
    bool isUtf8() const { return valid_; }
    bool isWhole() const { return valid_ && missing_ == 0; }

    void add(unsigned char byte) {
        if (missing_ > 0) {
            valid_ &= byte >= least_ && byte <= most_;
            least_ = 0x80, most_ = 0xBF;
            --missing_;
        } else if (byte >= 0x80) {
            begin(byte);
        }
    }

private:
    /// Neither longer than need be, nor surrogates, nor beyond U+10FFFF.
    void begin(unsigned char lead) {
        valid_ &= lead >= 0xC2 && lead <= 0xF4;
        missing_ = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
        least_ = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
        most_ = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    }

    bool valid_ = true;
    int missing_ = 0;
    unsigned char least_ = 0x80, most_ = 0xBF;
};

/// What all bytes of a file together say.
struct Bytes {
    std::string beginning;
    bool text = true;  ///< none that only binary files have
    bool windows = true;
    Utf8Check utf8;
    std::int64_t lineOfFirstNonUtf8 = 0;
    std::int64_t lines = 1;
};

constexpr bool isBinary(unsigned char byte) {
    return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r' && byte != '\f' && byte != 0x1A;
}

Bytes lookThrough(std::ifstream& file) {
    Bytes bytes;
    std::array<char, 65'536> buffer;
    std::int64_t& line = bytes.lines;
    while (file.read(buffer.data(), buffer.size()), file.gcount() > 0) {
        const std::string_view block(buffer.data(), static_cast<std::size_t>(file.gcount()));
        if (bytes.beginning.empty()) bytes.beginning = block.substr(0, 8);
        for (const char c : block) {
            const auto byte = static_cast<unsigned char>(c);
            bytes.text &= !isBinary(byte);
            bytes.windows &= fromWindows(byte) != 0;
            bytes.utf8.add(byte);
            if (!bytes.utf8.isUtf8() && bytes.lineOfFirstNonUtf8 == 0) bytes.lineOfFirstNonUtf8 = line;
            if (c == '\n') ++line;
        }
        if (!bytes.text) break;
    }
    if (!bytes.utf8.isWhole() && bytes.lineOfFirstNonUtf8 == 0) bytes.lineOfFirstNonUtf8 = line;
    return bytes;
}

void requireText(const std::string& path, const Bytes& bytes) {
    const std::string_view beginning = bytes.beginning;
    if (beginning.starts_with("\xFF\xFE") || beginning.starts_with("\xFE\xFF"))
        throw refusal(path, "está en UTF-16: guárdelo como CSV en UTF-8.");
    if (beginning.starts_with("\xD0\xCF\x11\xE0"))
        throw refusal(path, "es una hoja de cálculo de un formato antiguo: guárdela como CSV.");
    if (beginning.starts_with("PK\x03\x04"))
        throw refusal(path, "es una hoja de cálculo u otro fichero comprimido: guárdelo como CSV.");
    if (!bytes.text) throw refusal(path, "no es un texto: se importan ficheros CSV.");
}

Encoding encodingOf(const std::string& path, const Bytes& bytes, std::optional<Encoding> wanted) {
    const bool utf8 = bytes.utf8.isWhole();
    const Encoding encoding = wanted.value_or(utf8 ? Encoding::Utf8 : Encoding::Windows1252);
    if (encoding == Encoding::Utf8 && !utf8)
        throw refusal(path, "no está en UTF-8 (línea " + std::to_string(bytes.lineOfFirstNonUtf8) +
                                "): pruebe con la codificación windows-1252.");
    if (encoding == Encoding::Windows1252 && !bytes.windows)
        throw refusal(path, "no es un texto en UTF-8 ni en Windows-1252.");
    return encoding;
}

struct UnclosedQuotes : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// How many of the first rows have as many values as the first one, when that has more than one.
int evenRows(const std::string& path, CsvForm form) {
    CsvReader reader(path, form);
    std::vector<std::string> cells;
    std::size_t columns = 0;
    int even = 0;
    for (int row = 0; row < rowsLookedAt && reader.next(cells); ++row) {
        if (row == 0) columns = cells.size();
        if (columns > 1 && cells.size() == columns) ++even;
    }
    return even;
}

/// Of two that fit as well, the usual one.
char guessSeparator(const std::string& path, Encoding encoding) {
    int best = 0;
    char separator = separators.front();
    std::optional<std::runtime_error> failure;
    for (const char candidate : separators) {
        try {
            const int even = evenRows(path, {encoding, candidate, 0});
            if (even > best) separator = candidate;
            best = std::max(best, even);
        } catch (const TooManyColumns&) {
            throw;
        } catch (const UnclosedQuotes& error) {
            failure = error;
        } catch (const std::runtime_error& error) {
            if (!failure) failure = error;
        }
    }
    if (best == 0 && failure) throw std::runtime_error(*failure);
    return separator;
}

bool isBlank(const std::vector<std::string>& cells) {
    return std::ranges::all_of(cells, [](const std::string& cell) { return text::trim(cell).empty(); });
}

}  // namespace

CsvForm surveyCsv(const std::string& path, std::optional<Encoding> encoding, std::optional<char> separator) {
    std::error_code error;
    if (fs::is_directory(path, error)) throw refusal(path, "es una carpeta.");
    // A pipe is read once, and would be waited for.
    if (!fs::is_regular_file(path, error)) throw refusal(path, "no se puede abrir.");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw refusal(path, "no se puede abrir.");
    const std::uintmax_t size = fs::file_size(path, error);
    if (size == 0) throw refusal(path, "está vacío.");
    if (size > largest::file)
        throw refusal(path, "tiene " + std::to_string(size / 1'048'576) + " MB, y se importan ficheros de hasta " +
                                std::to_string(largest::file / 1'048'576) + " MB.");
    const Bytes bytes = lookThrough(file);
    requireText(path, bytes);
    CsvForm form{encodingOf(path, bytes, encoding), separator.value_or(';'), bytes.lines};
    if (!separator) form.separator = guessSeparator(path, form.encoding);
    return form;
}

CsvReader::CsvReader(const std::string& path, CsvForm form) : file_(path, std::ios::binary), form_(form) {
    if (!file_) throw refusal(path, "no se puede abrir.");
    fill();
    if (std::string_view(buffer_.data(), filled_).starts_with(byteOrderMark)) position_ = byteOrderMark.size();
}

bool CsvReader::next(std::vector<std::string>& cells) {
    do {
        if (!readRow(cells)) return false;
    } while (isBlank(cells));
    return true;
}

bool CsvReader::readRow(std::vector<std::string>& cells) {
    rowLine_ = line_;
    int c = get();
    if (c == end) return false;
    std::size_t count = 0;
    for (;;) {
        if (count == largest::columns)
            throw TooManyColumns("La línea " + std::to_string(rowLine_) + " tiene más de " +
                                 std::to_string(largest::columns) + " columnas.");
        if (cells.size() == count) cells.emplace_back();
        std::string& cell = cells[count++];
        cell.clear();
        c = readCell(cell, c);
        if (c != form_.separator) break;
        c = get();
    }
    cells.resize(count);
    return true;
}

int CsvReader::readCell(std::string& cell, int c) {
    if (c == '"') c = readQuoted(cell);
    while (c != form_.separator && c != '\n' && c != '\r' && c != end) {
        put(cell, c);
        if (cell.size() > largest::cell)
            throw std::runtime_error("La línea " + std::to_string(rowLine_) + " tiene un valor de más de " +
                                     std::to_string(largest::cell) + " caracteres.");
        c = get();
    }
    if (c != '\r') return c;
    if (position_ < filled_ || fill()) {
        if (buffer_[position_] == '\n')
            get();
        else
            ++line_;
    }
    return '\n';
}

int CsvReader::readQuoted(std::string& cell) {
    const std::int64_t opened = line_;
    for (;;) {
        int c = get();
        if (c == '"') {
            c = get();
            if (c != '"') return c;
        }
        if (c == end || cell.size() > largest::cell)
            throw UnclosedQuotes("Las comillas que se abren en la línea " + std::to_string(opened) + " no se cierran.");
        put(cell, c);
    }
}

void CsvReader::put(std::string& cell, int c) const {
    if (c >= 0x80 && form_.encoding == Encoding::Windows1252)
        text::append(cell, fromWindows(static_cast<unsigned char>(c)));
    else
        cell.push_back(static_cast<char>(c));
}

int CsvReader::get() {
    if (position_ == filled_ && !fill()) return end;
    const auto byte = static_cast<unsigned char>(buffer_[position_++]);
    if (byte == '\n') ++line_;
    return byte;
}

bool CsvReader::fill() {
    file_.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    filled_ = static_cast<std::size_t>(file_.gcount());
    position_ = 0;
    return filled_ > 0;
}

}  // namespace FendaMaestros

#include "platform/sqlite/FileNames.h"

#include <charconv>

#include "toolkit/Text.h"

namespace FendaMaestros::sqlite {

namespace {

bool isUnsafe(char c) {
    constexpr std::string_view unsafe = "/\\:*?\"<>|%";
    return static_cast<unsigned char>(c) < 32 || c == 127 || unsafe.find(c) != std::string_view::npos;
}

std::string escaped(char c) {
    constexpr const char* digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return {'%', digits[byte >> 4], digits[byte & 15]};
}

/// A point in front hides a file; points and blanks at the end get lost on some systems.
bool isUnsafeAtEnds(const std::string& name, std::size_t position) {
    const char c = name[position];
    return (position == 0 && c == '.') || (position + 1 == name.size() && (c == '.' || c == ' '));
}

}  // namespace

std::string companyFileName(const std::string& company) {
    const bool shared = text::equalIgnoringCase(company + std::string(databaseExtension), sharedFileName);
    std::string file;
    for (std::size_t i = 0; i < company.size(); ++i) {
        const bool escape = isUnsafe(company[i]) || isUnsafeAtEnds(company, i) || (shared && i == 0);
        file += escape ? escaped(company[i]) : std::string(1, company[i]);
    }
    return file + std::string(databaseExtension);
}

std::string companyOfFile(const std::filesystem::path& file) {
    const auto name = file.filename().string();
    if (!name.ends_with(databaseExtension) || text::equalIgnoringCase(name, sharedFileName)) return {};
    const auto stem = name.substr(0, name.size() - databaseExtension.size());
    std::string company;
    for (std::size_t i = 0; i < stem.size(); ++i) {
        unsigned char byte = 0;
        const char* digits = stem.data() + i + 1;
        const bool escape =
            stem[i] == '%' && i + 2 < stem.size() && std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        company += escape ? static_cast<char>(byte) : stem[i];
        if (escape) i += 2;
    }
    return company;
}

std::string describe(const std::filesystem::path& file) {
    const std::string company = companyOfFile(file);
    return company.empty() ? "la base de datos común" : "la base de datos de la empresa «" + company + "»";
}

}  // namespace FendaMaestros::sqlite

#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace FendaMaestros::sqlite {

/// The file of the shared database in its folder.
inline constexpr const char* sharedFileName = "KXComun.db";
inline constexpr std::string_view databaseExtension = ".db";

/// The file of a company in its folder: its name, with what a file name cannot carry (separators, control characters,
/// points and blanks at its ends, the name of the shared database) written as % and two hexadecimal digits.
std::string companyFileName(const std::string& company);

/// The company of a file; "" when the file is none of a company.
std::string companyOfFile(const std::filesystem::path& file);

/// What a person knows a database as: "la base de datos de la empresa «Una»" or "la base de datos común".
std::string describe(const std::filesystem::path& file);

}  // namespace FendaMaestros::sqlite

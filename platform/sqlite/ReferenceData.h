#pragma once

#include <string>
#include <string_view>

#include "platform/sqlite/Database.h"

namespace FendaMaestros::sqlite {

/// The text of data/NAME.csv as it was when the program was built; "" when there is no such file.
std::string_view referenceData(std::string_view name);

/// Columns that every row of a file gets, and their values as literals of the engine.
struct FixedColumns {
    std::string names;
    std::string values;
};

/// Inserts every row of data/NAME.csv into a table. Its first line names the columns; values between double quotes may
/// hold commas; a text is stored as the number it spells where the column is one.
void loadReferenceData(const Database& database, const std::string& table, std::string_view name,
                       const FixedColumns& fixed = {});

}  // namespace FendaMaestros::sqlite

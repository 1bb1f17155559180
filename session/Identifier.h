#pragma once

#include <algorithm>
#include <string_view>

#include "toolkit/Text.h"

/// Names of tables and columns that the session lets into a statement: ASCII letters, digits and _, no digit in front.
namespace FendaMaestros::identifier {

constexpr bool canBegin(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }
constexpr bool belongs(char c) { return canBegin(c) || text::isDigit(c); }

constexpr bool isColumn(std::string_view name) {
    return !name.empty() && canBegin(name.front()) && std::ranges::all_of(name, belongs);
}

/// "Centro", or with the database and owner in front: "KXComun.dbo.Pais".
constexpr bool isTable(std::string_view name) {
    const auto dot = name.find('.');
    if (dot == std::string_view::npos) return isColumn(name);
    return isColumn(name.substr(0, dot)) && isTable(name.substr(dot + 1));
}

}  // namespace FendaMaestros::identifier

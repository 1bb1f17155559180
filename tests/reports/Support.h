#pragma once

#include <memory>
#include <string>
#include <vector>

#include "session/Recordset.h"
#include "toolkit/Document.h"

namespace FendaMaestros::testing {

/// Columns and rows of texts, numbers and reals.
inline std::shared_ptr<Recordset> recordset(std::vector<std::string> columns,
                                            const std::vector<std::vector<Variant>>& rows) {
    auto made = std::make_shared<Recordset>(std::move(columns));
    for (const auto& row : rows)
        for (const Variant& value : row) {
            if (const auto* whole = std::get_if<std::int64_t>(&value.storage())) made->appendInteger(*whole);
            if (const auto* real = std::get_if<double>(&value.storage())) made->appendReal(*real);
            if (const auto* text = std::get_if<std::string>(&value.storage())) made->appendText(*text);
            if (value.isNull()) made->appendNull();
        }
    return made;
}

/// The texts of a page as they are set, one a line.
inline std::string printed(const PagedDocument& document, int index) {
    std::string text;
    for (const PageText& part : document.page(index).texts) {
        text += std::to_string(part.left) + "," + std::to_string(part.top) + " " + part.font + " " +
                std::to_string(part.points) + (part.bold ? "b " : " ");
        text += (part.alignment == Alignment::Right ? ">" : "") + part.text + "\n";
    }
    return text;
}

inline bool shows(const PagedDocument& document, int index, const std::string& text) {
    for (const PageText& part : document.page(index).texts)
        if (part.text == text) return true;
    return false;
}

}  // namespace FendaMaestros::testing

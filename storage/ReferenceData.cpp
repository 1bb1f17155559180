#include "storage/ReferenceData.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace FendaMaestros::storage {

namespace {

std::string_view takeLine(std::string_view& text) {
    const auto end = std::min(text.find('\n'), text.size());
    const auto line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

std::string_view takeValue(std::string_view& line) {
    const bool quotes = line.starts_with('"');
    if (quotes) line.remove_prefix(1);
    const auto end = std::min(line.find(quotes ? '"' : ','), line.size());
    const auto value = line.substr(0, end);
    line.remove_prefix(std::min(end + (quotes ? 2 : 1), line.size()));
    return value;
}

}  // namespace

ReferenceRows::ReferenceRows(std::string_view name) : rest_(referenceData(name)) {
    if (rest_.empty()) throw std::logic_error("no reference data " + std::string(name));
    auto header = takeLine(rest_);
    while (!header.empty()) columns_.push_back(takeValue(header));
    values_.resize(columns_.size());
}

bool ReferenceRows::next() {
    if (rest_.empty()) return false;
    auto line = takeLine(rest_);
    for (auto& value : values_) value = takeValue(line);
    return true;
}

std::string_view ReferenceRows::value(std::string_view column) const {
    const auto position = std::ranges::find(columns_, column) - columns_.begin();
    return values_.at(static_cast<std::size_t>(position));
}

}  // namespace FendaMaestros::storage

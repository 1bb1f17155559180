#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace FendaMaestros {

/// A value as a database or a person gives it: null, whole number, real number or UTF-8 text.
class Variant {
public:
    using Storage = std::variant<std::monostate, std::int64_t, double, std::string>;

    Variant() = default;
    Variant(int value) : storage_(std::int64_t{value}) {}
    Variant(std::int64_t value) : storage_(value) {}
    Variant(double value) : storage_(value) {}
    Variant(std::string value) : storage_(std::move(value)) {}
    Variant(const char* value) : storage_(std::string(value)) {}

    bool isNull() const { return std::holds_alternative<std::monostate>(storage_); }
    const Storage& storage() const { return storage_; }

    /// Null gives "", numbers their digits with a decimal point and no grouping.
    std::string text() const;
    /// Null and texts that are no number give 0; reals are rounded to the nearest whole number, texts are read up to
    /// their first character that no number has.
    std::int64_t integer() const;
    /// As integer(), without rounding.
    double real() const;

    bool operator==(const Variant&) const = default;

private:
    Storage storage_;
};

}  // namespace FendaMaestros

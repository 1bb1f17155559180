#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace FendaMaestros {

/// The arguments of an operation as a script writes them, in the operation's order; those left out take their default.
class Arguments {
public:
    Arguments() = default;
    explicit Arguments(std::vector<std::string> texts) : texts_(std::move(texts)) {}

    std::size_t count() const { return texts_.size(); }
    std::string text(std::size_t index, std::string absent = {}) const;
    /// "sí" or "no", whatever case and accent, or 1 or 0. Throws std::invalid_argument, in Spanish, for anything else.
    bool flag(std::size_t index, bool absent) const;
    /// A whole number of 16 bits. Throws std::invalid_argument, in Spanish, for anything else.
    std::int16_t number(std::size_t index, std::int16_t absent) const;
    /// The identity of a row, 0 when it is left out. Throws as number().
    std::int32_t identity(std::size_t index) const;

private:
    std::vector<std::string> texts_;
};

}  // namespace FendaMaestros

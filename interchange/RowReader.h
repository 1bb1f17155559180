#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace FendaMaestros {

/// The rows of a file as texts, one after the other.
class RowReader {
public:
    virtual ~RowReader() = default;

    /// Goes on to the next row in which something is written and puts its texts into `cells`; false behind the last
    /// one. Throws std::runtime_error, in Spanish, when what follows is no row.
    virtual bool next(std::vector<std::string>& cells) = 0;
    /// The line in which the current row begins, from 1 on.
    virtual std::int64_t line() const = 0;
    /// About how many rows there are; 0 when nothing is known.
    virtual std::int64_t expectedRows() const { return 0; }
};

/// What a file may have at most: more is none that a person keeps accounts in.
namespace largest {
inline constexpr std::uintmax_t file = std::uintmax_t{256} * 1024 * 1024;  ///< bytes
inline constexpr std::size_t columns = 256;
inline constexpr std::size_t cell = std::size_t{64} * 1024;  ///< bytes
inline constexpr std::int64_t rows = 500'000;
}  // namespace largest

}  // namespace FendaMaestros

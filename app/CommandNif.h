#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace FendaMaestros {

/// Where the identifiers come from: fills the buffer with up to `size` bytes, 0 at the end. It may give fewer than
/// there will be, as a terminal does.
using ByteSource = std::function<std::size_t(char* buffer, std::size_t size)>;
using ByteSink = std::function<void(std::string_view bytes)>;

/// Longest identifier of a stream, in bytes of its normal form; of a longer one only the beginning is shown.
inline constexpr std::size_t longestIdentifier = 65'536;

/// What is written for each identifier, a line.
enum class NifOutput {
    Verdict,      ///< its normal form, a tab and "válido" or "no válido"
    Explanation,  ///< the same, then behind tabs today's verdict, what it is, what is wrong and the rules that say so
    Json          ///< an object with all of that; null for what is not known
};

/// True when all are valid.
bool checkIdentifiers(const std::vector<std::string>& identifiers, const ByteSink& write,
                      NifOutput output = NifOutput::Verdict);
/// As above for identifiers one a line, as they come: the verdicts on what has been read are written before more is
/// asked for, and memory does not grow with the stream. An empty line is an empty identifier; the last line may lack
/// its end.
bool checkIdentifiers(const ByteSource& read, const ByteSink& write, NifOutput output = NifOutput::Verdict);

/// `fenda nif`: the identifiers given, or standard input when there are none. Returns the exit status: 0 all valid, 1
/// some not. Throws std::runtime_error, in Spanish, when standard input or output fails.
int runNif(const std::vector<std::string>& identifiers, NifOutput output);

}  // namespace FendaMaestros

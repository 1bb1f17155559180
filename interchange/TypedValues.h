#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace FendaMaestros {

/// What a text of a file is read as.
struct ReadText {
    std::string value = {};
    std::string note = {};  ///< what a person should know of it, "" for nothing
    std::string why = {};   ///< why it cannot be taken, "" when it can
};

/// The code of a sub-account of so many digits, completed as where one is typed: 43,5 or 43.5 is 43000005. Blanks, the
/// points between thousands and decimals that are zero go from a code that is whole. One that a spreadsheet has
/// rounded, and one that asks for the next free code, are refused.
ReadText readAccountCode(const std::string& typed, std::size_t digits);

/// A tax document as the register takes it, with its type: one that begins with a digit is a N.I.F. and gets its
/// letter, the others their normal form; one of type "Otros" stays as it is, in capitals. Without a type it is the one
/// that the document looks like. `typed` is not empty.
struct ReadDocument {
    std::string document;
    int type;
    std::string note;
    std::string why;
};
ReadDocument readDocument(const std::string& typed, std::optional<int> type);

/// A type of document by its name, as "C.I.F." or "nie", or its number; nothing for another word.
std::optional<int> readDocumentType(const std::string& typed);
/// Its name; the number itself when it has none.
std::string documentTypeName(int type);

/// "Sí", "activa", "1" and the like, and their contraries; nothing for another word.
std::optional<bool> readYesOrNo(const std::string& typed);

}  // namespace FendaMaestros

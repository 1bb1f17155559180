#include "interchange/TypedValues.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "chart/CodigosCuenta.h"
#include "interchange/Fields.h"
#include "taxid/Explicacion.h"
#include "taxid/NifRecord.h"
#include "taxid/Validacion.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr std::array documentTypes{"C.I.F.", "N.I.F.", "N.I.E.", "Otros"};
constexpr std::string_view nonBreakingBlank = "\u00A0";

std::string quoted(const std::string& text) { return "«" + text + "»"; }

std::size_t digitsAt(std::string_view text, std::size_t at) {
    std::size_t count = 0;
    while (at + count < text.size() && text::isDigit(text[at + count])) ++count;
    return count;
}

bool isDecimalSign(char c) { return c == '.' || c == ','; }

/// "4.3E+07", as spreadsheets write numbers that are too wide for their column.
bool isScientific(std::string_view text) {
    std::size_t at = digitsAt(text, 0);
    if (at == 0) return false;
    if (at < text.size() && isDecimalSign(text[at])) at += 1 + digitsAt(text, at + 1);
    if (at == text.size() || (text[at] != 'e' && text[at] != 'E')) return false;
    if (++at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    return digitsAt(text, at) > 0 && at + digitsAt(text, at) == text.size();
}

constexpr const char* digitsLost =
    " es un número que una hoja de cálculo ha redondeado, y sus cifras se han perdido: dé a la columna formato de "
    "texto "
    "y vuelva a guardar el fichero";

/// Without the zeros behind a decimal sign; as it is when there are others.
std::string withoutZeroDecimals(const std::string& text) {
    const std::size_t whole = digitsAt(text, 0);
    if (whole == 0 || whole + 1 >= text.size() || !isDecimalSign(text[whole])) return text;
    return text.find_first_not_of('0', whole + 1) == std::string::npos ? text.substr(0, whole) : text;
}

/// Whether points stand before every three digits from the right and nowhere else.
bool hasThousandsPoints(std::string_view text) {
    std::size_t at = digitsAt(text, 0);
    if (at == 0 || at > 3 || at == text.size()) return false;
    for (; at < text.size(); at += 4)
        if (text[at] != '.' || digitsAt(text, at + 1) < 3) return false;
    return at == text.size();
}

/// What a number's format adds to a code that is whole.
std::string withoutNumberFormat(const std::string& typed, std::size_t digits) {
    std::string whole = withoutZeroDecimals(typed);
    if (whole.size() == digits && text::isNumericCode(whole)) return whole;
    const std::string joined = text::replaced(typed, ".", "");
    return hasThousandsPoints(typed) && joined.size() == digits ? joined : typed;
}

std::string withoutBlanks(const std::string& typed) {
    std::string kept = text::replaced(typed, nonBreakingBlank, "");
    std::erase(kept, ' ');
    return kept;
}

int typeOf(const std::string& document) {
    const char first = document.front();
    const bool digitFollows = document.size() > 1 && text::isDigit(document[1]);
    if (text::isDigit(first)) return documento::Nif;
    if (!digitFollows) return documento::Otros;
    if (first >= 'X' && first <= 'Z') return documento::Nie;
    if (first >= 'K' && first <= 'M') return documento::Nif;
    return first >= 'A' && first <= 'W' ? documento::Cif : documento::Otros;
}

/// The normal form, where it tells more of the type than the document does.
std::string beginning(const std::string& document) {
    if (text::isDigit(document.front())) return document;
    std::string normal = document;
    verificarCif(normal);
    return normal.empty() ? document : normal;
}

/// What today's rules have against a document, if anything.
std::string warningOn(const std::string& document) {
    const IdentifierExplanation explained = explainIdentifier(document);
    return explained.validToday ? std::string() : advice(explained);
}

}  // namespace

ReadText readAccountCode(const std::string& typed, std::size_t digits) {
    if (typed.empty()) return {.why = "Falta el código de la cuenta"};
    if (typed.size() == digits && text::isNumericCode(typed)) return {.value = typed};
    if (isScientific(typed)) return {.why = quoted(typed) + digitsLost};
    if (asksForNextCode(typed))
        return {.why = quoted(typed) + " pide el siguiente código libre: en un fichero hace falta el código entero"};
    const std::string whole = withoutNumberFormat(withoutBlanks(typed), digits);
    const std::string code = completedCode(text::replaced(whole, ".", ","), digits);
    if (!text::isNumericCode(code)) return {.why = quoted(typed) + " no es un código de cuenta"};
    if (code.size() != digits)
        return {.why = quoted(typed) + " tiene " + std::to_string(code.size()) +
                       " cifras, y las cuentas de la empresa " + std::to_string(digits)};
    return {.value = code, .note = code == typed ? "" : "se ha escrito " + quoted(typed)};
}

ReadDocument readDocument(const std::string& typed, std::optional<int> type) {
    std::string document = text::upper(typed);
    if (isScientific(document)) return {.document = {}, .type = 0, .note = {}, .why = quoted(typed) + digitsLost};
    document = withoutZeroDecimals(document);
    int read = type.value_or(typeOf(beginning(document)));
    if (read == documento::Otros) return {document, read, {}, {}};
    if (text::isDigit(document.front())) read = documento::Nif;
    std::string normal = document;
    if (read == documento::Nif) normal = conLetra(document);
    const bool valid = verificarCif(normal);
    if (normal.empty()) return {.document = {}, .type = 0, .note = {}, .why = quoted(typed) + " no es un documento"};
    std::string typedForm = document;
    normalizarIdentificador(typedForm);
    std::string note;
    if (!valid)
        note = warningOn(normal);
    else if (read == documento::Nif && normal != typedForm)
        note = "el NIF es " + normal + ", y no " + typedForm;
    return {normal, read, note, {}};
}

std::optional<int> readDocumentType(const std::string& typed) {
    if (typed.empty()) return std::nullopt;
    const std::string word = plainWord(typed);
    for (std::size_t i = 0; i < documentTypes.size(); ++i)
        if (word == plainWord(documentTypes[i]) || word == std::to_string(i)) return static_cast<int>(i);
    if (word == "otro" || word == "otros") return documento::Otros;
    if (word == "dni") return documento::Nif;
    return std::nullopt;
}

std::string documentTypeName(int type) {
    if (type < 0 || type >= static_cast<int>(documentTypes.size())) return std::to_string(type);
    return documentTypes[static_cast<std::size_t>(type)];
}

std::optional<bool> readYesOrNo(const std::string& typed) {
    static constexpr std::array yes{"si", "s", "1", "activa", "activo", "verdadero", "true", "x"};
    static constexpr std::array no{"no", "n", "0", "inactiva", "inactivo", "falso", "false", "baja"};
    const std::string word = plainWord(typed);
    if (std::ranges::find(yes, word) != yes.end()) return true;
    if (std::ranges::find(no, word) != no.end()) return false;
    return std::nullopt;
}

}  // namespace FendaMaestros

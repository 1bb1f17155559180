#include "interchange/IdentityRows.h"

#include <algorithm>
#include <array>

#include "interchange/TypedValues.h"
#include "taxid/ClavesRetencion.h"
#include "toolkit/Controls.h"
#include "toolkit/Text.h"
#include "ui/CodedList.h"
#include "ui/Csv.h"

namespace FendaMaestros {

namespace {

using enum ExchangeField;

/// Texts that are stored as they are written, and how many characters the screen takes.
struct TextField {
    ExchangeField field;
    std::string NifRecord::*member;
    std::size_t characters;
};
constexpr std::array textFields{
    TextField{Name, &NifRecord::nombre, 100},
    TextField{Surname1, &NifRecord::apellido1, 100},
    TextField{Surname2, &NifRecord::apellido2, 100},
    TextField{Street, &NifRecord::via, 100},
    TextField{Number, &NifRecord::numero, 4},
    TextField{Staircase, &NifRecord::escalera, 2},
    TextField{Floor, &NifRecord::piso, 2},
    TextField{Door, &NifRecord::puerta, 2},
    TextField{Town, &NifRecord::poblacion, 100},
    TextField{Telephone, &NifRecord::telefono, 15},
    TextField{Fax, &NifRecord::fax, 15},
    TextField{Mobile, &NifRecord::movil, 15},
    TextField{Email, &NifRecord::correo, 50},
};
/// Codes, and texts with rules of their own.
struct CodeField {
    ExchangeField field;
    std::string NifRecord::*member;
};
constexpr std::array codeFields{
    CodeField{Document, &NifRecord::documento},
    CodeField{StreetType, &NifRecord::tipoVia},
    CodeField{PostalCode, &NifRecord::codigoPostal},
    CodeField{Province, &NifRecord::provincia},
    CodeField{Country, &NifRecord::pais},
    CodeField{Key, &NifRecord::claveRetencion},
    CodeField{Subkey, &NifRecord::subclave},
};

constexpr std::size_t longestDocument = 100, longestProvince = 50, longestPostalCode = 5;

std::string quoted(const std::string& text) { return "«" + text + "»"; }

/// Whether the lists of keys (see jCargaClavesRetencion) have this code behind their first item, that of the fiscal
/// year or those of years before it: what a company has kept from them is not lost on its way.
bool isListed(const std::string& of, std::int16_t fiscalYear, std::size_t characters, const std::string& code) {
    constexpr std::int16_t firstYear = 2008, lastYear = 2012;
    for (std::int16_t year = std::min(fiscalYear, lastYear); year >= firstYear; --year) {
        ComboBox keys;
        jCargaClavesRetencion(keys, of, year, false);
        if (codedList::position(keys, characters, code) >= 0) return true;
    }
    return false;
}

/// Takes the code, as long as it is stored, of what was typed; what is not listed is wrong.
void fillCode(std::string& code, std::size_t length, const std::string& typed, const CodeList& list, const char* what,
              IdentityRows::Taken& taken) {
    if (typed.empty() || typed == code) return;
    if (const auto* entry = list.find(typed))
        code = text::left(entry->code, length);
    else
        addSentence(taken.why, std::string(what) + " " + quoted(typed) + " no se conoce");
}

}  // namespace

std::string RowCells::operator[](ExchangeField field) const {
    const int column = columns_.columnOf(field);
    if (column == ColumnMap::none || static_cast<std::size_t>(column) >= cells_.size()) return {};
    const std::string& cell = cells_[static_cast<std::size_t>(column)];
    return text::trim(unshieldedText(cell));
}

void addSentence(std::string& to, const std::string& sentence) {
    if (!sentence.empty()) to.append(to.empty() ? "" : "; ").append(sentence);
}

void requireFits(const std::string& value, std::string_view caption, std::size_t characters, std::string& why) {
    if (value.size() > characters && text::length(value) > characters)
        addSentence(why, std::string(caption) + ": más de " + std::to_string(characters) + " caracteres");
    // Most texts have no byte that a control character could begin with.
    const auto isSuspect = [](char c) { return (c >= 0 && c < ' ') || c == '\x7F' || c == '\xC2' || c == '\xE2'; };
    if (std::ranges::none_of(value, isSuspect)) return;
    const auto isRefused = [](char32_t c) { return text::isControl(c) && c != '\t' && c != '\r' && c != '\n'; };
    if (std::ranges::any_of(text::characters(value), isRefused))
        addSentence(why, std::string(caption) + ": caracteres que no se pueden escribir");
}

std::string textOf(ExchangeField field, const NifRecord& identity) {
    if (field == DocumentType) return documentTypeName(identity.tipoDocumento);
    for (const TextField& known : textFields)
        if (known.field == field) return identity.*known.member;
    for (const CodeField& known : codeFields)
        if (known.field == field) return identity.*known.member;
    return {};
}

/// The entry that a row goes on from.
struct IdentityRows::Base {
    const NifRecord* record = nullptr;  ///< nothing for a new one
    int planned = -1;
    bool isNew = false;
    std::string key;
};

void IdentityRows::reserve(std::size_t identities) {
    planned_.reserve(identities);
    byKey_.reserve(identities);
}

IdentityRows::Taken IdentityRows::take(const RowCells& row, std::int64_t line, const std::string& otherwise) {
    Taken taken;
    Base base;
    NifRecord record;
    readRecord(record, row, taken, base);
    if (!taken.why.empty()) return taken;
    fill(record, row, taken);
    if (base.isNew) complete(record, otherwise);
    if (record.tipoDocumento == documento::Cif) record.apellido1.clear(), record.apellido2.clear();
    if (record.documento.empty() && record.nombre.empty()) addSentence(taken.why, "Faltan el documento y el nombre");
    if (!taken.why.empty()) return taken;

    taken.isNew = base.isNew;
    if (!base.isNew) taken.changes = changes(*base.record, record);
    if (base.planned >= 0) {
        taken.planned = static_cast<std::size_t>(base.planned);
        taken.repeated = true;
        return taken;
    }
    taken.planned = planned_.size();
    byKey_.emplace(std::move(base.key), taken.planned);
    Planned& planned = planned_.emplace_back();
    planned.record = std::move(record);
    planned.changed = !base.isNew && !taken.changes.empty();
    planned.line = line;
    return taken;
}

/// The entry with the document of a row and its type, as far as it is known already.
void IdentityRows::readRecord(NifRecord& record, const RowCells& row, Taken& taken, Base& base) {
    const std::string typedType = row[DocumentType];
    const std::optional<int> type = readDocumentType(typedType);
    if (!typedType.empty() && !type)
        addSentence(taken.why, "el tipo de documento " + quoted(typedType) + " no se conoce");
    if (const std::string typed = row[Document]; !typed.empty()) {
        const ReadDocument read = readDocument(typed, type);
        addSentence(taken.why, read.why);
        addSentence(taken.note, read.note);
        requireFits(read.document, "NIF", longestDocument, taken.why);
        record.documento = read.document;
        record.tipoDocumento = read.type;
    } else {
        record.tipoDocumento = type.value_or(documento::Cif);
        record.nombre = row[Name], record.apellido1 = row[Surname1], record.apellido2 = row[Surname2];
    }
    base.key = identityKey(record);
    if (const auto earlier = byKey_.find(base.key); earlier != byKey_.end()) {
        base.planned = static_cast<int>(earlier->second);
        base.record = &planned_[earlier->second].record;
    } else {
        base.record = state_.identity(base.key);
    }
    base.isNew = !base.record;
    if (base.isNew) {
        record.pais = state_.homeCountry;
        return;
    }
    const int typedAs = record.tipoDocumento;
    record = *base.record;
    if (!typedType.empty() && type) record.tipoDocumento = typedAs;
}

void IdentityRows::fill(NifRecord& record, const RowCells& row, Taken& taken) const {
    for (const auto& [field, member, characters] : textFields) {
        std::string typed = row[field];
        if (typed.empty()) continue;
        requireFits(typed, captionOf(kind_, field), characters, taken.why);
        record.*member = std::move(typed);
    }
    fillStreetType(record, row, taken);
    fillCountry(record, row, taken);
    fillPostalCode(record, row, taken);
    fillProvince(record, row, taken);
    fillKeys(record, row, taken);
}

void IdentityRows::fillStreetType(NifRecord& record, const RowCells& row, Taken& taken) const {
    fillCode(record.tipoVia, 2, row[StreetType], state_.streetTypes, "el tipo de vía", taken);
}

void IdentityRows::fillCountry(NifRecord& record, const RowCells& row, Taken& taken) const {
    fillCode(record.pais, 3, row[Country], state_.countries, "el país", taken);
}

/// A spreadsheet takes the zero away that a Spanish postal code may begin with.
void IdentityRows::fillPostalCode(NifRecord& record, const RowCells& row, Taken& taken) const {
    std::string typed = row[PostalCode];
    if (typed.empty()) return;
    if (state_.isHome(record) && typed.size() == longestPostalCode - 1 && text::isNumericCode(typed)) {
        typed.insert(0, 1, '0');
        addSentence(taken.note, "el C.P. es " + typed);
    }
    requireFits(typed, "C.P.", longestPostalCode, taken.why);
    record.codigoPostal = std::move(typed);
}

void IdentityRows::fillProvince(NifRecord& record, const RowCells& row, Taken& taken) const {
    const std::string typed = row[Province];
    if (typed.empty() || typed == record.provincia) return;
    if (!state_.isHome(record)) {
        requireFits(typed, "Provincia", longestProvince, taken.why);
        record.provincia = typed;
        return;
    }
    const auto* entry = state_.provinces.find(typed);
    if (!entry && text::length(record.codigoPostal) == longestPostalCode) {
        entry = state_.provinces.find(text::left(record.codigoPostal, 2));
        if (entry) addSentence(taken.note, "la provincia es la del C.P., " + entry->name + ", y no " + quoted(typed));
    }
    if (entry)
        record.provincia = entry->code;
    else
        addSentence(taken.why, "la provincia " + quoted(typed) + " no se conoce");
}

/// A key that is not listed counts as none.
void IdentityRows::fillKeys(NifRecord& record, const RowCells& row, Taken& taken) const {
    const std::string key = text::upper(text::left(row[Key], 1));
    if (!key.empty() && key != record.claveRetencion) {
        if (isListed("-", state_.fiscalYear, 1, key))
            record.claveRetencion = key;
        else
            addSentence(taken.note, "la clave de retención " + quoted(key) + " no existe");
    }
    std::string subkey = text::left(row[Subkey], 2);
    if (subkey.size() == 1) subkey.insert(0, 1, '0');
    if (subkey.empty() || subkey == record.subclave) return;
    if (!record.claveRetencion.empty() && isListed(record.claveRetencion, state_.fiscalYear, 2, subkey))
        record.subclave = subkey;
    else
        addSentence(taken.note, "la subclave " + quoted(subkey) + " no existe");
}

/// What a new entry has on the screen without a key being pressed for it.
void IdentityRows::complete(NifRecord& record, const std::string& otherwise) const {
    if (record.nombre.empty()) record.nombre = text::left(otherwise, 100);
    const bool postalCode = text::length(record.codigoPostal) == longestPostalCode;
    if (postalCode && record.poblacion.empty()) record.poblacion = state_.townOf(record.pais, record.codigoPostal);
    if (!state_.isHome(record) || !record.provincia.empty()) return;
    const auto* entry = postalCode ? state_.provinces.find(text::left(record.codigoPostal, 2)) : nullptr;
    record.provincia = entry ? entry->code : state_.ownProvince;
}

std::vector<FieldChange> IdentityRows::changes(const NifRecord& from, const NifRecord& to) const {
    if (from == to) return {};
    std::vector<FieldChange> found;
    for (const ExchangeField field : fieldsOf(ExchangeKind::Identities)) {
        std::string before = textOf(field, from), after = textOf(field, to);
        if (before != after)
            found.push_back({std::string(captionOf(kind_, field)), std::move(before), std::move(after)});
    }
    return found;
}

}  // namespace FendaMaestros

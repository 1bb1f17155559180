#include "interchange/Fields.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>
#include <type_traits>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

using enum ExchangeField;

/// Headings in small letters and digits alone, a blank between two of them.
struct FieldNames {
    ExchangeField field;
    std::string_view word;
    std::string_view caption;
    std::string_view headings;
};

constexpr std::array accountNames{
    FieldNames{
        Account, "cuenta", "Cuenta",
        "cuenta codigo subcuenta cta cod codcuenta codigocuenta codigodecuenta codigocta numerocuenta "
        "numerodecuenta ncuenta numcuenta cuentacontable codigocontable codigosubcuenta nosubcuenta subcta codcliente "
        "codigocliente codigodecliente codproveedor codigoproveedor codigodeproveedor"},
    FieldNames{AccountName, "nombre", "Nombre",
               "nombre descripcion denominacion titulo concepto titular nombrecuenta nombredelacuenta nombredecuenta "
               "descripcioncuenta titulocuenta titulodelacuenta titulosubcuenta titulodelasubcuenta nombresubcuenta "
               "nombredelasubcuenta desc"},
    FieldNames{Active, "activa", "Activa", "activa activo estado"},
    FieldNames{Centre, "centro", "Centro", "centro centrodetrabajo centrotrabajo centrodecoste"},
    FieldNames{Department, "departamento", "Departamento", "departamento dpto depto"},
    FieldNames{Mass, "masa", "Masa patrimonial", "masapatrimonial masa"},
    FieldNames{Linked, "asociada", "Cuenta asociada",
               "cuentaasociada asociada contrapartida contracuenta cuentadeingresogasto ingresogasto "
               "cuentadeingresogastoasociada"},
    FieldNames{Withholding, "irpf", "Cuenta de IRPF", "cuentadeirpf cuentairpf irpf cuentadeirpfasociada"},
};

constexpr std::array identityNames{
    FieldNames{Document, "nif", "NIF",
               "nif cif dni nie cifnif nifcif dninif nifdni cifdni dnicif nifcifnie documento numerodocumento "
               "ndocumento identificacionfiscal numerofiscal nifasociado vat idfiscal"},
    FieldNames{DocumentType, "tipodocumento", "Tipo de documento", "tipodedocumento tipodocumento tipodoc tipodenif"},
    FieldNames{Name, "razonsocial", "Razón social",
               "razonsocial nombreorazonsocial nombrerazonsocial razonsocialnombre nombrefiscal empresa sociedad "
               "cliente proveedor"},
    FieldNames{Surname1, "apellido1", "Primer apellido", "primerapellido apellido1 1apellido apellidos apellido"},
    FieldNames{Surname2, "apellido2", "Segundo apellido", "segundoapellido apellido2 2apellido"},
    FieldNames{StreetType, "tipovia", "Tipo de vía", "tipodevia tipovia siglas sigla sg"},
    FieldNames{Street, "direccion", "Dirección",
               "direccion domicilio calle via nombredelavia nombrevia direccionfiscal domiciliofiscal dir"},
    FieldNames{Number, "numero", "Número", "numero num n numerodelavia"},
    FieldNames{Staircase, "escalera", "Escalera", "escalera esc escal"},
    FieldNames{Floor, "piso", "Piso", "piso planta"},
    FieldNames{Door, "puerta", "Puerta", "puerta pta pue"},
    FieldNames{PostalCode, "cp", "C.P.", "cp codigopostal codpostal cpostal postal dp distritopostal"},
    FieldNames{Town, "poblacion", "Población", "poblacion localidad municipio ciudad pob pobl pobla"},
    FieldNames{Province, "provincia", "Provincia", "provincia prov"},
    FieldNames{Country, "pais", "País", "pais nacion codigopais"},
    FieldNames{Telephone, "telefono", "Teléfono", "telefono tel tfno telf tlf tfn telefono1 tel1 telefonofijo fijo"},
    FieldNames{Mobile, "movil", "Móvil", "movil telefonomovil telmovil celular telefono2 tel2"},
    FieldNames{Fax, "fax", "Fax", "fax telefax"},
    FieldNames{Email, "correo", "E-mail", "email correo correoelectronico mail emails direcciondecorreo"},
    FieldNames{Key, "clave", "Clave de retención", "clavederetencion claveretencion clave"},
    FieldNames{Subkey, "subclave", "Subclave", "subclave subclavederetencion"},
};

constexpr auto orderOf(const auto& names) {
    std::array<ExchangeField, std::tuple_size_v<std::remove_cvref_t<decltype(names)>>> fields{};
    std::ranges::transform(names, fields.begin(), &FieldNames::field);
    return fields;
}

constexpr auto identityOrder = orderOf(identityNames);
constexpr auto accountOrder = [] {
    std::array<ExchangeField, accountNames.size() + identityNames.size()> fields{};
    const auto identities = std::ranges::copy(orderOf(accountNames), fields.begin()).out;
    std::ranges::copy(identityOrder, identities);
    return fields;
}();

/// In a file of identities their names are what a file of accounts has for those of the accounts.
bool isPlainName(ExchangeKind kind, ExchangeField field) { return kind == ExchangeKind::Identities && field == Name; }

const FieldNames& namesOf(ExchangeField field) {
    const auto index = static_cast<std::size_t>(field);
    return index < accountNames.size() ? accountNames[index] : identityNames[index - accountNames.size()];
}

bool isAmong(std::string_view words, std::string_view word) {
    for (std::size_t at = 0; (at = words.find(word, at)) != std::string_view::npos; ++at) {
        const bool begins = at == 0 || words[at - 1] == ' ';
        const std::size_t behind = at + word.size();
        if (begins && (behind == words.size() || words[behind] == ' ')) return true;
    }
    return false;
}

bool names(ExchangeKind kind, ExchangeField field, const std::string& heading) {
    if (heading.empty()) return false;
    return isAmong(namesOf(field).headings, heading) ||
           (isPlainName(kind, field) && isAmong(namesOf(AccountName).headings, heading));
}

/// The position of a column that a person names.
int columnNamed(std::string_view column, const std::vector<std::string>& headings, std::size_t columns) {
    if (text::isNumericCode(column) && column.size() < 4) {
        const int position = std::stoi(std::string(column));
        if (position >= 1 && static_cast<std::size_t>(position) <= columns) return position - 1;
    }
    for (std::size_t i = 0; i < headings.size(); ++i)
        if (plainWord(headings[i]) == plainWord(column)) return static_cast<int>(i);
    throw std::invalid_argument("El fichero no tiene la columna «" + std::string(column) + "».");
}

ExchangeField fieldNamed(ExchangeKind kind, const std::string& word) {
    std::string known;
    for (const ExchangeField field : fieldsOf(kind)) {
        if (word == wordOf(kind, field)) return field;
        known.append(known.empty() ? "" : ", ").append(wordOf(kind, field));
    }
    throw std::invalid_argument("No se conoce el dato «" + word + "»; los datos son " + known + ".");
}

}  // namespace

std::string plainWord(std::string_view word) {
    std::string kept = text::folded(word);
    std::erase_if(kept, [](char c) { return !text::isDigit(c) && (c < 'a' || c > 'z'); });
    return kept;
}

std::span<const ExchangeField> fieldsOf(ExchangeKind kind) {
    if (kind == ExchangeKind::Accounts) return accountOrder;
    return identityOrder;
}

std::string_view captionOf(ExchangeKind kind, ExchangeField field) {
    return isPlainName(kind, field) ? "Nombre" : namesOf(field).caption;
}

std::string_view wordOf(ExchangeKind kind, ExchangeField field) {
    return isPlainName(kind, field) ? "nombre" : namesOf(field).word;
}

bool ColumnMap::uses(int column) const { return std::ranges::find(columns_, column) != columns_.end(); }

ColumnMap matchHeadings(ExchangeKind kind, const std::vector<std::string>& headings) {
    ColumnMap map;
    for (std::size_t column = 0; column < headings.size(); ++column) {
        const std::string heading = plainWord(headings[column]);
        for (const ExchangeField field : fieldsOf(kind))
            if (!map.has(field) && names(kind, field, heading)) {
                map.set(field, static_cast<int>(column));
                break;
            }
    }
    // A company's name is the account's where there is no other.
    if (kind == ExchangeKind::Accounts && !map.has(AccountName) && map.has(Name)) {
        map.set(AccountName, map.columnOf(Name));
        map.set(Name, ColumnMap::none);
    }
    return map;
}

ColumnMap usualColumns(ExchangeKind kind, std::size_t columns) {
    const std::vector<ExchangeField> usual =
        kind == ExchangeKind::Accounts ? std::vector{Account, AccountName, Document} : std::vector{Document, Name};
    ColumnMap map;
    for (std::size_t i = 0; i < std::min(columns, usual.size()); ++i) map.set(usual[i], static_cast<int>(i));
    return map;
}

void assignColumns(ColumnMap& map, ExchangeKind kind, std::string_view typed, const std::vector<std::string>& headings,
                   std::size_t columns) {
    while (!typed.empty()) {
        const std::string_view assignment = typed.substr(0, typed.find(','));
        typed.remove_prefix(std::min(typed.size(), assignment.size() + 1));
        const std::size_t equals = assignment.find('=');
        if (equals == std::string_view::npos)
            throw std::invalid_argument("Las columnas se indican como cuenta=1,nombre=Titular, y no «" +
                                        std::string(assignment) + "».");
        const ExchangeField field = fieldNamed(kind, plainWord(assignment.substr(0, equals)));
        const std::string column = text::trim(assignment.substr(equals + 1));
        map.set(field, column.empty() ? ColumnMap::none : columnNamed(column, headings, columns));
    }
}

}  // namespace FendaMaestros

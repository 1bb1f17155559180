#include "interchange/CompanyState.h"

#include <utility>

#include "chart/CodigosCuenta.h"
#include "interchange/Fields.h"
#include "taxid/Explicacion.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr std::int64_t homeCountryCode = 11;

/// Other names of provinces and of kinds of street, as lists write them.
constexpr std::pair<std::string_view, std::string_view> provinceAliases[] = {
    {"araba", "1"},      {"alacant", "3"},      {"baleares", "7"},  {"islas baleares", "7"}, {"castello", "12"},
    {"la coruna", "15"}, {"coruna", "15"},      {"gerona", "17"},   {"guipuzcoa", "20"},     {"lerida", "25"},
    {"rioja", "26"},     {"orense", "32"},      {"tenerife", "38"}, {"palmas", "35"},        {"vizcaya", "48"},
    {"nafarroa", "31"},  {"gran canaria", "35"}};
constexpr std::pair<std::string_view, std::string_view> streetAliases[] = {
    {"c", "CL"},   {"avda", "AV"}, {"avd", "AV"}, {"pza", "PZ"}, {"plza", "PZ"}, {"pl", "PZ"},  {"ctra", "CR"},
    {"pso", "PS"}, {"pol", "PG"},  {"urb", "UR"}, {"rda", "RD"}, {"cno", "CM"},  {"pje", "PJ"}, {"trav", "TR"}};

std::string withoutZeros(std::string code) {
    if (text::isNumericCode(code)) code.erase(0, std::min(code.find_first_not_of('0'), code.size() - 1));
    return code;
}

std::string codeKey(std::string_view code) { return withoutZeros(plainWord(code)); }

std::string townKey(const std::string& country, const std::string& postalCode) {
    return text::trimEnd(country) + "\n" + text::trimEnd(postalCode);
}

template <class Map, class Key, class Rows>
const typename Rows::value_type* found(const Map& positions, const Key& key, const Rows& rows) {
    const auto position = positions.find(key);
    return position == positions.end() ? nullptr : &rows[position->second];
}

/// Calls `use(row)` with the recordset on each of its rows.
template <class Use>
std::shared_ptr<Recordset> eachRow(ConexionBd& connection, const std::string& sql, Use&& use) {
    auto rows = connection.Execute(sql);
    for (; !rows->Eof(); rows->MoveNext()) use(std::as_const(*rows));
    return rows;
}

void readList(ConexionBd& connection, CodeList& list, const std::string& sql, const std::string& columns) {
    eachRow(connection, sql, [&](const Recordset& row) {
        list.add({row.Fields(columns + "_Cod").Value.text(), row.Fields(columns + "_Des").Value.text(),
                  row.Fields(columns + "_Id").Value.integer()});
    });
}

}  // namespace

void CodeList::add(Entry entry) {
    const std::size_t position = entries_.size();
    if (const std::string key = codeKey(entry.code); !key.empty()) byCode_.emplace(key, position);
    if (const std::string key = plainWord(entry.name); !key.empty()) byName_.emplace(key, position);
    byId_.emplace(entry.id, position);
    entries_.push_back(std::move(entry));
}

void CodeList::alias(std::string_view word, std::string_view code) {
    if (const auto entry = byCode_.find(codeKey(code)); entry != byCode_.end())
        byName_.emplace(plainWord(word), entry->second);
}

const CodeList::Entry* CodeList::find(std::string_view typed) const {
    if (const Entry* entry = found(byCode_, codeKey(typed), entries_)) return entry;
    return found(byName_, plainWord(typed), entries_);
}

const CodeList::Entry* CodeList::byId(std::int64_t id) const { return found(byId_, id, entries_); }

std::string identityKey(const NifRecord& identity) {
    const std::string document = text::upper(text::trim(identity.documento));
    if (document.empty())
        return "\n" + text::folded(identity.nombre + "\n" + identity.apellido1 + "\n" + identity.apellido2);
    std::string key = spellingKey(document);
    return key.empty() ? document : key;
}

CompanyState::CompanyState(SesionBd& session, bool withIdentities) {
    const ParametrosEmpresa& parameters = session.Parametros();
    digits = digitosSubcuenta(parameters);
    fiscalYear = ejercicioActivo(parameters);
    plan = planEnVigor(fiscalYear);
    ownProvince = format(parameters.Item("Par_Provincia").Value.integer(), "00");
    ConexionBd& connection = *session.Conexion();
    readCodes(connection);
    readAccounts(connection);
    if (withIdentities) readIdentities(connection);
}

void CompanyState::readCodes(ConexionBd& connection) {
    readList(connection, centres, "SELECT * FROM Centro ORDER BY Centro_Id", "Centro");
    readList(connection, departments, "SELECT * FROM Dpto ORDER BY Dpto_Id", "Dpto");
    readList(connection, masses, "SELECT * FROM KXComun.dbo.Masas WHERE Masas_Plan = 2008 ORDER BY Masas_Id", "Masas");
    eachRow(connection, "Select * from KXComun.dbo.TVI", [this](const Recordset& row) {
        streetTypes.add({row.Fields("TVI_COD").Value.text(), row.Fields("TVI_NOM").Value.text()});
    });
    eachRow(connection, "Select * from KXComun.dbo.PROV", [this](const Recordset& row) {
        const std::int64_t code = row.Fields("PROV_COD").Value.integer();
        provinces.add({format(code, "00"), row.Fields("PROV_NOM").Value.text(), code});
    });
    eachRow(connection, "Select * from KXComun.dbo.PAIS ORDER BY Pais_Nom", [this](const Recordset& row) {
        const Variant code = row.Fields("Pais_Cod").Value;
        if (code.integer() == homeCountryCode) homeCountry = code.text();
        countries.add({code.text(), row.Fields("Pais_Nom").Value.text(), code.integer()});
        countries.alias(row.Fields("Pais_Aeat").Value.text(), code.text());
    });
    for (const auto& [word, code] : provinceAliases) provinces.alias(word, code);
    for (const auto& [word, code] : streetAliases) streetTypes.alias(word, code);
}

void CompanyState::readAccounts(ConexionBd& connection) {
    compared_.push_back(eachRow(connection, planCodesSql(plan), [this](const Recordset& row) {
        planCodes_.insert(text::trimEnd(row.cell(row.currentRow(), 0).text()));
    }));
    compared_.push_back(eachRow(
        connection, "SELECT PCta_Cta FROM PCta WHERE PCta_Subcuenta=0",
        [this](const auto& row) { everyPlanCode_.insert(text::trimEnd(row.cell(row.currentRow(), 0).text())); }));
    compared_.push_back(
        eachRow(connection, "SELECT * FROM PCta WHERE PCta_Subcuenta=1 ORDER BY PCta_Id", [this](const Recordset& row) {
            accounts.push_back(leerSubcuenta(row));
            accountByCode_.emplace(text::trimEnd(accounts.back().codigo), accounts.size() - 1);
            accountById_.emplace(accounts.back().id, accounts.size() - 1);
        }));
}

void CompanyState::readIdentities(ConexionBd& connection) {
    compared_.push_back(
        eachRow(connection, "SELECT * FROM KXComun.dbo.Nif ORDER BY Nif_Id", [this](const Recordset& row) {
            identities.push_back(leerNif(row));
            const NifRecord& identity = identities.back();
            identityByKey_.emplace(identityKey(identity), identities.size() - 1);
            identityById_.emplace(identity.id, identities.size() - 1);
            townByCode_.emplace(townKey(identity.pais, identity.codigoPostal), identity.poblacion);
        }));
}

bool CompanyState::sameAs(const CompanyState& other) const {
    if (compared_.size() != other.compared_.size()) return false;
    for (std::size_t i = 0; i < compared_.size(); ++i)
        if (!compared_[i]->sameContents(*other.compared_[i])) return false;
    return true;
}

const SubcuentaRecord* CompanyState::account(const std::string& code) const {
    return found(accountByCode_, code, accounts);
}

const SubcuentaRecord* CompanyState::accountOf(std::int64_t id) const { return found(accountById_, id, accounts); }

const NifRecord* CompanyState::identity(const std::string& key) const { return found(identityByKey_, key, identities); }

const NifRecord* CompanyState::identityOf(std::int64_t id) const { return found(identityById_, id, identities); }

bool CompanyState::belongsToPlan(const std::string& code) const {
    for (const std::size_t length : planLengths)
        if (planCodes_.contains(code.substr(0, length))) return true;
    return false;
}

bool CompanyState::isHome(const NifRecord& identity) const {
    return !homeCountry.empty() && text::trimEnd(identity.pais) == text::trimEnd(homeCountry);
}

std::string CompanyState::townOf(const std::string& country, const std::string& postalCode) const {
    const auto town = townByCode_.find(townKey(country, postalCode));
    return town == townByCode_.end() ? std::string() : town->second;
}

}  // namespace FendaMaestros

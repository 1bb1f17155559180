#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "chart/SubcuentaRecord.h"
#include "session/SesionBd.h"
#include "taxid/NifRecord.h"

namespace FendaMaestros {

/// Entries with a code and a name, which people write either way.
class CodeList {
public:
    struct Entry {
        std::string code;
        std::string name;
        std::int64_t id = 0;
    };

    void add(Entry entry);
    /// Another word for the entry of a code, which need not be there.
    void alias(std::string_view word, std::string_view code);
    /// By code, zeros before it apart, or by name; null when there is none.
    const Entry* find(std::string_view typed) const;
    /// Null when there is none.
    const Entry* byId(std::int64_t id) const;

private:
    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::size_t> byCode_, byName_;
    std::unordered_map<std::int64_t, std::size_t> byId_;
};

/// The document of an identity in whatever spelling, as it is looked for; its name when it has no document.
std::string identityKey(const NifRecord& identity);

/// What a company has, read once: looked up in memory from then on.
class CompanyState {
public:
    /// Without `identities` the register is taken for empty. Errors as ConexionBd::Execute and SesionBd::Parametros.
    CompanyState(SesionBd& session, bool identities);

    /// Whether accounts, plan and identities were the same when the other one was read.
    bool sameAs(const CompanyState& other) const;

    std::size_t digits = 0;
    std::int16_t fiscalYear = 0;
    std::int16_t plan = 0;
    std::string ownProvince;  ///< two digits
    std::string homeCountry;
    CodeList centres, departments, masses, streetTypes, provinces, countries;

    /// In the order of their ids.
    std::vector<SubcuentaRecord> accounts;
    std::vector<NifRecord> identities;

    /// Null when there is none.
    const SubcuentaRecord* account(const std::string& code) const;
    const SubcuentaRecord* accountOf(std::int64_t id) const;
    const NifRecord* identity(const std::string& key) const;
    const NifRecord* identityOf(std::int64_t id) const;
    bool isPlanAccount(const std::string& code) const { return everyPlanCode_.contains(code); }
    /// Whether a sub-account hangs from an account of the plan in force.
    bool belongsToPlan(const std::string& code) const;
    bool isHome(const NifRecord& identity) const;
    /// The town of the first identity with this country and postal code; "" when there is none.
    std::string townOf(const std::string& country, const std::string& postalCode) const;

private:
    void readCodes(ConexionBd& connection);
    void readAccounts(ConexionBd& connection);
    void readIdentities(ConexionBd& connection);

    std::vector<std::shared_ptr<Recordset>> compared_;
    std::unordered_set<std::string> planCodes_, everyPlanCode_;
    std::unordered_map<std::string, std::size_t> accountByCode_, identityByKey_;
    std::unordered_map<std::int64_t, std::size_t> accountById_, identityById_;
    std::unordered_map<std::string, std::string> townByCode_;
};

}  // namespace FendaMaestros

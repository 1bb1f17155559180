#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "interchange/CompanyState.h"
#include "interchange/Fields.h"
#include "interchange/IdentityRows.h"
#include "interchange/RowReader.h"
#include "ui/OutdatedPreview.h"

namespace FendaMaestros {

enum class Verdict : std::uint8_t { New, Changes, Same, Wrong };

/// What becomes of a row of a file.
struct ImportRow {
    std::int64_t line = 0;  ///< of the file, from 1 on
    Verdict verdict = Verdict::Same;
    std::string key;   ///< code or document as it is stored; as it is written when it is wrong
    std::string name;  ///< of the account or of the identity
    std::vector<FieldChange> changes = {};
    std::string note = {};                ///< what has been completed or put right, or is worth a look
    std::string why = {};                 ///< of a row that is wrong
    std::vector<std::string> cells = {};  ///< of a row that is wrong, as they are in the file
};

struct ImportCounts {
    std::int64_t added = 0, changed = 0, same = 0, wrong = 0;
};

struct ImportOptions {
    /// New accounts that hang from no account of the official plan are right, as where a person has confirmed them.
    bool outsidePlan = false;
};

/// Told now and then how many rows are read or written, and once all are; false stops the work.
using ImportProgress = std::function<bool(std::int64_t done)>;
inline constexpr std::int64_t rowsBetweenReports = 1000;
/// Throws ErrorBd (Stopped) when the work is to stop.
void reportTo(const ImportProgress& progress, std::int64_t done);

/// What an import would do, row by row, by the rules of the screens: nothing is written until apply().
///
/// Sub-accounts are told apart by their code, identities by the normal form of their document. A file of accounts may
/// bring the identity of each one too, which is created or changed with it. A text that is empty leaves what there is.
class ImportPreview {
public:
    /// Reads all rows, and what the company has. Throws std::runtime_error, in Spanish, when the file cannot be read
    /// or is stopped, and what the session throws.
    ImportPreview(SesionBd& session, ExchangeKind kind, RowReader& rows, const ColumnMap& columns,
                  const ImportOptions& options = {}, const ImportProgress& progress = {});

    /// In the order of the file.
    const std::vector<ImportRow>& rows() const { return rows_; }
    ImportCounts counts() const;
    /// How many rows apply() writes: an account and its identity are two.
    std::int64_t writes() const;

    /// Writes what is new or changes, in one transaction: all of it or nothing. Wrong rows are left out with
    /// `omitWrong`; without it they are refused (std::invalid_argument). Throws OutdatedPreview, and what the session
    /// throws: ErrorBd (Busy) while another program writes, (Stopped) when `progress` stops it.
    void apply(SesionBd& session, bool omitWrong, const ImportProgress& progress = {}) const;

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    /// An account to write, or one that is not itself written but brings an identity that is.
    struct PlannedAccount {
        SubcuentaRecord record;
        std::size_t row;
        std::size_t identity = none;  ///< in identities_.planned()
        bool written = false;
    };
    class Writing;

    bool isWritten(const PlannedAccount& account) const {
        return account.written && rows_[account.row].verdict != Verdict::Wrong;
    }
    static bool isWritten(const IdentityRows::Planned& identity) {
        return identity.users > 0 && (identity.record.id == 0 || identity.changed);
    }

    void examineAccount(ImportRow& row, const RowCells& cells);
    void examineIdentity(ImportRow& row, const RowCells& cells);
    void readAccount(PlannedAccount& account, ImportRow& row, const RowCells& cells, const SubcuentaRecord* stored);
    void readLists(SubcuentaRecord& account, ImportRow& row, const RowCells& cells) const;
    void readLinks(SubcuentaRecord& account, ImportRow& row, const RowCells& cells) const;
    bool readIdentity(PlannedAccount& account, ImportRow& row, const RowCells& cells);
    void compare(const SubcuentaRecord& before, const SubcuentaRecord& after, ImportRow& row) const;
    void rejectBrokenLinks();
    bool exists(const std::string& account) const;

    ExchangeKind kind_;
    ImportOptions options_;
    bool withIdentities_;
    CompanyState state_;
    IdentityRows identities_;
    std::vector<ImportRow> rows_;
    std::vector<PlannedAccount> accounts_;
    std::unordered_map<std::string, std::size_t> rowByCode_;
};

/// What an account has in a field, as files say it; of its identity, see textOf() for identities.
std::string textOf(ExchangeField field, const SubcuentaRecord& account, const CompanyState& state);

}  // namespace FendaMaestros

#include <algorithm>
#include <string>
#include <unordered_map>

#include "interchange/Import.h"
#include "session/ErrorBd.h"
#include "storage/RowWriter.h"
#include "toolkit/Text.h"
#include "ui/RowWrite.h"
#include "ui/Transaction.h"

/// What an import writes.
namespace FendaMaestros {

namespace {

constexpr const char* accountTable = "PCta";
constexpr const char* identityTable = "KXComun.dbo.Nif";

/// The highest id of a table, 0 while it is empty.
std::int64_t highest(ConexionBd& connection, const std::string& column, const std::string& table) {
    return connection.Execute("SELECT MAX(" + column + ") FROM " + table)->cell(0, 0).integer();
}

}  // namespace

/// The writes of one import, in its transaction.
class ImportPreview::Writing {
public:
    Writing(const ImportPreview& preview, SesionBd& session, const ImportProgress& progress)
        : preview_(preview),
          session_(session),
          connection_(*session.Conexion()),
          planned_(preview.identities_.planned()),
          ids_(planned_.size()),
          progress_(progress) {}

    void identities() {
        const std::int64_t before = highest(connection_, "Nif_Id", identityTable);
        storage::RowWriter inserted(connection_, identityTable, columnasNif());
        for (std::size_t i = 0; i < planned_.size(); ++i) {
            const IdentityRows::Planned& identity = planned_[i];
            ids_[i] = identity.record.id;
            if (!isWritten(identity)) continue;
            if (identity.record.id == 0)
                inserted.add(valoresNif(identity.record));
            else
                update(identity.record);
            report();
        }
        inserted.finish();
        if (preview_.kind_ == ExchangeKind::Accounts) readIds(before);
    }

    void accounts() {
        const std::int64_t before = highest(connection_, "PCta_Id", accountTable);
        storage::RowWriter inserted(connection_, accountTable, columnasSubcuenta());
        for (const PlannedAccount& account : preview_.accounts_) {
            if (!preview_.isWritten(account)) continue;
            SubcuentaRecord record = account.record;
            if (account.identity != none) record.idNif = ids_[account.identity];
            if (!record.asociada.empty() && record.idAsociada == 0) unlinked_.push_back(&account);
            if (record.id == 0)
                inserted.add(valoresSubcuenta(record));
            else
                update(record);
            report();
        }
        inserted.finish();
        link(before);
    }

    /// The last chance to stop.
    void finish() const { reportTo(progress_, done_); }

private:
    void update(const NifRecord& identity) {
        RowWrite write(session_, identityTable);
        describirNif(write, identity);
        write.update(" WHERE Nif_Id = " + std::to_string(identity.id));
    }

    void update(const SubcuentaRecord& account) {
        RowWrite write(session_, accountTable);
        describirSubcuenta(write, account);
        write.update(" WHERE PCta_Id = " + std::to_string(account.id));
        nombrarApuntes(session_, account.id, account.nombre);
    }

    /// The ids of the identities that have been inserted: they rise in the order in which the rows were written.
    void readIds(std::int64_t before) {
        const auto rows = connection_.Execute("SELECT Nif_Id, Nif_Doc FROM KXComun.dbo.Nif WHERE Nif_Id > " +
                                              std::to_string(before) + " ORDER BY Nif_Id");
        int row = 0;
        for (std::size_t i = 0; i < planned_.size(); ++i) {
            if (planned_[i].record.id != 0 || planned_[i].users == 0) continue;
            if (row == rows->rowCount() || rows->textView(row, 1) != planned_[i].record.documento)
                throw ErrorBd(ErrorBd::Kind::Other, "Las identidades no se han grabado como se esperaba.");
            ids_[i] = rows->cell(row++, 0).integer();
        }
    }

    /// Accounts that are linked with one that has been inserted get its id.
    void link(std::int64_t before) {
        if (unlinked_.empty()) return;
        std::unordered_map<std::string, std::int64_t> byCode;
        const auto rows = connection_.Execute("SELECT PCta_Id, PCta_Cta FROM PCta WHERE PCta_Id > " +
                                              std::to_string(before) + " ORDER BY PCta_Id");
        for (int row = 0; row < rows->rowCount(); ++row)
            byCode.emplace(rows->cell(row, 1).text(), rows->cell(row, 0).integer());
        for (const PlannedAccount* account : unlinked_) {
            const SubcuentaRecord& record = account->record;
            const std::int64_t id = record.id != 0 ? record.id : byCode.at(record.codigo);
            const auto linked = byCode.find(record.asociada);
            if (linked == byCode.end()) continue;
            connection_.run({"UPDATE PCta SET PCta_IdCtaAso = ? WHERE PCta_Id = ?", {linked->second, id}});
        }
    }

    void report() {
        if (++done_ % rowsBetweenReports == 0) reportTo(progress_, done_);
    }

    const ImportPreview& preview_;
    SesionBd& session_;
    ConexionBd& connection_;
    const std::vector<IdentityRows::Planned>& planned_;
    std::vector<std::int64_t> ids_;
    std::vector<const PlannedAccount*> unlinked_;
    const ImportProgress& progress_;
    std::int64_t done_ = 0;
};

std::int64_t ImportPreview::writes() const {
    return std::ranges::count_if(identities_.planned(), [](const auto& identity) { return isWritten(identity); }) +
           std::ranges::count_if(accounts_, [this](const PlannedAccount& account) { return isWritten(account); });
}

void ImportPreview::apply(SesionBd& session, bool omitWrong, const ImportProgress& progress) const {
    if (!omitWrong && counts().wrong > 0) throw std::invalid_argument("Hay filas erróneas: no se ha escrito nada.");
    Transaction transaction(session.Conexion());
    const CompanyState now(session, withIdentities_);
    // A read that has been stopped halfway tells nothing.
    reportTo(progress, 0);
    if (!now.sameAs(state_)) throw OutdatedPreview();
    Writing writing(*this, session, progress);
    if (withIdentities_) writing.identities();
    if (kind_ == ExchangeKind::Accounts) writing.accounts();
    writing.finish();
    transaction.commit();
}

}  // namespace FendaMaestros

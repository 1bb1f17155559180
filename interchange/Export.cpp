#include "interchange/Export.h"

#include <algorithm>

#include "interchange/CompanyState.h"
#include "interchange/IdentityRows.h"
#include "interchange/Import.h"
#include "ui/Csv.h"

namespace FendaMaestros {

namespace {

template <class Record, class Order>
std::vector<const Record*> inOrder(const std::vector<Record>& records, Order&& order) {
    std::vector<const Record*> sorted;
    for (const Record& record : records) sorted.push_back(&record);
    std::ranges::stable_sort(sorted, std::less(), [&](const Record* record) { return order(*record); });
    return sorted;
}

void appendAccounts(Recordset& rows, const CompanyState& state) {
    const auto fields = fieldsOf(ExchangeKind::Accounts);
    const auto firstOfIdentity = std::ranges::find(fields, ExchangeField::Document);
    for (const SubcuentaRecord* account : inOrder(state.accounts, std::mem_fn(&SubcuentaRecord::codigo))) {
        const NifRecord* identity = state.identityOf(account->idNif);
        for (auto field = fields.begin(); field != firstOfIdentity; ++field)
            rows.appendText(textOf(*field, *account, state));
        for (auto field = firstOfIdentity; field != fields.end(); ++field)
            rows.appendText(identity ? textOf(*field, *identity) : std::string());
    }
}

void appendIdentities(Recordset& rows, const CompanyState& state) {
    for (const NifRecord* identity : inOrder(state.identities, std::mem_fn(&NifRecord::documento)))
        for (const ExchangeField field : fieldsOf(ExchangeKind::Identities)) rows.appendText(textOf(field, *identity));
}

}  // namespace

std::shared_ptr<Recordset> exportedRows(SesionBd& session, ExchangeKind kind) {
    const CompanyState state(session, true);
    std::vector<std::string> captions;
    for (const ExchangeField field : fieldsOf(kind)) captions.emplace_back(captionOf(kind, field));
    auto rows = std::make_shared<Recordset>(std::move(captions));
    if (kind == ExchangeKind::Accounts)
        appendAccounts(*rows, state);
    else
        appendIdentities(*rows, state);
    return rows;
}

std::string exportedCsv(const Recordset& rows) {
    std::string csv = csvHeading(rows);
    std::vector<std::string> values(static_cast<std::size_t>(rows.columnCount()));
    for (int row = 0; row < rows.rowCount(); ++row) {
        for (int column = 0; column < rows.columnCount(); ++column)
            values[static_cast<std::size_t>(column)] = shieldedText(std::string(rows.textView(row, column)));
        csv += csvLine(values);
    }
    return csv;
}

}  // namespace FendaMaestros

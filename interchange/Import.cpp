#include "interchange/Import.h"

#include <algorithm>
#include <array>
#include <utility>

#include "chart/CodigosCuenta.h"
#include "interchange/TypedValues.h"
#include "session/ErrorBd.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

using enum ExchangeField;

constexpr std::size_t longestAccountName = 140;
constexpr std::array accountFields{AccountName, Active, Centre, Department, Mass, Linked, Withholding};

std::string quoted(const std::string& text) { return "«" + text + "»"; }

std::string entryText(const CodeList& list, std::int64_t id, bool byName) {
    const auto* entry = list.byId(id);
    if (!entry) return {};
    return byName ? entry->name : entry->code;
}

}  // namespace

void reportTo(const ImportProgress& progress, std::int64_t done) {
    if (!progress || progress(done)) return;
    throw ErrorBd(ErrorBd::Kind::Stopped, "Se ha interrumpido: no se ha escrito nada.");
}

std::string textOf(ExchangeField field, const SubcuentaRecord& account, const CompanyState& state) {
    switch (field) {
        case Account:
            return account.codigo;
        case AccountName:
            return account.nombre;
        case Active:
            return account.activa ? "Sí" : "No";
        case Centre:
            return entryText(state.centres, account.idCentro, false);
        case Department:
            return entryText(state.departments, account.idDpto, false);
        case Mass:
            return entryText(state.masses, account.idMasa, true);
        case Linked:
            return account.asociada;
        case Withholding:
            return account.irpf;
        default:
            return {};
    }
}

ImportPreview::ImportPreview(SesionBd& session, ExchangeKind kind, RowReader& rows, const ColumnMap& columns,
                             const ImportOptions& options, const ImportProgress& progress)
    : kind_(kind),
      options_(options),
      withIdentities_(kind == ExchangeKind::Identities || columns.has(Document)),
      state_(session, withIdentities_),
      identities_(state_, kind) {
    const auto expected = static_cast<std::size_t>(std::min(rows.expectedRows(), largest::rows));
    rows_.reserve(expected);
    identities_.reserve(withIdentities_ ? expected : 0);
    if (kind == ExchangeKind::Accounts) {
        accounts_.reserve(expected);
        rowByCode_.reserve(expected);
    }
    std::vector<std::string> cells;
    while (rows.next(cells)) {
        if (std::ssize(rows_) == largest::rows)
            throw std::runtime_error("El fichero tiene más de " + std::to_string(largest::rows) + " filas.");
        ImportRow& row = rows_.emplace_back(ImportRow{.line = rows.line(), .key = {}, .name = {}});
        const RowCells read(cells, columns);
        if (kind == ExchangeKind::Accounts)
            examineAccount(row, read);
        else
            examineIdentity(row, read);
        if (!row.why.empty()) row.verdict = Verdict::Wrong;
        // A link may turn out to be broken once all rows are known.
        if (row.verdict == Verdict::Wrong || columns.has(Linked) || columns.has(Withholding)) row.cells = cells;
        if (std::ssize(rows_) % rowsBetweenReports == 0) reportTo(progress, std::ssize(rows_));
    }
    reportTo(progress, std::ssize(rows_));
    rejectBrokenLinks();
    for (ImportRow& row : rows_)
        if (row.verdict != Verdict::Wrong) row.cells = {};
}

ImportCounts ImportPreview::counts() const {
    ImportCounts counts;
    for (const ImportRow& row : rows_) {
        switch (row.verdict) {
            case Verdict::New:
                ++counts.added;
                break;
            case Verdict::Changes:
                ++counts.changed;
                break;
            case Verdict::Same:
                ++counts.same;
                break;
            case Verdict::Wrong:
                ++counts.wrong;
                break;
        }
    }
    return counts;
}

// --- identities

void ImportPreview::examineIdentity(ImportRow& row, const RowCells& cells) {
    row.key = cells[Document];
    row.name = cells[Name];
    IdentityRows::Taken taken = identities_.take(cells, row.line, {});
    row.note = std::move(taken.note);
    row.why = std::move(taken.why);
    if (!row.why.empty()) return;
    IdentityRows::Planned& planned = identities_.planned()[taken.planned];
    row.key = planned.record.documento;
    row.name = planned.record.nombre;
    if (taken.repeated && !taken.changes.empty()) {
        row.why = "está con otros datos en la línea " + std::to_string(planned.line);
        return;
    }
    if (taken.repeated) return;
    ++planned.users;
    row.changes = std::move(taken.changes);
    if (taken.isNew)
        row.verdict = Verdict::New;
    else if (planned.changed)
        row.verdict = Verdict::Changes;
}

// --- accounts

void ImportPreview::examineAccount(ImportRow& row, const RowCells& cells) {
    row.key = cells[Account];
    row.name = cells[AccountName];
    ReadText code = readAccountCode(row.key, state_.digits);
    row.note = std::move(code.note);
    row.why = std::move(code.why);
    if (!row.why.empty()) return;
    row.key = code.value;
    if (const auto [earlier, first] = rowByCode_.emplace(row.key, rows_.size() - 1); !first) {
        row.why = "la cuenta está también en la línea " + std::to_string(rows_[earlier->second].line);
        return;
    }

    const SubcuentaRecord* stored = state_.account(row.key);
    if (!stored && state_.isPlanAccount(row.key)) row.why = "es una cuenta del plan oficial";
    if (!stored && !options_.outsidePlan && !state_.belongsToPlan(row.key))
        addSentence(row.why, "no pertenece al PGC " + std::to_string(state_.plan));
    PlannedAccount account{.record = stored ? *stored : SubcuentaRecord{}, .row = rows_.size() - 1};
    if (!stored) account.record.codigo = row.key;
    readAccount(account, row, cells, stored);
    if (!row.why.empty()) return;
    if (row.verdict == Verdict::Same && account.identity == none) return;
    if (account.identity != none) ++identities_.planned()[account.identity].users;
    accounts_.push_back(std::move(account));
}

void ImportPreview::readAccount(PlannedAccount& account, ImportRow& row, const RowCells& cells,
                                const SubcuentaRecord* stored) {
    SubcuentaRecord& record = account.record;
    if (row.name.empty()) {
        row.name = record.nombre;
    } else {
        requireFits(row.name, "Nombre", longestAccountName, row.why);
        record.nombre = row.name;
    }
    readLists(record, row, cells);
    readLinks(record, row, cells);
    if (!row.why.empty()) return;
    const bool linked = readIdentity(account, row, cells);
    if (!row.why.empty()) return;

    if (stored) compare(*stored, record, row);
    account.written = !stored || linked || !(record == *stored);
    row.verdict = !stored ? Verdict::New : row.changes.empty() && !linked ? Verdict::Same : Verdict::Changes;
    const bool hasIdentity = record.idNif != 0 || account.identity != none;
    if (row.verdict != Verdict::Same && needsIdentity(record.codigo) && !hasIdentity)
        row.why = "No ha indicado el Nif asociado";
}

void ImportPreview::readLists(SubcuentaRecord& account, ImportRow& row, const RowCells& cells) const {
    if (const std::string typed = cells[Active]; !typed.empty()) {
        const auto active = readYesOrNo(typed);
        if (!active) addSentence(row.why, "Activa: " + quoted(typed) + " no es sí ni no");
        account.activa = active.value_or(true);
    }
    const struct {
        ExchangeField field;
        const CodeList& list;
        std::int64_t& id;
        const char* unknown;
    } lists[] = {{Centre, state_.centres, account.idCentro, "no hay ningún centro "},
                 {Department, state_.departments, account.idDpto, "no hay ningún departamento "},
                 {Mass, state_.masses, account.idMasa, "no hay ninguna masa patrimonial "}};
    for (const auto& [field, list, id, unknown] : lists) {
        const std::string typed = cells[field];
        if (typed.empty()) continue;
        if (const auto* entry = list.find(typed))
            id = entry->id;
        else
            addSentence(row.why, unknown + quoted(typed));
    }
}

/// Whether the accounts are there, rejectBrokenLinks() says.
void ImportPreview::readLinks(SubcuentaRecord& account, ImportRow& row, const RowCells& cells) const {
    for (const ExchangeField field : {Linked, Withholding}) {
        const std::string typed = cells[field];
        if (typed.empty()) continue;
        const ReadText code = readAccountCode(typed, state_.digits);
        if (!code.why.empty())
            addSentence(row.why, std::string(captionOf(kind_, field)) + ": " + code.why);
        else if (field == Withholding)
            account.irpf = code.value;
        else if (code.value != account.asociada) {
            const SubcuentaRecord* other = state_.account(code.value);
            account.asociada = code.value;
            account.idAsociada = other ? other->id : 0;
        }
    }
}

/// Whether the account gets another identity than it has.
bool ImportPreview::readIdentity(PlannedAccount& account, ImportRow& row, const RowCells& cells) {
    if (cells[Document].empty()) return false;
    IdentityRows::Taken taken = identities_.take(cells, row.line, account.record.nombre);
    addSentence(row.note, taken.note);
    row.why = std::move(taken.why);
    if (!row.why.empty()) return false;
    account.identity = taken.planned;
    const IdentityRows::Planned& planned = identities_.planned()[taken.planned];
    if (taken.repeated && !taken.changes.empty())
        addSentence(row.note, "su identidad vale como está en la línea " + std::to_string(planned.line));
    else if (!taken.repeated)
        row.changes = std::move(taken.changes);
    if (planned.record.id != 0 && planned.record.id == account.record.idNif) return false;

    if (account.record.id != 0) {
        const NifRecord* before = state_.identityOf(account.record.idNif);
        row.changes.push_back({"NIF", before ? before->documento : "", planned.record.documento});
    }
    account.record.idNif = planned.record.id;
    account.record.origen = 0;
    return true;
}

void ImportPreview::compare(const SubcuentaRecord& before, const SubcuentaRecord& after, ImportRow& row) const {
    for (const ExchangeField field : accountFields) {
        std::string from = textOf(field, before, state_), to = textOf(field, after, state_);
        if (from != to) row.changes.push_back({std::string(captionOf(kind_, field)), std::move(from), std::move(to)});
    }
}

bool ImportPreview::exists(const std::string& account) const {
    if (state_.account(account)) return true;
    const auto row = rowByCode_.find(account);
    return row != rowByCode_.end() && rows_[row->second].verdict != Verdict::Wrong;
}

/// A row that turns out wrong may break the link of another one.
void ImportPreview::rejectBrokenLinks() {
    for (bool again = true; again;) {
        again = false;
        for (PlannedAccount& account : accounts_) {
            ImportRow& row = rows_[account.row];
            if (row.verdict == Verdict::Wrong || !account.written) continue;
            const SubcuentaRecord* stored = state_.account(account.record.codigo);
            const auto require = [&](const std::string& code, const std::string& before) {
                if (!code.empty() && code != before && !exists(code))
                    addSentence(row.why, "la cuenta " + code + " no existe");
            };
            require(account.record.asociada, stored ? stored->asociada : std::string());
            require(account.record.irpf, stored ? stored->irpf : std::string());
            if (row.why.empty()) continue;
            row.verdict = Verdict::Wrong;
            if (account.identity != none) --identities_.planned()[account.identity].users;
            again = true;
        }
    }
    for (ImportRow& row : rows_)
        if (row.verdict == Verdict::New || row.verdict == Verdict::Wrong) row.changes.clear();
}

}  // namespace FendaMaestros

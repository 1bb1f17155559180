#include "chartreports/VerificacionPlan.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <unordered_map>

#include "session/Literal.h"
#include "session/ParametrosEmpresa.h"
#include "toolkit/Text.h"
#include "ui/Csv.h"
#include "ui/NewFile.h"
#include "ui/RowWrite.h"
#include "ui/SessionAccess.h"
#include "ui/Transaction.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

bool isBlank(const std::string& description) { return text::trim(description).empty(); }

std::string whereId(std::int64_t id) { return " WHERE PCta_Id = " + std::to_string(id); }

void describe(std::int64_t id, const std::string& description) {
    RowWrite write(instanciaActual().sesion(), "PCta");
    write.column("PCta_Des", valor::Texto, text::trim(description));
    write.update(whereId(id));
}

/// Gives the first description of a deleted row of a code to a row of that code that has none.
class DescripcionHeredada {
public:
    /// The rows in the order of the list, those of one code together. `unchanged`: a row still is what was listed; what
    /// another program has made of one is not written over.
    void next(const SubcuentaErronea& row, bool unchanged) {
        if (row.codigo == codigo_) return;
        codigo_ = row.codigo;
        primera_ = row.conDiario ? 0 : row.id;
        primeraEnBlanco_ = isBlank(row.descripcion) && unchanged;
    }
    void aboutToDelete(const SubcuentaErronea& row) const {
        if (primeraEnBlanco_ && row.id != primera_ && !isBlank(row.descripcion)) describe(primera_, row.descripcion);
    }

private:
    std::string codigo_;
    std::int64_t primera_ = 0;
    bool primeraEnBlanco_ = false;
};

/// The folder, beside the company's data, of what has been deleted.
constexpr const char* deletedFolder = "eliminadas";

/// Writes the rows as they are now to a file named by the moment, and gives its path; empty for a session that keeps no
/// files.
std::string copyToFile(const std::vector<SubcuentaErronea>& rows) {
    const std::string folder = instanciaActual().sesion().CarpetaFicheros();
    if (folder.empty()) return {};
    std::string text;
    for (const SubcuentaErronea& row : rows) {
        const auto stored = read("SELECT * FROM PCta" + whereId(row.id));
        if (text.empty()) text = csvHeading(*stored);
        text += csvRows(*stored);
    }
    return writeNewFile(std::filesystem::path(folder) / deletedFolder, "subcuentas", ".csv", text);
}

/// The rows of a code that stay, have journal and no description, each with what it inherits.
void describeSurvivors(const std::vector<SubcuentaErronea>& listed, const std::vector<SubcuentaErronea>& deleted) {
    for (const SubcuentaErronea& row : listed) {
        if (!row.conDiario || !isBlank(row.descripcion)) continue;
        const auto heir = std::ranges::find_if(deleted, [&row](const SubcuentaErronea& gone) {
            return gone.codigo == row.codigo && !isBlank(gone.descripcion);
        });
        if (heir != deleted.end()) describe(row.id, heir->descripcion);
    }
}

/// The check once more, inside the transaction: what it does not find any more, as it was listed, stays.
Eliminacion deleteInTransaction(const std::vector<SubcuentaErronea>& listed) {
    SesionBd& session = instanciaActual().sesion();
    Transaction transaction(session.Conexion());
    const auto now =
        subcuentasErroneas(*read(sqlSubcuentasErroneas(session.Parametros().Item("Par_CtaNum").Value.text())));
    std::unordered_map<std::int64_t, const SubcuentaErronea*> byId;
    for (const SubcuentaErronea& row : now) byId.emplace(row.id, &row);
    Eliminacion outcome;
    std::vector<SubcuentaErronea> deleted;
    DescripcionHeredada inherited;
    for (const SubcuentaErronea& row : listed) {
        const auto found = byId.find(row.id);
        const bool unchanged = found != byId.end() && *found->second == row;
        inherited.next(row, unchanged);
        if (row.conDiario) continue;
        if (!unchanged) {
            ++outcome.omitidas;
            continue;
        }
        inherited.aboutToDelete(row);
        RowWrite(session, "PCta").erase(whereId(row.id));
        deleted.push_back(row);
    }
    describeSurvivors(now, deleted);
    transaction.commit();
    outcome.eliminadas = static_cast<int>(deleted.size());
    return outcome;
}

}  // namespace

std::string sqlSubcuentasErroneas(const std::string& digitos) {
    const std::string row =
        "SELECT Pcta_id,pcta_cta,pcta_des,(SELECT COUNT(Apu_id) FROM Apu WHERE Apu_IdCta = PCta_ID) AS Diario ";
    return row +
           "FROM pcta WHERE Pcta_Cta IN "
           "(SELECT pcta_cta from pcta where pcta_subcuenta=1 GROUP BY pcta_cta having count(Pcta_Cta)>1) "
           "UNION " +
           row + "FROM pcta WHERE Pcta_subcuenta=1 AND LEN(PCta_Cta)<> " + digitos + "ORDER BY PCta_Cta";
}

std::vector<SubcuentaErronea> subcuentasErroneas(const Recordset& rows) {
    std::vector<SubcuentaErronea> found;
    for (int row = 0; row < rows.rowCount(); ++row)
        found.push_back({.id = rows.cell(row, 0).integer(),
                         .codigo = rows.cell(row, 1).text(),
                         .descripcion = rows.cell(row, 2).text(),
                         .conDiario = rows.cell(row, 3).integer() > 0});
    return found;
}

std::string sqlSubcuentasActivas() {
    return "Select * FROM PCta WHERE PCta_Subcuenta=1 and PCta_bActiva=1 ORDER BY PCta_Cta";
}

std::string sqlCuentaPlan(const std::string& plan, int seccion, const std::string& codigo) {
    return "SELECT * FROM PCta WHERE PCta_Plan = " + plan + " AND PCta_PlanSec = " + std::to_string(seccion) +
           "AND PCta_Cta = " + literal(codigo);
}

bool perteneceAlPlan(const std::string& plan, int seccion, const std::string& codigo) {
    return std::ranges::any_of(std::initializer_list<std::size_t>{3, 4, 5}, [&](std::size_t length) {
        return !read(sqlCuentaPlan(plan, seccion, text::left(codigo, length)))->Eof();
    });
}

Eliminacion eliminarSinDiario(const std::vector<SubcuentaErronea>& listadas) {
    std::vector<SubcuentaErronea> unused;
    std::ranges::copy_if(listadas, std::back_inserter(unused), [](const auto& row) { return !row.conDiario; });
    const std::string copy = copyToFile(unused);
    Eliminacion outcome = withPatience(instanciaActual().desktop(), [&] { return deleteInTransaction(listadas); });
    outcome.copia = copy;
    return outcome;
}

}  // namespace FendaMaestros

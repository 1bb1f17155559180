#include "renumbering/Renumbering.h"

#include <stdexcept>

#include "renumbering/Planning.h"
#include "session/ErrorBd.h"
#include "storage/Parameters.h"
#include "ui/Transaction.h"

namespace FendaMaestros {

namespace {

/// The writes of one plan, in its transaction.
class Writing {
public:
    Writing(ConexionBd& connection, const RenumberingPlan& plan, const RenumberingProgress& progress)
        : connection_(connection), plan_(plan), progress_(progress) {
        for (const RenumberingStep& step : plan.steps) total_ += step.rows;
        if (progress_) connection_.stopWhen([this] { return !progress_(done_, total_); });
    }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;
    ~Writing() {
        if (progress_) connection_.stopWhen({});
    }

    void run() {
        for (const RenumberingStep& step : plan_.steps) {
            if (connection_.run({step.sql, step.parameters}) != step.rows)
                throw ErrorBd(ErrorBd::Kind::Other,
                              "Los códigos no se han cambiado como se esperaba: no se ha escrito nada.");
            done_ += step.rows;
            if (progress_ && !progress_(done_, total_))
                throw ErrorBd(ErrorBd::Kind::Stopped, "Se ha interrumpido: no se ha escrito nada.");
        }
    }

private:
    ConexionBd& connection_;
    const RenumberingPlan& plan_;
    const RenumberingProgress& progress_;
    std::int64_t done_ = 0, total_ = 0;
};

}  // namespace

RenumberingPlan planRenumbering(SesionBd& session, const RenumberingRequest& request) {
    const CompanyCodes company(session);
    RenumberingPlan plan = std::visit([&company](const auto& wanted) { return planOf(company, wanted); }, request);
    if (digitosSubcuenta(storage::readParameters(company.connection)) != company.digits)
        plan.obstacles.emplace_back(
            "Otro puesto ha cambiado los dígitos de las subcuentas: hay que volver a abrir la empresa.");
    if (!plan.allowed()) plan.steps.clear();
    return plan;
}

void applyRenumbering(SesionBd& session, const RenumberingRequest& request, const RenumberingPlan& seen,
                      const RenumberingProgress& progress) {
    if (!seen.allowed()) throw std::invalid_argument(seen.obstacles.front());
    Transaction transaction(session.Conexion());
    Writing writing(*session.Conexion(), seen, progress);
    if (planRenumbering(session, request) != seen) throw OutdatedPreview();
    writing.run();
    transaction.commit();
}

}  // namespace FendaMaestros

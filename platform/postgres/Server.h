#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "session/Companies.h"

namespace FendaMaestros::postgres {

/// Companies in one database of a PostgreSQL server. The database has been made ready once (prepare()), and the user of
/// the connection has been granted the role of clerks; who creates companies, that of managers (Preparation.h).
class Server final : public Companies {
public:
    /// `connection`: a connection string or address of libpq, "host=servidor dbname=contabilidad" or "service=conta".
    /// Nothing is connected before it is needed. `lockWait`: how long a statement waits for another clerk's before it
    /// fails. `folder`: SesionBd::CarpetaFicheros() of the sessions.
    explicit Server(std::string connection, std::chrono::milliseconds lockWait = std::chrono::seconds(1),
                    std::string folder = {})
        : connection_(std::move(connection)), lockWait_(lockWait), folder_(std::move(folder)) {}

    /// Server and database, for a person to read; without user and password. Throws ErrorBd (Refused) when the
    /// connection string cannot be understood.
    std::string place() const;
    /// Makes the database ready, by the SQL of preparation(). Throws ErrorBd (ReadOnly) when the user may not.
    void prepare() const;
    /// What prepare() carries out.
    static std::string preparation();

    bool exists() const override;
    std::vector<std::string> list() const override;
    void create(const NewCompany& company) const override;
    std::string createDemonstration() const override;
    void receive(const std::string& name, const std::function<void(ConexionBd& empty)>& fill) const override;
    std::unique_ptr<SesionBd> open(const std::string& name) const override;

private:
    std::string connection_;
    std::chrono::milliseconds lockWait_;
    std::string folder_;
};

}  // namespace FendaMaestros::postgres

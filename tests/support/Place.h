#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/sqlite/DataFolder.h"
#include "session/SesionSql.h"
#include "tests/session/TemporaryFolder.h"
#ifdef FENDA_WITH_POSTGRES
#include "tests/support/PreparedServer.h"
#endif

namespace FendaMaestros::testing {

/// Where the tests' clerks keep a company of their own, and what only its engine can tell of it.
class Place {
public:
    static constexpr const char* company = "Oficina";

    virtual ~Place() = default;
    /// A statement waits so long for another clerk's; without a value, as long as in the program.
    virtual std::unique_ptr<Companies> companies(std::optional<std::chrono::milliseconds> wait) const = 0;
    /// Where sessions put their files.
    virtual std::filesystem::path folder() const = 0;
    /// Waits until nothing is under way any more of clerks who have ended or were killed.
    virtual void settle() const {}
    /// As when the machine that holds the data dies and starts again; false where that is the clerks' own machine.
    virtual bool crash() { return false; }
    /// Files that a killed clerk has left and nobody needs.
    virtual int leftovers() const { return 0; }

    std::unique_ptr<SesionBd> open(std::optional<std::chrono::milliseconds> wait = {},
                                   const sqlite::ConnectionWrapper& wrap = {}) const {
        auto session = companies(wait)->open(company);
        if (!wrap) return session;
        return std::make_unique<SesionSql>(wrap(session->Conexion()), session->Parametros(),
                                           session->CarpetaFicheros());
    }
};

class FolderPlace final : public Place {
public:
    FolderPlace() { companies({})->create({.name = company, .fiscalYear = 2026}); }

    std::unique_ptr<Companies> companies(std::optional<std::chrono::milliseconds> wait) const override {
        return wait ? std::make_unique<sqlite::DataFolder>(folder(), *wait)
                    : std::make_unique<sqlite::DataFolder>(folder());
    }
    std::filesystem::path folder() const override { return folder_.path(); }
    int leftovers() const override {
        int files = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder()))
            files += entry.path().extension() != ".db";
        return files;
    }

private:
    tests::TemporaryFolder folder_;
};

#ifdef FENDA_WITH_POSTGRES

/// A database of its own on one server for all.
class ServerPlace final : public Place {
public:
    using Disk = tests::PostgresServer::Disk;

    explicit ServerPlace(Disk disk = Disk::NotAwaited)
        : server_(Server::of(disk)), connection_(server_.fresh(Server::withCompany)) {}

    std::unique_ptr<Companies> companies(std::optional<std::chrono::milliseconds> wait) const override {
        return std::make_unique<postgres::Server>(connection_, wait.value_or(std::chrono::seconds(1)), folder());
    }
    std::filesystem::path folder() const override { return folder_.path(); }
    void settle() const override {
        server_.server.execute("postgres",
                               {"DO $$ BEGIN WHILE EXISTS (SELECT FROM pg_stat_activity WHERE backend_type = 'client "
                                "backend' AND pid <> pg_backend_pid()) LOOP PERFORM pg_sleep(0.01); PERFORM "
                                "pg_stat_clear_snapshot(); END LOOP; END $$"});
    }
    bool crash() override {
        server_.server.stop(SIGKILL);
        server_.server.start();
        return true;
    }
    /// For libpq.
    const std::string& connection() const { return connection_; }
    /// Of the server.
    std::filesystem::path socket() const { return server_.server.socket(); }

private:
    struct Server : tests::PreparedServer {
        static constexpr const char* withCompany = "oficina";

        explicit Server(Disk disk) : PreparedServer(disk) {
            postgres::Server(create(withCompany)).create({.name = company, .fiscalYear = 2026});
        }
        static Server& of(Disk disk) {
            static std::map<Disk, Server> started;
            return started.try_emplace(disk, disk).first->second;
        }
    };

    Server& server_;
    std::string connection_;
    tests::TemporaryFolder folder_;
};

#endif

/// A kind of place that was built.
struct PlaceKind {
    std::string name;
    std::function<std::unique_ptr<Place>()> make;
};

/// Companies in a folder are always on the disk when they are saved; those on a server if `onDisk`.
inline std::vector<PlaceKind> placeKinds(bool onDisk = false) {
    std::vector<PlaceKind> kinds{{"Folder", [] { return std::make_unique<FolderPlace>(); }}};
#ifdef FENDA_WITH_POSTGRES
    if (tests::PostgresServer::installed())
        kinds.push_back({"Postgres", [onDisk] {
                             return std::make_unique<ServerPlace>(onDisk ? ServerPlace::Disk::Awaited
                                                                         : ServerPlace::Disk::NotAwaited);
                         }});
#endif
    return kinds;
}

}  // namespace FendaMaestros::testing

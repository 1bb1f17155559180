#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "session/SesionBd.h"

namespace FendaMaestros::sqlite {

class Database;

/// What a company is created with.
struct CompanyData {
    std::string name;
    int fiscalYear = 0;
    int accountDigits = 8;  ///< of a sub-account, 4 to 15
    int province = 28;      ///< 1 to 52, or 99 for abroad
    int nameOrder = 0;      ///< 0: name first; anything else: surnames first
};

/// Puts something between a session and its connection, such as a trace; gives what the session is to use.
using ConnectionWrapper = std::function<std::shared_ptr<ConexionBd>(std::shared_ptr<ConexionBd>)>;

/// A folder with one shared database and any number of companies, a file each. Every failure is an ErrorBd; a company
/// or a shared database whose creation fails is not there.
class DataFolder {
public:
    /// `busyTimeout` is how long a statement waits for another program before it fails.
    explicit DataFolder(std::filesystem::path folder, std::chrono::milliseconds busyTimeout = std::chrono::seconds(5))
        : folder_(std::move(folder)), busyTimeout_(busyTimeout) {}

    /// False when there is no such folder.
    bool exists() const;
    /// The names of the companies in Spanish order.
    std::vector<std::string> companies() const;

    /// Makes a company with the official plans and the towns but no data of its own, and before it, where they are
    /// missing, the folder and the shared database with its countries, provinces, kinds of street, concepts, balance
    /// masses and balances.
    void createCompany(const CompanyData& company) const;
    /// Makes the company "Empresa de demostración" with invented data, whose tax identities go into the shared
    /// database, and gives its name.
    std::string createDemo() const;

    std::unique_ptr<SesionBd> openCompany(const std::string& name, const ConnectionWrapper& wrap = {}) const;

private:
    using Filler = std::function<void(const Database&)>;

    /// Also one whose name differs in nothing but capitals.
    bool hasCompany(const std::string& name) const;
    void requireFolder() const;
    void createFolder() const;
    void createShared() const;
    /// `fill`, if there is one, adds data to the new company and to the shared database in one transaction.
    void create(const CompanyData& company, const Filler& fill) const;
    /// Fills a database aside and gives it its name when it is whole; `shared`, unless empty, is attached meanwhile.
    /// False when something had that name by then.
    bool createFile(const std::filesystem::path& file, const Filler& fill,
                    const std::filesystem::path& shared = {}) const;

    std::filesystem::path folder_;
    std::chrono::milliseconds busyTimeout_;
};

}  // namespace FendaMaestros::sqlite

#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "session/Companies.h"

namespace FendaMaestros::sqlite {

class Database;

/// Puts something between a session and its connection, such as a trace; gives what the session is to use.
using ConnectionWrapper = std::function<std::shared_ptr<ConexionBd>(std::shared_ptr<ConexionBd>)>;

/// Companies in a folder: one file for each and one for the shared database.
class DataFolder final : public Companies {
public:
    /// `busyTimeout` is how long a statement waits for another program before it fails.
    explicit DataFolder(std::filesystem::path folder, std::chrono::milliseconds busyTimeout = std::chrono::seconds(5))
        : folder_(std::move(folder)), busyTimeout_(busyTimeout) {}

    /// False when there is no such folder.
    bool exists() const override;
    std::vector<std::string> list() const override;
    /// Makes the folder too where it is missing.
    void create(const NewCompany& company) const override;
    std::string createDemonstration() const override;
    void receive(const std::string& name, const std::function<void(ConexionBd& empty)>& fill) const override;
    std::unique_ptr<SesionBd> open(const std::string& name) const override;

    bool examine(const std::string& company, const Tell& tell) const override;
    /// The copies are examined before the folder gets its name, and so are those of restore(): any data folder serves
    /// as a backup.
    Backup backUp(const std::filesystem::path& destination) const override;
    Backup restore(const std::filesystem::path& backup) const override;

    /// As open(), with something between the session and its connection.
    std::unique_ptr<SesionBd> openCompany(const std::string& name, const ConnectionWrapper& wrap = {}) const;

private:
    /// Also one whose name differs in nothing but capitals.
    bool hasCompany(const std::string& name) const;
    void requireFolder() const;
    /// The file of a company, or the shared one when `company` is empty. Throws (NotADatabase) when it is missing.
    std::filesystem::path fileOf(const std::string& company) const;
    /// Throws (NotADatabase) unless all that is here can be relied on.
    void requireWhole() const;
    /// Before anything else is done in a folder that is there.
    void recover() const;
    void createFolder() const;
    /// Throws unless the shared database can be used.
    void requireShared() const;
    /// Sorts its indexes anew when the order of texts is another than that they were sorted by, and tells so. `whose`:
    /// "de la empresa ...".
    void requireOrder(const Database& database, const std::string& whose) const;
    void createShared() const;
    /// Makes a database aside and gives it its name when it is whole. False when something had that name by then.
    bool createFile(const std::filesystem::path& file,
                    const std::function<void(const std::filesystem::path& aside)>& make) const;

    std::filesystem::path folder_;
    std::chrono::milliseconds busyTimeout_;
};

}  // namespace FendaMaestros::sqlite

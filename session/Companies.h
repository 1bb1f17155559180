#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "session/SesionBd.h"

namespace FendaMaestros {

/// What a company is created with.
struct NewCompany {
    std::string name;
    int fiscalYear = 0;     ///< 1900 to 2999
    int accountDigits = 8;  ///< of a sub-account, 4 to 15
    int province = 28;      ///< 1 to 52, or 99 for abroad
    int nameOrder = 0;      ///< 0: a person's name first; anything else: the surnames first

    bool operator==(const NewCompany&) const = default;
};

/// Throws ErrorBd (Refused), with the sentence for a person, when no company can be created so.
void check(const NewCompany& company);

/// A company to create as a person types it; what is empty takes its default, the fiscal year the current year.
struct TypedCompany {
    std::string name = {};
    std::string fiscalYear = {};
    std::string accountDigits = {};
    std::string province = {};
    std::string nameOrder = {};  ///< "nombre" or "apellidos", or 0 or 1
};

/// What was typed, by the rules of check() and with its sentences, which here leave as std::invalid_argument. Blanks
/// around the name go.
NewCompany readCompany(const TypedCompany& typed);

/// What a backup holds, or what was taken back from one.
struct Backup {
    std::vector<std::string> companies;
    /// How long other programs, which can read all the time, had to wait at most before they could keep a change.
    std::chrono::milliseconds heldUp{};
};

/// Where companies are kept, with the one database that they share. Every failure is an ErrorBd; what could not be
/// created whole is not there.
class Companies {
public:
    virtual ~Companies() = default;

    /// Told a Spanish sentence that a person should read.
    using Tell = std::function<void(const std::string& sentence)>;
    /// Who is told, from now on, what a person should know about something that went well all the same, such as what is
    /// left of a crash. Nobody at first.
    void tellTo(Tell listener) { listener_ = std::move(listener); }

    /// False when nothing has ever been created here.
    virtual bool exists() const = 0;
    /// Their names in Spanish order. Throws (NotADatabase) when nothing has ever been created here.
    virtual std::vector<std::string> list() const = 0;

    /// Makes a company with the official plans and the towns but no data of its own, and before it, where it is
    /// missing, the shared database with its countries, provinces, kinds of street, concepts, balance masses and
    /// balances. Throws as check(), and (Constraint) when there is one whose name differs in nothing but capitals.
    virtual void create(const NewCompany& company) const = 0;
    /// Makes the company "Empresa de demostración" with invented data, whose tax identities go into the shared
    /// database, and gives its name.
    virtual std::string createDemonstration() const = 0;
    /// Makes a company whose empty tables `fill` fills, through a connection to it in the transaction that makes it;
    /// the shared database is there by then, as create() makes it. Rows may bring their identities, and later ones rise
    /// above them. Throws (Constraint) as create(), and what `fill` throws.
    virtual void receive(const std::string& name, const std::function<void(ConexionBd& empty)>& fill) const = 0;

    /// Never null. Throws NotADatabase when there is no such company or its data cannot be used, NewerVersion when they
    /// were made by a version to come.
    virtual std::unique_ptr<SesionBd> open(const std::string& name) const = 0;

    /// Examines how a company is kept, or the shared database and the place itself when `company` is empty, and tells
    /// each fault: files, indexes, who may read them. False when its data cannot be relied on. What the data say is not
    /// its business (storage/Consistency.h). A place that sees to all that by itself has nothing to tell.
    virtual bool examine(const std::string& /*company*/, const Tell& /*tell*/) const { return true; }

    /// Copies the shared database and every company, as they are at one moment, into a new folder, while others work.
    /// The folder then is a place of companies itself. A copy that fails, or that is not whole, leaves nothing. Throws
    /// Constraint when there is something at `destination`, Refused where backups are made by other means.
    virtual Backup backUp(const std::filesystem::path& destination) const;
    /// Takes all of a backup back to a place where nothing has been created yet. It is examined first. Throws
    /// Constraint when there is something in this place, else as backUp().
    virtual Backup restore(const std::filesystem::path& backup) const;

protected:
    void tell(const std::string& sentence) const {
        if (listener_) listener_(sentence);
    }

private:
    Tell listener_;
};

}  // namespace FendaMaestros

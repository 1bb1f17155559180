#pragma once

// Clerks who work as processes of their own on one place of data, at the screens of the sub-accounts and of the tax
// identities: what is left when they are killed at any moment, and what two of them do to each other.

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "component/FendaMaes.h"
#include "tests/support/Company.h"
#include "tests/support/FailingConexion.h"
#include "tests/support/Place.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros::testing {

/// A company in a place of its own, with accounts of group 572 whose journal lines have no description.
class Office {
public:
    /// Accounts and lines of each, enough lines for a change of the name to take a while.
    explicit Office(std::unique_ptr<Place> made, int accounts = 0, int lines = 300) : place(std::move(made)) {
        const auto session = place->open();
        ConexionBd& connection = *session->Conexion();
        connection.BeginTrans();
        for (int account = 1; account <= accounts; ++account) {
            const std::string code = bankCode(account);
            connection.run({"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva) VALUES (?, ?, 1, 1)",
                            {code, "Antigua"}});
            for (int line = 0; line < lines; ++line)
                connection.run(
                    {"INSERT INTO Apu (Apu_Cta, Apu_IdCta, Apu_CtaDes) SELECT PCta_Cta, PCta_Id, '' FROM "
                     "PCta WHERE PCta_Cta = ?",
                     {code}});
        }
        connection.CommitTrans();
    }

    static std::string bankCode(int account) { return std::to_string(57'200'000 + account); }

    const std::unique_ptr<Place> place;
};

/// Someone at the screens with two sessions on the same files, who answers Yes or Aceptar to everything. Errors of the
/// database leave as exceptions.
class Clerk {
public:
    explicit Clerk(const Place& place, std::optional<std::chrono::milliseconds> wait = {},
                   const sqlite::ConnectionWrapper& wrap = {})
        : session_(place.open(wait, wrap)), second_(place.open(wait)) {
        maes_.MyBd = session_.get();
        maes_.MyBdorigen = second_.get();
    }

    ConexionBd& connection() { return *session_->Conexion(); }
    int number(const std::string& sql) { return static_cast<int>(connection().Execute(sql)->cell(0, 0).integer()); }
    /// The last message of the save under way; empty when there was none.
    std::string lastMessage() const { return person_.messages.empty() ? "" : person_.messages.back().text; }
    /// Whether the save under way, if something has failed, has been told to be done all the same.
    bool isToldSaved() const { return lastMessage() == accountSaved || lastMessage() == identitySaved; }
    /// Called with the message when a save was turned away and the screen is still open; then it is tried again there.
    std::function<void(const std::string& message)> whenRefused;
    /// Called just before the button is pressed for the first time.
    std::function<void()> whenSaving = [] {};
    /// From the press of the button to the end of the last save of an account.
    std::chrono::duration<double, std::milli> lastWait() const { return waited_; }

    /// A new identity, all of whose texts follow from its document.
    void saveIdentity(const std::string& document) {
        begin([&](Form& form) {
            person_.hands.choose(form, ScriptedPerson::control<ComboBox>(form, identity::type), 3);
            person_.fill(form, identity::document, document);
            person_.fill(form, identity::name, "Nombre " + document);
            person_.fill(form, identity::surname, "Primero " + document);
            person_.fill(form, identity::surname2, "Segundo " + document);
            person_.fill(form, identity::street, "Calle " + document);
            person_.fill(form, identity::town, "Villa " + document);
            person_.fill(form, identity::email, document);
            save(form, identity::save);
            person_.escape(form);
        });
        maes_.jNif();
        expectLast(identitySaved);
    }

    /// A new account with the next free code of a group, linked to an identity. Gives the code; throws what the clerk
    /// was told when it was not saved.
    std::string saveCustomer(const std::string& name, const std::string& document, const std::string& group = "430") {
        nameAndSave([&](const std::string&) { return name; });
        const auto found =
            connection().Execute("SELECT Nif_Id FROM KXComun.dbo.Nif WHERE Nif_Doc = '" + document + "'");
        std::string code = group;
        const std::string saved =
            maes_.CrearNuevaCuenta(code, static_cast<std::int32_t>(found->cell(0, 0).integer()), true);
        expectLast(accountSaved);
        return saved;
    }

    /// Gives an account, and its journal lines with it, another name.
    void rename(const std::string& code, const std::string& name) {
        rename(code, [&](const std::string&) { return name; });
    }
    /// As rename(), with a name that follows from the one on the screen.
    void rename(const std::string& code, const std::function<std::string(const std::string& shown)>& name) {
        nameAndSave(name);
        const auto found = connection().Execute("SELECT PCta_Id FROM PCta WHERE PCta_Cta = '" + code + "'");
        maes_.jPlanCuentas(static_cast<std::int32_t>(found->cell(0, 0).integer()));
        expectLast(accountSaved);
    }

    /// Deletes the sub-accounts that are wrong and that nobody uses.
    void deleteUnused() {
        person_.visits.push_back([&](Form& form) {
            person_.hands.choose(form, ScriptedPerson::control<ComboBox>(form, "cboPlan"), 1);
            person_.press(form, "cmdInicio");
            person_.escape(form);
        });
        maes_.jshowPGCVerificacion();
        expectLast("Finalizada verificación con incidencias");
    }

    /// Gives an identity another document, and its invoices of the year with it.
    void changeDocument(const std::string& from, const std::string& to) {
        person_.visits.push_back([&](Form& form) {
            person_.fill(form, identity::document, from);
            person_.hands.key(form, {key::Tab, shift::None});
            person_.visits.push_back([&](Form& change) {
                person_.fill(change, "txtFields(6)", to);
                person_.press(change, "Check1");
                person_.press(change, "cmdSalvar");
            });
            person_.press(form, "cmdSustituir");
            person_.escape(form);
        });
        maes_.jNif();
        expectLast("Proceso finalizado satisfactoriamente");
    }

private:
    class Agreeing final : public ScriptedPerson {
        Reply answer(const Message& message) override {
            answers = {message.offers(Answer::Yes) ? Answer::Yes : Answer::Ok};
            return ScriptedPerson::answer(message);
        }
    };

    static constexpr const char *accountSaved = "Grabación finalizada",
                                *identitySaved = "Grabación del nif realizada con éxito";

    /// What comes next is for the screen that opens next, whatever a failure has left of the one before.
    void begin(ScriptedPerson::Visit visit) {
        person_.messages.clear();
        person_.visits = {std::move(visit)};
    }

    void nameAndSave(const std::function<std::string(const std::string& shown)>& name) {
        begin([this, name](Form& form) {
            person_.fill(form, account::name, name(ScriptedPerson::text(form, account::name)));
            const auto start = std::chrono::steady_clock::now();
            save(form, account::save);
            waited_ = std::chrono::steady_clock::now() - start;
            if (form.isOpen()) person_.escape(form);
        });
    }

    void save(Form& form, const char* button) {
        whenSaving();
        person_.press(form, button);
        if (!whenRefused || isToldSaved()) return;
        whenRefused(lastMessage());
        person_.press(form, button);
    }

    void expectLast(const std::string& text) {
        if (lastMessage() != text) throw std::runtime_error(lastMessage());
        person_.messages.clear();
    }

    Agreeing person_;
    HeadlessDesktop desktop_{person_};
    ComponentRegistry components_;
    FendaMaes maes_{desktop_, components_};
    std::unique_ptr<SesionBd> session_, second_;
    std::chrono::duration<double, std::milli> waited_{};
};

/// A process that works apart and tells lines of text.
class ChildProcess {
public:
    using Tell = std::function<void(const std::string& line)>;

    /// An exception of `work` is told as its last line, behind "!".
    explicit ChildProcess(const std::function<void(const Tell&)>& work) {
        int ends[2];
        if (pipe(ends) != 0) throw std::runtime_error("no pipe");
        child_ = fork();
        if (child_ < 0) throw std::runtime_error("no process");
        output_ = ends[0];
        if (child_ > 0) {
            close(ends[1]);
            return;
        }
        const Tell tell = [&](const std::string& line) {
            if (write(ends[1], (line + '\n').data(), line.size() + 1) < 0) _exit(2);
        };
        try {
            work(tell);
        } catch (const std::exception& error) {
            tell(std::string("!") + error.what());
        }
        _exit(0);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() {
        if (child_ > 0) end(true);
    }

    /// Returns when the process has told something.
    void awaitLine() {
        char c = 0;
        while (::read(output_, &c, 1) == 1) {
            told_ += c;
            if (c == '\n') return;
        }
    }
    /// Waits for its end, or kills it outright, and gives all lines that it told.
    std::vector<std::string> end(bool killed) {
        if (killed) ::kill(child_, SIGKILL);
        char buffer[4096];
        for (ssize_t size = 0; (size = ::read(output_, buffer, sizeof buffer)) > 0;)
            told_.append(buffer, static_cast<std::size_t>(size));
        close(output_);
        waitpid(std::exchange(child_, -1), nullptr, 0);
        std::vector<std::string> lines;
        std::istringstream text(told_);
        for (std::string line; std::getline(text, line);) lines.push_back(line);
        return lines;
    }

private:
    pid_t child_ = -1;
    int output_ = -1;
    std::string told_;
};

struct KillReport {
    /// What was found wrong, in words; empty when all is well.
    std::vector<std::string> faults;
    int kills = 0;
    /// Saves that went through, those of the checks included.
    int saves = 0;
    /// Rounds of which the kill left some saves done and others not.
    int cutRounds = 0;
};

/// Clerks who save identities, customers and names of banks, one after the other, until they are killed.
class KilledClerks {
public:
    KilledClerks(std::unique_ptr<Place> place, int rounds)
        : office_(std::move(place), rounds + 1), place_(*office_.place), wanted_(rounds) {}

    /// Rounds of three saves each until all are done; on the way a clerk is killed again and again, at a random moment
    /// of one of the first six saves, and another one goes on. Ends at the first fault.
    KillReport work(unsigned seed) {
        std::mt19937 random(seed);
        std::uniform_int_distribution<int> before(0, 5);
        std::uniform_real_distribution<double> moment(0, measuredRound().count() / savesOfARound);
        while (done_ < wanted_ && report_.faults.empty())
            clerkIsKilled(before(random), std::chrono::duration<double>(moment(random)));
        return report_;
    }

private:
    static constexpr int savesOfARound = 3;
    /// Of a clerk whom nobody comes to kill in time.
    static constexpr int mostRounds = 3;

    std::chrono::duration<double> measuredRound() {
        Clerk clerk(place_);
        const auto start = std::chrono::steady_clock::now();
        doRound(clerk, ++done_, [](const std::string&) {});
        report_.saves += savesOfARound;
        return std::chrono::steady_clock::now() - start;
    }

    void expect(bool holds, const std::string& fault) {
        if (!holds) report_.faults.push_back("kill " + std::to_string(report_.kills) + ": " + fault);
    }
    static std::string document(int round) { return "K" + std::to_string(round); }

    static void doRound(Clerk& clerk, int round, const ChildProcess::Tell& tell) {
        clerk.saveIdentity(document(round));
        tell("identity");
        clerk.saveCustomer("Cuenta " + document(round), document(round));
        tell("customer");
        clerk.rename(Office::bankCode(round), "Banco " + document(round));
        tell("bank");
    }

    /// After `before` saves and a little more.
    void clerkIsKilled(int before, std::chrono::duration<double> behind) {
        ChildProcess clerk([&](const ChildProcess::Tell& tell) {
            Clerk working(place_);
            tell("ready");
            for (int round = done_ + 1; round <= std::min(wanted_, done_ + mostRounds); ++round)
                doRound(working, round, tell);
        });
        for (int line = 0; line <= before; ++line) clerk.awaitLine();
        std::this_thread::sleep_for(behind);
        const auto told = clerk.end(true);
        ++report_.kills;
        if (!told.empty() && told.back().front() == '!') expect(false, told.back());
        check(static_cast<int>(told.size()) - 1);
    }

    /// Everything is whole, what was told to be saved is there, and another clerk can go on at once.
    void check(int told) {
        place_.settle();
        for (const char* part : {Place::company, ""})
            place_.companies({})->examine(part, [&](const std::string& fault) { expect(false, fault); });
        Clerk next(place_, std::chrono::milliseconds(100));
        const auto count = [&](const std::string& sql) { return next.number(sql); };
        const int identities = count("SELECT COUNT(*) FROM KXComun.dbo.Nif"),
                  customers = count("SELECT COUNT(*) FROM PCta WHERE PCta_Subcuenta = 1 AND PCta_Cta LIKE '430%'"),
                  banks = count("SELECT COUNT(*) FROM PCta WHERE PCta_Des LIKE 'Banco %' AND PCta_Cta LIKE '572%'");
        expect(
            identities == count("SELECT COUNT(*) FROM KXComun.dbo.Nif WHERE Nif_TipDoc = 3 AND Nif_Nom = 'Nombre ' + "
                                "Nif_Doc AND Nif_Ape1 = 'Primero ' + Nif_Doc AND Nif_Ape2 = 'Segundo ' + Nif_Doc "
                                "AND Nif_Dir = 'Calle ' + Nif_Doc AND Nif_Pob = 'Villa ' + Nif_Doc AND Nif_CE = "
                                "Nif_Doc AND Nif_Pais = '011'"),
            "an identity is not whole");
        expect(
            customers == count("SELECT COUNT(*) FROM PCta, KXComun.dbo.Nif WHERE PCta_Subcuenta = 1 AND PCta_Cta LIKE "
                               "'430%' AND Pcta_IdNif = Nif_Id AND PCta_Des = 'Cuenta ' + Nif_Doc AND PCta_bActiva "
                               "= 1 AND PCta_IdMasa = 0 AND PCta_IdCen = 0 AND PCta_IdDpto = 0 AND LEN(PCta_Cta) = "
                               "8"),
            "a customer is not whole");
        expect(count("SELECT COUNT(*) FROM PCta, Apu WHERE Apu_IdCta = PCta_Id AND Apu_CtaDes <> CASE PCta_Des WHEN "
                     "'Antigua' THEN '' ELSE PCta_Des END") == 0,
               "a bank has its name and not all of its lines have it, or the other way round");
        const int now = identities + customers + banks;
        expect(now - savesOfARound * done_ == told || now - savesOfARound * done_ == told + 1,
               "told " + std::to_string(told) + " saves, found " + std::to_string(now - savesOfARound * done_));
        if (report_.faults.empty()) finish(next, now - savesOfARound * done_);
    }

    /// The next clerk does what is missing of the round, or a whole one.
    void finish(Clerk& next, int found) {
        const int open = found % savesOfARound, round = done_ + found / savesOfARound + 1;
        if (open > 0) ++report_.cutRounds;
        try {
            if (open == 0) next.saveIdentity(document(round));
            if (open < 2) next.saveCustomer("Cuenta " + document(round), document(round));
            next.rename(Office::bankCode(round), "Banco " + document(round));
        } catch (const std::exception& error) {
            expect(false, std::string("the next save: ") + error.what());
        }
        report_.saves += savesOfARound * (round - done_);
        done_ = round;
        expect(place_.leftovers() == 0, "a journal is left");
    }

    Office office_;
    const Place& place_;
    int wanted_;
    int done_ = 0;
    KillReport report_;
};

}  // namespace FendaMaestros::testing

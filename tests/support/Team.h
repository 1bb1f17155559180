#pragma once

// Eight clerks at work at once, some of whom are killed, and the server with them: what each was told, against what is
// stored in the end.

#include <map>
#include <set>

#include "tests/support/Clerks.h"
#include "toolkit/Text.h"

namespace FendaMaestros::testing {

struct TeamReport {
    /// What was found wrong, in words; empty when all is well.
    std::vector<std::string> faults;
    int saved = 0;
    /// Saves that were turned away, and why.
    std::map<std::string, int> refused;
    /// Saves of which nobody was told how they ended: the clerk was killed, or told so.
    int unknown = 0, unknownAndStored = 0;
    int killedClerks = 0, crashes = 0;
    /// How long the saves that were told took, in ms.
    std::vector<double> waits;

    /// 0 to 1: the share of the saves that waited no longer.
    double wait(double share) {
        if (waits.empty()) return 0;
        std::ranges::sort(waits);
        return waits[static_cast<std::size_t>(share * static_cast<double>(waits.size() - 1))];
    }
};

class Team {
public:
    static constexpr int clerks = 8;

    struct Plan {
        /// Of each clerk.
        int saves = 25;
        int killedClerks = 0, crashes = 0;
        std::optional<std::chrono::milliseconds> wait = {};
        sqlite::ConnectionWrapper wrap = {};
        unsigned seed = 1;
    };

    Team(std::unique_ptr<Place> place, Plan plan) : office_(std::move(place), accounts, 5), plan_(std::move(plan)) {
        const auto connection = office_.place->open()->Conexion();
        connection->run({"INSERT INTO KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom) VALUES (3, 'A', 'A')", {}});
        connection->run({"UPDATE PCta SET PCta_Des = '0' WHERE PCta_Des = 'Antigua'", {}});
    }

    /// Each clerk creates accounts, all in one group or each in a group of their own.
    TeamReport createAccounts(bool oneGroup) {
        work([=](Clerk& clerk, int number, const std::string& attempt) {
            static constexpr const char* groups[clerks] = {"430", "400", "410", "431", "440", "411", "401", "436"};
            return clerk.saveCustomer(attempt, "A", groups[oneGroup ? 0 : number]);
        });
        Stored stored;
        std::set<std::string> codes;
        const auto rows = office_.place->open()->Conexion()->Execute(
            "SELECT PCta_Cta, PCta_Des FROM PCta WHERE PCta_Subcuenta = 1 AND PCta_Cta NOT LIKE '572%'");
        for (int row = 0; row < rows->rowCount(); ++row) {
            const auto code = rows->cell(row, 0).text(), name = rows->cell(row, 1).text();
            if (!codes.insert(code).second) fault("code " + code + " was given twice");
            if (!stored.emplace(name, code).second) fault(name + " was stored twice");
        }
        compare(stored);
        return std::move(report_);
    }

    /// All clerks change the same accounts: the number in the name is raised by one. The first change of an account
    /// gives its lines the name.
    TeamReport changeAccounts() {
        work([](Clerk& clerk, int, const std::string&) {
            static std::mt19937 random(static_cast<unsigned>(getpid()));
            const auto code = Office::bankCode(1 + static_cast<int>(random() % accounts));
            clerk.rename(code, [](const std::string& shown) { return std::to_string(std::stoi(shown) + 1); });
            return code;
        });
        int changes = 0;
        const auto connection = office_.place->open()->Conexion();
        const auto rows =
            connection->Execute("SELECT PCta_Des FROM PCta WHERE PCta_Cta LIKE '572%' AND PCta_Subcuenta = 1");
        for (int row = 0; row < rows->rowCount(); ++row) changes += std::stoi(rows->cell(row, 0).text());
        int open = 0;
        for (const auto& [name, attempt] : attempts_) open += attempt.end == End::Unknown;
        report_.unknown = open;
        report_.unknownAndStored = changes - report_.saved;
        if (changes < report_.saved || changes > report_.saved + open)
            fault(std::to_string(report_.saved) + " changes were told, " + std::to_string(changes) + " are stored");
        if (connection
                ->Execute("SELECT COUNT(*) FROM PCta, Apu WHERE Apu_IdCta = PCta_Id AND Apu_CtaDes <> CASE "
                          "PCta_Des WHEN '0' THEN '' ELSE '1' END")
                ->cell(0, 0)
                .integer() != 0)
            fault("an account has its name and not all of its lines have it, or the other way round");
        return std::move(report_);
    }

private:
    static constexpr int accounts = 20;
    /// Of a clerk, for each save wanted.
    static constexpr int mostAttempts = 100;

    enum class End { Unknown, Saved, Refused };
    struct Attempt {
        End end = End::Unknown;
        std::string code = {};
    };
    /// Codes by names.
    using Stored = std::map<std::string, std::string>;
    /// Gives the code that was saved; throws what the clerk was told when it was not.
    using Save = std::function<std::string(Clerk& clerk, int number, const std::string& attempt)>;

    void fault(const std::string& words) { report_.faults.push_back(words); }

    /// Tells "try NAME" before each attempt and behind it "saved MS CODE", "refused MS WHY" or "unknown MS WHY".
    void beClerk(const Save& save, int number, const std::string& name, int wanted, const ChildProcess::Tell& tell) {
        std::unique_ptr<Clerk> clerk;
        for (int attempt = 1; wanted > 0 && attempt <= mostAttempts * plan_.saves; ++attempt) {
            const auto called = name + " " + std::to_string(attempt);
            tell("try " + called);
            std::string end = "refused", told;
            try {
                if (!clerk) clerk = std::make_unique<Clerk>(*office_.place, plan_.wait, plan_.wrap);
                told = save(*clerk, number, called);
                end = "saved";
            } catch (const std::exception& error) {
                told = error.what();
                if (told.find("no se sabe") != std::string::npos) end = "unknown";
                // The person has been told already when something fails behind the save.
                if (clerk && clerk->isToldSaved()) end = "saved", told.clear();
            }
            wanted -= end == "saved";
            tell(end + " " + std::to_string(clerk ? clerk->lastWait().count() : 0) + " " +
                 text::replaced(text::replaced(told, "\r", ""), "\n", " "));
            if (end != "saved") std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        tell("done");
    }

    void work(const Save& save) {
        std::mt19937 random(plan_.seed);
        std::vector<std::unique_ptr<ChildProcess>> team(clerks);
        std::vector<int> wanted(clerks, plan_.saves);
        int people = 0;
        const auto begin = [&](int number) {
            const auto name = "Puesto " + std::to_string(++people);
            team[number] =
                std::make_unique<ChildProcess>([this, &save, number, name, count = wanted[number]](const auto& tell) {
                    beClerk(save, number, name, count, tell);
                });
        };
        for (int number = 0; number < clerks; ++number) begin(number);
        const int events = plan_.killedClerks + plan_.crashes;
        for (int event = 1; event <= events; ++event) {
            std::this_thread::sleep_for(std::chrono::milliseconds(random() % 150));
            // The crashes are spread among the kills.
            if (event * plan_.crashes / events != (event - 1) * plan_.crashes / events) {
                report_.crashes += office_.place->crash();
                continue;
            }
            const int number = static_cast<int>(random() % clerks);
            const auto told = team[number]->end(true);
            report_.killedClerks += told.empty() || told.back() != "done";
            wanted[number] -= take(told);
            begin(number);
        }
        for (auto& clerk : team) {
            const auto told = clerk->end(false);
            take(told);
            if (told.empty() || told.back() != "done") fault("a clerk has ended: " + (told.empty() ? "" : told.back()));
        }
        office_.place->settle();
    }

    /// Of an explanation, so that equal ones are counted together.
    static std::string withoutCodes(std::string text) {
        std::erase_if(text, [](char c) { return c >= '0' && c <= '9'; });
        return text;
    }

    /// Gives how many saves were told.
    int take(const std::vector<std::string>& lines) {
        const int before = report_.saved;
        Attempt* current = nullptr;
        for (const auto& line : lines) {
            std::istringstream words(line);
            std::string kind;
            words >> kind;
            if (kind == "try") {
                current = &attempts_[line.substr(4)];
                continue;
            }
            double wait = 0;
            std::string told;
            if (!current || !(words >> wait)) continue;
            std::getline(words >> std::ws, told);
            if (kind == "unknown") continue;
            current->end = kind == "saved" ? End::Saved : End::Refused;
            if (kind == "saved") {
                current->code = told;
                ++report_.saved;
                report_.waits.push_back(wait);
            } else {
                ++report_.refused[withoutCodes(told)];
            }
        }
        return report_.saved - before;
    }

    void compare(const Stored& stored) {
        for (const auto& [name, code] : stored)
            if (!attempts_.contains(name)) fault(name + " is stored, and nobody has tried to");
        for (const auto& [name, attempt] : attempts_) {
            const auto found = stored.find(name);
            const bool there = found != stored.end();
            report_.unknown += attempt.end == End::Unknown;
            report_.unknownAndStored += attempt.end == End::Unknown && there;
            if (attempt.end == End::Refused && there) fault(name + " was not told to be saved, and is stored");
            if (attempt.end != End::Saved) continue;
            if (!there) fault(name + " was told to be saved, and is not stored");
            if (there && !attempt.code.empty() && found->second != attempt.code)
                fault(name + " was told to be " + attempt.code + " and is " + found->second);
        }
    }

    Office office_;
    Plan plan_;
    std::map<std::string, Attempt> attempts_;
    TeamReport report_;
};

}  // namespace FendaMaestros::testing

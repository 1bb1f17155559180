#pragma once

// A clerk whose connection to the server is cut again and again, at any byte of what passes.

#include "session/Literal.h"
#include "tests/support/Clerks.h"
#include "tests/support/Proxy.h"

namespace FendaMaestros::testing {

/// A place on a server that is reached through a proxy.
class ThroughProxy final : public Place {
public:
    explicit ThroughProxy(const ServerPlace& place) : proxy(place.socket()), place_(place) {}

    std::unique_ptr<Companies> companies(std::optional<std::chrono::milliseconds> wait) const override {
        return std::make_unique<postgres::Server>(place_.connection() + " host=" + proxy.host().string(),
                                                  wait.value_or(std::chrono::seconds(1)), folder());
    }
    std::filesystem::path folder() const override { return place_.folder(); }

    mutable tests::Proxy proxy;

private:
    const ServerPlace& place_;
};

struct CutReport {
    /// What was found wrong, in words; empty when all is well.
    std::vector<std::string> faults;
    int cuts = 0;
    /// Cuts of which the clerk was told nothing, for the save was found to be stored, or could begin again.
    int unnoticed = 0;
    /// Cuts that the screen was still open behind, so that the same save was tried again there.
    int triedAgain = 0;
};

class CutClerk {
public:
    explicit CutClerk(int cuts) : cuts_(cuts), office_(std::make_unique<ServerPlace>(), 2 * cuts + 10, 3) {
        direct_->Conexion()->run(
            {"INSERT INTO KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom) VALUES (3, 'A', 'A')", {}});
    }

    /// Saves new identities, new accounts and changes until the connection has been cut so many times, each of them
    /// until it is saved. Ends at the first fault.
    CutReport work(unsigned seed) {
        random_.seed(seed);
        for (auto& kind : kinds) {
            clerk_.reset();
            through_.proxy.letPass();
            whenSaving_ = [&] {
                kind.opening = through_.proxy.traffic();
                through_.proxy.letPass();
            };
            save(kind);
            kind.saving = through_.proxy.traffic();
        }
        while (report_.cuts < cuts_ && report_.faults.empty()) cutOne(kinds[random_() % kinds.size()]);
        if (number("SELECT COUNT(*) - COUNT(DISTINCT PCta_Cta) FROM PCta WHERE PCta_Subcuenta = 1") != 0)
            fault("a code was given twice");
        if (number("SELECT COUNT(*) FROM PCta, Apu WHERE Apu_IdCta = PCta_Id AND Apu_CtaDes <> CASE PCta_Des WHEN "
                   "'Antigua' THEN '' ELSE PCta_Des END") != 0)
            fault("an account has its name and not all of its lines have it, or the other way round");
        return std::move(report_);
    }

private:
    struct Kind {
        const char* counted;
        void (*save)(Clerk& clerk, const std::string& name, int number);
        /// From connecting to the open screen, and from the press of the button to the end.
        tests::Proxy::Traffic opening = {}, saving = {};
    };

    void fault(const std::string& words) {
        report_.faults.push_back("cut " + std::to_string(report_.cuts) + ": " + words);
    }
    int number(const std::string& sql) {
        return static_cast<int>(direct_->Conexion()->Execute(sql)->cell(0, 0).integer());
    }
    std::string name() const { return "N" + std::to_string(done_); }
    bool isStored(const Kind& kind) {
        const int rows = number(kind.counted + literal(name()));
        if (rows > 1) fault(name() + " is stored " + std::to_string(rows) + " times");
        return rows > 0;
    }

    void save(const Kind& kind) {
        if (!clerk_) clerk_ = std::make_unique<Clerk>(through_);
        clerk_->whenRefused = whenRefused_;
        clerk_->whenSaving = whenSaving_;
        kind.save(*clerk_, name(), done_);
        if (!isStored(kind)) fault(name() + " was told to be saved, and is not stored");
        ++done_;
    }

    /// Something has failed that the screen does not tell, in front of the save or behind it.
    void failed(const Kind& kind, const std::string& message, const std::function<void(const std::string&)>& refused) {
        whenRefused_ = {};
        whenSaving_ = [] {};
        if (!clerk_ || !clerk_->isToldSaved()) {
            refused(message);
            return save(kind);
        }
        if (!isStored(kind)) fault(name() + " was told to be saved, and is not stored: " + message);
        ++done_;
    }

    /// Every piece is as likely as any other, however short.
    std::size_t randomByte(const tests::Proxy::Traffic& traffic) {
        const auto piece = random_() % traffic.pieces.size();
        const auto begin = traffic.pieces[piece],
                   end = piece + 1 < traffic.pieces.size() ? traffic.pieces[piece + 1] : traffic.bytes;
        return begin + random_() % (end - begin);
    }

    void cutOne(const Kind& kind) {
        if (random_() % 4 == 0) clerk_.reset();
        whenSaving_ = [] {};
        if (const auto behind = randomByte(kind.saving); random_() % 2 == 0) {
            through_.proxy.letPass();
            whenSaving_ = [this, behind] { through_.proxy.cutBehind(behind); };
        } else {
            through_.proxy.cutBehind(randomByte(kind.opening));
        }
        bool told = false;
        const auto refused = [&](const std::string& message) {
            told = true;
            if (!through_.proxy.hasCut()) fault("refused without a cut: " + message);
            if (isStored(kind)) fault(name() + " was not told to be saved, and is stored: " + message);
            report_.cuts += 1;
            through_.proxy.letPass();
        };
        whenRefused_ = [&](const std::string& message) {
            refused(message);
            ++report_.triedAgain;
        };
        try {
            save(kind);
        } catch (const std::exception& error) {
            if (told) return fault(std::string("behind the cut: ") + error.what());
            failed(kind, error.what(), refused);
        }
        if (!told && through_.proxy.hasCut()) {
            ++report_.cuts;
            ++report_.unnoticed;
        }
    }

    std::array<Kind, 3> kinds{
        {{"SELECT COUNT(*) FROM KXComun.dbo.Nif WHERE Nif_Doc = ",
          [](Clerk& clerk, const std::string& name, int) { clerk.saveIdentity(name); }},
         {"SELECT COUNT(*) FROM PCta WHERE PCta_Cta LIKE '430%' AND PCta_Des = ",
          [](Clerk& clerk, const std::string& name, int) { clerk.saveCustomer(name, "A"); }},
         {"SELECT COUNT(*) FROM PCta WHERE PCta_Cta LIKE '572%' AND PCta_Des = ",
          [](Clerk& clerk, const std::string& name, int number) { clerk.rename(Office::bankCode(number), name); }}}};
    int cuts_;
    Office office_;
    std::unique_ptr<SesionBd> direct_ = office_.place->open();
    ThroughProxy through_{dynamic_cast<const ServerPlace&>(*office_.place)};
    std::unique_ptr<Clerk> clerk_;
    std::function<void(const std::string&)> whenRefused_;
    std::function<void()> whenSaving_;
    std::mt19937 random_;
    int done_ = 1;
    CutReport report_;
};

}  // namespace FendaMaestros::testing

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "session/SesionBd.h"
#include "ui/OutdatedPreview.h"

namespace FendaMaestros {

/// One sub-account gets a code that is free. Codes are completed as where one is typed: 43,5; "43," asks for the next
/// free one.
struct AccountToRenumber {
    std::string from, to;
    /// A code that hangs from no account of the official plan is right, as where a person has confirmed it.
    bool outsidePlan = false;
};

/// All sub-accounts get codes of another length, and the company with them.
struct DigitsToChange {
    int digits = 0;
};

/// Two sub-accounts become one: what names the first names the second from then on, and the first is deleted.
struct AccountsToMerge {
    /// Whose tax identity the one that stays has from then on, when they have different ones.
    enum class Identity : std::uint8_t { Unsaid, OfFirst, OfSecond };

    std::string from, into;
    Identity identity = Identity::Unsaid;
};

using RenumberingRequest = std::variant<AccountToRenumber, DigitsToChange, AccountsToMerge>;

/// What becomes of a code.
struct CodeChange {
    std::string from;
    std::string to;    ///< "" when there is none
    std::string name;  ///< of the sub-account; "" for a code that none has
    std::int64_t lines = 0;
    std::string why = {};  ///< what forbids it; "" for nothing

    bool operator==(const CodeChange&) const = default;
};

/// How many rows of a kind change.
struct RowCount {
    std::int64_t rows = 0;
    std::string words;  ///< "1.234 apuntes"

    bool operator==(const RowCount&) const = default;
};

/// A write, and the rows that it touches.
struct RenumberingStep {
    std::string sql;
    std::vector<Variant> parameters;
    std::int64_t rows = 0;

    bool operator==(const RenumberingStep&) const = default;
};

/// What a request would do. Sentences are Spanish.
struct RenumberingPlan {
    std::string title;
    std::vector<CodeChange> codes = {};
    std::vector<RowCount> counts = {};
    std::vector<std::string> obstacles = {};  ///< what forbids it
    std::vector<std::string> notes = {};      ///< what else a person should know
    std::vector<RenumberingStep> steps = {};  ///< none when it is forbidden

    bool allowed() const { return obstacles.empty(); }
    bool operator==(const RenumberingPlan&) const = default;
};

/// Told how many of all rows are written, now and then also in between; false stops the work.
using RenumberingProgress = std::function<bool(std::int64_t done, std::int64_t total)>;

/// Reads what the request would do; nothing is written. What forbids it is told by the plan. Throws what the session
/// throws.
RenumberingPlan planRenumbering(SesionBd& session, const RenumberingRequest& request);

/// Carries out a plan that a person has seen, in one transaction: all of it or nothing. The session keeps the
/// parameters that it has read. Throws std::invalid_argument when the plan is not allowed, OutdatedPreview when by now
/// it would be another one, and what the session throws: ErrorBd (Busy) while another program writes, (Stopped) when
/// `progress` stops it.
void applyRenumbering(SesionBd& session, const RenumberingRequest& request, const RenumberingPlan& seen,
                      const RenumberingProgress& progress = {});

}  // namespace FendaMaestros

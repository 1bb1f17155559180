#pragma once

#include <functional>
#include <memory>
#include <string>

#include "session/Companies.h"

namespace FendaMaestros {

/// Examines how companies are kept, and whether their rows belong together. Changes nothing.
class Examination {
public:
    /// Told each fault as it is found: the company, or "datos comunes", and a sentence.
    using Tell = std::function<void(const std::string& where, const std::string& fault)>;

    /// `companies` must outlive the examination.
    Examination(const Companies& companies, Tell tell) : companies_(companies), tell_(std::move(tell)) {}

    /// How the shared database is kept; to be called first.
    void checkShared();
    /// One company, and with the first one that opens the rows that all share. Throws std::exception, in Spanish, when
    /// it cannot be checked.
    void check(const std::string& name);
    bool hasFound() const { return found_; }

private:
    /// Who is told the faults of a company, or of the shared database when it is empty.
    Companies::Tell of(const std::string& company);

    const Companies& companies_;
    Tell tell_;
    bool found_ = false;
    bool sharedIsWhole_ = false;
    bool sharedIsChecked_ = false;
};

}  // namespace FendaMaestros

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/Place.h"

namespace FendaMaestros {

/// A company and where it is kept.
struct UsedCompany {
    Place place;
    std::string company;

    bool operator==(const UsedCompany&) const = default;
    /// "Comercial Peñalba — /datos/fenda".
    std::string text() const;
};

/// The companies that were used last, for the next start of the program. Secrets of a connection are never kept.
class LastUsed {
public:
    static constexpr std::size_t most = 6;
    /// Keeps them for the next start, a line each.
    using Keep = std::function<void(const std::vector<std::string>& lines)>;

    /// Forgets them with the program.
    LastUsed() = default;
    /// `lines` as they were given to `keep` once; those that say nothing are left out.
    LastUsed(const std::vector<std::string>& lines, Keep keep);

    /// The newest first.
    const std::vector<UsedCompany>& all() const { return all_; }
    /// It is the newest now.
    void use(const UsedCompany& used);

private:
    std::vector<UsedCompany> all_;
    Keep keep_;
};

}  // namespace FendaMaestros

#pragma once

#include <string>

namespace FendaMaestros {

/// A company to create, as it was typed; what is empty takes its default.
struct CompanyRequest {
    std::string name;
    std::string fiscalYear;
    std::string digits;
    std::string province;
    std::string nameOrder;
};

struct NewCompany {
    std::string name;
    int fiscalYear;
    /// Of a sub-account.
    int digits;
    int province;
    /// 0: a person's name first; 1: the surnames.
    int nameOrder;
};

/// Throws std::invalid_argument, in Spanish, for a request that makes no sense. Without a year, the current one.
NewCompany validCompany(const CompanyRequest& request);

}  // namespace FendaMaestros

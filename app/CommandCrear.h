#pragma once

#include <filesystem>
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

/// `fenda crear`: makes the company, and the data folder with it when there is none, and says where. Returns 0. Throws
/// std::invalid_argument for a request that makes no sense, and what else goes wrong as other std::exception; both in
/// Spanish.
int runCrear(const std::filesystem::path& folder, const CompanyRequest& request);

}  // namespace FendaMaestros

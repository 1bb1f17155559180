#include "app/CommandCrear.h"

#include <cstdio>
#include <stdexcept>

#ifdef FENDA_WITH_SQLITE
#include "platform/sqlite/DataFolder.h"
#endif

namespace FendaMaestros {

namespace {

#ifdef FENDA_WITH_SQLITE

void create(const std::filesystem::path& folder, const NewCompany& company) {
    sqlite::DataFolder(folder).createCompany({.name = company.name,
                                              .fiscalYear = company.fiscalYear,
                                              .accountDigits = company.digits,
                                              .province = company.province,
                                              .nameOrder = company.nameOrder});
}

#else

void create(const std::filesystem::path&, const NewCompany&) {
    throw std::runtime_error("Este programa se ha construido sin base de datos: no puede crear empresas.");
}

#endif

}  // namespace

int runCrear(const std::filesystem::path& folder, const CompanyRequest& request) {
    const NewCompany company = validCompany(request);
    create(folder, company);
    std::printf("Se ha creado la empresa «%s», ejercicio %d, en %s\n", company.name.c_str(), company.fiscalYear,
                folder.c_str());
    return 0;
}

}  // namespace FendaMaestros

#include "app/CommandCrear.h"

#include <cstdio>

#include "app/Composition.h"

namespace FendaMaestros {

int runCrear(const Place& place, const TypedCompany& typed) {
    const NewCompany company = readCompany(typed);
    companiesAt(place)->create(company);
    std::printf("Se ha creado la empresa «%s», ejercicio %d, en %s\n", company.name.c_str(), company.fiscalYear,
                nameOf(place).c_str());
    return 0;
}

}  // namespace FendaMaestros

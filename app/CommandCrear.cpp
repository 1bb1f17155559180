#include "app/CommandCrear.h"

#include <string>

#include "app/Composition.h"
#include "app/StandardStreams.h"

namespace FendaMaestros {

int runCrear(const Place& place, const TypedCompany& typed) {
    const NewCompany company = readCompany(typed);
    companiesAt(place)->create(company);
    writeOutput("Se ha creado la empresa «" + company.name + "», ejercicio " + std::to_string(company.fiscalYear) +
                ", en " + nameOf(place) + "\n");
    return 0;
}

}  // namespace FendaMaestros

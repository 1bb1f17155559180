#include "app/UnattendedCompany.h"

#include <stdexcept>

#include "toolkit/Controls.h"
#include "toolkit/Form.h"

namespace FendaMaestros {

namespace {

std::unique_ptr<SesionBd> open(const Place& place, const std::string& company) {
    const std::unique_ptr<Companies> companies = companiesAt(place);
    return companies->open(company.empty() ? firstCompany(*companies, place) : company);
}

}  // namespace

UnattendedCompany::UnattendedCompany(const Place& place, const std::string& company)
    : desktop_(headlessDesktop(*this)), company_(*desktop_.desktop, open(place, company)) {}

void UnattendedCompany::attend(Form& form) {
    if (auto* save = form.find<CommandButton>("cmdPdf")) form.press(*save);
}

Reply UnattendedCompany::answer(const Message& message) { throw std::runtime_error(message.text); }

}  // namespace FendaMaestros

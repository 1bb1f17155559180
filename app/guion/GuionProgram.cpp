#include "app/guion/GuionProgram.h"

#include "app/Composition.h"
#include "app/guion/Interruption.h"
#include "app/guion/PublicProperties.h"

namespace FendaMaestros {

GuionProgram::GuionProgram(GuionDesktop desktop, TraceSink trace, const std::optional<Place>& place)
    : desktop_(std::move(desktop)), trace_(std::move(trace)) {
    if (!place) temporary_.emplace();
    place_ = place ? *place : Place{Place::Kind::Folder, temporary_->path()};
    companies_ = companiesAt(place_);
    registerComponents(components_, *desktop_.desktop);
    renewObject();
}

GuionProgram::~GuionProgram() = default;

void GuionProgram::use(std::unique_ptr<SesionBd> session) {
    component_.reset();
    session->Conexion()->stopWhen(Interruption::asked);
    session_ = traced(std::move(session), [this](std::string_view line) {
        if (tracing_) trace_(line);
    });
    renewObject();
    component_->MyBd = component_->MyBdorigen = session_.get();
}

void GuionProgram::renewObject() { component_ = std::make_unique<FendaMaes>(*desktop_.desktop, components_); }

std::vector<std::pair<std::string, Variant>> GuionProgram::properties() const {
    std::vector<std::pair<std::string, Variant>> all;
    for (const PublicProperty& property : publicProperties())
        all.emplace_back(property.name, property.get(*component_));
    return all;
}

void GuionProgram::setProperty(const std::string& name, const std::string& value) {
    checkedProperty(name, value).set(*component_, session_.get(), value);
}

void GuionProgram::start(const std::optional<std::string>& company) {
    if (company) return openCompany(*company);
    if (temporary_) return openCompany(companies_->createDemonstration());
    openCompany(firstCompany(*companies_, place_));
}

void GuionProgram::openCompany(const std::string& name) { use(companies_->open(name)); }

void GuionProgram::createCompany(const TypedCompany& typed) {
    const NewCompany company = readCompany(typed);
    companies_->create(company);
    openCompany(company.name);
}

}  // namespace FendaMaestros

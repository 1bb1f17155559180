#pragma once

#include <memory>
#include <optional>

#include "app/Place.h"
#include "app/guion/GuionDesktop.h"
#include "app/guion/GuionHost.h"
#include "app/guion/TemporaryFolder.h"
#include "component/FendaMaes.h"
#include "session/Companies.h"
#include "session/Decorators.h"

namespace FendaMaestros {

/// The host of a script: a place of companies, the company open in it, and one object of the public class.
class GuionProgram final : public GuionHost {
public:
    /// No company is open yet. Without a place, a temporary folder. `trace` is told every SQL text and write while
    /// tracing is on. Throws std::exception, in Spanish, when there is no place for companies.
    GuionProgram(GuionDesktop desktop, TraceSink trace, const std::optional<Place>& place);
    ~GuionProgram() override;

    /// Opens the company of that name; without one the first of the place, which in a temporary folder is the
    /// demonstration company. Throws std::exception, in Spanish, when that cannot be done.
    void start(const std::optional<std::string>& company);

    Desktop& desktop() override { return *desktop_.desktop; }
    Gestures& gestures() override { return *desktop_.gestures; }
    int pointer() const override { return desktop_.pointer(); }
    FendaMaes& component() override { return *component_; }
    std::vector<std::pair<std::string, Variant>> properties() const override;
    void setProperty(const std::string& name, const std::string& value) override;
    void renewObject() override;
    void createCompany(const TypedCompany& company) override;
    void openCompany(const std::string& name) override;
    SesionBd* session() override { return session_.get(); }
    void trace(bool on) override { tracing_ = on; }

private:
    void use(std::unique_ptr<SesionBd> session);

    std::optional<TemporaryFolder> temporary_;
    Place place_;
    std::unique_ptr<Companies> companies_;
    GuionDesktop desktop_;
    TraceSink trace_;
    bool tracing_ = false;
    ComponentRegistry components_;
    std::unique_ptr<SesionBd> session_;
    std::unique_ptr<FendaMaes> component_;
};

}  // namespace FendaMaestros

#include "capi/contrato/HostBackend.h"

#include "capi/HostConexion.h"
#include "platform/sqlite/DataFolder.h"
#include "session/SesionSql.h"
#include "storage/CompanyCopy.h"
#include "tests/session/SessionContract.h"
#include "tests/session/TemporaryFolder.h"

namespace FendaMaestros::tests {

namespace {

const fenda_contract_host* tried = nullptr;

std::shared_ptr<ConexionBd> emptyCompany() {
    fenda_connection table{};
    if (!tried || tried->empty_company(tried->context, &table) != FENDA_OK)
        throw std::runtime_error("the host has made no company");
    return std::make_shared<capi::HostConexion>(table);
}

/// Where the library itself keeps companies.
struct Folder {
    explicit Folder(std::chrono::milliseconds wait) : data(folder.path() / "datos", wait) {}

    TemporaryFolder folder;
    sqlite::DataFolder data;
};

/// A host knows one company, which begins empty. The demonstration is that of the library, copied.
class HostCompanies final : public Companies {
public:
    bool exists() const override { return true; }
    std::vector<std::string> list() const override { return {}; }
    void create(const NewCompany&) const override {}
    std::string createDemonstration() const override {
        const Folder own(std::chrono::seconds(1));
        const auto from = own.data.open(own.data.createDemonstration());
        company_->BeginTrans();
        storage::copyCompany(*from->Conexion(), *company_, true, [](std::string_view, std::int64_t) {});
        company_->CommitTrans();
        return "demostración";
    }
    void receive(const std::string&, const std::function<void(ConexionBd&)>&) const override {}
    std::unique_ptr<SesionBd> open(const std::string&) const override {
        return std::make_unique<SesionSql>(company_, ParametrosEmpresa{});
    }

private:
    std::shared_ptr<ConexionBd> company_ = emptyCompany();
};

std::shared_ptr<Companies> ownCompanies(std::chrono::milliseconds wait) {
    const auto made = std::make_shared<Folder>(wait);
    return {made, &made->data};
}

}  // namespace

void tryHost(const fenda_contract_host* host) { tried = host; }

std::vector<Backend> backends() {
    return {{"Host", emptyCompany, [](std::chrono::milliseconds) { return std::make_shared<HostCompanies>(); }}};
}

Backend reference() { return {"Library", nullptr, ownCompanies}; }

}  // namespace FendaMaestros::tests

#include "SessionContract.h"
#include "TemporaryFolder.h"
#include "platform/sqlite/DataFolder.h"
#include "platform/sqlite/Session.h"

namespace FendaMaestros::tests {

namespace {

struct SqliteCompanies {
    explicit SqliteCompanies(std::chrono::milliseconds wait) : data(folder.path() / "datos", wait) {}

    TemporaryFolder folder;
    sqlite::DataFolder data;
};

std::shared_ptr<Companies> sqliteCompanies(std::chrono::milliseconds wait) {
    const auto made = std::make_shared<SqliteCompanies>(wait);
    return {made, &made->data};
}

}  // namespace

std::vector<Backend> backends() { return {{"Sqlite", sqlite::openMemory, sqliteCompanies}}; }

}  // namespace FendaMaestros::tests

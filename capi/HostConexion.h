#pragma once

#include <string>
#include <unordered_set>

#include "capi/Rows.h"
#include "storage/TextScan.h"

namespace FendaMaestros::capi {

/// A host's own connection, through its callbacks. See fenda_connection for what is the host's part and what is ours.
class HostConexion final : public ConexionBd {
public:
    /// Copies the table. Throws Refusal (FENDA_BAD_ARGUMENT) when a callback that is needed is missing.
    explicit HostConexion(const fenda_connection& host);
    HostConexion(const HostConexion&) = delete;
    HostConexion& operator=(const HostConexion&) = delete;
    /// Tells the host.
    ~HostConexion() override;

    std::shared_ptr<Recordset> Execute(std::string_view sql) override;
    void watchReads(ReadWatch watch) override { watch_ = std::move(watch); }
    void stopWhen(StopWatch asked) override { stop_ = std::move(asked); }
    std::int64_t run(const Statement& statement) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

private:
    /// Asks the host. Throws ErrorBd when it fails.
    template <class Call>
    void ask(Call&& call) const;
    /// Throws ErrorBd (Refused) for what is no single read.
    void requireRead(std::string_view sql);

    fenda_connection host_;
    int depth_ = 0;
    ReadWatch watch_;
    StopWatch stop_;
    storage::Shape shape_;
    /// Shapes of reads that have been looked at.
    std::unordered_set<std::string> known_;
};

}  // namespace FendaMaestros::capi

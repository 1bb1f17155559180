#pragma once

#include <utility>

#include "tests/support/FailingConexion.h"

namespace FendaMaestros::testing {

/// Lets another program write its row when a transaction begins.
class RivalConexion final : public FailingConexion {
public:
    using FailingConexion::FailingConexion;
    Statement rival;

    void BeginTrans() override {
        if (!rival.sql.empty()) run(std::exchange(rival, {}));
        FailingConexion::BeginTrans();
    }
};

}  // namespace FendaMaestros::testing

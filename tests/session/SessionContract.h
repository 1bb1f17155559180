#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "session/Companies.h"
#include "session/ErrorBd.h"
#include "session/SesionSql.h"

namespace FendaMaestros {

/// In a failure, as a person reads it.
inline void PrintTo(const Variant& value, std::ostream* out) { *out << (value.isNull() ? "NULL" : value.text()); }

}  // namespace FendaMaestros

namespace FendaMaestros::tests {

/// An adapter that the contracts are checked on.
struct Backend {
    std::string name;
    /// A company and a shared database of their own with all their tables, empty.
    std::function<std::shared_ptr<ConexionBd>()> open;
    /// A place of its own where nothing has been created yet; it goes with what is returned. A statement waits so long
    /// for another connection.
    std::function<std::shared_ptr<Companies>(std::chrono::milliseconds wait)> companies;
};

/// Those that were built (Backends.cpp).
std::vector<Backend> backends();
/// The one whose answers the others' are compared with.
Backend reference();
inline std::string nameOf(const ::testing::TestParamInfo<Backend>& chosen) { return chosen.param.name; }

struct Cell {
    const char* column;
    Variant value;
};

class SessionContract : public ::testing::TestWithParam<Backend> {
protected:
    SessionContract() : connection(GetParam().open()), session(connection, {}) {}

    /// Texts are written as text, numbers as numbers, a null as NULL.
    void insert(const char* table, std::initializer_list<Cell> cells);
    std::shared_ptr<Recordset> read(std::string_view sql) { return connection->Execute(sql); }
    /// The first column of every row, as texts parted by blanks.
    std::string column(std::string_view sql);
    Variant value(std::string_view sql) { return read(sql)->cell(0, 0); }
    /// A chart with accounts of both plans, journal lines, invoices, identities and balances.
    void insertCompany();

    std::shared_ptr<ConexionBd> connection;
    SesionSql session;
};

/// The kind of error that a call throws; fails when it throws none.
template <class Call>
ErrorBd::Kind errorOf(Call&& call) {
    try {
        call();
    } catch (const ErrorBd& error) {
        EXPECT_STRNE(error.what(), "");
        return error.kind();
    }
    ADD_FAILURE() << "no error";
    return ErrorBd::Kind::Other;
}

/// A text of a screen and the rows it gives on insertCompany().
struct ScreenText {
    const char* sql;
    int rows;
};

std::vector<ScreenText> screenTexts();

/// A file of this folder that is part of the program of tests, by its name without what is behind the dot.
std::string_view referenceData(std::string_view name);

}  // namespace FendaMaestros::tests

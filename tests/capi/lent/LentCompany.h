#pragma once

#include <cstring>
#include <memory>
#include <string>
#include <variant>

#include "include/fenda.h"
#include "platform/sqlite/Session.h"
#include "session/ErrorBd.h"

/// A company in memory, lent through the callbacks of a host.
namespace FendaMaestros::tests {

struct LentCompany {
    std::shared_ptr<ConexionBd> connection = sqlite::openMemory();
    bool* released = nullptr;
    /// Transactions that are undone stay kept.
    bool forgetsRollback = false;

    static LentCompany& of(void* context) { return *static_cast<LentCompany*>(context); }

    template <class Work>
    static fenda_status told(Work&& work) {
        try {
            work();
            return FENDA_OK;
        } catch (const ErrorBd& error) {
            fenda_fail(error.what(), error.nativeCode(), error.nativeText().c_str());
            return static_cast<fenda_status>(static_cast<int>(error.kind()) + 1);
        }
    }

    static void hand(fenda_rows* rows, const Variant& cell) {
        if (const auto* integer = std::get_if<std::int64_t>(&cell.storage()))
            fenda_rows_integer(rows, *integer);
        else if (const auto* real = std::get_if<double>(&cell.storage()))
            fenda_rows_real(rows, *real);
        else if (const auto* text = std::get_if<std::string>(&cell.storage()))
            fenda_rows_text(rows, text->data(), text->size());
        else
            fenda_rows_null(rows);
    }

    static Variant parameter(const fenda_value& value) {
        if (value.type == FENDA_INTEGER) return value.integer;
        if (value.type == FENDA_REAL) return value.real;
        if (value.type == FENDA_TEXT) return std::string(value.text, value.length);
        return {};
    }

    static fenda_status execute(void* context, const char* sql, fenda_rows* rows) {
        return told([&] {
            const auto read = of(context).connection->Execute(sql);
            for (int column = 0; column < read->columnCount(); ++column)
                fenda_rows_column(rows, read->columnName(column).c_str());
            for (int row = 0; row < read->rowCount(); ++row)
                for (int column = 0; column < read->columnCount(); ++column) hand(rows, read->cell(row, column));
        });
    }
    static fenda_status run(void* context, const char* sql, const fenda_value* parameters, size_t count,
                            int64_t* touched) {
        return told([&] {
            Statement statement{sql, {}};
            for (size_t i = 0; i < count; ++i) statement.parameters.push_back(parameter(parameters[i]));
            *touched = of(context).connection->run(statement);
        });
    }
    static fenda_status begin(void* context, int32_t) {
        return told([&] { of(context).connection->BeginTrans(); });
    }
    static fenda_status commit(void* context, int32_t) {
        return told([&] { of(context).connection->CommitTrans(); });
    }
    static fenda_status rollback(void* context, int32_t) {
        return told([&] {
            if (of(context).forgetsRollback) return of(context).connection->CommitTrans();
            of(context).connection->RollbackTrans();
        });
    }
    static void release(void* context) {
        if (bool* const told = of(context).released) *told = true;
        delete &of(context);
    }

    /// Owned by the connection.
    static fenda_connection lend(LentCompany* company) {
        return {sizeof(fenda_connection), company, execute, run, begin, commit, rollback, release};
    }
};

}  // namespace FendaMaestros::tests

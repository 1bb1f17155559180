#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct pg_result;

namespace FendaMaestros::postgres {

struct ClearResult {
    void operator()(pg_result* result) const;
};
using Result = std::unique_ptr<pg_result, ClearResult>;

/// A value on its way to the server, as text; nothing for a null.
using Parameter = std::optional<std::string>;
using Parameters = std::vector<Parameter>;

/// Something that the server is to carry out.
struct Step {
    enum class Kind {
        Command,   ///< `sql` with `parameters`
        Prepare,   ///< `sql` as the statement `name`
        Describe,  ///< what the parameters of the statement `name` are
        Run,       ///< the statement `name` with `parameters`
    };
    Kind kind;
    std::string sql;
    std::string name = {};
    Parameters parameters = {};
};

/// What is sent together and answered together. When a step fails, those behind it are not carried out.
using Trip = std::vector<Step>;

inline Step command(std::string sql, Parameters parameters = {}) {
    return {.kind = Step::Kind::Command, .sql = std::move(sql), .parameters = std::move(parameters)};
}

}  // namespace FendaMaestros::postgres

#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "interchange/CompanyState.h"
#include "interchange/Fields.h"

namespace FendaMaestros {

/// The texts of a row by field.
class RowCells {
public:
    RowCells(const std::vector<std::string>& cells, const ColumnMap& columns) : cells_(cells), columns_(columns) {}

    /// Without the blanks around it and the apostrophe that keeps it from being a formula; "" when the row has none.
    std::string operator[](ExchangeField field) const;

private:
    const std::vector<std::string>& cells_;
    const ColumnMap& columns_;
};

/// Gathers sentences with "; " in between.
void addSentence(std::string& to, const std::string& sentence);

/// Adds to `why` what keeps a field from taking a value.
void requireFits(const std::string& value, std::string_view caption, std::size_t characters, std::string& why);

struct FieldChange {
    std::string field, from, to;
};

/// What an identity has in a field, as files say it.
std::string textOf(ExchangeField field, const NifRecord& identity);

/// The identities that the rows of a file bring, by the rules of the register's screen.
class IdentityRows {
public:
    struct Planned {
        NifRecord record;       ///< with the id 0 when it is new
        bool changed = false;   ///< of one that the register has
        std::int64_t line = 0;  ///< of the row that brought it
        int users = 0;          ///< rows that are right and need it
    };
    struct Taken {
        std::size_t planned = 0;  ///< position in planned(), unless `why` says why there is none
        bool isNew = false;
        bool repeated = false;             ///< an earlier row has brought it
        std::vector<FieldChange> changes;  ///< of one that the register has, or that an earlier row has brought
        std::string note, why;
    };

    /// `state` must outlive it.
    IdentityRows(const CompanyState& state, ExchangeKind kind) : state_(state), kind_(kind) {}

    /// Makes room for so many.
    void reserve(std::size_t identities);
    /// Reads the identity of a row. An empty text leaves what there is. `otherwise` is the name of a new identity for
    /// which the row has none.
    Taken take(const RowCells& row, std::int64_t line, const std::string& otherwise);
    std::vector<Planned>& planned() { return planned_; }
    const std::vector<Planned>& planned() const { return planned_; }

private:
    struct Base;
    void readRecord(NifRecord& record, const RowCells& row, Taken& taken, Base& base);
    void fill(NifRecord& record, const RowCells& row, Taken& taken) const;
    void fillCountry(NifRecord& record, const RowCells& row, Taken& taken) const;
    void fillPostalCode(NifRecord& record, const RowCells& row, Taken& taken) const;
    void fillProvince(NifRecord& record, const RowCells& row, Taken& taken) const;
    void fillStreetType(NifRecord& record, const RowCells& row, Taken& taken) const;
    void fillKeys(NifRecord& record, const RowCells& row, Taken& taken) const;
    void complete(NifRecord& record, const std::string& otherwise) const;
    std::vector<FieldChange> changes(const NifRecord& from, const NifRecord& to) const;

    const CompanyState& state_;
    ExchangeKind kind_;
    std::vector<Planned> planned_;
    std::unordered_map<std::string, std::size_t> byKey_;
};

}  // namespace FendaMaestros

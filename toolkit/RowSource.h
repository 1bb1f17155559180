#pragma once

#include <string>

#include "toolkit/Variant.h"

namespace FendaMaestros {

/// Rows that a grid shows and moves through. Rows and columns count from 0.
class RowSource {
public:
    virtual ~RowSource() = default;

    virtual int rowCount() const = 0;
    virtual int columnCount() const = 0;
    virtual std::string columnName(int column) const = 0;
    virtual Variant cell(int row, int column) const = 0;

    /// The row that is current, -1 before the first or after the last one.
    virtual int currentRow() const = 0;
    /// Makes a row current and notifies whoever listens to moves, also when it was current already.
    /// A row outside the rows leaves no row current.
    virtual void moveToRow(int row) = 0;
};

}  // namespace FendaMaestros

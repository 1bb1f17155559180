#include "capi/Rows.h"

#include <limits>
#include <variant>

#include "capi/Texts.h"

namespace FendaMaestros::capi {

namespace {

/// The cells that are kept of one read; what has more was not meant.
constexpr std::size_t mostCells = 200'000'000;

/// Rows between two questions whether more are wanted.
constexpr int rowsBetween = 64;

}  // namespace

// --- filling

void RowsBuilder::breakRule(const char* text) {
    if (!broken_) broken_ = text;
    refuseArgument(text);
}

void RowsBuilder::column(std::string_view name) {
    if (rows_) breakRule("Las columnas van delante de todas las filas.");
    columns_.emplace_back(name);
}

Recordset& RowsBuilder::next() {
    if (enough_) refuse(FENDA_STOPPED, "No se piden más filas.");
    if (columns_.empty()) breakRule("La conexión da filas sin columnas.");
    if (!rows_) rows_ = std::make_shared<Recordset>(columns_);
    if (static_cast<std::size_t>(rows_->rowCount()) * columns_.size() >= mostCells)
        breakRule("La conexión da demasiadas filas.");
    return *rows_;
}

void RowsBuilder::cellDone() {
    if (++cell_ < columns_.size()) return;
    cell_ = 0;
    if (rows_->rowCount() % rowsBetween == 0) ask();
}

void RowsBuilder::ask() {
    stopped_ = stop_ && stop_();
    enough_ = stopped_ || (watch_ && !watch_(rows_->rowCount()));
}

void RowsBuilder::null() {
    next().appendNull();
    cellDone();
}

void RowsBuilder::integer(std::int64_t value) {
    next().appendInteger(value);
    cellDone();
}

void RowsBuilder::real(double value) {
    next().appendReal(value);
    cellDone();
}

void RowsBuilder::text(std::string_view bytes) {
    Recordset& rows = next();
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) breakRule("La conexión da un texto demasiado largo.");
    if (!isText(bytes)) breakRule("La conexión da un texto que no es UTF-8 o contiene ceros.");
    rows.appendText(bytes);
    cellDone();
}

std::shared_ptr<Recordset> RowsBuilder::finish() {
    if (broken_) throw HostFault(broken_);
    if (stopped_) throw ErrorBd(ErrorBd::Kind::Stopped, "La lectura se ha detenido.");
    if (columns_.empty()) throw HostFault("La conexión no ha dado ninguna columna.");
    if (cell_ != 0) throw HostFault("La conexión ha dado una fila incompleta.");
    if (!rows_) rows_ = std::make_shared<Recordset>(columns_);
    rows_->Partial = enough_;
    return std::move(rows_);
}

// --- looking

RowsBuilder& RowsThing::builder() const {
    if (!builder_) refuse(FENDA_BAD_HANDLE, "Estas filas ya están completas.");
    return *builder_;
}

const Recordset& RowsThing::rows() const {
    if (builder_) refuse(FENDA_BAD_HANDLE, "Estas filas todavía no están completas.");
    return *rows_;
}

fenda_value valueOf(const Variant& kept) {
    fenda_value value = {FENDA_NULL, 0, 0, "", 0};
    if (const auto* integer = std::get_if<std::int64_t>(&kept.storage())) {
        value.type = FENDA_INTEGER;
        value.integer = *integer;
    } else if (const auto* real = std::get_if<double>(&kept.storage())) {
        value.type = FENDA_REAL;
        value.real = *real;
    } else if (const auto* text = std::get_if<std::string>(&kept.storage())) {
        value.type = FENDA_TEXT;
        value.text = text->c_str();
        value.length = text->size();
    }
    return value;
}

fenda_value RowsThing::value(int row, int column) {
    const Recordset& from = rows();
    if (row < 0 || row >= from.rowCount() || column < 0 || column >= from.columnCount())
        refuseArgument("Las filas no tienen esa celda.");
    const Variant cell = from.cell(row, column);
    fenda_value value = valueOf(cell);
    if (value.type == FENDA_TEXT) {
        const auto number = static_cast<std::size_t>(row) * static_cast<std::size_t>(from.columnCount()) +
                            static_cast<std::size_t>(column);
        value.text = texts_.try_emplace(number, value.text, value.length).first->second.c_str();
    }
    return value;
}

}  // namespace FendaMaestros::capi

// --- the interface

using namespace FendaMaestros::capi;

namespace {

/// Adds something to rows that are being filled.
template <class Add>
fenda_status fill(fenda_rows* rows, Add&& add) noexcept {
    return guarded([&] { add(Registry::instance().findNested<RowsThing>(rows).builder()); });
}

RowsThing& found(fenda_rows* rows) { return Registry::instance().find<RowsThing>(rows); }

}  // namespace

fenda_status fenda_rows_column(fenda_rows* rows, const char* name) {
    return fill(rows, [&](RowsBuilder& builder) { builder.column(taken(name)); });
}

fenda_status fenda_rows_null(fenda_rows* rows) {
    return fill(rows, [](RowsBuilder& builder) { builder.null(); });
}

fenda_status fenda_rows_integer(fenda_rows* rows, int64_t value) {
    return fill(rows, [value](RowsBuilder& builder) { builder.integer(value); });
}

fenda_status fenda_rows_real(fenda_rows* rows, double value) {
    return fill(rows, [value](RowsBuilder& builder) { builder.real(value); });
}

fenda_status fenda_rows_text(fenda_rows* rows, const char* text, size_t length) {
    return fill(rows, [&](RowsBuilder& builder) {
        if (!text && length > 0) refuseArgument("Falta un texto.");
        builder.text({text ? text : "", length});
    });
}

fenda_status fenda_rows_size(fenda_rows* rows, int32_t* count, int32_t* columns) {
    return guarded([&] {
        const auto& looked = found(rows).rows();
        if (count) *count = looked.rowCount();
        if (columns) *columns = looked.columnCount();
    });
}

fenda_status fenda_rows_column_name(fenda_rows* rows, int32_t column, char** name) {
    return guarded([&] {
        const auto& looked = found(rows).rows();
        if (column < 0 || column >= looked.columnCount()) refuseArgument("Las filas no tienen esa columna.");
        giveRequired(name, looked.columnName(column));
    });
}

fenda_status fenda_rows_value(fenda_rows* rows, int32_t row, int32_t column, fenda_value* value) {
    return guarded([&] {
        RowsThing& looked = found(rows);
        required(value) = looked.value(row, column);
    });
}

fenda_status fenda_rows_close(fenda_rows* rows) {
    return guarded([&] {
        Registry& registry = Registry::instance();
        if (registry.find<RowsThing>(rows).isLent()) refuse(FENDA_IN_USE, "Estas filas acaban con la función.");
        registry.close(rows);
    });
}

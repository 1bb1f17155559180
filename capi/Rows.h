#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "capi/Registry.h"
#include "session/ConexionBd.h"

namespace FendaMaestros::capi {

/// A value as a host is handed it; its text is that of `kept`, and lasts as long.
fenda_value valueOf(const Variant& kept);

/// The rows that a connection of a host hands back, while it does.
class RowsBuilder {
public:
    /// Both may be empty.
    RowsBuilder(const ConexionBd::ReadWatch& watch, const ConexionBd::StopWatch& stop) : watch_(watch), stop_(stop) {}

    /// Each throws Refusal, and from then on the read has failed.
    void column(std::string_view name);
    void null();
    void integer(std::int64_t value);
    void real(double value);
    void text(std::string_view bytes);

    /// What has been filled. Throws HostFault when a rule was broken, ErrorBd (Stopped) when the read was stopped.
    std::shared_ptr<Recordset> finish();
    /// No more rows are wanted.
    bool enough() const { return enough_; }

private:
    /// The recordset for the next cell.
    Recordset& next();
    void cellDone();
    [[noreturn]] void breakRule(const char* text);
    void ask();

    const ConexionBd::ReadWatch& watch_;
    const ConexionBd::StopWatch& stop_;
    std::vector<std::string> columns_;
    std::shared_ptr<Recordset> rows_;
    std::size_t cell_ = 0;  ///< of the row under way
    const char* broken_ = nullptr;
    bool enough_ = false;
    bool stopped_ = false;
};

/// Rows as a host has a handle of them: being filled, or to be looked at.
class RowsThing final : public Thing {
public:
    static constexpr Kind kindOfThing = Kind::Rows;

    /// `builder` must outlive the thing.
    explicit RowsThing(RowsBuilder& builder) : Thing(kindOfThing), builder_(&builder) {}
    /// `lent`: they end with the callback that was given them.
    RowsThing(std::shared_ptr<Recordset> rows, bool lent) : Thing(kindOfThing), rows_(std::move(rows)), lent_(lent) {}

    /// Each throws Refusal (FENDA_BAD_HANDLE) for rows in the other state.
    RowsBuilder& builder() const;
    const Recordset& rows() const;
    bool isLent() const { return lent_ || builder_; }

    /// Of rows to be looked at; its text lasts as long as this. Throws Refusal for a cell that is not there.
    fenda_value value(int row, int column);

private:
    RowsBuilder* builder_ = nullptr;
    std::shared_ptr<Recordset> rows_;
    bool lent_ = false;
    /// Texts that have been asked for, by the number of their cell.
    std::unordered_map<std::size_t, std::string> texts_;
};

/// A handle that lives as long as a callback which is given it.
class LentHandle {
public:
    /// Throws as Registry::claim().
    explicit LentHandle(std::unique_ptr<Thing> thing) {
        Registry::instance().claim();
        handle_ = Registry::instance().add(std::move(thing));
    }
    LentHandle(const LentHandle&) = delete;
    LentHandle& operator=(const LentHandle&) = delete;
    ~LentHandle() { Registry::instance().close(handle_); }

    template <class Handle>
    Handle* as() const {
        return static_cast<Handle*>(handle_);
    }

private:
    void* handle_ = nullptr;
};

}  // namespace FendaMaestros::capi

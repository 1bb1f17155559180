#pragma once

#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

#include "include/fenda.h"
#include "session/ErrorBd.h"

/// What went wrong, as a host is told it: a status, and on its thread a sentence and the engine's own words.
namespace FendaMaestros::capi {

/// A call that the library turns away. Not a std::exception, so that no screen takes it for an error of its own.
struct Refusal {
    fenda_status status = FENDA_BAD_ARGUMENT;
    /// For a person, in Spanish.
    std::string text;
    /// In the words of whoever has failed.
    std::string nativeText = {};
};

[[noreturn]] inline void refuse(fenda_status status, const char* text) { throw Refusal{status, text}; }
[[noreturn]] inline void refuseArgument(const char* text) { refuse(FENDA_BAD_ARGUMENT, text); }

/// A callback of a connection that has broken a rule or raised an exception.
class HostFault final : public ErrorBd {
public:
    explicit HostFault(const std::string& text, std::string nativeText = {})
        : ErrorBd(Kind::Other, text, 0, std::move(nativeText)) {}
};

/// What a host tells of a failure, or is told. Plain memory, so that a thread's own needs no destructor: that would
/// keep the library loaded until the thread ends.
struct Report {
    static constexpr std::size_t longest = 1000;

    bool told = false;
    std::int32_t nativeCode = 0;
    char text[longest + 1] = {};
    char nativeText[longest + 1] = {};

    /// What is longer is cut between two characters.
    void tell(std::string_view sentence, std::int32_t code = 0, std::string_view words = {}) noexcept;
};

/// Of this thread: the last call that failed, and what a callback under way has told with fenda_fail().
Report& lastFailure() noexcept;
Report& toldByCallback() noexcept;

/// Takes note of a failure; gives its status.
fenda_status fail(fenda_status status, std::string_view text) noexcept;
/// The same for the exception that is being handled.
fenda_status failWithCurrentException() noexcept;

/// A status for each kind of ErrorBd, and back; nothing but those of the database has one.
constexpr fenda_status statusOf(ErrorBd::Kind kind) { return static_cast<fenda_status>(static_cast<int>(kind) + 1); }
static_assert(statusOf(ErrorBd::Kind::Busy) == FENDA_BUSY && statusOf(ErrorBd::Kind::Other) == FENDA_OTHER);
constexpr bool isOfDatabase(fenda_status status) { return status >= FENDA_BUSY && status <= FENDA_OTHER; }
constexpr ErrorBd::Kind kindOf(fenda_status status) { return static_cast<ErrorBd::Kind>(static_cast<int>(status) - 1); }

/// What the callback that has just failed says of it, or `otherwise` when it says nothing. Of what is told, only the
/// failure at hand is: it is told once.
Report takeReason(const char* otherwise);

/// Calls back: gives the status that the host returned. What it raises is HostFault.
template <class Call>
fenda_status callBack(Call&& call) {
    Report& told = toldByCallback();
    told.told = false;
    try {
        const fenda_status status = call();
        if (status == FENDA_OK) told.told = false;
        return status;
    } catch (const std::exception& raised) {
        throw HostFault("La aplicación ha lanzado una excepción.", raised.what());
    } catch (...) {
        throw HostFault("La aplicación ha lanzado una excepción.");
    }
}

/// Calls back a function that cannot fail, unless it raises something.
template <class Function, class... Arguments>
void callBackWith(Function function, void* context, Arguments... arguments) {
    callBack([&] {
        function(context, arguments...);
        return FENDA_OK;
    });
}

}  // namespace FendaMaestros::capi

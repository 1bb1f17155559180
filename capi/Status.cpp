#include "capi/Status.h"

#include <cstdio>
#include <new>

#include "app/guion/GuionError.h"
#include "capi/Texts.h"

namespace FendaMaestros::capi {

namespace {

/// As much of a text as there is room for, in whole characters.
std::string_view fitting(std::string_view text) {
    if (text.size() <= Report::longest) return text;
    std::size_t size = Report::longest;
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
    return text.substr(0, size);
}

void copy(char* to, std::string_view text) {
    const std::string_view fits = fitting(text);
    fits.copy(to, fits.size());
    to[fits.size()] = '\0';
}

fenda_status failWith(const ErrorBd& error) {
    lastFailure().tell(error.what(), error.nativeCode(), error.nativeText());
    return dynamic_cast<const HostFault*>(&error) ? FENDA_CALLBACK : statusOf(error.kind());
}

}  // namespace

void Report::tell(std::string_view sentence, std::int32_t code, std::string_view words) noexcept {
    told = true;
    nativeCode = code;
    copy(text, sentence);
    copy(nativeText, words);
}

Report& lastFailure() noexcept {
    thread_local Report report;
    return report;
}

Report& toldByCallback() noexcept {
    thread_local Report report;
    return report;
}

fenda_status fail(fenda_status status, std::string_view text) noexcept {
    lastFailure().tell(text);
    return status;
}

fenda_status failWithCurrentException() noexcept {
    try {
        throw;
    } catch (const Refusal& refusal) {
        lastFailure().tell(refusal.text, 0, refusal.nativeText);
        return refusal.status;
    } catch (const GuionError& error) {
        char line[40];
        std::snprintf(line, sizeof line, "línea %d: ", error.line);
        return fail(FENDA_SCRIPT, line + error.reason);
    } catch (const ErrorBd& error) {
        return failWith(error);
    } catch (const std::bad_alloc&) {
        return fail(FENDA_OUT_OF_MEMORY, "No queda memoria.");
    } catch (const std::exception& error) {
        return fail(FENDA_OTHER, error.what());
    } catch (...) {
        return fail(FENDA_OTHER, "Error desconocido.");
    }
}

Report takeReason(const char* otherwise) {
    Report& told = toldByCallback();
    if (!told.told || !told.text[0]) told.tell(otherwise);
    told.told = false;
    return told;
}

}  // namespace FendaMaestros::capi

using namespace FendaMaestros::capi;

fenda_status fenda_last_error(const char** text, int32_t* native_code, const char** native_text) {
    const Report& failure = lastFailure();
    if (text) *text = failure.text;
    if (native_code) *native_code = failure.nativeCode;
    if (native_text) *native_text = failure.nativeText;
    return FENDA_OK;
}

fenda_status fenda_fail(const char* text, int32_t native_code, const char* native_text) {
    try {
        const std::string_view sentence = taken(text), words = takenOrNone(native_text);
        toldByCallback().tell(sentence, native_code, words);
        lastFailure().tell(sentence, native_code, words);
        return FENDA_OK;
    } catch (...) {
        return failWithCurrentException();
    }
}

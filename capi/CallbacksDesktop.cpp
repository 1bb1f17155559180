#include <exception>

#include "capi/Desktops.h"
#include "capi/Forms.h"
#include "capi/Rows.h"
#include "capi/Texts.h"
#include "platform/headless/HeadlessDesktop.h"
#include "platform/headless/HeadlessGestures.h"
#include "toolkit/AnswerKey.h"

namespace FendaMaestros::capi {

namespace {

/// A host in a person's place.
class CallbacksDesktop final : public DesktopThing, private Operator {
public:
    explicit CallbacksDesktop(const fenda_desktop_callbacks& host) : host_(host), desktop_(*this, writePdfByModule) {
        if (!host.attend || !host.answer) refuseArgument("Falta una función del escritorio.");
    }
    CallbacksDesktop(const CallbacksDesktop&) = delete;
    CallbacksDesktop& operator=(const CallbacksDesktop&) = delete;
    ~CallbacksDesktop() override {
        if (!host_.release) return;
        try {
            host_.release(host_.context);
        } catch (...) {
            return;  // nobody is left to be told
        }
    }

    Desktop& desktop() override { return desktop_; }
    void beginOperation() override { failure_ = nullptr; }
    void rethrowFailure() const override {
        if (failure_) std::rethrow_exception(failure_);
    }

private:
    void attend(Form& form) override {
        std::exception_ptr failure;
        {
            const LentHandle handle(std::make_unique<FormThing>(form, hands_, failure));
            ask([&] { return host_.attend(host_.context, handle.as<fenda_form>()); }, failure);
        }
        if (failure) std::rethrow_exception(failure);
    }

    /// A host that cannot answer stops the work, whose end then tells why.
    bool stopsWork() override {
        if (!host_.stop_asked) return false;
        try {
            bool asked = false;
            ask([&] {
                asked = host_.stop_asked(host_.context);
                return FENDA_OK;
            });
            return asked;
        } catch (const Refusal&) {
            return true;
        }
    }

    Reply answer(const Message& message) override {
        std::int32_t button = 0;
        const std::string title = message.title.empty() ? desktop_.applicationTitle() : message.title;
        ask([&] { return host_.answer(host_.context, message.text.c_str(), title.c_str(), message.style, &button); });
        if (button == 0) return {leavingAnswer(message), key::Escape};
        const auto answer = static_cast<Answer>(button);
        const bool known = answer == Answer::Ok || answer == Answer::Yes || answer == Answer::No;
        if (!known || !message.offers(answer)) failWith("El mensaje no tiene el botón que la aplicación ha elegido.");
        return {answer, keyOf(message, answer)};
    }

    std::optional<std::string> saveFile(const std::string& proposal, const std::string& kind) override {
        if (!host_.save_file) return std::nullopt;
        std::string path(FENDA_PATH_SIZE, '\0');
        ask([&] { return host_.save_file(host_.context, proposal.c_str(), kind.c_str(), path.data()); });
        path.resize(path.find('\0') == std::string::npos ? 0 : path.find('\0'));
        if (path.empty()) return std::nullopt;
        if (!isText(path)) failWith("La ruta que la aplicación ha dado no es UTF-8.");
        return path;
    }

    /// Asks the host. What fails, in the host or in a gesture of its, ends the screens.
    template <class Call>
    void ask(Call&& call, const std::exception_ptr& ofGesture = nullptr) {
        try {
            const fenda_status status = callBack(call);
            if (status == FENDA_OK || ofGesture) return;
        } catch (const HostFault& fault) {
            failWith(fault.what(), fault.nativeText());
        }
        const Report reason = takeReason("La aplicación no ha podido atender la pantalla.");
        failWith(reason.text, reason.nativeText);
    }
    [[noreturn]] void failWith(const std::string& text, const std::string& nativeText = {}) {
        failure_ = std::make_exception_ptr(Refusal{FENDA_CALLBACK, text, nativeText});
        std::rethrow_exception(failure_);
    }

    fenda_desktop_callbacks host_;
    HeadlessDesktop desktop_;
    HeadlessGestures hands_;
    /// Of the operation under way.
    std::exception_ptr failure_;
};

}  // namespace

std::unique_ptr<DesktopThing> callbacksDesktop(const fenda_desktop_callbacks& host) {
    return std::make_unique<CallbacksDesktop>(host);
}

}  // namespace FendaMaestros::capi

#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "app/guion/GuionError.h"
#include "app/guion/GuionHands.h"
#include "app/guion/GuionHost.h"
#include "app/guion/GuionPrinter.h"
#include "app/guion/Script.h"
#include "app/operations/Operations.h"
#include "toolkit/Operator.h"

namespace FendaMaestros {

/// The person of a script: carries out its commands, one after the other, on whatever screen is on top, and prints what
/// a person would see. Screens shown by a command take their commands from the same script, and messages, questions
/// and errors what it has prepared. Every failure is a GuionError.
class GuionOperator final : public Operator {
public:
    GuionOperator(std::vector<Command> commands, std::ostream& out) : script_(std::move(commands)), out_(out) {}

    /// From now on attends the screens of a host that works on a desktop with this operator.
    void workFor(GuionHost& host) { host_ = &host; }
    /// Runs what is left of the script, and works for the host.
    void run(GuionHost& host);
    /// Throws again what has failed on some screen. One in between may have swallowed it.
    void rethrowFailure() const;

    // --- Operator
    void attend(Form& form) override;
    Reply answer(const Message& message) override;
    std::optional<std::string> saveFile(const std::string& proposal, const std::string& kind) override;

    // --- the host
    GuionHost& host() const { return *host_; }
    GuionHands hands() { return {*host_, out_}; }
    /// Calls an entry operation. `alone`: only with no screen open.
    void call(const Operation& operation, const Arguments& arguments, bool alone);
    /// Something of the host that only works with no screen open.
    void betweenScreens(const std::function<void(GuionHost&)>& action);

    // --- looking
    void show(guion::Limits limits);
    void show(const std::string& control, guion::Limits limits);
    void showProperties();
    void showParameters();
    void read(const std::string& sql, guion::Limits limits);
    /// A line of the script's own.
    void say(const std::string& text) { out_ << text << "\n"; }
    void echo(bool on) { echo_ = on; }
    /// In milliseconds.
    void pause(int duration);

    /// The session of the company that is open; fails when none is.
    SesionBd& session() const;
    /// Runs one read. Throws ErrorBd.
    std::shared_ptr<Recordset> query(const std::string& sql) const;
    const std::string& lastResult() const { return lastResult_; }
    const std::string& lastMessage() const { return lastMessage_; }

private:
    void carryOut(const Command& command);
    /// What a status line has come to say; nothing for "".
    void sayStatus(const std::string& text);
    /// Fails when the person is not to go on: the program has been asked to end, or nobody reads what it prints.
    void goOn() const;
    /// Runs what may end in an error of the component, which a script must have expected.
    template <class Action>
    void guarded(Action&& action);
    /// Says an error of the component. Fails unless it is the one expected.
    void receive(const std::string& error);

    /// Carries out a part of the script, in which the line of a failure is the one read last. The failure is kept: a
    /// screen in between may swallow it, and then every further part fails so, too.
    template <class Part>
    std::invoke_result_t<Part> keepingFailure(Part&& part);

    Script script_;
    std::ostream& out_;
    GuionHost* host_ = nullptr;
    bool echo_ = false;
    std::optional<GuionError> failure_;
    std::string lastResult_;
    std::string lastMessage_;
};

}  // namespace FendaMaestros

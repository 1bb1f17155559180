#include "app/guion/GuionOperator.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "app/guion/Interruption.h"
#include "app/guion/StatusWatch.h"
#include "session/frmBuscar.h"
#include "toolkit/AnswerKey.h"

namespace FendaMaestros {

using guion::fail;
using guion::literal;
using guion::literalOf;

namespace {

Answer answerTo(const Message& message, const ExpectedMessage& expected) {
    return expected.answer.value_or(leavingAnswer(message));
}

std::string described(Answer answer, const ExpectedMessage& expected) {
    return guion::nameOf(answer) + (expected.answer ? "" : " (Esc)") + (expected.byMouse ? " (ratón)" : "");
}

bool says(const Message& message, const ExpectedMessage& expected) {
    if (!expected.text) return true;
    return expected.part ? message.text.find(*expected.text) != std::string::npos : message.text == *expected.text;
}

void check(const Message& message, const ExpectedMessage& expected) {
    if (!says(message, expected))
        fail("el mensaje dice " + literal(message.text) + " y en la línea " + std::to_string(expected.line) +
             " se esperaba " + literal(*expected.text));
    const Answer answer = answerTo(message, expected);
    if (!message.offers(answer))
        fail("el mensaje " + literal(message.text) + " no tiene el botón " + guion::nameOf(answer));
}

}  // namespace

// --- the flow of commands

void GuionOperator::run(GuionHost& host) {
    workFor(host);
    keepingFailure([this] {
        while (const Command* command = script_.next()) carryOut(*command);
        script_.failOnUnused(script_.line());
    });
}

void GuionOperator::attend(Form& form) {
    keepingFailure([&] {
        if (dynamic_cast<frmBuscar*>(&form))
            if (const auto wanted = script_.take<ExpectedSearch>()) return hands().search(form, *wanted);
        sayStatus(guion::StatusWatch::textOf(&form));
        while (form.isOpen()) {
            const Command* const command = script_.next();
            if (!command)
                return say("nota el guion acaba con la pantalla " + guion::formName(form) + " abierta: se cierra");
            carryOut(*command);
        }
    });
}

void GuionOperator::carryOut(const Command& command) {
    if (echo_) out_ << "> " << command.text << "\n";
    // However fast lines are carried out, each is a person's gesture of its own.
    host_->desktop().letPass(ListTyping::pause);
    goOn();
    const guion::StatusWatch status(host_->desktop());
    if (command.run) command.run(*this);
    sayStatus(status.news());
    goOn();
    rethrowFailure();
}

void GuionOperator::sayStatus(const std::string& text) {
    if (!text.empty()) say("estado: " + text);
}

void GuionOperator::goOn() const {
    if (Interruption::asked()) fail("interrumpido");
    if (!out_.flush()) fail("no se puede escribir la salida");
}

template <class Part>
std::invoke_result_t<Part> GuionOperator::keepingFailure(Part&& part) {
    rethrowFailure();
    try {
        return part();
    } catch (GuionError& failure) {
        if (failure.line == 0) failure.line = script_.line();
        failure_ = failure;
        throw;
    }
}

void GuionOperator::rethrowFailure() const {
    if (failure_) throw GuionError(*failure_);
}

// --- what comes without being asked for

Reply GuionOperator::answer(const Message& message) {
    return keepingFailure([&]() -> Reply {
        goOn();
        lastMessage_ = message.text;
        out_ << guion::describe(message) << " → ";
        const auto expected = script_.take<ExpectedMessage>();
        if (!expected) {
            say("sin respuesta");
            fail("mensaje inesperado: " + literal(message.text));
        }
        const Answer answer = answerTo(message, *expected);
        say(described(answer, *expected));
        check(message, *expected);
        if (expected->byMouse) return {answer, 0};
        return {answer, expected->answer ? keyOf(message, answer) : key::Escape};
    });
}

std::optional<std::string> GuionOperator::saveFile(const std::string& proposal, const std::string& kind) {
    return keepingFailure([&] {
        out_ << "fichero propuesto=" << literal(proposal) << " tipo=" << literal(kind) << " → ";
        const auto expected = script_.take<ExpectedFile>();
        if (!expected) {
            say("sin respuesta");
            fail("pregunta inesperada por un fichero, con la propuesta " + literal(proposal));
        }
        std::optional<std::string> name = expected->proposed ? proposal : expected->name;
        say(name ? literal(*name) : "ninguno");
        return name;
    });
}

template <class Action>
void GuionOperator::guarded(Action&& action) {
    try {
        action();
        return rethrowFailure();
    } catch (const std::exception& error) {
        rethrowFailure();
        goOn();
        receive(error.what());
    }
}

void GuionOperator::receive(const std::string& error) {
    say("error " + literal(error));
    const auto expected = script_.take<ExpectedError>();
    if (!expected) fail("error inesperado: " + literal(error));
    if (expected->part && error.find(*expected->part) == std::string::npos)
        fail("el error no dice " + literal(*expected->part) + ", sino " + literal(error));
}

// --- the host

void GuionOperator::call(const Operation& operation, const Arguments& arguments, bool alone) {
    const Form* const open = host_->desktop().activeForm();
    if (alone && open)
        fail("no se puede abrir " + operation.name + ": está abierta la pantalla " + guion::formName(*open));
    guarded([&] {
        const Outcome outcome = operation.call(host_->component(), arguments);
        for (const auto& [name, value] : outcome.rewritten)
            out_ << "argumento " << name << " = " << literal(value) << "\n";
        if (outcome.result.isNull()) return;
        lastResult_ = outcome.result.text();
        out_ << "resultado " << operation.name << " = " << literalOf(outcome.result) << "\n";
    });
}

void GuionOperator::betweenScreens(const std::function<void(GuionHost&)>& action) {
    if (const Form* open = host_->desktop().activeForm())
        fail("está abierta la pantalla " + guion::formName(*open) + ": primero hay que cerrarla");
    guarded([&] { action(*host_); });
}

// --- looking

void GuionOperator::show(guion::Limits limits) {
    const int pointer = host_->pointer();
    if (const Form* form = host_->desktop().activeForm()) return guion::printScreen(out_, *form, pointer, limits);
    out_ << "pantalla ninguna puntero=" << pointer << "\n";
}

void GuionOperator::show(const std::string& name, guion::Limits limits) {
    const Form& form = guion::topScreen(host_->desktop());
    guion::printControl(out_, form, guion::control(form, name), limits);
}

void GuionOperator::showProperties() {
    for (const auto& [name, value] : host_->properties())
        out_ << "propiedad " << name << " = " << literalOf(value) << "\n";
}

void GuionOperator::showParameters() {
    for (const auto& [name, parameter] : session().Parametros().all())
        out_ << "parámetro " << name << " = " << literalOf(parameter.Value) << "\n";
}

void GuionOperator::read(const std::string& sql, guion::Limits limits) {
    guarded([&] { guion::printRows(out_, *query(sql), limits); });
}

SesionBd& GuionOperator::session() const {
    SesionBd* const session = host_->session();
    if (!session) fail("no hay ninguna empresa abierta");
    return *session;
}

std::shared_ptr<Recordset> GuionOperator::query(const std::string& sql) const {
    return session().Conexion()->Execute(sql);
}

void GuionOperator::pause(int duration) {
    using std::chrono::milliseconds;
    // Asked to end, a person does not wait on.
    constexpr milliseconds longest(200);
    Desktop& desktop = host_->desktop();
    for (milliseconds left(duration); left.count() > 0 && !Interruption::asked(); left -= longest)
        desktop.wait(std::min(left, longest));
}

}  // namespace FendaMaestros

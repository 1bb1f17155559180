#include "app/guion/GuionOperator.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include "app/Operations.h"
#include "app/guion/Interruption.h"
#include "session/frmBuscar.h"
#include "toolkit/Keys.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

using guion::literal;
using guion::literalOf;

namespace {

constexpr const char* interrupted = "nota un mensaje ha interrumpido el gesto, que no llega a hacerse\n";

template <class T>
T takeFirst(std::deque<T>& queue) {
    T first = std::move(queue.front());
    queue.pop_front();
    return first;
}

bool same(std::string_view a, std::string_view b) { return text::folded(text::trim(a)) == text::folded(text::trim(b)); }

/// A column caption without the mark of its sort order.
std::string unmarked(const std::string& caption) {
    return text::trimEnd(text::replaced(text::replaced(caption, "»", ""), "«", ""));
}

int rowCount(const Control& list) {
    if (const auto* grid = dynamic_cast<const DataGrid*>(&list)) return grid->rowCount();
    if (const auto* view = dynamic_cast<const ListView*>(&list)) return static_cast<int>(view->Rows.size());
    return -1;
}

int currentRow(const Control& list) {
    if (const auto* grid = dynamic_cast<const DataGrid*>(&list)) return grid->currentRow();
    return dynamic_cast<const ListView&>(list).SelectedRow;
}

/// What a row shows, column by column.
std::vector<std::string> cells(const Control& list, int row) {
    if (const auto* view = dynamic_cast<const ListView*>(&list)) return view->Rows[static_cast<std::size_t>(row)].Texts;
    const auto& grid = dynamic_cast<const DataGrid&>(list);
    std::vector<std::string> texts;
    for (std::size_t column = 0; column < grid.Columns.size(); ++column)
        if (grid.Columns[column].Visible) texts.push_back(grid.cellText(row, static_cast<int>(column)));
    return texts;
}

std::vector<std::string> captions(const Control& list) {
    std::vector<std::string> texts;
    if (const auto* grid = dynamic_cast<const DataGrid*>(&list))
        for (const GridColumn& column : grid->Columns) texts.push_back(column.Caption);
    if (const auto* view = dynamic_cast<const ListView*>(&list))
        for (const auto& column : view->Columns) texts.push_back(column.Caption);
    return texts;
}

template <class T>
T* firstOf(const Form& form) {
    for (Control* control : form.controls())
        if (auto* typed = dynamic_cast<T*>(control)) return typed;
    return nullptr;
}

/// The key with which a person at the keyboard chooses an answer: Enter for the button that has the focus, else the
/// letter of the button.
int keyOf(const Message& message, Answer answer) {
    if (answer == message.defaultAnswer()) return key::Enter;
    return answer == Answer::Yes ? 'S' : 'N';
}

}  // namespace

// --- the flow of commands

void GuionOperator::run(GuionHost& host) {
    host_ = &host;
    while (const Command* command = next()) carryOut(*command);
    failOnUnusedAnswers(line_);
}

const Command* GuionOperator::next() {
    if (next_ == commands_.size()) return nullptr;
    const Command& command = commands_[next_++];
    if (acted_) failOnUnusedAnswers(command.line);
    acted_ = false;
    return &command;
}

void GuionOperator::carryOut(const Command& command) {
    line_ = command.line;
    acted_ = command.acts;
    if (echo_) out_ << "> " << command.text << "\n";
    // However fast lines are carried out, each is a person's gesture of its own.
    if (Form* form = host_->desktop().activeForm()) form->pauseTyping();
    try {
        goOn();
        command.run(*this);
        goOn();
    } catch (const GuionError& error) {
        failure_ = error;
        throw;
    }
    rethrowFailure();
}

void GuionOperator::goOn() const {
    if (Interruption::asked()) fail("interrumpido");
    if (!out_.flush()) fail("no se puede escribir la salida");
}

void GuionOperator::attend(Form& form) {
    rethrowFailure();
    if (!searches_.empty() && dynamic_cast<frmBuscar*>(&form)) return search(form);
    while (form.isOpen()) {
        const Command* command = next();
        if (!command) {
            out_ << "nota el guion acaba con la pantalla " << guion::formName(form) << " abierta: se cierra\n";
            return;
        }
        carryOut(*command);
    }
}

void GuionOperator::rethrowFailure() const {
    if (failure_) throw GuionError(*failure_);
}

void GuionOperator::failInside(const std::string& reason) {
    failure_ = GuionError{line_, reason};
    throw GuionError(*failure_);
}

void GuionOperator::failOnUnusedAnswers(int line) const {
    const auto check = [&](const auto& queue, const char* what) {
        if (!queue.empty())
            throw GuionError{
                line, std::string(what) + " de la línea " + std::to_string(queue.front().line) + " no se ha usado"};
    };
    check(messages_, "la respuesta");
    check(files_, "el fichero");
    check(searches_, "la búsqueda");
    check(errors_, "el error que se esperaba");
}

template <class Action>
void GuionOperator::guarded(Action&& action) {
    std::string sentence;
    try {
        action();
        return rethrowFailure();
    } catch (const std::exception& error) {
        rethrowFailure();
        sentence = error.what();
    }
    out_ << "error " << literal(sentence) << "\n";
    if (errors_.empty()) fail("error inesperado: " + literal(sentence));
    const ExpectedError expected = takeFirst(errors_);
    if (expected.part && sentence.find(*expected.part) == std::string::npos)
        fail("el error no dice " + literal(*expected.part) + ", sino " + literal(sentence));
}

// --- answers ahead

Reply GuionOperator::answer(const Message& message) {
    rethrowFailure();
    lastMessage_ = message.text;
    const std::string line = guion::describe(message);
    if (messages_.empty()) {
        out_ << line << " → sin respuesta\n";
        failInside("mensaje inesperado: " + literal(message.text));
    }
    const ExpectedMessage expected = takeFirst(messages_);
    const Answer leaving = message.offers(Answer::Ok) ? Answer::Ok : Answer::No;
    const Answer answer = expected.answer.value_or(leaving);
    out_ << line << " → " << guion::nameOf(answer);
    if (!expected.answer) out_ << " (Esc)";
    out_ << (expected.byMouse ? " (ratón)\n" : "\n");

    const bool asExpected = !expected.text || (expected.part ? message.text.find(*expected.text) != std::string::npos
                                                             : message.text == *expected.text);
    if (!asExpected)
        failInside("el mensaje dice " + literal(message.text) + " y en la línea " + std::to_string(expected.line) +
                   " se esperaba " + literal(*expected.text));
    if (!message.offers(answer))
        failInside("el mensaje " + literal(message.text) + " no tiene el botón " + guion::nameOf(answer));
    if (expected.byMouse) return {answer, 0};
    return {answer, expected.answer ? keyOf(message, answer) : key::Escape};
}

std::optional<std::string> GuionOperator::saveFile(const std::string& proposal, const std::string& kind) {
    rethrowFailure();
    out_ << "fichero propuesto=" << literal(proposal) << " tipo=" << literal(kind) << " → ";
    if (files_.empty()) {
        out_ << "sin respuesta\n";
        failInside("pregunta inesperada por un fichero, con la propuesta " + literal(proposal));
    }
    ExpectedFile expected = takeFirst(files_);
    if (expected.proposed) expected.name = proposal;
    out_ << (expected.name ? literal(*expected.name) : "ninguno") << "\n";
    return expected.name;
}

/// Works the search dialog as a person does: types, goes down to the row, presses Enter.
void GuionOperator::search(Form& form) {
    const ExpectedSearch expected = takeFirst(searches_);
    Gestures& hands = host_->gestures();
    out_ << "búsqueda " << literal(form.Caption);
    if (expected.leave) {
        out_ << " → ninguno\n";
        return hands.key(form, {key::Escape, shift::None});
    }

    auto* const box = firstOf<TextBox>(form);
    Control* list = firstOf<DataGrid>(form);
    if (!list) list = firstOf<ListView>(form);
    if (!box || !list) failInside("la pantalla de búsqueda no tiene un campo y una lista");
    hands.click(form, *box);
    hands.type(form, expected.text);
    out_ << " texto=" << literal(expected.text) << " filas=" << rowCount(*list) << " → ";
    if (expected.row > rowCount(*list)) {
        out_ << "no hay fila " << expected.row << "\n";
        failInside("la búsqueda de " + literal(expected.text) + " no llega a la fila " + std::to_string(expected.row));
    }
    for (int last = -2; currentRow(*list) < expected.row - 1 && currentRow(*list) != last;) {
        last = currentRow(*list);
        hands.key(form, {key::Down, shift::None});
    }
    out_ << "fila " << expected.row;
    for (const std::string& cell : cells(*list, expected.row - 1)) out_ << " | " << literal(cell);
    out_ << "\n";
    hands.key(form, {key::Enter, shift::None});
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

// --- gestures

Form& GuionOperator::top() const {
    Form* const form = host_->desktop().activeForm();
    if (!form) fail("no hay ninguna pantalla abierta");
    return *form;
}

Control& GuionOperator::control(const std::string& name) const {
    const Form& form = top();
    if (Control* found = form.find(name)) return *found;
    for (Control* control : form.controls())
        if (dynamic_cast<CommandButton*>(control) && same(text::replaced(guion::captionOf(*control), "&", ""), name))
            return *control;
    fail("la pantalla " + guion::formName(form) + " no tiene ningún control " + name);
}

bool GuionOperator::reaches(Form& form, const Control& control) {
    const bool visible = control.isVisible();
    if (visible && control.isEnabled() && form.Enabled) return true;
    out_ << "nota " << control.Name << (visible ? " está inactivo" : " está oculto") << ": no pasa nada\n";
    return false;
}

template <class Gesture>
void GuionOperator::act(Gesture&& gesture) {
    Form& form = top();
    const int before = form.abandonedGestures();
    gesture(form, host_->gestures());
    if (form.isOpen() && form.abandonedGestures() != before) out_ << interrupted;
}

void GuionOperator::type(const std::string& text) {
    Form& form = top();
    const Control* const active = form.activeControl();
    const auto* const box = dynamic_cast<const TextBox*>(active);
    if (box && box->Locked) out_ << "nota " << box->Name << " está bloqueado: no cambia\n";
    if (!box && !dynamic_cast<const ComboBox*>(active))
        out_ << "nota el foco no está en un campo: no se escribe nada\n";
    std::string typed = text;
    std::erase_if(typed, [](unsigned char c) { return c < ' '; });
    if (typed != text) out_ << "nota los caracteres de control no se teclean\n";
    host_->gestures().type(form, typed);
}

void GuionOperator::key(KeyStroke stroke, int times) {
    Form& form = top();
    for (int time = 0; time < times && form.isOpen(); ++time)
        act([&](Form& on, Gestures& hands) { hands.key(on, stroke); });
}

void GuionOperator::go(const std::string& name) {
    Control& target = control(name);
    if (dynamic_cast<CommandButton*>(&target)) fail(name + " es un mando: con el ratón se pulsa (pulsar)");
    if (dynamic_cast<CheckBox*>(&target)) fail(name + " es una casilla: con el ratón se marca (marcar, desmarcar)");
    if (dynamic_cast<OptionButton*>(&target)) fail(name + " es una opción: con el ratón se elige (elegir)");
    if (top().activeControl() == &target) return;
    if (!reaches(top(), target)) return;
    Form& form = top();
    host_->gestures().click(form, target);
    if (form.isOpen() && form.activeControl() != &target) out_ << interrupted;
}

void GuionOperator::press(const std::string& name) {
    auto& button = control<CommandButton>(name, "un mando");
    if (reaches(top(), button)) act([&](Form& form, Gestures& hands) { hands.click(form, button); });
}

void GuionOperator::tick(const std::string& name, bool value) {
    auto& check = control<CheckBox>(name, "una casilla");
    if (!reaches(top(), check)) return;
    if (check.Value() == value)
        out_ << "nota " << check.Name << (value ? " ya está marcada\n" : " ya está sin marcar\n");
    else
        act([&](Form& form, Gestures& hands) { hands.click(form, check); });
}

void GuionOperator::choose(const std::string& name, const std::optional<Place>& item) {
    if (auto* option = dynamic_cast<OptionButton*>(&control(name))) {
        if (item) fail(name + " es una opción: se elige sin más");
        if (reaches(top(), *option)) act([&](Form& form, Gestures& hands) { hands.click(form, *option); });
        return;
    }
    auto& combo = control<ComboBox>(name, "una opción ni un desplegable");
    if (!item) fail("falta qué elemento de " + name + " se elige");
    int index = item->number;
    if (!item->isNumber())
        for (int i = 0; i < combo.ListCount() && index < 0; ++i)
            if (same(combo.List(i), item->text)) index = i;
    if (index < 0 || index >= combo.ListCount())
        fail(name + " no tiene el elemento " + (item->isNumber() ? std::to_string(index) : literal(item->text)));
    if (reaches(top(), combo)) act([&](Form& form, Gestures& hands) { hands.choose(form, combo, index); });
}

int GuionOperator::columnOf(const Control& list, const Place& column) const {
    if (rowCount(list) < 0) fail(list.Name + " no es una rejilla ni una lista");
    const std::vector<std::string> shown = captions(list);
    const int count = static_cast<int>(shown.size());
    if (column.isNumber() && column.number < count) return column.number;
    for (int index = 0; index < count && !column.isNumber(); ++index)
        if (same(unmarked(shown[static_cast<std::size_t>(index)]), unmarked(column.text))) return index;
    fail(list.Name + " no tiene la columna " +
         (column.isNumber() ? std::to_string(column.number) : literal(column.text)));
}

int GuionOperator::rowOf(const Control& list, const Place& row) const {
    const int count = rowCount(list);
    if (count < 0) fail(list.Name + " no es una rejilla ni una lista");
    if (row.number >= 1 && row.number <= count) return row.number - 1;
    for (int index = 0; index < count && !row.isNumber(); ++index)
        if (std::ranges::any_of(cells(list, index), [&](const std::string& cell) { return same(cell, row.text); }))
            return index;
    fail(list.Name + " no tiene la fila " + (row.isNumber() ? std::to_string(row.number) : literal(row.text)));
}

void GuionOperator::clickHeader(const std::string& name, const Place& column) {
    auto& grid = control<DataGrid>(name, "una rejilla");
    const int index = columnOf(grid, column);
    if (!grid.Columns[static_cast<std::size_t>(index)].Visible)
        out_ << "nota la columna " << index << " de " << grid.Name << " está oculta: no pasa nada\n";
    else if (reaches(top(), grid))
        act([&](Form& form, Gestures& hands) { hands.clickHeader(form, grid, index); });
}

void GuionOperator::clickRow(const std::string& name, const Place& row) {
    Control& list = control(name);
    const int index = rowOf(list, row);
    if (reaches(top(), list)) act([&](Form& form, Gestures& hands) { hands.clickRow(form, list, index); });
}

void GuionOperator::doubleClickRow(const std::string& name, const std::optional<Place>& row) {
    auto& grid = control<DataGrid>(name, "una rejilla");
    const int index = row ? rowOf(grid, *row) : grid.currentRow();
    if (index < 0) fail(name + " no tiene ninguna fila actual");
    if (reaches(top(), grid)) act([&](Form& form, Gestures& hands) { hands.doubleClickRow(form, grid, index); });
}

void GuionOperator::clickCellButton(const std::string& name, const Place& column) {
    auto& grid = control<DataGrid>(name, "una rejilla");
    const int index = columnOf(grid, column);
    const GridColumn& shown = grid.Columns[static_cast<std::size_t>(index)];
    if (!shown.Button || !shown.Visible)
        fail("la columna " + std::to_string(index) + " de " + name + " no tiene botón");
    if (grid.currentRow() < 0) fail(name + " no tiene ninguna fila actual");
    if (reaches(top(), grid)) act([&](Form& form, Gestures& hands) { hands.clickCellButton(form, grid, index); });
}

void GuionOperator::close() { host_->gestures().close(top()); }

// --- looking

void GuionOperator::show(guion::Limits limits) {
    const int pointer = host_->pointer();
    if (const Form* form = host_->desktop().activeForm()) return guion::printScreen(out_, *form, pointer, limits);
    out_ << "pantalla ninguna puntero=" << pointer << "\n";
}

void GuionOperator::show(const std::string& name, guion::Limits limits) {
    guion::printControl(out_, top(), control(name), limits);
}

void GuionOperator::showProperties() {
    for (const auto& [name, value] : host_->properties())
        out_ << "propiedad " << name << " = " << literalOf(value) << "\n";
}

void GuionOperator::showParameters() {
    SesionBd* const session = host_->session();
    if (!session) fail("no hay ninguna empresa abierta");
    for (const auto& [name, parameter] : session->Parametros().all())
        out_ << "parámetro " << name << " = " << literalOf(parameter.Value) << "\n";
}

void GuionOperator::read(const std::string& sql, guion::Limits limits) {
    guarded([&] { guion::printRows(out_, *query(sql), limits); });
}

std::shared_ptr<Recordset> GuionOperator::query(const std::string& sql) const {
    SesionBd* const session = host_->session();
    if (!session) fail("no hay ninguna empresa abierta");
    return session->Conexion()->Execute(sql);
}

void GuionOperator::copy(const std::string& from, const std::string& to) {
    std::error_code error;
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, error);
    if (error) fail("no se ha podido copiar " + literal(from) + " en " + literal(to));
}

void GuionOperator::pause(int milliseconds) {
    using namespace std::chrono;
    const auto end = steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (steady_clock::now() < end && !Interruption::asked()) {
        host_->desktop().processPending();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

}  // namespace FendaMaestros

#pragma once

#include <deque>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "app/Operations.h"
#include "app/guion/GuionHost.h"
#include "app/guion/GuionParser.h"
#include "app/guion/GuionPrinter.h"
#include "toolkit/Operator.h"

namespace FendaMaestros {

/// An answer given ahead to a message.
struct ExpectedMessage {
    int line = 0;
    /// What the message must say; none takes any message.
    std::optional<std::string> text;
    /// The text is a part of what the message says.
    bool part = false;
    /// None: the one that leaves the message (Ok or No).
    std::optional<Answer> answer;
    bool byMouse = false;
};

struct ExpectedFile {
    int line = 0;
    bool proposed = false;            ///< the name that the question proposes
    std::optional<std::string> name;  ///< none: the question is left
};

struct ExpectedSearch {
    int line = 0;
    bool leave = false;
    std::string text;
    int row = 1;  ///< of the narrowed list, from 1
};

struct ExpectedError {
    int line = 0;
    std::optional<std::string> part;
};

/// A row (from 1), a column or an item (from 0) by its number, or by what it shows.
struct Place {
    int number = -1;
    std::string text;

    bool isNumber() const { return number >= 0; }
};

/// The person of a script: carries out its commands, one after the other, on whatever screen is on top, and prints what
/// a person would see. Screens shown by a command take their commands from the same script. Every failure is a
/// GuionError.
class GuionOperator final : public Operator {
public:
    GuionOperator(std::vector<Command> commands, std::ostream& out) : commands_(std::move(commands)), out_(out) {}

    /// Runs the whole script on a host that works on a desktop with this operator.
    void run(GuionHost& host);

    // --- Operator
    void attend(Form& form) override;
    Reply answer(const Message& message) override;
    std::optional<std::string> saveFile(const std::string& proposal, const std::string& kind) override;

    // --- answers ahead
    void expect(ExpectedMessage message) { enqueue(messages_, std::move(message)); }
    void expect(ExpectedFile file) { enqueue(files_, std::move(file)); }
    void expect(ExpectedSearch search) { enqueue(searches_, std::move(search)); }
    void expect(ExpectedError error) { enqueue(errors_, std::move(error)); }

    // --- the host
    /// Calls an entry operation. `alone`: only with no screen open.
    void call(const Operation& operation, const Arguments& arguments, bool alone);
    /// Something of the host that only works with no screen open.
    void betweenScreens(const std::function<void(GuionHost&)>& action);
    GuionHost& host() const { return *host_; }

    // --- gestures on the screen on top
    void type(const std::string& text);
    void key(KeyStroke stroke, int times);
    void go(const std::string& control);
    /// By name, or by its caption without "&".
    void press(const std::string& button);
    void tick(const std::string& check, bool value);
    /// An option button, or an item of a combo box.
    void choose(const std::string& control, const std::optional<Place>& item);
    void clickHeader(const std::string& grid, const Place& column);
    void clickRow(const std::string& list, const Place& row);
    /// Without a place, on the current row.
    void doubleClickRow(const std::string& grid, const std::optional<Place>& row);
    void clickCellButton(const std::string& grid, const Place& column);
    void close();

    // --- looking
    void show(guion::Limits limits);
    void show(const std::string& control, guion::Limits limits);
    void showProperties();
    void showParameters();
    void read(const std::string& sql, guion::Limits limits);
    void copy(const std::string& from, const std::string& to);
    /// A line of the script's own.
    void say(const std::string& text) { out_ << text << "\n"; }
    void echo(bool on) { echo_ = on; }
    void pause(int milliseconds);

    /// Throws GuionError at the line of the command that runs.
    [[noreturn]] void fail(const std::string& reason) const { throw GuionError{line_, reason}; }
    /// The screen on top; fails when there is none.
    Form& top() const;
    Control& control(const std::string& name) const;
    template <class T>
    T& control(const std::string& name, const char* kind) const {
        if (T* typed = dynamic_cast<T*>(&control(name))) return *typed;
        fail(name + " no es " + kind);
    }
    /// From 0; fails when the grid or list has none such.
    int columnOf(const Control& list, const Place& column) const;
    int rowOf(const Control& list, const Place& row) const;
    /// Runs one read. Throws ErrorBd.
    std::shared_ptr<Recordset> query(const std::string& sql) const;
    const std::string& lastResult() const { return lastResult_; }
    const std::string& lastMessage() const { return lastMessage_; }

private:
    template <class T>
    void enqueue(std::deque<T>& queue, T expected) {
        expected.line = line_;
        queue.push_back(std::move(expected));
    }
    const Command* next();
    void carryOut(const Command& command);
    void failOnUnusedAnswers(int line) const;
    /// Whether a person could act on it; says so when not.
    bool reaches(Form& form, const Control& control);
    /// Makes a gesture on the screen on top; says so when a message stopped it on its way.
    template <class Gesture>
    void act(Gesture&& gesture);
    /// Fails when the person is not to go on: the program has been asked to end, or nobody reads what it prints.
    void goOn() const;
    /// Runs what may end in an error of the component, which a script must have expected.
    template <class Action>
    void guarded(Action&& action);
    /// A failure that a screen may have swallowed on its way is thrown again.
    void rethrowFailure() const;
    /// Fails from within a screen, which must not go on whatever it does with the error.
    [[noreturn]] void failInside(const std::string& reason);
    void search(Form& form);

    std::vector<Command> commands_;
    std::size_t next_ = 0;
    std::ostream& out_;
    GuionHost* host_ = nullptr;
    int line_ = 0;
    bool echo_ = false;
    /// A command has acted since the last one was read.
    bool acted_ = false;
    std::optional<GuionError> failure_;

    std::deque<ExpectedMessage> messages_;
    std::deque<ExpectedFile> files_;
    std::deque<ExpectedSearch> searches_;
    std::deque<ExpectedError> errors_;
    std::string lastResult_;
    std::string lastMessage_;
};

}  // namespace FendaMaestros

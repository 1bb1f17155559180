#pragma once

#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/headless/HeadlessDesktop.h"
#include "platform/headless/HeadlessGestures.h"
#include "toolkit/Form.h"

namespace FendaMaestros::testing {

/// Plays a person: each screen that opens gets the next visit, each message the next answer. Unexpected ones throw.
class ScriptedPerson : public Operator {
public:
    using Visit = std::function<void(Form&)>;

    HeadlessGestures hands;
    std::deque<Visit> visits;
    std::deque<Answer> answers;
    /// Where to save, or what to open; an empty path leaves the question without an answer.
    std::deque<std::string> files;
    std::vector<std::string> proposals;
    std::vector<Message> messages;

    void attend(Form& form) override {
        if (visits.empty()) throw std::logic_error("unexpected screen: " + form.Caption);
        const Visit visit = visits.front();
        visits.pop_front();
        visit(form);
    }

    /// Stops long work whenever it can be stopped.
    bool impatient = false;
    bool stopsWork() override { return impatient; }

    /// Goes to the button with the arrows and presses Enter, whichever it is.
    bool answersWithEnter = false;

    /// Answers as from the keyboard: Enter for the default button, else the button's letter.
    Reply answer(const Message& message) override {
        messages.push_back(message);
        if (answers.empty()) throw std::logic_error("unexpected message: " + message.text);
        const Answer given = answers.front();
        answers.pop_front();
        if (answersWithEnter || given == message.defaultAnswer()) return {given, key::Enter};
        return {given, given == Answer::Yes ? 'S' : 'N'};
    }

    std::optional<std::string> saveFile(const std::string& proposal, const std::string&) override {
        proposals.push_back(proposal);
        if (files.empty()) throw std::logic_error("unexpected question for a file: " + proposal);
        const std::string path = files.front();
        files.pop_front();
        return path.empty() ? std::nullopt : std::optional(path);
    }

    std::optional<std::string> openFile(const std::string& kind) override { return saveFile({}, kind); }

    void press(Form& form, const char* button) { hands.click(form, control(form, button)); }
    void enter(Form& form) { hands.key(form, {key::Enter, shift::None}); }
    void escape(Form& form) { hands.key(form, {key::Escape, shift::None}); }
    /// Goes to a field and types over it.
    void fill(Form& form, const char* field, std::string_view text) {
        hands.click(form, control(form, field));
        hands.key(form, {'A', shift::Control});
        hands.key(form, {key::Delete, shift::None});
        hands.type(form, text);
    }

    static Control& control(Form& form, const char* name) {
        Control* found = form.find(name);
        if (!found) throw std::logic_error(std::string("no control ") + name);
        return *found;
    }
    template <class T>
    static T& control(Form& form, const char* name) {
        T* const found = form.find<T>(name);
        if (!found) throw std::logic_error(std::string("no control of that kind ") + name);
        return *found;
    }
    static std::string text(Form& form, const char* field) { return control<TextBox>(form, field).Text; }
};

}  // namespace FendaMaestros::testing

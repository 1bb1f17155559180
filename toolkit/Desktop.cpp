#include "toolkit/Desktop.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iterator>

#include "toolkit/Form.h"

namespace FendaMaestros {

Answer Message::defaultAnswer() const {
    if (message::buttons(style) != message::YesNo) return Answer::Ok;
    return style & message::SecondIsDefault ? Answer::No : Answer::Yes;
}

bool Message::offers(Answer answer) const {
    return (answer == Answer::Ok) != (message::buttons(style) == message::YesNo);
}

std::string Date::text() const {
    char digits[40];
    std::snprintf(digits, sizeof digits, "%02d/%02d/%04d", day, month, year);
    return digits;
}

std::string Desktop::temporaryFile(const std::string& name) const {
    return (std::filesystem::temp_directory_path() / name).string();
}

Date Desktop::today() const {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    const std::tm local = *std::localtime(&now);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday};
}

void Desktop::leaveWords(const Form& closing, std::string text) {
    const auto at = std::ranges::find(forms_, &closing);
    Form* const below = at == forms_.begin() || at == forms_.end() ? nullptr : *std::prev(at);
    if (!below)
        lastWords_ = std::move(text);
    else if (StatusLabel* const line = below->statusLine())
        line->say(std::move(text));
}

Reply Desktop::ask(const Message& message) {
    Form* const below = activeForm();
    if (below) below->interrupt();
    const Reply reply = showMessage(message);
    if (below) below->expectRelease(reply.key);
    return reply;
}

void Desktop::setPointer(int pointer) {
    if (pointer == pointer_) return;
    pointer_ = pointer;
    showPointer(pointer);
}

void Desktop::showModal(Form& form) {
    /// Keeps the form on top for as long as it lives, and closed afterwards.
    struct OnTop {
        std::vector<Form*>& forms;
        Form& form;
        OnTop(std::vector<Form*>& stack, Form& top) : forms(stack), form(top) { forms.push_back(&form); }
        OnTop(const OnTop&) = delete;
        OnTop& operator=(const OnTop&) = delete;
        ~OnTop() {
            form.open_ = false;
            forms.pop_back();
        }
    };

    Form* const below = activeForm();
    if (below) ++below->interruptions_;
    lastWords_.clear();
    {
        const OnTop onTop(forms_, form);
        form.open_ = true;
        form.active_ = nullptr;
        form.pending_.clear();
        try {
            runModal(form);
        } catch (...) {
            form.unload();
            throw;
        }
        form.unload();
    }
    if (below && below->isOpen()) below->onActivate();
}

}  // namespace FendaMaestros

#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace FendaMaestros {

class Form;
class PagedDocument;

/// Styles of a message box: one of the buttons, one of the icons and the default button, added up.
namespace message {
inline constexpr int Ok = 0;
inline constexpr int YesNo = 4;
inline constexpr int Critical = 16;
inline constexpr int Question = 32;
inline constexpr int Exclamation = 48;
inline constexpr int Information = 64;
inline constexpr int SecondIsDefault = 256;

inline constexpr int buttons(int style) { return style & 15; }
inline constexpr int icon(int style) { return style & 112; }
}  // namespace message

enum class Answer { Ok = 1, Yes = 6, No = 7 };

struct Message {
    std::string text;
    int style = message::Ok;
    std::string title;

    /// The button that Enter presses.
    Answer defaultAnswer() const;
    bool offers(Answer answer) const;
};

struct Reply {
    Answer answer = Answer::Ok;
    /// The key whose press dismissed the message, 0 when it was the mouse. Its release reaches the screen below.
    int key = 0;
};

struct Date {
    int year = 0, month = 0, day = 0;

    /// "dd/mm/yyyy"
    std::string text() const;
};

/// What the component asks of the place where it shows itself. One per program, given to the class on creation and
/// outliving it. Everything is called on the user-interface thread.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Shows a form that is loaded, over the one that is on top, and returns when it has been closed. What a handler of
    /// the form throws closes the form, which leaves its words as ever, and is thrown here.
    void showModal(Form& form);
    /// The form on top, null when none is shown.
    Form* activeForm() const { return forms_.empty() ? nullptr : forms_.back(); }
    const std::vector<Form*>& forms() const { return forms_; }

    /// For a form that closes: `text` stands on the status line of the one below it or, below the first, is
    /// lastWords().
    void leaveWords(const Form& closing, std::string text);
    /// What the screen that was closed last has left for whoever had shown it; "" when it had nothing to tell, and as
    /// soon as another is shown.
    const std::string& lastWords() const { return lastWords_; }

    /// Shows a message over the form on top, if there is one: that form counts an interruption, and the release of the
    /// key that dismissed the message reaches its keyUp() after the running handler. An empty title shows
    /// applicationTitle(). Closing the box without choosing answers Ok or No.
    Reply ask(const Message& message);
    virtual std::string applicationTitle() const { return "FendaMaestros"; }

    /// 0 the default pointer, 13 arrow and hourglass. Never throws.
    void setPointer(int pointer);
    int pointer() const { return pointer_; }
    /// Lets what is waiting be painted and handled. Never throws.
    virtual void processPending() = 0;

    /// For work that takes long: shows the screens as they stand, and says whether the person has pressed Esc since
    /// this was last asked. What else is typed or clicked meanwhile is dropped. Never throws.
    virtual bool stopAsked() = 0;

    /// Asks where to save. `proposal` is a file name without folder; `kind` tells a person what it is, as "Hoja de
    /// cálculo (*.xlsx)". Nothing when the person leaves it.
    virtual std::optional<std::string> chooseSaveFile(const std::string& proposal, const std::string& kind) = 0;
    /// Asks for a file that is there, of a kind as above. Nothing when the person leaves it, and where a desktop has no
    /// such question.
    virtual std::optional<std::string> chooseOpenFile(const std::string& /*kind*/) { return std::nullopt; }
    /// Asks for a folder, which need not be there yet; `begin` is the one to begin with, "" for any. Nothing when the
    /// person leaves it, when an operator works in a person's place, and where a desktop has no such question.
    virtual std::optional<std::string> chooseFolder(const std::string& /*title*/, const std::string& /*begin*/) {
        return std::nullopt;
    }
    /// Opens a file with the program that the desktop has for it, and does not wait for it. False when it has none.
    /// With an operator nothing is opened, and the answer is true.
    virtual bool openFile(const std::string& path) = 0;

    /// Hands a file to the desktop's mail program as an attachment, and does not wait for it. False when it has none.
    /// With an operator nothing is sent, and the answer is true.
    virtual bool mailFile(const std::string& path) = 0;
    /// Where a file of this name can be kept until the machine is cleaned; one that is there is replaced.
    virtual std::string temporaryFile(const std::string& name) const;

    /// Asks for a printer and prints; false when the person leaves it. Throws std::runtime_error, in Spanish, when
    /// there is no printer.
    virtual bool print(const PagedDocument& document) = 0;
    /// Throws std::runtime_error, in Spanish, when the file cannot be written.
    virtual void writePdf(const PagedDocument& document, const std::string& path) = 0;

    virtual Date today() const;

    using Time = std::chrono::steady_clock::time_point;
    /// A clock that never goes back: that of the machine, ahead by the time that an operator has let pass.
    Time now() const { return std::chrono::steady_clock::now() + passed_; }
    /// Returns when this time has passed on the clock. Screens stay painted, keys and clicks wait, and other programs
    /// get on with their work meanwhile.
    virtual void wait(std::chrono::milliseconds time) = 0;
    /// For an operator, who is faster than a person: from now on it is that much later, and nobody has waited.
    void letPass(std::chrono::milliseconds time) { passed_ += time; }

protected:
    /// Shows the form and returns when `form.isOpen()` is false. After showing it, calls form.activate() once.
    virtual void runModal(Form& form) = 0;
    /// What ask() says of the box alone.
    virtual Reply showMessage(const Message& message) = 0;
    /// As setPointer(), for a pointer that is not shown yet.
    virtual void showPointer(int pointer) = 0;

private:
    std::vector<Form*> forms_;
    std::string lastWords_;
    int pointer_ = 0;
    std::chrono::milliseconds passed_{0};
};

}  // namespace FendaMaestros

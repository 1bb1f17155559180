#pragma once

#include <deque>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/Arrangement.h"
#include "toolkit/Controls.h"
#include "toolkit/Desktop.h"
#include "toolkit/Keys.h"
#include "toolkit/ListTyping.h"

namespace FendaMaestros {

/// A screen: it owns its controls, knows which one has the focus and turns a person's gestures into events.
///
/// Screens derive from it, register their controls in tab order and answer the virtual handlers. Views hand it gestures
/// and, after each, show its state again: it notifies nobody. While a handler runs, further gestures are dropped. What
/// a handler throws leaves through the gesture that started it.
class Form {
public:
    /// `desktop` must outlive the form.
    explicit Form(Desktop& desktop) : desktop_(desktop), typing_(desktop) {}
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form() = default;

    std::string Caption;
    std::string Tag;
    bool Enabled = true;
    /// Keys that the form answers whichever control has the focus; for its key list.
    std::vector<KeyHint> Keys;
    /// What can be typed into its fields besides, a line each; for its key list.
    std::vector<std::string> TypingHints;

    // --- for screens and those who open them

    /// Prepares the form, once; further calls do nothing.
    void load();
    /// Loads the form, shows it modally and returns when it is closed.
    void show();
    /// Closes the form; it stays usable as an object.
    void unload();
    /// Puts the focus on a control, as soon as the form is shown. Refused (without an error) by what is disabled,
    /// hidden or takes no focus. From a LostFocus handler it redirects the move that is under way: only the last place
    /// asked for gets its GotFocus.
    void setFocus(Control& control);
    /// Moves the focus to the next control in tab order once the running handler is done, as a Tab key sent to itself;
    /// its release reaches keyUp() too.
    void sendTab();
    /// Shows a message, see Desktop::ask().
    Answer ask(std::string text, int style, std::string title);
    /// The key that dismissed the last message has not come up yet: false after a click.
    bool awaitsRelease() const;

    // --- for views

    bool isOpen() const { return open_; }
    /// A handler is running.
    bool isHandling() const { return handling_; }
    /// In tab order; labels and frames included.
    const std::vector<Control*>& controls() const { return controls_; }
    /// Null when there is none of that name, the status line included; case does not matter.
    Control* find(std::string_view name) const;
    /// The same, null too when the control is of another kind.
    template <class Kind>
    Kind* find(std::string_view name) const {
        return dynamic_cast<Kind*>(find(name));
    }
    /// One line at the bottom of the window, below everything and not among the controls; always there, though mostly
    /// empty. Null when the form has none.
    StatusLabel* statusLine() const { return statusLine_; }
    const Arrangement& arrangement() const { return arrangement_; }
    /// The control with the focus; null before the form is shown or when nothing can take it.
    Control* activeControl() const { return active_; }
    Desktop& desktop() const { return desktop_; }
    bool canFocus(const Control& control) const;
    /// Messages and forms that have been shown over this one; a gesture during which it grows was interrupted.
    int interruptions() const { return interruptions_; }
    /// Gestures on a control that have ended at a message or a form on their way to it.
    int abandonedGestures() const { return abandonedGestures_; }

    // --- gestures. Those on a control move the focus to it first; when leaving the old one redirects the focus or
    // shows a message, the gesture ends there. All that can change something empty the status line, and take marks
    // away, before any handler runs; moving the focus, Esc and releasing a key leave it.

    /// The form has been shown: focus goes to the first control, or to the one asked for.
    void activate();
    /// True when the key did its work here, false when it is left to the edited text. Tab moves on, Alt with the letter
    /// behind "&" presses from anywhere; what other keys do to the control with the focus is in toolkit/KeyRules.h.
    /// Enter does nothing by itself.
    bool keyDown(KeyStroke stroke);
    /// F1, where neither the control with the focus nor the form says what it does, shows the key list, and so does
    /// Mayús+F1 anywhere.
    void keyUp(KeyStroke stroke);
    /// A character is about to be typed into the text box with the focus; false when it is refused.
    bool accepts(char32_t character);
    /// A person has changed the text of a text box; what is too long is cut.
    void edit(TextBox& box, std::string text);
    /// A character typed, while a list or a table has the focus, chooses the item, or moves to the row, that it leads
    /// to: see ListTyping. False when the focus is on something else.
    bool typeOnList(char32_t character);
    void focus(Control& control);
    void press(Button& button);
    void choose(ComboBox& combo, int index);
    void selectRow(Table& table, int row);
    void doubleClick(Table& table);
    void clickHeader(DataGrid& grid, int column);
    void clickCellButton(DataGrid& grid, int column);
    /// The window's close box.
    void close();

protected:
    virtual void onLoad() {}
    /// Each time the form comes on top: when shown, and when a form over it has closed.
    virtual void onActivate() {}
    /// Sees each key before its control; set the code to 0 to consume it.
    virtual void onKeyDown(int& /*code*/, int /*shift*/) {}
    virtual void onKeyUp(int& /*code*/, int /*shift*/) {}
    virtual void onUnload() {}
    /// Shows the key list.
    virtual void showKeys();
    /// A handler of the form on screen has failed. True when the person has been told and the form stays as it is;
    /// otherwise the failure ends it.
    virtual bool outlives(const std::exception& /*failure*/) { return false; }

    /// Registers a control under a name; the order of registration is the tab order.
    void add(Control& control, std::string name, Frame* container = nullptr);
    void add(OptionButton& option, std::string name, Frame* container = nullptr);
    /// Registers the elements of an array by rising index, named as "Text1(0)".
    template <class T>
    void add(ControlArray<T>& array, Frame* container = nullptr) {
        for (const auto& [index, control] : array.elements())
            add(*control, array.name() + "(" + std::to_string(index) + ")", container);
    }
    /// Says what a key of the form does, in place of what has been said of it before.
    void explainKey(KeyStroke stroke, std::string does);
    void layOut(Arrangement arrangement) { arrangement_ = std::move(arrangement); }
    /// The label must live as long as the form is shown.
    void setStatusLine(StatusLabel& line, std::string name);

private:
    friend class Desktop;

    struct Pending {
        bool tab = false;
        KeyStroke keyUp;
    };

    /// A message comes over the form.
    void interrupt();
    /// The key that dismissed it, 0 for the mouse, comes up after the running handler.
    void expectRelease(int code);

    template <class Handler>
    void gesture(Handler&& handler);
    /// A gesture that changes something by a control: the focus moves there, then `action` runs unless something came
    /// in between.
    template <class Action>
    void change(Control& control, Action&& action);

    void drainPending();
    void pressTab();
    void moveFocus(Control& target);
    /// Moves the focus to a control; false when the gesture ends there.
    bool arrive(Control& target);
    void leave(Control& previous);
    void settleFocus();
    Control* nextInTabOrder(const Control* from, bool backwards) const;
    bool pressAccelerator(int letter);
    bool defaultKey(KeyStroke stroke);
    bool keyOnControl(KeyStroke stroke);
    bool showsKeys(KeyStroke stroke) const;
    void clearOutcome();

    Desktop& desktop_;
    std::vector<Control*> controls_;
    std::vector<OptionButton*> options_;
    StatusLabel* statusLine_ = nullptr;
    Arrangement arrangement_;
    Control* active_ = nullptr;
    Control* requested_ = nullptr;
    std::deque<Pending> pending_;
    bool loaded_ = false;
    bool open_ = false;
    bool handling_ = false;
    bool moving_ = false;
    int interruptions_ = 0;
    int abandonedGestures_ = 0;
    KeyStroke pressed_;  ///< the key that went down last
    ListTyping typing_;
};

/// The keys of a form that can be of use now, a line for each thing that they do.
std::string keyList(const Form& form);

}  // namespace FendaMaestros

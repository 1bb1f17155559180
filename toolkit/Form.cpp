#include "toolkit/Form.h"

#include <algorithm>
#include <iterator>

#include "toolkit/KeyRules.h"
#include "toolkit/Raised.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

void raise(const std::function<void()>& event) {
    if (event) event();
}

/// Presses a button that was seen under a caption. Leaving another control may have given it another meaning meanwhile:
/// then nothing is done.
void pressAs(Button& button, const std::string& seen) {
    if (button.Caption == seen) button.press();
}

}  // namespace

void Form::load() {
    if (loaded_) return;
    loaded_ = true;
    onLoad();
}

void Form::show() {
    load();
    desktop_.showModal(*this);
}

void Form::unload() {
    if (!open_) return;
    open_ = false;
    pending_.clear();
    onUnload();
}

void Form::add(Control& control, std::string name, Frame* container) {
    control.Name = std::move(name);
    control.Container = container;
    controls_.push_back(&control);
}

void Form::add(OptionButton& option, std::string name, Frame* container) {
    add(static_cast<Control&>(option), std::move(name), container);
    options_.push_back(&option);
    std::vector<OptionButton*> group;
    std::ranges::copy_if(options_, std::back_inserter(group),
                         [&](const OptionButton* member) { return member->Container == container; });
    for (OptionButton* member : group) member->Group = group;
}

void Form::setStatusLine(StatusLabel& line, std::string name) {
    line.Name = std::move(name);
    statusLine_ = &line;
}

Control* Form::find(std::string_view name) const {
    if (statusLine_ && text::equalIgnoringCase(statusLine_->Name, name)) return statusLine_;
    const auto found = std::ranges::find_if(
        controls_, [&](const Control* control) { return text::equalIgnoringCase(control->Name, name); });
    return found == controls_.end() ? nullptr : *found;
}

bool Form::canFocus(const Control& control) const {
    return control.takesFocus() && control.isEnabled() && control.isVisible();
}

// --- focus

void Form::setFocus(Control& control) {
    if (!canFocus(control)) return;
    if (!open_ || moving_ || !active_)
        requested_ = &control;
    else
        moveFocus(control);
}

void Form::moveFocus(Control& target) {
    if (!canFocus(target) || &target == active_) return;
    Control* const previous = active_;
    requested_ = &target;
    if (previous) leave(*previous);
    if (!open_) return;

    Control* final = std::exchange(requested_, nullptr);
    if (!final || !canFocus(*final)) final = nextInTabOrder(final, false);
    active_ = final;
    if (active_) raise(active_->GotFocus);
}

bool Form::arrive(Control& target) {
    const int before = interruptions_;
    moveFocus(target);
    if (interruptions_ != before) ++abandonedGestures_;
    return open_ && active_ == &target && interruptions_ == before;
}

void Form::leave(Control& previous) {
    const Raised moving(moving_);
    active_ = requested_;
    try {
        raise(previous.LostFocus);
    } catch (...) {
        active_ = &previous;
        requested_ = nullptr;
        throw;
    }
}

void Form::settleFocus() {
    if (!open_ || (active_ && canFocus(*active_))) return;
    if (Control* next = nextInTabOrder(active_, false)) moveFocus(*next);
}

Control* Form::nextInTabOrder(const Control* from, bool backwards) const {
    const auto count = controls_.size();
    if (count == 0) return nullptr;
    const auto start = std::ranges::find(controls_, from);
    const std::size_t step = backwards ? count - 1 : 1;
    std::size_t at =
        start != controls_.end() ? static_cast<std::size_t>(start - controls_.begin()) : (backwards ? 0 : count - 1);
    for (std::size_t tried = 0; tried < count; ++tried) {
        at = (at + step) % count;
        Control* candidate = controls_[at];
        if (candidate->stopsTab() && canFocus(*candidate)) return candidate;
    }
    return nullptr;
}

// --- gestures

template <class Handler>
void Form::gesture(Handler&& handler) {
    if (!open_ || handling_) return;
    const Raised handling(handling_);
    try {
        handler();
        settleFocus();
        drainPending();
    } catch (const std::exception& failure) {
        pending_.clear();
        if (!open_ || !active_ || !outlives(failure)) throw;
        drainPending();
    }
}

template <class Action>
void Form::change(Control& control, Action&& action) {
    gesture([&] {
        if (!Enabled || !canFocus(control)) return;
        clearOutcome();
        if (arrive(control) && canFocus(control)) action();
    });
}

void Form::clearOutcome() {
    if (statusLine_) statusLine_->say({});
    for (Control* control : controls_) control->unmark();
}

void Form::drainPending() {
    while (open_ && !pending_.empty()) {
        Pending next = pending_.front();
        pending_.pop_front();
        if (next.tab)
            pressTab();
        else
            onKeyUp(next.keyUp.code, next.keyUp.shift);
        settleFocus();
    }
}

/// What has come on top on the way gets the key's release.
void Form::pressTab() {
    const int before = interruptions_;
    if (Control* control = nextInTabOrder(active_, false)) moveFocus(*control);
    int released = key::Tab;
    if (open_ && interruptions_ == before) onKeyUp(released, shift::None);
}

void Form::sendTab() { pending_.push_back({.tab = true, .keyUp = {}}); }

Answer Form::ask(std::string text, int style, std::string title) {
    return desktop_.ask({std::move(text), style, std::move(title)}).answer;
}

void Form::interrupt() {
    ++interruptions_;
    // The key that dismissed an earlier message of this handler comes up in this one.
    std::erase_if(pending_, [](const Pending& waiting) { return !waiting.tab; });
}

void Form::expectRelease(int code) {
    if (code == 0) return;
    // Esc was meant for the message: on the screen it is a key like any other, and closes nothing.
    pending_.push_back({.tab = false, .keyUp = {code == key::Escape ? key::Other : code, shift::None}});
}

bool Form::awaitsRelease() const {
    return std::ranges::any_of(pending_, [](const Pending& waiting) { return !waiting.tab; });
}

void Form::activate() {
    gesture([this] {
        onActivate();
        if (!open_ || active_) return;
        Control* first = requested_ && canFocus(*requested_) ? requested_ : nextInTabOrder(nullptr, false);
        if (first) moveFocus(*first);
    });
}

bool Form::keyDown(KeyStroke stroke) {
    bool done = true;
    gesture([&] {
        pressed_ = stroke;
        onKeyDown(stroke.code, stroke.shift);
        done = stroke.code == 0 || !open_ || !Enabled || defaultKey(stroke);
    });
    return done;
}

void Form::keyUp(KeyStroke stroke) {
    gesture([&] {
        // Of two keys that go up, either may be the first.
        if (pressed_.code == stroke.code ? showsKeys(pressed_) : showsKeys(stroke)) return showKeys();
        onKeyUp(stroke.code, stroke.shift);
    });
}

bool Form::accepts(char32_t character) {
    bool accepted = false;
    gesture([&] { accepted = Enabled && active_ && canFocus(*active_) && active_->takes(character); });
    return accepted;
}

void Form::edit(TextBox& box, std::string text) {
    gesture([&] {
        if (!Enabled || box.Locked || !canFocus(box)) return;
        clearOutcome();
        box.AllSelected = false;
        box.Text = box.MaxLength > 0 ? text::left(text, static_cast<std::size_t>(box.MaxLength)) : std::move(text);
        raise(box.Change);
    });
}

bool Form::typeOnList(char32_t character) {
    ComboBox* const list = active_ ? active_->asList() : nullptr;
    Table* const table = active_ ? active_->asTable() : nullptr;
    if (list)
        change(*list, [&] {
            const int index = typing_.next(*list, list->ListIndex(), character);
            if (index >= 0) list->setListIndex(index);
        });
    if (table)
        change(*table, [&] {
            const int row = typing_.next(*table, table->currentRow(), character);
            if (row >= 0 && row != table->currentRow()) table->moveToRow(row);
        });
    return list || table;
}

void Form::focus(Control& control) {
    gesture([&] {
        if (Enabled && canFocus(control)) arrive(control);
    });
}

void Form::press(Button& button) {
    change(button, [&, seen = button.Caption] { pressAs(button, seen); });
}

void Form::choose(ComboBox& combo, int index) {
    change(combo, [&] { combo.setListIndex(index); });
}

void Form::selectRow(Table& table, int row) {
    change(table, [&] {
        if (row >= 0 && row < table.rowCount()) table.moveToRow(row);
    });
}

void Form::doubleClick(Table& table) {
    change(table, [&] {
        if (table.currentRow() >= 0) raise(table.DblClick);
    });
}

void Form::clickHeader(DataGrid& grid, int column) {
    change(grid, [&] {
        if (grid.HeadClick) grid.HeadClick(column);
    });
}

void Form::clickCellButton(DataGrid& grid, int column) {
    change(grid, [&] {
        if (grid.ButtonClick && grid.currentRow() >= 0) grid.ButtonClick(column);
    });
}

void Form::close() {
    gesture([this] {
        if (Enabled) unload();
    });
}

// --- keys

bool Form::defaultKey(KeyStroke stroke) {
    if (stroke.code == key::Tab) {
        const bool backwards = stroke.shift & shift::Shift;
        if (Control* next = nextInTabOrder(active_, backwards)) moveFocus(*next);
        return true;
    }
    if (stroke.shift & shift::Alt) return pressAccelerator(stroke.code);
    if (!active_ || !canFocus(*active_)) return true;

    if (stroke.code != key::Enter) return keyOnControl(stroke);
    active_->takes(key::Enter);
    return true;
}

bool Form::keyOnControl(KeyStroke stroke) {
    const KeyEffect effect = effectOf(stroke, *active_);
    if (effect.change) {
        clearOutcome();
        effect.change();
    }
    if (effect.focus) moveFocus(*effect.focus);
    return effect.done;
}

void Form::explainKey(KeyStroke stroke, std::string does) {
    const auto said = std::ranges::find(Keys, stroke, &KeyHint::stroke);
    if (said == Keys.end())
        Keys.push_back({stroke, std::move(does)});
    else
        said->does = std::move(does);
}

bool Form::showsKeys(KeyStroke stroke) const {
    if (stroke.code != key::F1) return false;
    const auto answers = [&](const std::vector<KeyHint>& keys) {
        return std::ranges::find(keys, stroke, &KeyHint::stroke) != keys.end();
    };
    return stroke.shift == shift::Shift ||
           (stroke.shift == shift::None && !answers(Keys) && !(active_ && answers(active_->keys())));
}

void Form::showKeys() { ask(keyList(*this), message::Information, Caption); }

bool Form::pressAccelerator(int letter) {
    for (Control* control : controls_) {
        Button* const button = control->asButton();
        if (!button || button->accelerator() != letter || !canFocus(*button)) continue;
        clearOutcome();
        const std::string seen = button->Caption;
        if (arrive(*button) && canFocus(*button)) pressAs(*button, seen);
        return true;
    }
    return false;
}

}  // namespace FendaMaestros

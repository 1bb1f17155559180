#include "toolkit/Form.h"

#include <algorithm>
#include <iterator>

#include "toolkit/Raised.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

void raise(const std::function<void()>& event) {
    if (event) event();
}

/// The capital letter behind the "&" of a caption, 0 when there is none.
int acceleratorOf(std::string_view caption) {
    const auto mark = caption.find('&');
    if (mark == std::string_view::npos || mark + 1 == caption.size()) return 0;
    const unsigned char letter = static_cast<unsigned char>(caption[mark + 1]);
    return letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter;
}

/// Of what can be pressed; "" for every other control.
std::string captionOf(const Control& control) {
    if (const auto* button = dynamic_cast<const CommandButton*>(&control)) return button->Caption;
    if (const auto* check = dynamic_cast<const CheckBox*>(&control)) return check->Caption;
    if (const auto* option = dynamic_cast<const OptionButton*>(&control)) return option->Caption;
    return {};
}

/// Presses, ticks or chooses a control that was seen under a caption. Leaving another one may have given it another
/// meaning meanwhile: then nothing is done.
void actOn(Control& control, const std::string& seen) {
    if (captionOf(control) != seen) return;
    if (auto* button = dynamic_cast<CommandButton*>(&control)) return raise(button->Click);
    if (auto* check = dynamic_cast<CheckBox*>(&control)) return check->setValue(!check->Value());
    if (auto* option = dynamic_cast<OptionButton*>(&control)) option->setValue(true);
}

/// A click on the header of the n-th visible column, from 0.
void sortByVisibleColumn(const DataGrid& grid, int nth) {
    if (nth < 0 || !grid.HeadClick) return;
    for (std::size_t column = 0; column < grid.Columns.size(); ++column)
        if (grid.Columns[column].Visible && nth-- == 0) return grid.HeadClick(static_cast<int>(column));
}

constexpr int rowsOfAPage = 10;

/// Where a key leads from `current` among `count` rows; -1 when it leads nowhere.
int rowAfterKey(int code, int current, int count) {
    if (count == 0) return -1;
    int row = current;
    switch (code) {
        case key::Up:
            row = current - 1;
            break;
        case key::Down:
            row = current + 1;
            break;
        case key::PageUp:
            row = current - rowsOfAPage;
            break;
        case key::PageDown:
            row = current + rowsOfAPage;
            break;
        case key::Home:
            row = 0;
            break;
        case key::End:
            row = count - 1;
            break;
        default:
            return -1;
    }
    return std::clamp(row, 0, count - 1);
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

    auto* option = dynamic_cast<OptionButton*>(&control);
    if (!option) return;
    std::vector<OptionButton*> group;
    for (Control* other : controls_)
        if (auto* member = dynamic_cast<OptionButton*>(other); member && member->Container == container)
            group.push_back(member);
    for (OptionButton* member : group) member->Group = group;
}

Control* Form::find(std::string_view name) const {
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
        if (!candidate->TabStop || !canFocus(*candidate)) continue;
        const auto* option = dynamic_cast<OptionButton*>(candidate);
        const bool representsItsGroup =
            !option || option->Value() ||
            std::ranges::none_of(option->Group, [](const OptionButton* member) { return member->Value(); });
        if (representsItsGroup) return candidate;
    }
    return nullptr;
}

// --- gestures

template <class Handler>
void Form::gesture(Handler&& handler) {
    if (!open_ || handling_) return;
    const Raised handling(handling_);
    handler();
    settleFocus();
    drainPending();
}

template <class Action>
void Form::gestureOn(Control& control, Action&& action) {
    gesture([&] {
        if (!Enabled || !canFocus(control)) return;
        if (arrive(control) && canFocus(control)) action();
    });
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
    ++interruptions_;
    // The key that dismissed an earlier message of this handler came up in this one.
    std::erase_if(pending_, [](const Pending& waiting) { return !waiting.tab; });
    const Reply reply = desktop_.ask({std::move(text), style, std::move(title)});
    // Esc was meant for the message: on the screen it is a key like any other, and closes nothing.
    const int released = reply.key == key::Escape ? key::Other : reply.key;
    if (released) pending_.push_back({.tab = false, .keyUp = {released, shift::None}});
    return reply.answer;
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
        onKeyDown(stroke.code, stroke.shift);
        done = stroke.code == 0 || !open_ || !Enabled || defaultKey(stroke);
    });
    return done;
}

void Form::keyUp(KeyStroke stroke) {
    gesture([&] { onKeyUp(stroke.code, stroke.shift); });
}

bool Form::accepts(char32_t character) {
    bool accepted = false;
    gesture([&] {
        auto* box = dynamic_cast<TextBox*>(active_);
        if (!Enabled || !box || box->Locked || !canFocus(*box)) return;
        int ascii = static_cast<int>(character);
        if (box->KeyPress) box->KeyPress(ascii);
        accepted = ascii != 0;
    });
    return accepted;
}

void Form::edit(TextBox& box, std::string text) {
    gesture([&] {
        if (!Enabled || box.Locked || !canFocus(box)) return;
        box.AllSelected = false;
        box.Text = box.MaxLength > 0 ? text::left(text, static_cast<std::size_t>(box.MaxLength)) : std::move(text);
        raise(box.Change);
    });
}

void Form::typeOn(ComboBox& combo, char32_t character) {
    gestureOn(combo, [&] {
        const int index = typing_.next(combo, combo.ListIndex(), character);
        if (index >= 0) combo.setListIndex(index);
    });
}

void Form::focus(Control& control) {
    gestureOn(control, [] {});
}

void Form::press(CommandButton& button) {
    gestureOn(button, [&, seen = button.Caption] { actOn(button, seen); });
}

void Form::toggle(CheckBox& check) {
    gestureOn(check, [&] { actOn(check, check.Caption); });
}

void Form::pick(OptionButton& option) {
    gestureOn(option, [&] { actOn(option, option.Caption); });
}

void Form::choose(ComboBox& combo, int index) {
    gestureOn(combo, [&] { combo.setListIndex(index); });
}

void Form::selectRow(DataGrid& grid, int row) {
    gestureOn(grid, [&] {
        if (row >= 0 && row < grid.rowCount()) grid.moveToRow(row);
    });
}

void Form::selectRow(ListView& list, int row) {
    gestureOn(list, [&] {
        if (row >= 0 && row < static_cast<int>(list.Rows.size())) list.SelectedRow = row;
    });
}

void Form::doubleClick(DataGrid& grid) {
    gestureOn(grid, [&] {
        if (grid.currentRow() >= 0) raise(grid.DblClick);
    });
}

void Form::clickHeader(DataGrid& grid, int column) {
    gestureOn(grid, [&] {
        if (grid.HeadClick) grid.HeadClick(column);
    });
}

void Form::clickCellButton(DataGrid& grid, int column) {
    gestureOn(grid, [&] {
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

    if (auto* box = dynamic_cast<TextBox*>(active_)) {
        if (stroke.code != key::Enter) return false;
        int ascii = key::Enter;
        if (box->KeyPress) box->KeyPress(ascii);
        return true;
    }
    if (dynamic_cast<CommandButton*>(active_) || dynamic_cast<CheckBox*>(active_)) {
        if (stroke.code == key::Space) actOn(*active_, captionOf(*active_));
        return true;
    }
    if (auto* option = dynamic_cast<OptionButton*>(active_)) return optionKey(*option, stroke.code);
    if (auto* combo = dynamic_cast<ComboBox*>(active_)) return comboKey(*combo, stroke.code);
    if (auto* grid = dynamic_cast<DataGrid*>(active_)) return gridKey(*grid, stroke);
    if (auto* list = dynamic_cast<ListView*>(active_)) return listKey(*list, stroke.code);
    return false;
}

bool Form::pressAccelerator(int letter) {
    for (Control* control : controls_) {
        const std::string caption = captionOf(*control);
        if (acceleratorOf(caption) != letter || !canFocus(*control)) continue;
        if (arrive(*control) && canFocus(*control)) actOn(*control, caption);
        return true;
    }
    return false;
}

bool Form::gridKey(DataGrid& grid, KeyStroke stroke) {
    const int row = rowAfterKey(stroke.code, grid.currentRow(), grid.rowCount());
    if (row >= 0) grid.moveToRow(row);
    if (stroke.shift == shift::Control) sortByVisibleColumn(grid, stroke.code - '1');
    return true;
}

bool Form::listKey(ListView& list, int code) {
    const int row = rowAfterKey(code, list.SelectedRow, static_cast<int>(list.Rows.size()));
    if (row >= 0) list.SelectedRow = row;
    return true;
}

bool Form::comboKey(ComboBox& combo, int code) {
    const int index = rowAfterKey(code, combo.ListIndex(), combo.ListCount());
    if (index < 0) return false;
    if (index != combo.ListIndex()) combo.setListIndex(index);
    return true;
}

bool Form::optionKey(OptionButton& option, int code) {
    if (code == key::Space) {
        option.setValue(true);
        return true;
    }
    const bool forwards = code == key::Down || code == key::Right;
    if (!forwards && code != key::Up && code != key::Left) return true;
    const auto& group = option.Group;
    const auto count = group.size();
    auto at = static_cast<std::size_t>(std::ranges::find(group, &option) - group.begin());
    for (std::size_t tried = 0; tried < count; ++tried) {
        at = (at + (forwards ? 1 : count - 1)) % count;
        if (!canFocus(*group[at])) continue;
        group[at]->setValue(true);
        moveFocus(*group[at]);
        break;
    }
    return true;
}

}  // namespace FendaMaestros

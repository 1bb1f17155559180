#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "toolkit/KeyHints.h"
#include "toolkit/RowSource.h"

/// Controls as plain objects: the properties a person can see, and the events a screen listens to. Screens write the
/// properties directly and a view shows them; only what must raise an event goes through a function. Texts are UTF-8.
namespace FendaMaestros {

/// 1/1440 inch; 15 twips are one pixel at 96 dpi.
using Twips = int;
/// 0xBBGGRR: 65535 is yellow, 16777215 white.
using Color = std::uint32_t;

enum class Alignment { Left, Right, Center };

class Button;
class ComboBox;
class ControlVisitor;
class Frame;
class Table;

class Control {
public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    /// The name scripts know it by, "cmdGuardar" or "Text1(0)"; given by the form.
    std::string Name;
    bool Enabled = true;
    bool Visible = true;
    bool TabStop = true;
    std::string Tag;
    /// What a pointer that rests on it is told; "" for nothing.
    std::string ToolTip;
    /// The frame that holds it: disabling or hiding the frame does so to the control. None: the form itself.
    Frame* Container = nullptr;

    std::function<void()> GotFocus;
    std::function<void()> LostFocus;

    /// False for what only shows (labels, frames): it is skipped by Tab and refuses the focus.
    virtual bool takesFocus() const { return true; }
    /// Its own state and that of its containers.
    bool isEnabled() const;
    bool isVisible() const;
    /// The text on it, "" for what has none.
    virtual const std::string& caption() const;
    /// The keys that do something to it, for its tooltip and the form's key list.
    virtual std::vector<KeyHint> keys() const { return {}; }
    /// Calls the visitor's function for its kind.
    virtual void accept(ControlVisitor& visitor) = 0;

    // --- what the form asks

    /// Itself, for what is pressed by a click, by Space and by the letter behind "&"; null for everything else.
    virtual Button* asButton() { return nullptr; }
    /// Itself, for a list of which an item is found by typing; null for everything else.
    virtual ComboBox* asList() { return nullptr; }
    /// Itself, for a table of which a row is found by typing; null for everything else.
    virtual Table* asTable() { return nullptr; }
    /// Tab stops at it, as long as it can have the focus.
    virtual bool stopsTab() const { return TabStop; }
    /// A character typed may become part of its text.
    virtual bool takes(char32_t /*character*/) { return false; }
    /// Takes away what marks the outcome of the gesture before.
    virtual void unmark() {}
};

/// A control with a text on it.
class Captioned : public Control {
public:
    std::string Caption;

    Captioned() = default;
    explicit Captioned(std::string caption) : Caption(std::move(caption)) {}
    const std::string& caption() const final { return Caption; }
};

class Label : public Captioned {
public:
    using Captioned::Captioned;
    bool takesFocus() const override { return false; }
    void accept(ControlVisitor& visitor) override;
};

/// How a text of the status line is meant.
enum class StatusKind { Plain, Good, Warning };

/// The line of a form that tells what needs no answer.
class StatusLabel : public Label {
public:
    StatusKind Kind = StatusKind::Plain;

    void say(std::string text, StatusKind kind = StatusKind::Plain);
    /// The text as a person reads it: what is good or a warning has a sign in front.
    std::string shown() const;
};

class Frame : public Captioned {
public:
    bool takesFocus() const override { return false; }
    void accept(ControlVisitor& visitor) override;
};

class TextBox : public Control {
public:
    std::string Text;
    /// Characters a person may type; 0 for any number. Programs may put longer texts.
    int MaxLength = 0;
    /// Shows and takes the focus, but a person cannot change it.
    bool Locked = false;
    Color BackColor = 16777215;
    Alignment TextAlignment = Alignment::Left;
    /// The whole text is selected, so that the next key typed replaces it.
    bool AllSelected = false;
    /// The keys on which the screen searches for what it holds, while it has the focus. A view offers them in the box,
    /// too, the first one foremost, and sends the key; two keys that do the same are offered as one.
    std::vector<KeyHint> Searches;

    /// A character typed, as its Unicode code point (8 Backspace, 13 Enter); set to 0 to refuse it.
    std::function<void(int& keyAscii)> KeyPress;
    /// A person has changed the text.
    std::function<void()> Change;

    std::vector<KeyHint> keys() const override { return Searches; }
    void accept(ControlVisitor& visitor) override;
    /// Asks KeyPress, unless the box is locked.
    bool takes(char32_t character) override;
};

/// A list that drops down and from which one item is chosen; ListIndex -1 means none.
class ComboBox : public Control {
public:
    std::function<void()> Click;

    void AddItem(std::string item) { items_.push_back(std::move(item)); }
    /// Leaves no item and none chosen; raises no Click.
    void Clear();
    int ListCount() const { return static_cast<int>(items_.size()); }
    /// Throws std::out_of_range.
    const std::string& List(int index) const { return items_.at(static_cast<std::size_t>(index)); }
    int ListIndex() const { return listIndex_; }
    /// Chooses an item as a person would: Click is raised, also for the item chosen already. -1 chooses none.
    /// Throws std::out_of_range.
    void setListIndex(int index);
    /// The chosen item, "" when there is none.
    std::string Text() const { return listIndex_ < 0 ? std::string() : items_[static_cast<std::size_t>(listIndex_)]; }

    void accept(ControlVisitor& visitor) override;
    ComboBox* asList() override { return this; }

private:
    std::vector<std::string> items_;
    int listIndex_ = -1;
};

/// What a person presses. "&" stands in the caption before the letter that does it together with Alt.
class Button : public Captioned {
public:
    std::function<void()> Click;
    /// The key on which the screen does the same from anywhere; code 0 for none.
    KeyStroke Key;

    using Captioned::Captioned;
    Button* asButton() final { return this; }
    /// Its key and the letter of its caption.
    std::vector<KeyHint> keys() const override;
    /// The capital letter behind the "&" of the caption, 0 when there is none.
    int accelerator() const;
    /// What pressing it does, when it has the focus.
    virtual void press() = 0;
};

class CommandButton : public Button {
public:
    using Button::Button;
    void accept(ControlVisitor& visitor) override;
    void press() override;
};

class CheckBox : public Button {
public:
    bool Value() const { return value_; }
    /// Raises Click when the value changes.
    void setValue(bool value);

    void accept(ControlVisitor& visitor) override;
    void press() override { setValue(!value_); }

private:
    bool value_ = false;
};

/// One of several of which exactly one holds: those of the same frame of one form.
class OptionButton : public Button {
public:
    /// All members of its group, itself included; filled by the form.
    std::vector<OptionButton*> Group;

    bool Value() const { return value_; }
    /// True clears the others of the group and raises Click when it was not set; false only clears this one.
    void setValue(bool value);

    void accept(ControlVisitor& visitor) override;
    void press() override { setValue(true); }
    /// One of a group does: the one that holds or, when none does, any.
    bool stopsTab() const override;

private:
    bool value_ = false;
};

struct TableColumn {
    std::string Caption;
    Twips Width = 1440;
    Alignment TextAlignment = Alignment::Left;
    bool Visible = true;

    bool operator==(const TableColumn&) const = default;
};

/// Rows of texts under captions, of which one may be current. Rows and columns count from 0; hidden columns count.
class Table : public Control {
public:
    /// Double click on the current row, or Space.
    std::function<void()> DblClick;

    virtual int columnCount() const = 0;
    virtual const TableColumn& column(int column) const = 0;
    virtual int rowCount() const = 0;
    /// -1: none.
    virtual int currentRow() const = 0;
    /// The row that is set off from the others, current or not; -1: none.
    virtual int markedRow() const { return -1; }
    /// What the row stands for is out of use: it is shown more quietly.
    virtual bool isInactive(int /*row*/) const { return false; }
    /// The text shown, "" where the row has none.
    virtual std::string cellText(int row, int column) const = 0;
    /// Makes a row current; it must exist.
    virtual void moveToRow(int row) = 0;

    Table* asTable() final { return this; }
};

struct GridColumn : TableColumn {
    /// The column of the row source that it shows.
    int SourceColumn = 0;
    /// A mask of toolkit/Format.h; empty shows the value's own text.
    std::string NumberFormat;
    /// Shows a button in the cell of the current row.
    bool Button = false;
};

/// A read-only table over a row source, whose current row it shows and changes.
class DataGrid : public Table {
public:
    std::string Caption;
    std::vector<GridColumn> Columns;
    /// The row that something has just been done to: set off and in view, until the next gesture that can change
    /// something or other rows are bound. -1: none.
    int MarkedRow = -1;
    /// Says of a row whether what it stands for is out of use, until other rows are bound; null: of none.
    std::function<bool(int row)> Inactive;

    std::function<void(int column)> HeadClick;
    std::function<void(int column)> ButtonClick;
    /// Shows these rows from now on, with one plain column for each column of the source, captioned by its name; then
    /// makes the current row current again, so that whoever listens to its moves hears of it. Null empties the grid.
    void bind(std::shared_ptr<RowSource> source);
    const std::shared_ptr<RowSource>& source() const { return source_; }

    const std::string& caption() const override { return Caption; }
    void accept(ControlVisitor& visitor) override;
    int columnCount() const override { return static_cast<int>(Columns.size()); }
    const GridColumn& column(int column) const override { return Columns.at(static_cast<std::size_t>(column)); }
    int rowCount() const override { return source_ ? source_->rowCount() : 0; }
    int currentRow() const override { return source_ ? source_->currentRow() : -1; }
    int markedRow() const override { return MarkedRow; }
    bool isInactive(int row) const override { return Inactive && Inactive(row); }
    void unmark() override { MarkedRow = -1; }
    /// Under the column's number format.
    std::string cellText(int row, int column) const override;
    /// The rows outlive the notification, also when its listener binds others.
    void moveToRow(int row) override;

private:
    std::shared_ptr<RowSource> source_;
};

struct ListRow {
    /// The first column and the further ones; missing texts show empty.
    std::vector<std::string> Texts;
    std::string Tag;
};

/// A report-view list: rows of texts of its own.
class ListView : public Table {
public:
    std::vector<TableColumn> Columns;
    std::vector<ListRow> Rows;
    /// -1: none.
    int SelectedRow = -1;

    void accept(ControlVisitor& visitor) override;
    int columnCount() const override { return static_cast<int>(Columns.size()); }
    const TableColumn& column(int column) const override { return Columns.at(static_cast<std::size_t>(column)); }
    int rowCount() const override { return static_cast<int>(Rows.size()); }
    int currentRow() const override { return SelectedRow; }
    std::string cellText(int row, int column) const override;
    void moveToRow(int row) override { SelectedRow = row; }
};

class PagedDocument;

/// Shows one page of a document.
class PageView : public Control {
public:
    std::shared_ptr<const PagedDocument> Document;
    /// From 0.
    int Page = 0;
    /// Shown size in percent of the paper's; 0 fits the page's width to the window.
    int Zoom = 0;
    /// How far the page is scrolled up, and how far it can be; 0 when all of it is in sight. The view says how far, and
    /// how much of it is a screenful. In pixels.
    int Scrolled = 0;
    int ScrollEnd = 0;
    int Screenful = 0;

    /// Scrolls by a screenful down (1) or up (-1); false when there is no more of the page there.
    bool scroll(int direction);
    void accept(ControlVisitor& visitor) override;
};

/// How far a long work has come: `Value` of `Max` steps.
class ProgressBar : public Control {
public:
    int Value = 0;
    int Max = 100;

    bool takesFocus() const override { return false; }
    void accept(ControlVisitor& visitor) override;
};

/// What somebody does with controls, kind by kind.
class ControlVisitor {
public:
    virtual ~ControlVisitor() = default;

    virtual void visit(Label& label) = 0;
    virtual void visit(Frame& frame) = 0;
    virtual void visit(TextBox& box) = 0;
    virtual void visit(ComboBox& combo) = 0;
    virtual void visit(CommandButton& button) = 0;
    virtual void visit(CheckBox& check) = 0;
    virtual void visit(OptionButton& option) = 0;
    virtual void visit(DataGrid& grid) = 0;
    virtual void visit(ListView& list) = 0;
    virtual void visit(PageView& pages) = 0;
    virtual void visit(ProgressBar& progress) = 0;
};

/// Controls of one name told apart by an index; indexes may have gaps.
template <class T>
class ControlArray {
public:
    ControlArray(std::string name, std::initializer_list<int> indexes) : name_(std::move(name)) {
        for (int index : indexes) elements_.emplace(index, std::make_unique<T>());
    }

    /// Throws std::out_of_range for an index that the array does not have.
    T& operator()(int index) { return *elements_.at(index); }
    const T& operator()(int index) const { return *elements_.at(index); }
    const std::string& name() const { return name_; }
    /// Index and control, in order of index.
    const std::map<int, std::unique_ptr<T>>& elements() const { return elements_; }

private:
    std::string name_;
    std::map<int, std::unique_ptr<T>> elements_;
};

}  // namespace FendaMaestros

#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "toolkit/RowSource.h"

/// Controls as plain objects: the properties a person can see, and the events a screen listens to. Screens write the
/// properties directly and a view shows them; only what must raise an event goes through a function. Texts are UTF-8.
namespace FendaMaestros {

/// 1/1440 inch; 15 twips are one pixel at 96 dpi.
using Twips = int;
/// 0xBBGGRR: 65535 is yellow, 16777215 white.
using Color = std::uint32_t;

enum class Alignment { Left, Right, Center };

class Frame;

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
    /// The frame that holds it: disabling or hiding the frame does so to the control. None: the form itself.
    Frame* Container = nullptr;

    std::function<void()> GotFocus;
    std::function<void()> LostFocus;

    /// False for what only shows (labels, frames): it is skipped by Tab and refuses the focus.
    virtual bool takesFocus() const { return true; }
    /// Its own state and that of its containers.
    bool isEnabled() const;
    bool isVisible() const;
};

class Label : public Control {
public:
    std::string Caption;

    Label() = default;
    explicit Label(std::string caption) : Caption(std::move(caption)) {}
    bool takesFocus() const override { return false; }
};

class Frame : public Control {
public:
    std::string Caption;

    bool takesFocus() const override { return false; }
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

    /// A character typed, as its Unicode code point (8 Backspace, 13 Enter); set to 0 to refuse it.
    std::function<void(int& keyAscii)> KeyPress;
    /// A person has changed the text.
    std::function<void()> Change;
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

private:
    std::vector<std::string> items_;
    int listIndex_ = -1;
};

class CheckBox : public Control {
public:
    std::string Caption;
    std::function<void()> Click;

    bool Value() const { return value_; }
    /// Raises Click when the value changes.
    void setValue(bool value);

private:
    bool value_ = false;
};

/// One of several of which exactly one holds: those of the same frame of one form.
class OptionButton : public Control {
public:
    std::string Caption;
    std::function<void()> Click;
    /// All members of its group, itself included; filled by the form.
    std::vector<OptionButton*> Group;

    bool Value() const { return value_; }
    /// True clears the others of the group and raises Click when it was not set; false only clears this one.
    void setValue(bool value);

private:
    bool value_ = false;
};

class CommandButton : public Control {
public:
    /// "&" stands before the letter that presses it together with Alt.
    std::string Caption;
    std::function<void()> Click;

    CommandButton() = default;
    explicit CommandButton(std::string caption) : Caption(std::move(caption)) {}
};

struct GridColumn {
    std::string Caption;
    /// The column of the row source that it shows.
    int SourceColumn = 0;
    Twips Width = 1440;
    Alignment TextAlignment = Alignment::Left;
    bool Visible = true;
    /// A mask of toolkit/Format.h; empty shows the value's own text.
    std::string NumberFormat;
    /// Shows a button in the cell of the current row.
    bool Button = false;
};

/// A read-only table over a row source, whose current row it shows and changes.
class DataGrid : public Control {
public:
    std::string Caption;
    std::vector<GridColumn> Columns;

    std::function<void(int column)> HeadClick;
    std::function<void(int column)> ButtonClick;
    /// Double click on the current row.
    std::function<void()> DblClick;

    /// Shows these rows from now on, with one plain column for each column of the source, captioned by its name; then
    /// makes the current row current again, so that whoever listens to its moves hears of it. Null empties the grid.
    void bind(std::shared_ptr<RowSource> source);
    const std::shared_ptr<RowSource>& source() const { return source_; }
    /// Makes a row current. The rows outlive the notification, also when its listener binds others.
    void moveToRow(int row);
    int rowCount() const { return source_ ? source_->rowCount() : 0; }
    int currentRow() const { return source_ ? source_->currentRow() : -1; }
    /// The text shown, under the column's number format.
    std::string cellText(int row, int column) const;

private:
    std::shared_ptr<RowSource> source_;
};

struct ListColumn {
    std::string Caption;
    Twips Width = 1440;
    Alignment TextAlignment = Alignment::Left;
};

struct ListRow {
    /// The first column and the further ones; missing texts show empty.
    std::vector<std::string> Texts;
    std::string Tag;
};

/// A report-view list: rows of texts under captions.
class ListView : public Control {
public:
    std::vector<ListColumn> Columns;
    std::vector<ListRow> Rows;
    /// -1: none.
    int SelectedRow = -1;
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

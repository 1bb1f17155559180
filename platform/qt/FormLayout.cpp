#include "platform/qt/FormLayout.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "platform/qt/FormWindow.h"
#include "platform/qt/GivingWay.h"
#include "platform/qt/WrapLayout.h"
#include "toolkit/Raised.h"

namespace FendaMaestros::qt {

namespace {

using Kind = Arrangement::Kind;

constexpr int airOverButtons = 5;
/// Buttons of a line are equally wide, but for those whose caption needs more than this.
constexpr int widestAlike = 160;

/// Side by side; what is tall among it gives way, however high the rest would be in lines of their own.
class LineGivingWay final : public QHBoxLayout {
public:
    /// What this asks of the box asks back here first.
    int heightForWidth(int width) const override {
        if (asking_) return QHBoxLayout::heightForWidth(width);
        const Raised asking(asking_);
        return minimumHeightForWidth(width);
    }

private:
    mutable bool asking_ = false;
};

/// Turns the nodes of an arrangement into layouts. All labels of fields get one width, so that the fields line up over
/// the whole window.
class Builder {
public:
    explicit Builder(FormWindow& window) : window_(window) {}

    QLayout* column(const std::vector<Arrangement>& nodes) {
        auto* box = new QVBoxLayout;
        bool filled = false;
        for (const Arrangement& node : nodes) {
            const bool tall = growsTall(node);
            filled = filled || tall;
            // What stands beside something else needs less of the room.
            place(*box, node, node.kind == Kind::Filling ? 2 : tall ? 1 : 0);
        }
        if (!filled) box->addStretch();
        return box;
    }

    void alignLabels() {
        int widest = 0;
        for (QWidget* label : labels_) widest = std::max(widest, label->sizeHint().width());
        for (QWidget* label : labels_) label->setMinimumWidth(widest);
    }

private:
    bool growsTall(const Arrangement& node) {
        if (node.kind == Kind::Filling) return true;
        if (node.control && window_.viewOf(*node.control).isTall()) return true;
        return std::ranges::any_of(node.children, [this](const Arrangement& child) { return growsTall(child); });
    }

    bool growsWide(const Arrangement& node) {
        if (node.kind == Kind::Filling || node.kind == Kind::Buttons) return true;
        if (node.control && node.kind != Kind::Framed) return window_.viewOf(*node.control).stretches();
        return std::ranges::any_of(node.children, [this](const Arrangement& child) { return growsWide(child); });
    }

    void place(QBoxLayout& box, const Arrangement& node, int stretch) {
        switch (node.kind) {
            case Kind::Column:
                box.addLayout(column(node.children), stretch);
                break;
            case Kind::Row:
                box.addLayout(growsTall(node) ? line(node.children) : wrapped(node.children), stretch);
                break;
            case Kind::Fields:
                box.addLayout(fields(node.children), stretch);
                break;
            case Kind::Field:
                if (box.direction() == QBoxLayout::TopToBottom)
                    box.addLayout(fields({node}), stretch);
                else
                    placeInline(box, node, stretch);
                break;
            case Kind::Framed:
                box.addWidget(framed(node), stretch);
                break;
            case Kind::Buttons:
                box.addSpacing(airOverButtons);
                box.addLayout(buttons(node.children), stretch);
                break;
            case Kind::Filling:
            case Kind::Plain:
                placeControl(box, *node.control, stretch);
                break;
        }
    }

    void placeControl(QBoxLayout& box, Control& control, int stretch) {
        ControlView& view = window_.viewOf(control);
        const bool inLine = box.direction() != QBoxLayout::TopToBottom;
        auto* const text = qobject_cast<QLabel*>(&view.widget());
        if (text && !inLine) text->setWordWrap(true);
        box.addWidget(&view.widget(), stretch, inLine || text || view.stretches() ? Qt::Alignment() : Qt::AlignLeft);
    }

    void placeInline(QBoxLayout& box, const Arrangement& field, int stretch) {
        if (field.label) {
            QWidget& label = window_.viewOf(*field.label).widget();
            call(field, *field.label);
            label.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
            box.addWidget(&label);
        }
        if (field.control)
            placeControl(box, *field.control, stretch);
        else
            box.addLayout(line(field.children), stretch);
    }

    /// Side by side in one line; the room left goes to those that use it, or stays at the right.
    QLayout* line(const std::vector<Arrangement>& nodes) {
        auto* box = std::ranges::any_of(nodes, [this](const Arrangement& node) { return growsTall(node); })
                        ? new LineGivingWay
                        : new QHBoxLayout;
        bool filled = false;
        for (const Arrangement& node : nodes) {
            const bool wide = growsWide(node);
            filled = filled || wide;
            place(*box, node, wide ? 1 : 0);
        }
        if (!filled) box->addStretch();
        return box;
    }

    /// The same, in further lines where one is too narrow.
    QLayout* wrapped(const std::vector<Arrangement>& nodes) {
        auto* const lines = new WrapLayout(WrapLayout::Side::Left);
        for (const Arrangement& node : nodes) {
            if (node.kind == Kind::Buttons) {
                lines->add(levelWithFrames(nodes, buttons(node.children)), true);
                continue;
            }
            auto* const box = new QHBoxLayout;
            // Fields beside something higher keep their distances.
            place(*box, node.kind == Kind::Fields ? arrange::column({node}) : node, 1);
            lines->add(box, growsWide(node));
        }
        return lines;
    }

    /// Commands beside frames stand on the line of what the frames hold, below the captions.
    QLayout* levelWithFrames(const std::vector<Arrangement>& nodes, QLayout* commands) {
        int caption = 0;
        for (const Arrangement& node : nodes) {
            if (node.kind != Kind::Framed) continue;
            const QMargins margins = window_.viewOf(*node.control).widget().contentsMargins();
            caption = std::max(caption, margins.top() - margins.bottom());
        }
        commands->setContentsMargins(0, caption, 0, 0);
        return commands;
    }

    QLayout* fields(const std::vector<Arrangement>& nodes) {
        auto* grid = new QGridLayout;
        grid->setColumnStretch(1, 1);
        for (const Arrangement& node : nodes) {
            const int row = grid->rowCount();
            const bool tall = growsTall(node);
            if (tall) grid->setRowStretch(row, 1);
            if (node.label) {
                QWidget& label = window_.viewOf(*node.label).widget();
                call(node, *node.label);
                labels_.push_back(&label);
                if (!tall) label.setMinimumHeight(heightOfFirst(node));
                grid->addWidget(&label, row, 0, Qt::AlignTop);
            }
            const std::vector<Arrangement> controls = node.control ? std::vector{arrange::plain(*node.control)}
                                                      : node.kind == Kind::Field ? node.children
                                                                                 : std::vector{node};
            grid->addLayout(tall ? line(controls) : wrapped(controls), row, 1);
        }
        return grid;
    }

    /// The label of controls that wrap stays beside those of the first line.
    int heightOfFirst(const Arrangement& field) {
        if (field.control) return window_.viewOf(*field.control).widget().sizeHint().height();
        return field.children.empty() ? 0 : heightOfFirst(field.children.front());
    }

    QWidget* framed(const Arrangement& node) {
        QWidget& box = window_.viewOf(*node.control).widget();
        if (node.children.size() != 1 || node.children.front().kind != Kind::Row) {
            box.setLayout(column(node.children));
            return &box;
        }
        // In the middle, beside higher frames too.
        auto* const middle = new QVBoxLayout(&box);
        place(*middle, node.children.front(), 1);
        return &box;
    }

    /// The controls of a field, but for those with a label of their own, are called as the field.
    void call(const Arrangement& field, const Label& label) {
        if (field.control) window_.setLabel(*field.control, label);
        for (const Arrangement& child : field.children)
            if (!child.label) call(child, label);
    }

    QLayout* buttons(const std::vector<Arrangement>& nodes) {
        auto* const box = new WrapLayout(WrapLayout::Side::Right);
        int widest = 0;
        for (const Arrangement& node : nodes) {
            const int width = window_.viewOf(*node.control).widget().sizeHint().width();
            if (width <= widestAlike) widest = std::max(widest, width);
        }
        box->setCommonWidth(widest);
        for (const Arrangement& node : nodes) box->addWidget(&window_.viewOf(*node.control).widget());
        return box;
    }

    FormWindow& window_;
    std::vector<QWidget*> labels_;
};

void collect(const Arrangement& node, std::set<const Control*>& placed) {
    placed.insert(node.control);
    placed.insert(node.label);
    for (const Arrangement& child : node.children) collect(child, placed);
}

/// What the arrangement leaves out of a container: a label goes with the field after it, commands come last.
class LeftOut final : public ControlVisitor {
public:
    LeftOut(const Form& form, const std::set<const Control*>& placed) : form_(form), placed_(placed) {}

    std::vector<Arrangement> in(const Control* container) {
        for (Control* control : form_.controls())
            if (control->Container == container && !placed_.contains(control)) control->accept(*this);
        placeLabel();
        if (!commands_.empty()) nodes_.push_back(arrange::buttons(commands_));
        return std::move(nodes_);
    }

    void visit(Label& label) override {
        placeLabel();
        label_ = &label;
    }
    void visit(Frame& frame) override { nodes_.push_back(arrange::framed(frame, LeftOut(form_, placed_).in(&frame))); }
    void visit(CommandButton& button) override { commands_.push_back(&button); }
    void visit(DataGrid& grid) override { nodes_.push_back(arrange::filling(grid)); }
    void visit(ListView& list) override { nodes_.push_back(arrange::filling(list)); }
    void visit(PageView& pages) override { nodes_.push_back(arrange::filling(pages)); }
    void visit(TextBox& box) override { placeField(box); }
    void visit(ComboBox& combo) override { placeField(combo); }
    void visit(CheckBox& check) override { placeField(check); }
    void visit(OptionButton& option) override { placeField(option); }
    void visit(ProgressBar& progress) override { placeField(progress); }

private:
    void placeLabel() {
        if (label_) nodes_.push_back(arrange::plain(*std::exchange(label_, nullptr)));
    }
    void placeField(Control& field) {
        Label* const own = std::exchange(label_, nullptr);
        nodes_.push_back(own ? arrange::field(*own, field) : arrange::fields({arrange::plain(field)}));
    }

    const Form& form_;
    const std::set<const Control*>& placed_;
    std::vector<Arrangement> nodes_;
    std::vector<Control*> commands_;
    Label* label_ = nullptr;
};

/// Everything that the arrangement leaves out: first what stands outside frames, then what is in frames that are
/// placed.
std::vector<Arrangement> allLeftOut(const Form& form, const std::set<const Control*>& placed) {
    std::vector<Arrangement> nodes = LeftOut(form, placed).in(nullptr);
    for (const Control* frame : form.controls())
        if (placed.contains(frame)) std::ranges::move(LeftOut(form, placed).in(frame), std::back_inserter(nodes));
    return nodes;
}

/// What a node holds: commands and texts alone, or also what takes room and can be scrolled.
class Contents final : public ControlVisitor {
public:
    explicit Contents(const Arrangement& node) { look(node); }

    bool areInSight() const { return commands_ && !fields_; }

    void visit(Label&) override { commands_ = true; }
    void visit(CommandButton&) override { commands_ = true; }
    void visit(ProgressBar&) override { commands_ = true; }
    void visit(Frame&) override {}
    void visit(CheckBox&) override { fields_ = true; }
    void visit(OptionButton&) override { fields_ = true; }
    void visit(TextBox&) override { fields_ = true; }
    void visit(ComboBox&) override { fields_ = true; }
    void visit(DataGrid&) override { fields_ = true; }
    void visit(ListView&) override { fields_ = true; }
    void visit(PageView&) override { fields_ = true; }

private:
    void look(const Arrangement& node) {
        if (node.control) node.control->accept(*this);
        for (const Arrangement& child : node.children) look(child);
    }

    bool commands_ = false;
    bool fields_ = false;
};

/// Scrolls its contents up and down when the window is too low for them; it is never narrower than they are.
class ScrolledContents final : public QScrollArea {
public:
    explicit ScrolledContents(QWidget* contents) {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setWidgetResizable(true);
        setWidget(contents);
    }
    /// With room for the bar, so that no row wraps, and asks for more height, when it comes.
    QSize sizeHint() const override { return besidesBar(widget()->sizeHint()); }
    QSize minimumSizeHint() const override {
        constexpr int low = 72;
        const QSize least = besidesBar(widget()->minimumSizeHint());
        return {least.width(), std::min(least.height(), low)};
    }

private:
    QSize besidesBar(QSize size) const { return size + QSize(style()->pixelMetric(QStyle::PM_ScrollBarExtent), 0); }
};

bool scrolls(const Arrangement& row) { return !Contents(row).areInSight(); }

/// What the arrangement leaves out stands above its last commands.
std::vector<Arrangement> rowsOf(const Form& form) {
    const Arrangement& whole = form.arrangement();
    std::set<const Control*> placed;
    collect(whole, placed);
    std::vector<Arrangement> rows;
    if (whole.kind == Kind::Column)
        rows = whole.children;
    else
        rows.push_back(whole);
    const std::vector<Arrangement> leftOut = allLeftOut(form, placed);
    const auto lastCommands = std::ranges::find_if(rows.rbegin(), rows.rend(), scrolls).base();
    rows.insert(lastCommands, leftOut.begin(), leftOut.end());
    return rows;
}

bool holdsCommands(const Arrangement& row) {
    return row.kind == Kind::Buttons || std::ranges::any_of(row.children, holdsCommands);
}

/// A part of the window, with the margin of a window at the ends where it stands at the edge.
QWidget* part(QWidget* widget, QLayout* layout, bool first, bool last) {
    widget->setLayout(layout);
    const QMargins edge = layout->contentsMargins();
    const int half = widget->style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing) / 2;
    layout->setContentsMargins(edge.left(), first ? edge.top() : half, edge.right(), last ? edge.bottom() : half);
    return widget;
}

}  // namespace

/// Commands and texts above and below all fields stay where they are; what is between them scrolls. On a screen too low
/// for that only the last commands and what is below them stay.
void layOutForm(const Form& form, FormWindow& window) {
    constexpr int low = 400;
    const bool isLow = window.roomOnScreen().height() < low;
    const std::vector<Arrangement> rows = rowsOf(form);
    auto from = std::ranges::find_if(rows, scrolls);
    auto to = std::ranges::find_if(rows.rbegin(), std::make_reverse_iterator(from), scrolls).base();
    if (isLow && from != to) {
        from = rows.begin();
        const auto below = std::ranges::find_if(rows.rbegin(), std::make_reverse_iterator(to), holdsCommands).base();
        if (below != to) to = std::prev(below);
    }

    Builder builder(window);
    auto* const around = new QVBoxLayout(&window);
    around->setContentsMargins({});
    around->setSpacing(0);
    const auto partOf = [&](QWidget* widget, auto first, auto last) {
        return part(widget, builder.column({first, last}), first == rows.begin(), last == rows.end());
    };
    if (from != rows.begin()) around->addWidget(partOf(new QWidget, rows.begin(), from));
    if (from != to) around->addWidget(new ScrolledContents(partOf(new GivingWay, from, to)), 1);
    if (to != rows.end()) around->addWidget(partOf(new QWidget, to, rows.end()));
    builder.alignLabels();
    if (Label* const status = form.statusLine()) around->addWidget(&window.viewOf(*status).widget());
}

}  // namespace FendaMaestros::qt

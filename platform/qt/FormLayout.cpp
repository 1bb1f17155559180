#include "platform/qt/FormLayout.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "platform/qt/FormWindow.h"

namespace FendaMaestros::qt {

namespace {

using Kind = Arrangement::Kind;

constexpr int airOverButtons = 5;
/// Buttons of a line are equally wide, but for those whose caption needs more than this.
constexpr int widestAlike = 160;

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
            place(*box, node, tall ? 1 : 0);
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
                box.addLayout(line(node.children), stretch);
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
                box.addStrut(widthOf(node.children));
                break;
            case Kind::Filling:
            case Kind::Plain:
                placeControl(box, *node.control, stretch);
                break;
        }
    }

    void placeControl(QBoxLayout& box, Control& control, int stretch) {
        ControlView& view = window_.viewOf(control);
        const bool wide = box.direction() != QBoxLayout::TopToBottom || view.stretches();
        box.addWidget(&view.widget(), stretch, wide ? Qt::Alignment() : Qt::AlignLeft);
    }

    void placeInline(QBoxLayout& box, const Arrangement& field, int stretch) {
        if (field.label) {
            QWidget& label = window_.viewOf(*field.label).widget();
            label.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
            box.addWidget(&label);
        }
        if (field.control)
            placeControl(box, *field.control, stretch);
        else
            box.addLayout(line(field.children), stretch);
    }

    /// Side by side; the room left goes to those that use it, or stays at the right.
    QLayout* line(const std::vector<Arrangement>& nodes) {
        auto* box = new QHBoxLayout;
        bool filled = false;
        for (const Arrangement& node : nodes) {
            const bool wide = growsWide(node);
            filled = filled || wide;
            if (node.kind == Kind::Buttons)
                box->addLayout(levelWithFrames(nodes, buttons(node.children)), 1);
            else
                place(*box, node, wide ? 1 : 0);
        }
        if (!filled) box->addStretch();
        return box;
    }

    /// Of all commands in a line: one that is hidden now finds its room when it comes.
    int widthOf(const std::vector<Arrangement>& commands) {
        int width = 0;
        for (const Arrangement& node : commands) {
            const QWidget& button = window_.viewOf(*node.control).widget();
            const int between = button.style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing);
            width += between + std::max(button.minimumWidth(), button.sizeHint().width());
        }
        return width;
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
                labels_.push_back(&label);
                grid->addWidget(&label, row, 0, tall ? Qt::AlignTop : Qt::AlignVCenter);
            }
            grid->addLayout(node.control ? line({arrange::plain(*node.control)})
                                         : line(node.kind == Kind::Field ? node.children : std::vector{node}),
                            row, 1);
        }
        return grid;
    }

    QWidget* framed(const Arrangement& node) {
        QWidget& box = window_.viewOf(*node.control).widget();
        box.setLayout(column(node.children));
        return &box;
    }

    QLayout* buttons(const std::vector<Arrangement>& nodes) {
        auto* box = new QHBoxLayout;
        box->addStretch();
        int widest = 0;
        for (const Arrangement& node : nodes) {
            const int width = window_.viewOf(*node.control).widget().sizeHint().width();
            if (width <= widestAlike) widest = std::max(widest, width);
        }
        for (const Arrangement& node : nodes) {
            QWidget& button = window_.viewOf(*node.control).widget();
            button.setMinimumWidth(widest);
            box->addWidget(&button);
        }
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

/// Scroll bars that ask for as much room as their contents would take.
class ScrolledContents final : public QScrollArea {
public:
    QSize sizeHint() const override {
        const int bars = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        return widget()->sizeHint() + QSize(bars, bars);
    }
};

/// The contents as they are, or behind scroll bars when the screen is too small for them.
QWidget* fitted(QWidget* contents, const FormWindow& window) {
    const QSize least = contents->minimumSizeHint();
    const QSize room = window.roomOnScreen();
    if (least.width() <= room.width() && least.height() <= room.height()) return contents;
    auto* const area = new ScrolledContents;
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(contents);
    return area;
}

}  // namespace

void layOutForm(const Form& form, FormWindow& window) {
    std::set<const Control*> placed;
    collect(form.arrangement(), placed);
    std::vector<Arrangement> nodes;
    const bool isBare = form.arrangement().children.empty() && !form.arrangement().control;
    if (!isBare) nodes.push_back(form.arrangement());
    std::ranges::move(allLeftOut(form, placed), std::back_inserter(nodes));

    Builder builder(window);
    auto* const contents = new QWidget;
    contents->setLayout(builder.column(nodes));
    builder.alignLabels();
    auto* const around = new QVBoxLayout(&window);
    around->setContentsMargins({});
    around->setSpacing(0);
    around->addWidget(fitted(contents, window), 1);
    if (Label* const status = form.statusLine()) around->addWidget(&window.viewOf(*status).widget());
}

}  // namespace FendaMaestros::qt

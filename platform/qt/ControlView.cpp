#include "platform/qt/ControlView.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QStyledItemDelegate>
#include <algorithm>

#include "platform/qt/FormWindow.h"
#include "platform/qt/KeyCodes.h"
#include "platform/qt/PageCanvas.h"
#include "platform/qt/TableView.h"
#include "platform/qt/TextBoxView.h"

namespace FendaMaestros::qt {

namespace {

/// Captions of what no key presses: the "&" only marks a letter, so it is not shown.
QString plainCaption(const std::string& caption) { return QString::fromStdString(caption).remove('&'); }

class LabelView final : public ControlView {
public:
    LabelView(Label& label, FormWindow& window) : label_(label), window_(window), shown_(*new QLabel(&window)) {
        shown_.setTextFormat(Qt::PlainText);
    }
    QWidget& widget() override { return shown_; }
    void pull() override {
        const QString caption = plainCaption(label_.Caption);
        if (shown_.text() == caption) return;
        shown_.setText(caption);
        if (shown_.isVisible() && shown_.wordWrap())
            window_.grow(shown_.heightForWidth(shown_.width()) - shown_.height());
    }

private:
    Label& label_;
    FormWindow& window_;
    QLabel& shown_;
};

class FrameView final : public ControlView {
public:
    FrameView(Frame& frame, FormWindow& window) : frame_(frame), box_(*new QGroupBox(&window)) {}
    QWidget& widget() override { return box_; }
    void pull() override {
        const QString caption = plainCaption(frame_.Caption);
        if (box_.title() != caption) box_.setTitle(caption);
    }

private:
    Frame& frame_;
    QGroupBox& box_;
};

/// Buttons, checks and options: a click of the mouse is handed to the form, which takes the focus there and decides.
class ButtonView : public ControlView {
public:
    ButtonView(Button& button, QAbstractButton& shown, FormWindow& window) : button_(button), shown_(shown) {
        shown_.setFocusPolicy(Qt::NoFocus);
        QObject::connect(&shown_, &QAbstractButton::clicked, &window,
                         [&] { window.hand([&] { window.form().press(button); }); });
    }
    QWidget& widget() override { return shown_; }
    bool focusesFirst() const override { return false; }
    void pull() override {
        const QString caption = QString::fromStdString(button_.Caption);
        if (shown_.text() != caption) shown_.setText(caption);
    }

private:
    Button& button_;
    QAbstractButton& shown_;
};

class CommandView final : public ButtonView {
public:
    CommandView(CommandButton& command, FormWindow& window) : CommandView(command, *new QPushButton(&window), window) {}

private:
    CommandView(CommandButton& command, QPushButton& shown, FormWindow& window) : ButtonView(command, shown, window) {
        shown.setAutoDefault(false);
    }
};

class CheckView final : public ButtonView {
public:
    CheckView(CheckBox& check, FormWindow& window) : CheckView(check, *new QCheckBox(&window), window) {}
    void pull() override {
        ButtonView::pull();
        box_.setChecked(check_.Value());
    }

private:
    CheckView(CheckBox& check, QCheckBox& box, FormWindow& window)
        : ButtonView(check, box, window), check_(check), box_(box) {}

    CheckBox& check_;
    QCheckBox& box_;
};

class OptionView final : public ButtonView {
public:
    OptionView(OptionButton& option, FormWindow& window) : OptionView(option, *new QRadioButton(&window), window) {}
    void pull() override {
        ButtonView::pull();
        circle_.setChecked(option_.Value());
    }

private:
    OptionView(OptionButton& option, QRadioButton& circle, FormWindow& window)
        : ButtonView(option, circle, window), option_(option), circle_(circle) {
        circle.setAutoExclusive(false);
    }

    OptionButton& option_;
    QRadioButton& circle_;
};

/// What is typed on a list that hangs open leads to its items as on one that is closed.
class OpenListTyping final : public QObject {
public:
    OpenListTyping(const ComboBox& combo, QComboBox& box, const Desktop& desktop)
        : QObject(&box), combo_(combo), box_(box), typing_(desktop) {
        box.view()->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const QString typed = static_cast<QKeyEvent*>(event)->text();
        if (typed.isEmpty() || !typed.front().isPrint()) return false;
        const int index = typing_.next(combo_, box_.view()->currentIndex().row(), typed.toStdU32String().front());
        if (index >= 0) box_.view()->setCurrentIndex(box_.model()->index(index, box_.modelColumn()));
        return true;
    }

private:
    const ComboBox& combo_;
    QComboBox& box_;
    ListTyping typing_;
};

class ComboView final : public ControlView {
public:
    ComboView(ComboBox& combo, FormWindow& window) : combo_(combo), window_(window), box_(*new QComboBox(&window)) {
        constexpr int fewestCharacters = 12;
        constexpr int itemsDropped = 15;
        box_.setFocusPolicy(Qt::NoFocus);
        box_.setMinimumContentsLength(fewestCharacters);
        box_.setSizeAdjustPolicy(QComboBox::AdjustToContents);
        box_.setMaxVisibleItems(itemsDropped);
        box_.setItemDelegate(new QStyledItemDelegate(&box_));
        new OpenListTyping(combo, box_, window.form().desktop());
        QObject::connect(&box_, &QComboBox::activated, &window,
                         [&](int index) { window.hand([&] { window.form().choose(combo, index); }); });
    }
    QWidget& widget() override { return box_; }
    /// Opens the list, or lets the character lead to an item.
    bool wants(const QKeyEvent& event) override {
        const KeyStroke stroke = strokeOf(event);
        if (stroke.code == key::F(4) || (stroke.code == key::Down && stroke.shift == shift::Alt))
            box_.showPopup();
        else
            handTyped(window_, event);
        return false;
    }
    void pull() override {
        if (!showsItems()) {
            QStringList items;
            for (int index = 0; index < combo_.ListCount(); ++index)
                items.append(QString::fromStdString(combo_.List(index)));
            box_.clear();
            box_.addItems(items);
            widenOpenList();
        }
        if (box_.currentIndex() != combo_.ListIndex()) box_.setCurrentIndex(combo_.ListIndex());
    }
    /// Some desktops take the chosen item for the name of a list, and look for a label beside it. Two lists may stand
    /// behind one label that is seen, so each has one of its own that is not.
    void call(const QString& name) override {
        ControlView::call(name);
        if (!name_) name_ = new QLabel;
        if (name_->parentWidget() != box_.parentWidget()) name_->setParent(box_.parentWidget());
        name_->setBuddy(&box_);
        name_->setText(name);
        name_->hide();
    }

private:
    /// Items longer than the box is wide are read in full in the open list.
    void widenOpenList() {
        QAbstractItemView& list = *box_.view();
        const int bar = box_.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        const int widest = list.sizeHintForColumn(box_.modelColumn()) + bar + 2 * list.frameWidth();
        list.setMinimumWidth(std::min(widest, box_.screen()->availableSize().width()));
    }

    bool showsItems() const {
        if (box_.count() != combo_.ListCount()) return false;
        for (int index = 0; index < combo_.ListCount(); ++index)
            if (box_.itemText(index) != QString::fromStdString(combo_.List(index))) return false;
        return true;
    }

    ComboBox& combo_;
    FormWindow& window_;
    QComboBox& box_;
    QPointer<QLabel> name_;
};

class ProgressView final : public ControlView {
public:
    ProgressView(ProgressBar& progress, FormWindow& window) : progress_(progress), bar_(*new QProgressBar(&window)) {
        bar_.setFormat("%v de %m");
        bar_.setAlignment(Qt::AlignCenter);
    }
    QWidget& widget() override { return bar_; }
    bool stretches() const override { return true; }
    void pull() override {
        // Without an end, the bar would run to and fro.
        bar_.setRange(0, std::max(progress_.Max, 1));
        bar_.setValue(std::clamp(progress_.Value, 0, bar_.maximum()));
    }

private:
    ProgressBar& progress_;
    QProgressBar& bar_;
};

class ViewMaker final : public ControlVisitor {
public:
    explicit ViewMaker(FormWindow& window) : window_(window) {}

    std::unique_ptr<ControlView> made;

    void visit(Label& label) override { make<LabelView>(label); }
    void visit(Frame& frame) override { make<FrameView>(frame); }
    void visit(TextBox& box) override { make<TextBoxView>(box); }
    void visit(ComboBox& combo) override { make<ComboView>(combo); }
    void visit(CommandButton& button) override { make<CommandView>(button); }
    void visit(CheckBox& check) override { make<CheckView>(check); }
    void visit(OptionButton& option) override { make<OptionView>(option); }
    void visit(DataGrid& grid) override { make<GridView>(grid); }
    void visit(ListView& list) override { make<TableView>(list); }
    void visit(PageView& pages) override { make<PageCanvasView>(pages); }
    void visit(ProgressBar& progress) override { make<ProgressView>(progress); }

private:
    template <class View, class Kind>
    void make(Kind& control) {
        made = std::make_unique<View>(control, window_);
    }

    FormWindow& window_;
};

}  // namespace

void ControlView::call(const QString& name) {
    if (keyWidget().accessibleName() != name) keyWidget().setAccessibleName(name);
}

void ControlView::handTyped(FormWindow& window, const QKeyEvent& key) {
    const QString typed = key.text();
    if (strokeOf(key).shift > shift::Shift || typed.isEmpty() || !typed.front().isPrint()) return;
    window.hand([&] { window.form().typeOnList(typed.toStdU32String().front()); });
}

std::unique_ptr<ControlView> makeView(Control& control, FormWindow& window) {
    ViewMaker maker(window);
    control.accept(maker);
    return std::move(maker.made);
}

}  // namespace FendaMaestros::qt

#include "platform/qt/ControlView.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QStyledItemDelegate>
#include <algorithm>
#include <stdexcept>

#include "platform/qt/FormWindow.h"
#include "platform/qt/PageCanvas.h"
#include "platform/qt/TableView.h"
#include "platform/qt/TextBoxView.h"

namespace FendaMaestros::qt {

namespace {

/// Captions of what no key presses: the "&" only marks a letter, so it is not shown.
QString plainCaption(const std::string& caption) { return QString::fromStdString(caption).remove('&'); }

class LabelView final : public ControlView {
public:
    LabelView(Label& label, FormWindow& window) : label_(label), shown_(*new QLabel(&window)) {
        shown_.setTextFormat(Qt::PlainText);
    }
    QWidget& widget() override { return shown_; }
    void pull() override {
        const QString caption = plainCaption(label_.Caption);
        if (shown_.text() != caption) shown_.setText(caption);
    }

private:
    Label& label_;
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
    ButtonView(QAbstractButton& button, const std::string& caption) : button_(button), caption_(caption) {
        button_.setFocusPolicy(Qt::NoFocus);
    }
    QWidget& widget() override { return button_; }
    void pull() override {
        const QString caption = QString::fromStdString(caption_);
        if (button_.text() != caption) button_.setText(caption);
    }

private:
    QAbstractButton& button_;
    const std::string& caption_;
};

class CommandView final : public ButtonView {
public:
    CommandView(CommandButton& command, FormWindow& window) : CommandView(command, *new QPushButton(&window), window) {}

private:
    CommandView(CommandButton& command, QPushButton& button, FormWindow& window) : ButtonView(button, command.Caption) {
        button.setAutoDefault(false);
        QObject::connect(&button, &QPushButton::clicked, &window,
                         [&] { window.hand([&] { window.form().press(command); }); });
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
        : ButtonView(box, check.Caption), check_(check), box_(box) {
        QObject::connect(&box, &QCheckBox::clicked, &window,
                         [&] { window.hand([&] { window.form().toggle(check); }); });
    }

    CheckBox& check_;
    QCheckBox& box_;
};

class OptionView final : public ButtonView {
public:
    OptionView(OptionButton& option, FormWindow& window) : OptionView(option, *new QRadioButton(&window), window) {}
    void pull() override {
        ButtonView::pull();
        button_.setChecked(option_.Value());
    }

private:
    OptionView(OptionButton& option, QRadioButton& button, FormWindow& window)
        : ButtonView(button, option.Caption), option_(option), button_(button) {
        button.setAutoExclusive(false);
        QObject::connect(&button, &QRadioButton::clicked, &window,
                         [&] { window.hand([&] { window.form().pick(option); }); });
    }

    OptionButton& option_;
    QRadioButton& button_;
};

/// What is typed on a list that hangs open leads to its items as on one that is closed.
class OpenListTyping final : public QObject {
public:
    OpenListTyping(const ComboBox& combo, QComboBox& box) : QObject(&box), combo_(combo), box_(box) {
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
    ComboView(ComboBox& combo, FormWindow& window) : combo_(combo), box_(*new QComboBox(&window)) {
        constexpr int fewestCharacters = 12;
        constexpr int itemsDropped = 15;
        box_.setFocusPolicy(Qt::NoFocus);
        box_.setMinimumContentsLength(fewestCharacters);
        box_.setSizeAdjustPolicy(QComboBox::AdjustToContents);
        box_.setMaxVisibleItems(itemsDropped);
        box_.setItemDelegate(new QStyledItemDelegate(&box_));
        new OpenListTyping(combo, box_);
        QObject::connect(&box_, &QComboBox::activated, &window,
                         [&](int index) { window.hand([&] { window.form().choose(combo, index); }); });
    }
    QWidget& widget() override { return box_; }
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
    QComboBox& box_;
};

template <class ControlType, class View>
std::unique_ptr<ControlView> viewIf(Control& control, FormWindow& window) {
    auto* const typed = dynamic_cast<ControlType*>(&control);
    return typed ? std::make_unique<View>(*typed, window) : nullptr;
}

}  // namespace

std::unique_ptr<ControlView> makeView(Control& control, FormWindow& window) {
    using Maker = std::unique_ptr<ControlView> (*)(Control&, FormWindow&);
    constexpr Maker makers[] = {
        viewIf<Label, LabelView>,         viewIf<Frame, FrameView>,           viewIf<TextBox, TextBoxView>,
        viewIf<ComboBox, ComboView>,      viewIf<CheckBox, CheckView>,        viewIf<OptionButton, OptionView>,
        viewIf<DataGrid, GridView>,       viewIf<CommandButton, CommandView>, viewIf<ListView, ListTableView>,
        viewIf<PageView, PageCanvasView>,
    };
    for (const Maker make : makers)
        if (auto view = make(control, window)) return view;
    throw std::logic_error("No hay forma de mostrar el control " + control.Name);
}

}  // namespace FendaMaestros::qt

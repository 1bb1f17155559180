#include "platform/qt/MessageDialog.h"

#include <QEventLoop>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <map>
#include <memory>

#include "platform/qt/Hands.h"
#include "platform/qt/KeyCodes.h"
#include "platform/qt/OnTop.h"
#include "platform/qt/TypeAhead.h"

namespace FendaMaestros::qt {

namespace {

/// A box that leaves the keyboard to what lies below it.
class Box final : public QMessageBox {
public:
    Box(QWidget* parent, TypeAhead* typeAhead) : QMessageBox(parent), typeAhead_(typeAhead) {}

    /// A button hides the box without asking done().
    void setVisible(bool visible) override {
        if (typeAhead_ && !visible && isVisible()) typeAhead_->handOver(*this);
        QMessageBox::setVisible(visible);
    }

private:
    TypeAhead* typeAhead_;
};

/// Remembers the key that is down in a box and its buttons. Esc and the letters of the buttons answer at once: by
/// themselves they would show the button pressed for a while, and keep the keys that follow.
class KeyWatch final : public QObject {
public:
    explicit KeyWatch(QMessageBox& box) : box_(box) {}

    int key() const { return key_; }

    bool eventFilter(QObject*, QEvent* event) override {
        const QEvent::Type type = event->type();
        if (type == QEvent::KeyPress || type == QEvent::ShortcutOverride) {
            const KeyStroke stroke = strokeOf(*static_cast<QKeyEvent*>(event));
            key_ = stroke.code;
            if (QAbstractButton* const button = buttonOf(stroke)) {
                event->accept();
                if (type == QEvent::KeyPress) button->click();
                return true;
            }
        }
        // A button that acts on a release has not been dismissed by a press.
        if (type == QEvent::KeyRelease || type == QEvent::MouseButtonPress) key_ = 0;
        return false;
    }

private:
    /// The button that a key presses from anywhere in the box.
    QAbstractButton* buttonOf(KeyStroke stroke) const {
        if (stroke.shift & shift::Control) return nullptr;
        if (stroke.code == key::Escape) return box_.escapeButton();
        for (QAbstractButton* button : box_.buttons()) {
            const QKeySequence letter = button->shortcut();
            if (!letter.isEmpty() && letter[0].key() == qtKeyOf(stroke.code)) return button;
        }
        return nullptr;
    }

    QMessageBox& box_;
    int key_ = 0;
};

QMessageBox::Icon iconOf(int style) {
    switch (message::icon(style)) {
        case message::Critical:
            return QMessageBox::Critical;
        case message::Question:
            return QMessageBox::Question;
        case message::Exclamation:
            return QMessageBox::Warning;
        case message::Information:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

std::map<Answer, QPushButton*> addButtons(QMessageBox& box, const Message& message) {
    if (message::buttons(message.style) != message::YesNo)
        return {{Answer::Ok, box.addButton("Aceptar", QMessageBox::AcceptRole)}};
    return {{Answer::Yes, box.addButton("&Sí", QMessageBox::YesRole)},
            {Answer::No, box.addButton("&No", QMessageBox::NoRole)}};
}

void give(const Reply& reply, QPushButton& button) {
    if (!reply.key) return hands::clickCenter(button);
    button.setFocus();
    hands::pressKey(button, {reply.key, shift::None});
}

bool dismisses(int code) { return code == key::Enter || code == key::Escape || (code >= 'A' && code <= 'Z'); }

/// The window's own buttons stand beside the title.
void widenToTitle(QMessageBox& box) {
    constexpr int besideTitle = 160;
    const int width = box.fontMetrics().horizontalAdvance(box.windowTitle()) + besideTitle;
    auto* const grid = qobject_cast<QGridLayout*>(box.layout());
    if (grid) grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

/// A text that is too tall for the screen scrolls; arrows and page keys reach it with Tab.
void scrollTallText(QMessageBox& box) {
    constexpr int besideText = 130;
    auto* const text = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    const QSize room = box.screen()->availableSize();
    const int width = std::min(text->sizeHint().width(), room.width() * 2 / 3);
    text->setWordWrap(true);
    if (text->heightForWidth(width) <= room.height() - besideText) return;
    auto* const area = new QScrollArea(&box);
    const int bar = area->verticalScrollBar()->sizeHint().width();
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setMinimumSize(width + bar, room.height() - besideText);
    const std::unique_ptr<QLayoutItem> replaced(box.layout()->replaceWidget(text, area));
    area->setWidget(text);
}

void showUntilDone(QDialog& dialog) {
    const OnTop onTop(dialog);
    QEventLoop loop;
    QObject::connect(&dialog, &QDialog::finished, &loop, &QEventLoop::quit);
    dialog.show();
    dialog.activateWindow();
    loop.exec();
}

}  // namespace

Reply askInDialog(const Message& message, const std::string& title, QWidget* parent,
                  const std::optional<Reply>& scripted, TypeAhead& typeAhead) {
    Box box(parent, scripted ? nullptr : &typeAhead);
    box.setAttribute(Qt::WA_QuitOnClose, false);
    box.setModal(false);
    box.setWindowTitle(QString::fromStdString(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromStdString(message.text));
    box.setIcon(iconOf(message.style));
    widenToTitle(box);
    scrollTallText(box);

    KeyWatch watch(box);
    const auto buttons = addButtons(box, message);
    box.setDefaultButton(buttons.at(message.defaultAnswer()));
    box.setEscapeButton(buttons.contains(Answer::No) ? buttons.at(Answer::No) : buttons.at(Answer::Ok));
    box.installEventFilter(&watch);
    for (const auto& [answer, button] : buttons) button->installEventFilter(&watch);
    if (scripted) QTimer::singleShot(0, &box, [&] { give(*scripted, *buttons.at(scripted->answer)); });
    if (!scripted) typeAhead.hold(parent);
    showUntilDone(box);
    if (!scripted) typeAhead.collect();

    Reply reply{message.offers(Answer::Ok) ? Answer::Ok : Answer::No, dismisses(watch.key()) ? watch.key() : 0};
    for (const auto& [answer, button] : buttons)
        if (box.clickedButton() == button) reply.answer = answer;
    return reply;
}

}  // namespace FendaMaestros::qt

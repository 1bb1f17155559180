#include "platform/qt/MessageDialog.h"

#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <map>

#include "platform/qt/Hands.h"
#include "platform/qt/KeyCodes.h"

namespace FendaMaestros::qt {

namespace {

/// Remembers the key that is down in a box and its buttons.
class KeyWatch final : public QObject {
public:
    int key() const { return key_; }

    bool eventFilter(QObject*, QEvent* event) override {
        const QEvent::Type type = event->type();
        if (type == QEvent::KeyPress || type == QEvent::ShortcutOverride)
            key_ = strokeOf(*static_cast<QKeyEvent*>(event)).code;
        // A button that acts on a release has not been dismissed by a press.
        if (type == QEvent::KeyRelease || type == QEvent::MouseButtonPress) key_ = 0;
        return false;
    }

private:
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

}  // namespace

Reply askInDialog(const Message& message, const std::string& title, QWidget* parent,
                  const std::optional<Reply>& scripted) {
    QMessageBox box(parent);
    box.setAttribute(Qt::WA_QuitOnClose, false);
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowTitle(QString::fromStdString(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromStdString(message.text));
    box.setIcon(iconOf(message.style));

    KeyWatch watch;
    const auto buttons = addButtons(box, message);
    box.setDefaultButton(buttons.at(message.defaultAnswer()));
    box.setEscapeButton(buttons.contains(Answer::No) ? buttons.at(Answer::No) : buttons.at(Answer::Ok));
    box.installEventFilter(&watch);
    for (const auto& [answer, button] : buttons) button->installEventFilter(&watch);
    if (scripted) QTimer::singleShot(0, &box, [&] { give(*scripted, *buttons.at(scripted->answer)); });
    box.exec();

    Reply reply{message.offers(Answer::Ok) ? Answer::Ok : Answer::No, dismisses(watch.key()) ? watch.key() : 0};
    for (const auto& [answer, button] : buttons)
        if (box.clickedButton() == button) reply.answer = answer;
    return reply;
}

}  // namespace FendaMaestros::qt

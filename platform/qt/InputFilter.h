#pragma once

#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <map>

class QKeyEvent;

namespace FendaMaestros::qt {

class FormWindow;

/// Sees every key and click of the program before the widgets do, and hands those in the window of a form to the form.
/// Below the window on top, the mouse does nothing. Install one on the application.
class InputFilter final : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// A StopWatch lives.
    bool isWatching() const { return watching_; }

    /// As long as it lives, no key and no click reaches anybody; it only notes an Esc.
    class StopWatch {
    public:
        explicit StopWatch(InputFilter& filter) : filter_(filter) {
            filter_.watching_ = true;
            filter_.escapePressed_ = false;
        }
        StopWatch(const StopWatch&) = delete;
        StopWatch& operator=(const StopWatch&) = delete;
        ~StopWatch() { filter_.watching_ = false; }

        bool escapePressed() const { return filter_.escapePressed_; }

    private:
        InputFilter& filter_;
    };

private:
    bool dropsWhileWatching(const QEvent& event);
    bool keyPressed(QWidget& at, const QKeyEvent& event);
    bool keyReleased(QWidget& at, const QKeyEvent& event);
    bool mousePressed(QWidget& at);
    void mouseReleased(QWidget& at);

    /// The window of a form in which each key went down, by key. The release of a key counts only there: one that
    /// dismissed a message or a list belongs to nobody.
    std::map<quint32, QPointer<QWidget>> pressedIn_;
    /// The field whose text stays selected when the click that brought the focus there ends without marking a part.
    QPointer<QLineEdit> selectOnRelease_;
    bool watching_ = false;
    bool escapePressed_ = false;
};

}  // namespace FendaMaestros::qt

#pragma once

#include <QDialog>
#include <QEventLoop>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/qt/ControlView.h"
#include "toolkit/Form.h"

namespace FendaMaestros::qt {

/// The window of one form. Everything a person does in it is handed to the form through hand(), and after each such
/// gesture the form's state is shown again. The form owns the focus; widgets follow it.
class FormWindow final : public QDialog {
public:
    /// `form` must outlive the window.
    FormWindow(Form& form, QWidget* parent);
    ~FormWindow() override;

    /// The window that shows a form, null when it is not shown.
    static FormWindow* of(const Form& form);
    /// The window a widget is in, null when it is in none of a form.
    static FormWindow* around(const QWidget& widget);
    /// Shows the state of every form that has a window.
    static void pullAll();

    Form& form() const { return form_; }
    /// The control that a widget, or what it is in, shows; null when there is none.
    Control* controlOf(const QWidget& widget) const;
    ControlView& viewOf(Control& control);
    /// The control is called by the caption of this label, which must live as long as the window.
    void setLabel(const Control& control, const Label& label) { labels_[&control] = &label; }
    /// What the largest window can show on this screen.
    QSize roomOnScreen() const;
    /// Makes it so much taller, as far as the screen has room: a text has come that needs more lines. Nothing for 0 or
    /// less.
    void grow(int more);
    /// Where Qt sends the keys of this window.
    QWidget& keyReceiver();

    /// Runs a gesture on the form. What it throws is kept, as no exception may cross Qt's event loop.
    void hand(const std::function<void()>& gesture);
    void pull();
    /// The widgets are being written by the program, not by a person.
    bool isPulling() const { return pulling_; }
    /// The form is closed, or a gesture has thrown.
    bool isDone() const { return !form_.isOpen() || failure_; }
    /// Handles events until the form is closed or a gesture has thrown.
    void wait();
    /// Throws what a gesture has thrown, once.
    void rethrowFailure();

    /// Esc is the form's own business.
    void reject() override {}

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void measureAnew();
    QSize fittingSize() const;
    QString nameOf(const Control& control) const;
    void pullControl(Control& control, ControlView& view);
    void pullFocus();
    void showInView(QWidget& widget);

    Form& form_;
    std::map<Control*, std::unique_ptr<ControlView>> views_;
    std::map<const Control*, const Label*> labels_;
    QEventLoop loop_;
    std::exception_ptr failure_;
    bool pulling_ = false;
};

}  // namespace FendaMaestros::qt

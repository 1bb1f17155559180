#pragma once

#include <memory>

#include "toolkit/Controls.h"

class QKeyEvent;
class QString;
class QWidget;

namespace FendaMaestros::qt {

class FormWindow;

/// The widget that shows a control. It hands what a person does to the window's form, and copies the control's state
/// into the widget when told to. Widgets belong to the window they are placed in.
class ControlView {
public:
    ControlView() = default;
    ControlView(const ControlView&) = delete;
    ControlView& operator=(const ControlView&) = delete;
    virtual ~ControlView() = default;

    /// What takes a place in the window.
    virtual QWidget& widget() = 0;
    /// What has the keyboard when the control has the focus.
    virtual QWidget& keyWidget() { return widget(); }
    /// Shows the control's state; what is shown already is left alone, so that carets and scroll positions stay.
    virtual void pull() = 0;
    /// Says to who does not see the control how it is called.
    virtual void call(const QString& name);
    /// True for what is better the wider it is.
    virtual bool stretches() const { return false; }
    /// True for what takes all the height that is left.
    virtual bool isTall() const { return false; }
    /// A click on it, before it does anything else, takes the focus there. False for what tells the form of the click.
    virtual bool focusesFirst() const { return true; }
    /// A key pressed on it that the form has left alone; true when it is for the widget.
    virtual bool wants(const QKeyEvent& /*key*/) { return false; }

protected:
    /// Hands the character that a key types, if any, to a form that finds by it.
    static void handTyped(FormWindow& window, const QKeyEvent& key);
};

/// The view for the control's kind. The control must outlive it.
std::unique_ptr<ControlView> makeView(Control& control, FormWindow& window);

}  // namespace FendaMaestros::qt

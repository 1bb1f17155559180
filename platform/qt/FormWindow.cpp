#include "platform/qt/FormWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <algorithm>
#include <utility>

#include "platform/qt/FormLayout.h"
#include "platform/qt/StatusLineView.h"

namespace FendaMaestros::qt {

namespace {

std::vector<FormWindow*>& shownWindows() {
    static std::vector<FormWindow*> windows;
    return windows;
}

}  // namespace

FormWindow::FormWindow(Form& form, QWidget* parent) : QDialog(parent), form_(form) {
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    if (StatusLabel* const status = form.statusLine())
        views_[status] = std::make_unique<StatusLineView>(*status, *this);
    layOutForm(form, *this);
    pull();
    measureAnew();
    resize(fittingSize());
    shownWindows().push_back(this);
}

/// What the inner layouts and frames had measured still counts the controls that have been hidden since.
void FormWindow::measureAnew() {
    for (QLayout* layout : findChildren<QLayout*>()) {
        layout->invalidate();
        layout->parentWidget()->updateGeometry();
    }
}

/// What is too wide for the screen becomes taller, as its rows wrap.
QSize FormWindow::fittingSize() const {
    const QSize room = roomOnScreen();
    QSize size = sizeHint();
    if (size.width() > room.width() && layout()->hasHeightForWidth())
        size = {room.width(), layout()->totalHeightForWidth(room.width())};
    return size.boundedTo(room);
}

void FormWindow::grow(int more) {
    if (more > 0) resize(width(), std::max(height(), std::min(height() + more, roomOnScreen().height())));
}

FormWindow::~FormWindow() { std::erase(shownWindows(), this); }

FormWindow* FormWindow::of(const Form& form) {
    const auto& windows = shownWindows();
    const auto found = std::ranges::find_if(windows, [&](FormWindow* window) { return &window->form_ == &form; });
    return found == windows.end() ? nullptr : *found;
}

FormWindow* FormWindow::around(const QWidget& widget) {
    const auto& windows = shownWindows();
    const auto found = std::ranges::find(windows, widget.window());
    return found == windows.end() ? nullptr : *found;
}

void FormWindow::pullAll() {
    for (FormWindow* window : shownWindows()) window->pull();
}

ControlView& FormWindow::viewOf(Control& control) {
    auto& view = views_[&control];
    if (!view) {
        view = makeView(control, *this);
        view->pull();
    }
    return *view;
}

Control* FormWindow::controlOf(const QWidget& widget) const {
    for (const QWidget* at = &widget; at && at != this; at = at->parentWidget())
        for (const auto& [control, view] : views_)
            if (&view->widget() == at) return control;
    return nullptr;
}

QSize FormWindow::roomOnScreen() const {
    constexpr QSize frame(16, 64);
    return screen()->availableSize() - frame;
}

QWidget& FormWindow::keyReceiver() {
    QWidget* const focused = focusWidget();
    return focused ? *focused : *this;
}

void FormWindow::hand(const std::function<void()>& gesture) {
    if (pulling_) return;
    try {
        gesture();
    } catch (...) {
        failure_ = std::current_exception();
    }
    pull();
    if (isDone()) loop_.quit();
}

void FormWindow::wait() {
    if (!isDone()) loop_.exec();
}

void FormWindow::rethrowFailure() {
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    hand([this] { form_.close(); });
}

/// The colours of some widgets are made from the theme's.
void FormWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) pull();
}

// --- showing the form's state

void FormWindow::pull() {
    if (pulling_) return;
    pulling_ = true;
    const QString caption = QString::fromStdString(form_.Caption);
    if (windowTitle() != caption) setWindowTitle(caption);
    for (auto& [control, view] : views_) pullControl(*control, *view);
    if (form_.isOpen()) pullFocus();
    pulling_ = false;
}

/// The form's own Enabled is not shown: it is off only while the form works, and its gestures refuse by themselves.
void FormWindow::pullControl(Control& control, ControlView& view) {
    QWidget& widget = view.widget();
    const bool enabled = control.isEnabled();
    if (widget.testAttribute(Qt::WA_ForceDisabled) == enabled) widget.setEnabled(enabled);
    if (control.takesFocus())
        if (const QString tip = QString::fromStdString(toolTipOf(control)); widget.toolTip() != tip)
            widget.setToolTip(tip);
    const bool visible = control.isVisible();
    if (widget.isHidden() == visible) widget.setVisible(visible);
    view.pull();
    if (control.takesFocus()) view.call(nameOf(control));
}

/// For who does not see it: its label, what it says itself, or what it stands in.
QString FormWindow::nameOf(const Control& control) const {
    const auto label = labels_.find(&control);
    std::string name = label != labels_.end() ? label->second->Caption : control.caption();
    if (name.empty() && control.Container) name = control.Container->Caption;
    if (name.empty()) name = form_.Caption;
    return QString::fromStdString(name).remove('&');
}

void FormWindow::pullFocus() {
    Control* const active = form_.activeControl();
    QWidget* const wanted = active ? &viewOf(*active).keyWidget() : nullptr;
    if (wanted == focusWidget()) return;
    if (!wanted) return focusWidget()->clearFocus();
    wanted->setFocus(Qt::OtherFocusReason);
    showInView(*wanted);
}

/// A field behind scroll bars comes into view.
void FormWindow::showInView(QWidget& widget) {
    auto* const area = findChild<QScrollArea*>({}, Qt::FindDirectChildrenOnly);
    if (area) area->ensureWidgetVisible(&widget);
}

}  // namespace FendaMaestros::qt

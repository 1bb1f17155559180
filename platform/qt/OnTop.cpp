#include "platform/qt/OnTop.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <vector>

namespace FendaMaestros::qt {

namespace {

std::vector<QWidget*>& stack() {
    static std::vector<QWidget*> windows;
    return windows;
}

}  // namespace

OnTop::OnTop(QWidget& window) : window_(window) { stack().push_back(&window); }

OnTop::~OnTop() { std::erase(stack(), &window_); }

QWidget* OnTop::window() {
    const auto& windows = stack();
    const auto newest =
        std::find_if(windows.rbegin(), windows.rend(), [](QWidget* window) { return window->isVisible(); });
    return newest == windows.rend() ? nullptr : *newest;
}

bool OnTop::takesInput(const QWindow& window) {
    const QWidget* const top = OnTop::window();
    if (!top || QApplication::activeModalWidget() || window.type() == Qt::Popup) return true;
    const QWindow* const handle = top->windowHandle();
    return handle == &window || handle->isAncestorOf(&window, QWindow::IncludeTransients);
}

}  // namespace FendaMaestros::qt

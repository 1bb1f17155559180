#include "platform/qt/OnTop.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <ranges>
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
    for (QWidget* const window : stack() | std::views::reverse)
        if (window->isVisible()) return window;
    return nullptr;
}

bool OnTop::takesInput(const QWindow& window) {
    const QWidget* const top = OnTop::window();
    if (!top || QApplication::activeModalWidget() || window.type() == Qt::Popup) return true;
    const QWindow* const handle = top->windowHandle();
    return handle == &window || handle->isAncestorOf(&window, QWindow::IncludeTransients);
}

}  // namespace FendaMaestros::qt

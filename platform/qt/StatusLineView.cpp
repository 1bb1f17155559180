#include "platform/qt/StatusLineView.h"

#include <QApplication>
#include <QLabel>
#include <QPainter>

#include "platform/qt/Contrast.h"
#include "platform/qt/FormWindow.h"

namespace FendaMaestros::qt {

namespace {

/// Green for what is well and amber for a warning, as they can be read on the theme's window.
QPalette paletteOf(StatusKind kind) {
    QPalette palette;
    if (kind == StatusKind::Plain) return palette;
    const QColor back = QApplication::palette().color(QPalette::Window);
    const QColor wanted = kind == StatusKind::Good ? QColor(40, 140, 75) : QColor(190, 110, 10);
    palette.setColor(QPalette::WindowText, standingOut(wanted, {back}, textContrast));
    return palette;
}

}  // namespace

/// A label that ends in dots where its text does not fit, under a thin line.
class StatusLine final : public QLabel {
public:
    explicit StatusLine(QWidget* parent) : QLabel(parent) {
        constexpr int beside = 14;
        constexpr int above = 4;
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        setContentsMargins(beside, above, beside, above);
        tell({});
    }

    const QString& told() const { return told_; }
    void tell(const QString& text) {
        told_ = text;
        setAccessibleName(text.isEmpty() ? QStringLiteral("Línea de estado") : text);
        fit();
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        fit();
    }
    void paintEvent(QPaintEvent* event) override {
        QPainter(this).fillRect(0, 0, width(), 1,
                                mixed(palette().color(QPalette::Window), palette().color(QPalette::WindowText), 0.12));
        QLabel::paintEvent(event);
    }

private:
    void fit() {
        const QString shown = fontMetrics().elidedText(told_, Qt::ElideRight, contentsRect().width());
        if (text() != shown) setText(shown);
        setToolTip(shown == told_ ? QString() : told_);
    }

    QString told_;
};

StatusLineView::StatusLineView(StatusLabel& label, FormWindow& window)
    : label_(label), line_(*new StatusLine(&window)) {}

QWidget& StatusLineView::widget() { return line_; }

void StatusLineView::pull() {
    const QString text = QString::fromStdString(label_.shown());
    if (line_.told() == text) return;
    line_.setPalette(paletteOf(label_.Kind));
    line_.tell(text);
}

}  // namespace FendaMaestros::qt

#include "platform/qt/PageCanvas.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "platform/qt/FormWindow.h"
#include "platform/qt/Look.h"
#include "platform/qt/PagePainter.h"

namespace FendaMaestros::qt {

namespace {

constexpr int desk = 16;
constexpr double twipsPerPixel = 15;

}  // namespace

PageCanvas::PageCanvas(QWidget* parent) : QAbstractScrollArea(parent), percent_(*new QLabel(this)) {
    constexpr int air = 6;
    percent_.setContentsMargins(air, air / 2, air, air / 2);
    percent_.setAutoFillBackground(true);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
}

void PageCanvas::show(std::shared_ptr<const PagedDocument> document, int index, int zoom) {
    const bool samePage = document == document_ && index == index_;
    if (samePage && zoom == zoom_) return;
    document_ = std::move(document);
    index_ = index;
    zoom_ = zoom;
    if (!samePage) {
        const bool exists = document_ && index_ >= 0 && index_ < document_->pageCount();
        page_ = exists ? document_->page(index_) : Page();
    }
    updateScrollBars();
    viewport()->update();
}

QSize PageCanvas::sizeHint() const {
    constexpr QSize usual(880, 600);
    return usual;
}

QSize PageCanvas::minimumSizeHint() const {
    constexpr QSize least(280, 72);
    return least;
}

int PageCanvas::shownPercent() const {
    constexpr double percent = 100;
    return document_ ? static_cast<int>(std::lround(scale() * twipsPerPixel * percent)) : 0;
}

void PageCanvas::showPercent() {
    percent_.setText(QString("%1 %").arg(shownPercent()));
    percent_.adjustSize();
    const QPoint corner = viewport()->geometry().bottomRight();
    percent_.move(corner - percent_.rect().bottomRight());
    percent_.setVisible(document_ != nullptr);
}

double PageCanvas::scale() const {
    constexpr double percent = 100;
    if (zoom_ > 0) return zoom_ / percent / twipsPerPixel;
    const int room = std::max(viewport()->width() - 2 * desk, 1);
    return static_cast<double>(room) / document_->pageWidth();
}

QSize PageCanvas::paper() const {
    if (!document_) return {};
    return QSizeF(document_->pageWidth() * scale(), document_->pageHeight() * scale()).toSize();
}

void PageCanvas::updateScrollBars() {
    const QSize beyond = paper() + QSize(2 * desk, 2 * desk) - viewport()->size();
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setRange(0, std::max(0, zoom_ > 0 ? beyond.width() : 0));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(fontMetrics().height() * 2);
    verticalScrollBar()->setRange(0, std::max(0, beyond.height()));
    showPercent();
}

void PageCanvas::resizeEvent(QResizeEvent*) { updateScrollBars(); }

void PageCanvas::paintEvent(QPaintEvent*) {
    if (!document_) return;
    QPainter painter(viewport());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QSize size = paper();
    const int left = std::max((viewport()->width() - size.width()) / 2, desk) - horizontalScrollBar()->value();
    painter.translate(left, desk - verticalScrollBar()->value());
    painter.fillRect(QRect({3, 3}, size), QColor(0, 0, 0, 60));
    painter.fillRect(QRect({0, 0}, size), Qt::white);
    painter.scale(scale(), scale());
    paintPage(painter, page_);
}

/// Its bars scroll.
bool PageCanvasView::wants(const QKeyEvent& key) { return !(key.modifiers() & Qt::AltModifier); }

PageCanvasView::PageCanvasView(PageView& pages, FormWindow& window) : pages_(pages), canvas_(*new PageCanvas(&window)) {
    const QScrollBar& bar = *canvas_.verticalScrollBar();
    const auto note = [this, &bar] {
        pages_.ScrollEnd = bar.maximum();
        pages_.Screenful = std::max(bar.pageStep() - bar.singleStep(), 1);
    };
    QObject::connect(&bar, &QScrollBar::rangeChanged, &canvas_, note);
    QObject::connect(&bar, &QScrollBar::valueChanged, &canvas_, [this](int value) {
        if (!pulling_) pages_.Scrolled = value;
    });
}

/// The page may scroll further or less than the one before.
void PageCanvasView::pull() {
    pulling_ = true;
    canvas_.show(pages_.Document, pages_.Page, pages_.Zoom);
    canvas_.verticalScrollBar()->setValue(pages_.Scrolled);
    pages_.Scrolled = canvas_.verticalScrollBar()->value();
    pulling_ = false;
}

}  // namespace FendaMaestros::qt

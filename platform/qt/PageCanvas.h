#pragma once

#include <QAbstractScrollArea>

#include "platform/qt/ControlView.h"
#include "toolkit/Document.h"

class QLabel;

namespace FendaMaestros::qt {

/// Paints one page of a document on a desk, scrolled when it is larger than the window, and says how large it is shown.
class PageCanvas final : public QAbstractScrollArea {
public:
    explicit PageCanvas(QWidget* parent);

    /// `zoom` in percent, 0 to fit the width. A null document leaves the desk empty.
    void show(std::shared_ptr<const PagedDocument> document, int index, int zoom);
    /// Of the paper's size, in percent.
    int shownPercent() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    double scale() const;
    QSize paper() const;
    void updateScrollBars();
    void showPercent();

    std::shared_ptr<const PagedDocument> document_;
    Page page_;
    int index_ = -1;
    int zoom_ = 0;
    QLabel& percent_;
};

class PageCanvasView final : public ControlView {
public:
    PageCanvasView(PageView& pages, FormWindow& window);

    QWidget& widget() override { return canvas_; }
    void pull() override;
    bool stretches() const override { return true; }
    bool isTall() const override { return true; }
    bool wants(const QKeyEvent& key) override;

private:
    PageView& pages_;
    PageCanvas& canvas_;
    bool pulling_ = false;
};

}  // namespace FendaMaestros::qt

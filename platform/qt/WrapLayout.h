#pragma once

#include <QLayout>
#include <vector>

namespace FendaMaestros::qt {

/// Items side by side, in as many lines as the width asks for. What is left of a line goes to its wide items, or stays
/// at the other side.
class WrapLayout final : public QLayout {
public:
    enum class Side { Left, Right };

    explicit WrapLayout(Side side);
    ~WrapLayout() override;

    /// A wide item does with its least width where there is no more; the others keep the one that they ask for.
    void add(QLayoutItem* item, bool wide);
    /// Of all items that need no more, as long as they do not break into more lines for it.
    void setCommonWidth(int width) { common_ = width; }
    void addItem(QLayoutItem* item) override { add(item, false); }

    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    /// Everything in one line.
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    void setGeometry(const QRect& place) override;
    Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }

private:
    struct Item {
        QLayoutItem* item;
        bool wide;
        /// The width without which a line is full.
        int least() const;
        int heightFor(int width) const;
    };
    struct Line {
        std::vector<const Item*> items;
        std::vector<int> widths;
        int height = 0;
        int width = 0;
    };

    std::vector<Line> lines(int width) const;
    std::vector<Line> broken(int width, int common) const;
    int heightOf(const std::vector<Line>& lines) const;
    void spread(Line& line, int width) const;
    QRect inside(const QRect& place) const;

    Side side_;
    int common_ = 0;
    std::vector<Item> items_;
};

}  // namespace FendaMaestros::qt

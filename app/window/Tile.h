#pragma once

#include <QAbstractButton>
#include <vector>

class QGridLayout;

namespace FendaMaestros {

/// A large button with the name of an operation and its key. Enter and Space press it; the arrows move between the
/// tiles of one parent as they lie on the screen.
class Tile final : public QAbstractButton {
public:
    Tile(const QString& text, const QKeySequence& key, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// The nearest tile in a direction (-1, 0 or 1 for each axis), null when there is none.
    Tile* neighbour(int right, int down) const;

    QString keyText_;
};

/// Tiles under headings, in as many columns of equal width as there is room for.
class TileBoard final : public QWidget {
public:
    explicit TileBoard(QWidget* parent = nullptr);

    void addHeading(QWidget& heading);
    /// Under the last heading.
    void addTile(Tile& tile);
    /// One column wide.
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Group {
        QWidget* heading;
        std::vector<Tile*> tiles;
    };

    void place(int columns);

    QGridLayout& grid_;
    std::vector<Group> groups_;
    int columns_ = 0;
};

}  // namespace FendaMaestros

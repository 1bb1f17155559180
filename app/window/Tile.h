#pragma once

#include <QAbstractButton>

namespace FendaMaestros {

/// A large button with the name of an operation and its key. Enter and Space press it; the arrows move between the
/// tiles of one parent as they lie on the screen.
class Tile final : public QAbstractButton {
public:
    Tile(const QString& text, const QKeySequence& key, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// The nearest tile in a direction (-1, 0 or 1 for each axis), null when there is none.
    Tile* neighbour(int right, int down) const;

    QString keyText_;
};

}  // namespace FendaMaestros

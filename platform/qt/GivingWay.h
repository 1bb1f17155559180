#pragma once

#include <QLayout>
#include <QWidget>

namespace FendaMaestros::qt {

/// The contents of a scroll area, which give way to their least height before they scroll.
class GivingWay final : public QWidget {
public:
    int heightForWidth(int width) const override { return layout()->totalMinimumHeightForWidth(width); }
};

}  // namespace FendaMaestros::qt

#pragma once

#include "platform/qt/ControlView.h"

namespace FendaMaestros::qt {

class StatusLine;

/// The line at the bottom of a window, as wide as the window: what does not fit is read in its tooltip. It keeps its
/// height while it is empty, so that nothing moves when a text comes.
class StatusLineView final : public ControlView {
public:
    StatusLineView(StatusLabel& label, FormWindow& window);

    QWidget& widget() override;
    void pull() override;

private:
    StatusLabel& label_;
    StatusLine& line_;
};

}  // namespace FendaMaestros::qt

#pragma once

#include <string>

#include "toolkit/Controls.h"
#include "toolkit/Desktop.h"

namespace FendaMaestros {

/// Work that may take long: once it has run for half a second it shows how far it has come, on a bar and on the status
/// line, and Esc stops it. While it lives the reads of the session of InstanciaActual are watched, so that one long
/// read can be stopped as well.
class LongWork {
public:
    /// `bar` and `status` are the screen's; the bar is hidden again at the end. `total` steps, 0 when nobody knows;
    /// `what` is counted, "cuentas".
    LongWork(Desktop& desktop, ProgressBar& bar, Label& status, std::string what, int total = 0);
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;
    ~LongWork();

    /// So many steps are done. False when the person has asked to stop.
    bool reached(int done);
    /// One more step is done. False when the person has asked to stop.
    bool advance() { return reached(done_ + 1); }
    bool stopped() const { return stopped_; }
    /// How many steps there are, once a read has told: they begin now.
    void expect(int total) {
        total_ = total;
        done_ = 0;
    }

private:
    void show();

    Desktop& desktop_;
    ProgressBar& bar_;
    Label& status_;
    std::string what_;
    int total_;
    int done_ = 0;
    bool stopped_ = false;
    Desktop::Time next_;
};

}  // namespace FendaMaestros

#include "ui/LongWork.h"

#include "toolkit/Format.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr std::chrono::milliseconds patience(500);
constexpr std::chrono::milliseconds period(100);
/// The clock is looked at once in so many steps.
constexpr int stride = 16;

std::string number(int count) { return format(count, "#,##0"); }

}  // namespace

LongWork::LongWork(Desktop& desktop, ProgressBar& bar, Label& status, std::string what, int total)
    : desktop_(desktop),
      bar_(bar),
      status_(status),
      what_(std::move(what)),
      total_(total),
      next_(desktop.now() + patience) {
    instanciaActual().sesion().Conexion()->watchReads(
        [this](int rows) { return total_ > 0 ? reached(done_) : reached(rows); });
}

LongWork::~LongWork() {
    bar_.Visible = false;
    try {
        instanciaActual().sesion().Conexion()->watchReads({});
    } catch (const std::exception&) {
        // Without a session there is nothing to watch.
    }
}

bool LongWork::reached(int done) {
    done_ = done;
    if (done % stride != 0 && total_ > 0 && done != total_) return !stopped_;
    if (stopped_ || desktop_.now() < next_) return !stopped_;
    show();
    stopped_ = desktop_.stopAsked();
    next_ = desktop_.now() + period;
    return !stopped_;
}

void LongWork::show() {
    bar_.Visible = total_ > 0;
    bar_.Max = total_;
    bar_.Value = done_;
    status_.Caption = number(done_) + (total_ > 0 ? " de " + number(total_) : "") + " " + what_ + " (Esc: parar)";
}

}  // namespace FendaMaestros

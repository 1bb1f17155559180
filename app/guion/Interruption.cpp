#include "app/guion/Interruption.h"

#include <array>
#include <cstddef>

#include <signal.h>

namespace FendaMaestros {

namespace {

constexpr std::array<int, 4> handled{SIGINT, SIGTERM, SIGHUP, SIGPIPE};

volatile sig_atomic_t interrupted = 0;
std::array<struct sigaction, handled.size()> previous;

void leaveWord(int) { interrupted = 1; }

}  // namespace

Interruption::Interruption() {
    interrupted = 0;
    for (std::size_t i = 0; i < handled.size(); ++i) {
        struct sigaction action {};
        action.sa_handler = handled[i] == SIGPIPE ? SIG_IGN : leaveWord;
        // A second one ends the program at once.
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(handled[i], &action, &previous[i]);
        // What whoever started the program has ignored, as nohup does, stays so.
        if (previous[i].sa_handler == SIG_IGN) sigaction(handled[i], &previous[i], nullptr);
    }
}

Interruption::~Interruption() {
    for (std::size_t i = 0; i < handled.size(); ++i) sigaction(handled[i], &previous[i], nullptr);
}

bool Interruption::asked() { return interrupted != 0; }

}  // namespace FendaMaestros

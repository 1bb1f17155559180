#include "app/CommandLine.h"

#include <signal.h>

int main(int argc, char** argv) {
    // A limit on the size of files is told as a full disk is.
    signal(SIGXFSZ, SIG_IGN);
    return FendaMaestros::runCommandLine(argc, argv);
}

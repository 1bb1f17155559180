// Clerks killed at random moments of 500 saves and more: what is left is looked at after each kill. Ends with 1 when
// anything was found wrong.

#include <cstdio>

#include "tests/support/Clerks.h"

int main() {
    const unsigned seed = std::random_device()();
    const auto killed = FendaMaestros::testing::KilledClerks(170).work(seed);
    for (const auto& fault : killed.faults) std::printf("FALLO %s\n", fault.c_str());
    std::printf(
        "%d cortes en %d altas y cambios, %d de ellos entre dos grabaciones que van juntas, %zu fallos (semilla %u)\n",
        killed.kills, killed.saves, killed.cutRounds, killed.faults.size(), seed);
    return killed.faults.empty() ? 0 : 1;
}

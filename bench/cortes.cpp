// Clerks killed at random moments of 500 saves and more: what is left is looked at after each kill. Then eight clerks
// at once, in peace, killed, and with a server that crashes under them: what they were told against what is stored, and
// how long a save took them. In a folder and, where there is one, on a server of its own; there, at last, with a
// connection that is cut 1,000 times. Ends with 1 when anything was found wrong.

#include <cstdio>

#include "tests/support/Team.h"
#ifdef FENDA_WITH_POSTGRES
#include "tests/support/CutConnections.h"
#endif

namespace {

using namespace FendaMaestros::testing;

int faults = 0;

void printFaults(const std::vector<std::string>& found) {
    for (const auto& fault : found) std::printf("  FALLO %s\n", fault.c_str());
    faults += static_cast<int>(found.size());
}

void printKills(const PlaceKind& kind, unsigned seed) {
    const auto killed = KilledClerks(kind.make(), 170).work(seed);
    std::printf("%d cortes en %d altas y cambios, %d de ellos entre dos grabaciones que van juntas, %zu fallos\n",
                killed.kills, killed.saves, killed.cutRounds, killed.faults.size());
    printFaults(killed.faults);
}

void printTeam(const char* what, TeamReport report) {
    int refused = 0;
    for (const auto& [why, count] : report.refused) refused += count;
    std::printf(
        "%-44s %4d grabadas, %3d rechazadas, %2d sin respuesta (%d están), %2d cortes, %d caídas, %zu fallos; espera "
        "ms: mediana %.1f, 95 %% %.1f, mayor %.1f\n",
        what, report.saved, refused, report.unknown, report.unknownAndStored, report.killedClerks, report.crashes,
        report.faults.size(), report.wait(0.5), report.wait(0.95), report.wait(1));
    for (const auto& [why, count] : report.refused) std::printf("    %d x %s\n", count, why.c_str());
    printFaults(report.faults);
}

void printCuts([[maybe_unused]] unsigned seed) {
#ifdef FENDA_WITH_POSTGRES
    if (!FendaMaestros::tests::PostgresServer::installed()) return;
    const auto cut = CutClerk(1000).work(seed);
    std::printf(
        "conexión cortada %d veces en cualquier octeto: %d sin que se note, %d repetidas en la misma pantalla, "
        "%zu fallos\n",
        cut.cuts, cut.unnoticed, cut.triedAgain, cut.faults.size());
    printFaults(cut.faults);
#endif
}

}  // namespace

int main() {
    const unsigned seed = std::random_device()();
    for (const auto& kind : placeKinds(true)) {
        std::printf("%s (semilla %u)\n", kind.name.c_str(), seed);
        printKills(kind, seed);
        // Those who are killed have more to do, so that they are at work then.
        const auto team = [&](int killed, int crashes) {
            return Team(kind.make(),
                        {.saves = killed > 0 ? 100 : 25, .killedClerks = killed, .crashes = crashes, .seed = seed});
        };
        printTeam("8 puestos, 25 altas, un grupo", team(0, 0).createAccounts(true));
        printTeam("8 puestos, 25 altas, 8 grupos", team(0, 0).createAccounts(false));
        printTeam("8 puestos, 25 cambios, las mismas 20 cuentas", team(0, 0).changeAccounts());
        printTeam("un grupo, con cortes", team(12, 4).createAccounts(true));
        printTeam("8 grupos, con cortes", team(12, 4).createAccounts(false));
        printTeam("las mismas 20 cuentas, con cortes", team(12, 4).changeAccounts());
    }
    printCuts(seed);
    return faults == 0 ? 0 : 1;
}

#include "app/CommandServidor.h"

#include <stdexcept>

#include "app/Composition.h"
#include "app/StandardStreams.h"

namespace FendaMaestros {

int runServidorPreparar(const TypedPlace& typed, bool shown) {
    if (shown) {
        writeOutput(serverPreparation());
        return 0;
    }
    const auto place = chosenPlace(typed);
    if (!place || place->kind != Place::Kind::Server)
        throw std::invalid_argument("Falta el servidor: indíquelo con --servidor o con FENDA_SERVIDOR.");
    writeOutput("El servidor está preparado (" + prepareServer(place->where) + ").\n");
    return 0;
}

}  // namespace FendaMaestros

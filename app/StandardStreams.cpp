#include "app/StandardStreams.h"

#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <string>

namespace FendaMaestros {

namespace {

std::string reasonOf(int error) {
    switch (error) {
        case EISDIR:
            return "es una carpeta";
        case EBADF:
            return "está cerrada";
        case ENOSPC:
            return "no queda espacio";
        default:
            return "error " + std::to_string(error) + " del sistema";
    }
}

std::runtime_error failure(const std::string& what) { return std::runtime_error(what + ": " + reasonOf(errno) + "."); }

}  // namespace

std::size_t readInput(char* buffer, std::size_t size) {
    ssize_t got = 0;
    do got = ::read(STDIN_FILENO, buffer, size);
    while (got < 0 && errno == EINTR);
    if (got < 0) throw failure("No se puede leer la entrada");
    return static_cast<std::size_t>(got);
}

void writeOutput(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) throw failure("No se puede escribir la salida");
        if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

}  // namespace FendaMaestros

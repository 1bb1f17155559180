#include "ui/FileErrorText.h"

namespace FendaMaestros {

std::string fileErrorText(std::error_code code) {
    if (code == std::errc::no_space_on_device || code == std::errc::file_too_large) return "no queda sitio en el disco";
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted)
        return "no se tiene permiso para escribir ahí";
    if (code == std::errc::read_only_file_system) return "el disco es de solo lectura";
    if (code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory)
        return "la carpeta no existe";
    if (code == std::errc::filename_too_long) return "el nombre es demasiado largo";
    if (code == std::errc::file_exists) return "ya hay un fichero con ese nombre";
    if (code == std::errc::is_a_directory) return "ya hay una carpeta con ese nombre";
    if (code == std::errc::io_error) return "el disco ha fallado";
    return "error " + std::to_string(code.value()) + " del sistema";
}

}  // namespace FendaMaestros

#include "capi/WindowsModule.h"

#include <dlfcn.h>

#include <filesystem>

#include "capi/Status.h"
#include "ui/Version.h"

namespace FendaMaestros::capi {

namespace {

/// The file of this library.
std::filesystem::path ownFile() {
    Dl_info found{};
    static const char within = 0;
    if (dladdr(&within, &found) == 0 || !found.dli_fname) return {};
    return found.dli_fname;
}

/// Where the module is: in a folder of its own beside the installed library, or beside it where it was built.
std::filesystem::path moduleFile() {
    std::error_code none;
    const auto library = std::filesystem::canonical(ownFile(), none);
    const auto folder = library.parent_path();
    auto installed = folder / FENDA_MODULE_FOLDER / FENDA_MODULE_NAME;
    if (std::filesystem::exists(installed, none)) return installed;
    return folder / FENDA_MODULE_NAME;
}

const WindowsModule& load() {
    const std::filesystem::path file = moduleFile();
    std::error_code none;
    if (!std::filesystem::exists(file, none))
        refuse(FENDA_NO_WINDOWS, "Las ventanas no están instaladas (falta " FENDA_MODULE_NAME ").");
    // The windowing system is not made to be unloaded.
    void* const loaded = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!loaded) {
        const char* const reason = dlerror();
        throw Refusal{FENDA_NO_WINDOWS, std::string("Las ventanas no se pueden cargar: ") + (reason ? reason : "")};
    }
    const auto entry = reinterpret_cast<WindowsModuleEntry>(dlsym(loaded, windowsModuleEntry));
    const WindowsModule* const module = entry ? entry(componentVersion().c_str()) : nullptr;
    if (!module) refuse(FENDA_NO_WINDOWS, "Las ventanas instaladas son de otra versión.");
    return *module;
}

}  // namespace

const WindowsModule& windowsModule() {
    static const WindowsModule& module = load();
    return module;
}

}  // namespace FendaMaestros::capi

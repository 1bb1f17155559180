#include "ui/Version.h"

#include <cstdlib>

#include "include/fenda.h"

const char* fenda_version(void) {
    static const std::string version = FendaMaestros::componentVersion();
    return version.c_str();
}

void fenda_interface_version(int32_t* major, int32_t* minor) {
    if (major) *major = FENDA_INTERFACE_MAJOR;
    if (minor) *minor = FENDA_INTERFACE_MINOR;
}

void fenda_free(char* text) { std::free(text); }

// What a library of another major version says first.
#include <cstdint>

extern "C" void fenda_interface_version(std::int32_t* major, std::int32_t* minor) {
    *major = 2;
    *minor = 0;
}

// fenda-contrato OBJETO [CASOS]: tries the connections of a host that a shared object exports (fenda_contract_of_host).
// Exit status: 0 every case has kept the contract, 1 some have not, 2 it did not start.
#include <dlfcn.h>

#include <iostream>

#include "include/fenda_contrato.h"

namespace {

int complain(const char* reason) {
    std::cerr << "fenda-contrato: " << reason << std::endl;
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) return complain("Uso: fenda-contrato OBJETO [CASOS]");
    void* const object = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (!object) return complain(dlerror());
    using Entry = const fenda_contract_host* (*)();
    const auto entry = reinterpret_cast<Entry>(dlsym(object, "fenda_contract_of_host"));
    if (!entry) return complain("El objeto no exporta fenda_contract_of_host.");
    const int failed = fenda_contract_run(entry(), argc == 3 ? argv[2] : nullptr);
    if (failed >= 0) return failed > 0;
    const char* reason = "";
    fenda_last_error(&reason, nullptr, nullptr);
    return complain(reason);
}

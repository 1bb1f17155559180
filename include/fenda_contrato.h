/// @file
/// Whether a host's own connection keeps what the screens rely on: libfendacontrato.so.1, for a host's own tests. The
/// program fenda-contrato runs it on a shared object of the host.
#ifndef FENDA_CONTRATO_H
#define FENDA_CONTRATO_H

#include "fenda.h"

#ifdef __cplusplus
extern "C" {
#endif

/// A host whose connections are tried.
typedef struct fenda_contract_host {
    size_t size;    ///< sizeof(fenda_contract_host)
    void* context;  ///< handed to every callback
    /// Makes a company and a shared database of their own with all their tables, empty, and fills the table of a
    /// connection to both, with its size. Called anew for each case. The connection's `release` ends what was made.
    fenda_status (*empty_company)(void* context, fenda_connection* connection);
    /// Takes a line of the report. May be null: the report goes to standard output.
    void (*report)(void* context, const char* line);
} fenda_contract_host;

/// Tries every case, or those that a filter takes, on connections of a host. Like all work with connections it belongs
/// to one thread, and no handle may be open on another.
/// @param filter  names of cases with * and ?, parted by colons; null for all
/// @return how many cases have failed; -1 when none could be tried, and fenda_last_error() tells why
FENDA_API int32_t fenda_contract_run(const fenda_contract_host* host, const char* filter);

/// What a shared object exports for the program fenda-contrato: a host that lasts as long as the object is loaded.
FENDA_API const fenda_contract_host* fenda_contract_of_host(void);

#ifdef __cplusplus
}
#endif

#endif

/* Loads the library, works with it and unloads it, many times. Under LeakSanitizer nothing may be left behind.
   Arguments: the library, a folder with a company, how many times. */
#include <dlfcn.h>
#include <fenda.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void fail(const char* what) {
    fprintf(stderr, "%s\n", what);
    exit(EXIT_FAILURE);
}

static void* find(void* library, const char* name) {
    void* const found = dlsym(library, name);
    if (!found) fail(dlerror());
    return found;
}

/* ISO C has no other way from an object's address to a function's. */
#define FIND(name) *(void**)&name = find(library, "fenda_" #name)

static void work(void* library, const char* folder) {
    fenda_status (*session_open_folder)(const char*, const char*, fenda_session**);
    fenda_status (*session_close)(fenda_session*);
    fenda_status (*desktop_script)(const char*, bool, fenda_desktop**);
    fenda_status (*desktop_close)(fenda_desktop*);
    fenda_status (*object_new)(fenda_desktop*, const fenda_components*, fenda_object**);
    fenda_status (*object_close)(fenda_object*);
    fenda_status (*set_MyBd)(fenda_object*, fenda_session*);
    fenda_status (*jCentros)(fenda_object*);
    fenda_status (*last_error)(const char**, int32_t*, const char**);
    fenda_session* session;
    fenda_desktop* desktop;
    fenda_object* object;
    const char* text;
    FIND(session_open_folder);
    FIND(session_close);
    FIND(desktop_script);
    FIND(desktop_close);
    FIND(object_new);
    FIND(object_close);
    FIND(set_MyBd);
    FIND(jCentros);
    FIND(last_error);
    if (session_open_folder(folder, NULL, &session) || desktop_script("cerrar\n", false, &desktop) ||
        object_new(desktop, NULL, &object) || set_MyBd(object, session) || jCentros(object)) {
        last_error(&text, NULL, NULL);
        fail(text);
    }
    if (jCentros(NULL) != FENDA_BAD_HANDLE) fail("a null handle is none");
    if (object_close(object) || desktop_close(desktop) || session_close(session)) fail("not closed");
}

int main(int argc, char** argv) {
    int round;
    int unloaded = 0;
    if (argc != 4) fail("LIBRARY FOLDER TIMES");
    for (round = 0; round < atoi(argv[3]); ++round) {
        void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        void* still;
        if (!library) fail(dlerror());
        work(library, argv[2]);
        if (dlclose(library)) fail(dlerror());
        still = dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD);
        if (still)
            dlclose(still);
        else
            ++unloaded;
    }
    printf("%d of %d times unloaded\n", unloaded, round);
    return unloaded == round ? EXIT_SUCCESS : EXIT_FAILURE;
}

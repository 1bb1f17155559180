/* Two libraries that use the shared one in one process. Arguments: both. */
#include <dlfcn.h>
#include <fenda.h>
#include <stdio.h>
#include <stdlib.h>

struct part {
    void* library;
    fenda_status (*open)(void);
    int (*works)(int16_t plan);
    fenda_status (*close)(void);
};

static struct part load(const char* file) {
    struct part loaded;
    loaded.library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    if (!loaded.library) {
        fprintf(stderr, "%s\n", dlerror());
        exit(EXIT_FAILURE);
    }
    *(void**)&loaded.open = dlsym(loaded.library, "part_open");
    *(void**)&loaded.works = dlsym(loaded.library, "part_works");
    *(void**)&loaded.close = dlsym(loaded.library, "part_close");
    return loaded;
}

static void check(int good, const char* what) {
    if (good) return;
    fprintf(stderr, "%s\n", what);
    exit(EXIT_FAILURE);
}

int main(int argc, char** argv) {
    struct part one, other;
    check(argc == 3, "ONE OTHER");
    one = load(argv[1]);
    other = load(argv[2]);
    check(!one.open() && !other.open(), "both open");
    check(one.works(2008) && other.works(1990), "both work");
    check(one.works(0), "the first works on behind the second");
    check(!other.close() && !dlclose(other.library), "the second ends");
    check(one.works(2008), "the first works on without it");
    check(!one.close() && !dlclose(one.library), "the first ends");
    puts("two parts work apart");
    return EXIT_SUCCESS;
}

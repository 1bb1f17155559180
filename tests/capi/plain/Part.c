/* A library of its own that works with the shared one; two of them are in one process. */
#include <fenda.h>
#include <string.h>

static fenda_desktop* desktop;
static fenda_object* object;

fenda_status part_open(void) {
    const fenda_status made = fenda_desktop_script("", false, &desktop);
    return made ? made : fenda_object_new(desktop, NULL, &object);
}

/* Whether the object still has the value that this part has given it, and checks identifiers. */
int part_works(int16_t plan) {
    char identifier[] = "12.345.678-z";
    bool valid = false;
    int16_t found = 0;
    if (plan && fenda_set_Plan(object, plan)) return 0;
    return !fenda_FnVerificarCif(object, identifier, false, &valid) && valid && !strcmp(identifier, "12345678Z") &&
           !fenda_get_Plan(object, &found) && (!plan || found == plan) && found;
}

fenda_status part_close(void) {
    const fenda_status closed = fenda_object_close(object);
    return closed ? closed : fenda_desktop_close(desktop);
}

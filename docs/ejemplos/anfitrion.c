/* A host in C: the demonstration company, an identifier, and an account that a script creates in a person's place. */
#include <fenda.h>
#include <stdio.h>
#include <stdlib.h>

static void check(fenda_status status) {
    const char* text;
    if (status == FENDA_OK) return;
    fenda_last_error(&text, NULL, NULL);
    fprintf(stderr, "%s\n", text);
    exit(EXIT_FAILURE);
}

static const char* const script =
    "escribir \"Embalajes Tresveredas S.A.\"\n"
    "responder \"Grabación finalizada\" Aceptar\n"
    "pulsar cmdGuardar\n";

int main(int argc, char** argv) {
    fenda_session* session;
    fenda_desktop* desktop;
    fenda_object* fenda;
    fenda_rows* rows;
    fenda_value name;
    bool valid;
    char identifier[] = "12.345.678-z", code[FENDA_CODE_SIZE] = "430";

    if (argc != 2) return fprintf(stderr, "Uso: anfitrion CARPETA\n"), EXIT_FAILURE;
    check(fenda_folder_create_demonstration(argv[1], NULL));
    check(fenda_session_open_folder(argv[1], NULL, &session));
    check(fenda_desktop_script(script, false, &desktop)); /* fenda_desktop_windows(&desktop) shows real windows */
    check(fenda_object_new(desktop, NULL, &fenda));
    check(fenda_set_MyBd(fenda, session));
    check(fenda_set_MyBdorigen(fenda, session));

    check(fenda_FnVerificarCif(fenda, identifier, false, &valid));
    printf("%d %s\n", valid, identifier); /* 1 12345678Z */
    check(fenda_CrearNuevaCuenta(fenda, code, sizeof code, 11, true, NULL));
    check(fenda_session_read(session, "SELECT PCta_Des FROM PCta WHERE PCta_Cta = '43000012'", &rows));
    check(fenda_rows_value(rows, 0, 0, &name));
    printf("%s %s\n", code, name.text); /* 43000012 Embalajes Tresveredas S.A. */

    check(fenda_rows_close(rows));
    check(fenda_object_close(fenda));
    check(fenda_desktop_close(desktop));
    check(fenda_session_close(session));
    return EXIT_SUCCESS;
}

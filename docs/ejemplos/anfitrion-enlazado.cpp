// A host in C++ on the shared library, which any compiler can link: the demonstration company, an identifier, and an
// account that a script creates in a person's place.
#include <fenda.h>

#include <iostream>
#include <memory>
#include <stdexcept>

static void check(fenda_status status) {
    if (status == FENDA_OK) return;
    const char* text = "";
    fenda_last_error(&text, nullptr, nullptr);
    throw std::runtime_error(text);
}

/// What a function makes, closed at the end by another.
template <class Thing, class Make>
static auto made(fenda_status (*close)(Thing*), Make&& make) {
    Thing* thing = nullptr;
    check(make(&thing));
    return std::unique_ptr<Thing, fenda_status (*)(Thing*)>(thing, close);
}

static constexpr const char* script =
    "escribir \"Embalajes Tresveredas S.A.\"\n"
    "responder \"Grabación finalizada\" Aceptar\n"
    "pulsar cmdGuardar\n";

int main(int argc, char** argv) try {
    if (argc != 2) throw std::runtime_error("Uso: anfitrion CARPETA");
    check(fenda_folder_create_demonstration(argv[1], nullptr));
    const auto session =
        made(fenda_session_close, [&](auto place) { return fenda_session_open_folder(argv[1], nullptr, place); });
    const auto desktop =
        made(fenda_desktop_close, [](auto place) { return fenda_desktop_script(script, false, place); });
    const auto fenda =
        made(fenda_object_close, [&](auto place) { return fenda_object_new(desktop.get(), nullptr, place); });
    check(fenda_set_MyBd(fenda.get(), session.get()));
    check(fenda_set_MyBdorigen(fenda.get(), session.get()));

    char identifier[] = "12.345.678-z", code[FENDA_CODE_SIZE] = "430";
    bool valid = false;
    check(fenda_FnVerificarCif(fenda.get(), identifier, false, &valid));
    std::cout << valid << ' ' << identifier << '\n';  // 1 12345678Z
    check(fenda_CrearNuevaCuenta(fenda.get(), code, sizeof code, 11, true, nullptr));
    const auto rows = made(fenda_rows_close, [&](auto place) {
        return fenda_session_read(session.get(), "SELECT PCta_Des FROM PCta WHERE PCta_Cta = '43000012'", place);
    });
    fenda_value name{};
    check(fenda_rows_value(rows.get(), 0, 0, &name));
    std::cout << code << ' ' << name.text << '\n';  // 43000012 Embalajes Tresveredas S.A.
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}

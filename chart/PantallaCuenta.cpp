#include "chart/PantallaCuenta.h"

#include "chart/BuscarCuentas.h"
#include "session/Literal.h"
#include "toolkit/Raised.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"

namespace FendaMaestros {

namespace {

constexpr int byCode = 1;
constexpr int byName = 2;

/// Through the accounts of a condition in the order of their codes; `current` is the code shown, null when there is
/// none.
Walk walkThrough(const std::string& where, const std::string* current) {
    Walk walk{.first = where + " ORDER BY PCta_Cta ASC", .last = where + " ORDER BY PCta_Cta DESC"};
    if (!current) return walk;
    walk.previous = where + " AND PCta_Cta < " + literal(*current) + " order by PCta_Cta desc";
    walk.next = where + " AND PCta_Cta > " + literal(*current) + " order by PCta_Cta ASC";
    return walk;
}

}  // namespace

PantallaCuenta::PantallaCuenta(std::initializer_list<int> fields, std::initializer_list<int> labels, bool bPGC)
    : Label1("Label1", labels), Text1("Text1", fields), bPGC_(bPGC) {
    cmdGuardar.Enabled = cmdBorrar.Enabled = cmdNueva.Visible = false;
    cmdGuardar.Click = [this] { guardar(); };
    cmdNueva.Click = [this] { cancelarNueva(); };
    cmdBorrar.Click = [this] { borrar(); };
    cmdSalir.Click = [this] { unload(); };
    explainKey({key::F(10)}, "Consultar el PGC por código");
    explainKey({key::F(11)}, "Consultar el PGC por orden alfabético");
    explainKey({key::Escape}, "Salir sin grabar");

    for (const auto& [index, field] : Text1.elements())
        field->KeyPress = [](int& ascii) {
            if (ascii == key::Enter) ascii = 0;
        };
    prepararCodigo(Codigo);
    editField(
        Text1(Codigo), [this] { dejarCodigo(); }, [this] { cmdNueva.Visible = cmdGuardar.Enabled = false; });
    Text1(Nombre).MaxLength = nameLength;
    editField(Text1(Nombre));
}

/// Of what the filter lets through for amounts, a code takes neither the minus sign nor Enter.
void PantallaCuenta::prepararCodigo(int field) {
    TextBox& box = Text1(field);
    box.Tag = "Cuentas";
    box.TextAlignment = Alignment::Center;
    box.Searches = accountSearches();
    box.KeyPress = [this, &box](int& ascii) {
        Ayuda.FiltrarTecla(box, ascii, true, 0);
        if (ascii == key::Enter || ascii == '-') ascii = 0;
    };
}

void PantallaCuenta::onLoad() {
    Screen::onLoad();
    cargarListas();
    cboMasas.load("Sin Masa patrimonial",
                  *read("SELECT * FROM KXComun.dbo.Masas WHERE Masas_Plan = 2008 ORDER BY Masas_Id"), "Masas_Des",
                  "mASAS_Id");
    rsCuenta = read("SELECT * FROM PCta WHERE PCta_Id = -1");
    anotarMostrado();
}

void PantallaCuenta::LimpiarPantalla() {
    for (const auto& [index, field] : Text1.elements()) field->Text.clear();
    cboMasas.chooseFirst();
    nIdActual = 0;
    rsMostrada.reset();
    cmdBorrar.Enabled = false;
    anotarMostrado();
}

// --- what is left unsaved

std::vector<std::string> PantallaCuenta::contenido() const {
    return {text::trim(Text1(Nombre).Text), cboMasas.chosenName()};
}

std::string PantallaCuenta::unsaved() const {
    if (contenido() == contenidoMostrado_) return {};
    const std::string name = text::trim(Text1(Nombre).Text);
    return sCodigoMostrado_ + (sCodigoMostrado_.empty() || name.empty() ? "" : " ") + name;
}

void PantallaCuenta::anotarMostrado() {
    sCodigoMostrado_ = Text1(Codigo).Text;
    contenidoMostrado_ = contenido();
}

void PantallaCuenta::sinContarComoCambio(const std::function<void()>& step) {
    const bool changed = contenido() != contenidoMostrado_;
    step();
    if (!changed) contenidoMostrado_ = contenido();
}

std::string PantallaCuenta::situacion() const {
    if (!rsMostrada || nIdActual != 0) return {};
    return "La cuenta " + sCodigoMostrado_ + " ya no está seleccionada: vuelva a buscarla antes de guardar";
}

void PantallaCuenta::cambiandoCuenta(const std::function<void()>& step) {
    replacing([&] {
        step();
        if (const std::string now = situacion(); !now.empty()) tell(now);
    });
}

// --- finding

std::shared_ptr<Recordset> PantallaCuenta::leerCuenta(const std::string& code, std::int64_t id) const {
    return read("SELECT * FROM PCta WHERE " + condicion() +
                (id != 0 ? " AND PCta_Id = " + std::to_string(id) : " AND PCta_Cta = " + literal(code)));
}

PantallaCuenta::Hallazgo PantallaCuenta::localizar(int mode, const std::string& code, std::int64_t id,
                                                   std::shared_ptr<Recordset>& row) {
    if (code.empty() && id == 0) id = fnBuscarCuentas(static_cast<std::int16_t>(mode), bPGC_, false);
    const bool nothingSought = id < 1 && code.empty();
    if (!nothingSought) row = leerCuenta(code, id);
    if (nothingSought || row->Eof()) {
        nIdActual = 0;
        cmdBorrar.Enabled = false;
        return nothingSought ? Hallazgo::NadaBuscado : Hallazgo::NoEncontrada;
    }
    cmdGuardar.Enabled = true;
    return Hallazgo::Encontrada;
}

bool PantallaCuenta::conDiario(const std::string& condition) {
    return read("SELECT COUNT(Apu_Id) FROM Apu WHERE " + condition)->cell(0, 0).integer() != 0;
}

void PantallaCuenta::onKeyUp(int& code, int shift) {
    switch (code) {
        case key::F(1):
            return enBusqueda([this] { buscarConTecla(byCode); });
        case key::F(2):
            return enBusqueda([this] { buscarConTecla(byName); });
        case key::F(10):
            return enBusqueda([] { fnBuscarCuentas(byCode, true, true); });
        case key::F(11):
            return enBusqueda([] { fnBuscarCuentas(byName, true, true); });
        default:
            return Screen::onKeyUp(code, shift);
    }
}

void PantallaCuenta::enBusqueda(const std::function<void()>& search) {
    const Raised searching(bEnBusqueda);
    markPendingMessage();
    search();
    // The release of the key that chose has stayed in the search: no Enter is to be held back here.
    unmarkUnlessAwaited();
}

void PantallaCuenta::buscarConTecla(int mode) {
    for (const auto& [index, field] : Text1.elements())
        if (field.get() == activeControl() && !field->Tag.empty())
            return cambiandoCuenta([&, field = index] { buscarEnCampo(mode, field); });
}

void PantallaCuenta::navegar(Step step) {
    const BusyGuard busy(*this);
    const bool shown = !rsCuenta->Eof() && !rsCuenta->Bof();
    const std::string current = shown ? rsCuenta->Fields("pcta_cta").Value.text() : std::string();
    const auto found =
        read("Select top 1 * FROM PCta " + destination(walkThrough(recorrido(), shown ? &current : nullptr), step));
    if (found->Eof()) return;
    const std::string code = found->Fields("pcta_cta").Value.text();
    cambiandoCuenta([&] {
        Text1(Codigo).Text = code;
        // Without a code and an identity a search would open.
        CargarCuenta(0, Codigo, code, code.empty() ? found->Fields("PCta_Id").Value.integer() : 0);
    });
}

// --- a new account

void PantallaCuenta::prepararAlta() {
    LimpiarPantalla();
    cmdNueva.Visible = cmdGuardar.Enabled = true;
    markPendingMessage();
}

void PantallaCuenta::mostrarCodigoNuevo(const std::string& code, bool bEnNombre) {
    Text1(Codigo).Text = code;
    anotarMostrado();
    if (bEnNombre && bActivada) setFocus(Text1(Nombre));
}

void PantallaCuenta::cancelarNueva() {
    replacing([this] { descartarNueva(); });
    cmdNueva.Visible = false;
    cmdGuardar.Enabled = false;
    setFocus(Text1(Codigo));
}

}  // namespace FendaMaestros

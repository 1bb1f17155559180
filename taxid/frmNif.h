#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "taxid/NifRecord.h"
#include "taxid/OtraFicha.h"
#include "ui/NavigationButtons.h"
#include "ui/Screen.h"

namespace FendaMaestros {

/// The register of tax identities, shared table `Nif`: found by document or by name, created, changed and deleted.
///
/// Leaving the document field loads its entry, or offers to create it. A document that already is the one on the
/// screen, or whose creation has been accepted, is not looked up again, so that nothing typed since is lost.
class frmNif final : public Screen {
public:
    /// With a document that is not blank, the screen opens on it, without asking when it is new, and closes after the
    /// first save. `sNombre` is the name that a new one begins with.
    explicit frmNif(const std::string& sNif = {}, const std::string& sNombre = {});

    /// Loads the entry of a document, of an identifier when it is 1 or more, or, in mode 1 (by document) or 2 (by
    /// name), the one that a person picks; a search that is left changes nothing. Returns the identifier shown, -1
    /// for none: then the screen is empty, save what had been typed of a new entry.
    std::int64_t msBuscarCif(const std::string& sDoc, int nModo = 0, std::int64_t nId = 0);

private:
    /// The elements of txtFields.
    enum Campo {
        Cliente = 0,
        Nombre = 1,
        Apellido1 = 2,
        Apellido2 = 3,
        NombreComercial = 4,
        Documento = 5,
        TelefonoFijo = 6,
        Fax = 7,
        TelefonoMovil = 8,
        Correo = 9,
        Provincia = 10,
        Escalera = 43,
        Numero = 44,
        Via = 45,
        Piso = 46,
        Puerta = 47,
        Bloque = 48,
        CodigoPostal = 49,
        Poblacion = 50
    };
    /// Those that show a column as it is and are stored without the blanks around them.
    static constexpr std::array<std::pair<Campo, std::string NifRecord::*>, 14> textos{{
        {Nombre, &NifRecord::nombre},
        {Apellido1, &NifRecord::apellido1},
        {Apellido2, &NifRecord::apellido2},
        {Via, &NifRecord::via},
        {Numero, &NifRecord::numero},
        {Escalera, &NifRecord::escalera},
        {Piso, &NifRecord::piso},
        {Puerta, &NifRecord::puerta},
        {CodigoPostal, &NifRecord::codigoPostal},
        {Poblacion, &NifRecord::poblacion},
        {TelefonoFijo, &NifRecord::telefono},
        {Fax, &NifRecord::fax},
        {TelefonoMovil, &NifRecord::movil},
        {Correo, &NifRecord::correo},
    }};

    /// What the register has on an entry, and whether a delete is allowed.
    struct Ficha {
        NifRecord nif;
        bool conFacturas = false;
    };

    void onLoad() override;
    void onActivate() override;
    void onKeyUp(int& code, int shift) override;
    std::string unsaved() const override;

    void prepararCampos();
    void prepararMandos();
    void disponer();
    void cargarListas();
    static std::int16_t ejercicio();

    /// False when the field has brought another entry, or keeps the focus: what was to be done with the entry before
    /// is no longer meant.
    bool salirCampo(int index);
    void componerNombreComercial(int index);
    bool salirDocumento();
    void completarDocumento();
    /// Says which entry has the identifier that has been typed, however it is spelled there.
    void decirOtraFicha();
    /// Says what is to be said of a document that is looked at for the first time.
    void aconsejar();
    void salirCodigoPostal();
    void elegirTipoDocumento();
    void elegirPais();
    void elegirClaveRetencion();
    void situarProvincia(const std::string& code);
    void situarClave(const std::string& key, const std::string& subkey);
    void buscarPoblacionDir();
    void navegar(Step step);
    Walk recorrido() const;

    /// Nothing when no entry meets `where`.
    static std::optional<Ficha> leer(const std::string& where);
    void mostrar(const Ficha& ficha);
    void mostrarInsertada(const Ficha& ficha);
    void vaciar();
    NifRecord enPantalla() const;
    /// From now on what the screen shows is not unsaved.
    void anotarMostrado() { nifMostrado_ = enPantalla(); }
    bool paisPropio() const { return cboPais.ListIndex() == nPaisPropio_; }

    void guardarConTecla();
    void guardar();
    /// Inserts or updates in a transaction. What has been inserted comes back as the register has it.
    std::optional<Ficha> grabar();
    Ficha insertar(RowWrite& write) const;
    /// Throws std::runtime_error when another program has changed the entry, or has deleted it: then it is a new one.
    void actualizar(RowWrite& write);
    void borrar();
    void sustituir();
    void avisarFallo(const std::exception& error);

    std::int64_t nIdActual_ = 0;
    /// The entry shown, as the register had it when it was read or saved. Codes of it that a list does not have leave
    /// nothing chosen there.
    NifRecord nifLeido_;
    /// What the screen showed before the person changed anything.
    NifRecord nifMostrado_;
    std::string sExpresionNombre_;
    /// The document last loaded or accepted as new.
    std::string sDocumentoTratado_;
    AvisoOtraFicha avisoOtraFicha_;
    std::string sNifInicial_;
    std::string sNombreInicial_;
    bool bAbiertaConDocumento_;
    bool bCargaPendiente_;
    /// The province that was chosen when another country hid the list.
    int nProvinciaDejada_ = -1;
    /// The key whose subkeys are listed, and the subkeys chosen of the keys passed over since the entry was shown.
    std::string sClave_;
    std::map<std::string, int> nSubclavesDejadas_;
    int nPaisPropio_ = -1;
    int nProvincia99_ = -1;
    int nProvinciaPropia_ = -1;

    Frame fraIdentificacion;
    Frame fraDireccion;
    ControlArray<TextBox> txtFields{"txtFields", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 43, 44, 45, 46, 47, 48, 49, 50}};
    ControlArray<Label> lblFields{"lblFields", {1, 2, 3, 4, 5, 6, 7, 8, 9, 43, 44, 45, 46, 47, 48, 49, 50}};
    Label lblDocType{"Tipo Documento"};
    Label lblTipoVia{"Tipo de Via"};
    Label lblProvincias{"Provincia"};
    Label lblPais{"Pais"};
    Label lblClaveRetencion{"Clave de retención"};
    Label lblSubclave{"Subclave"};
    Label lblTeclas;
    ComboBox cboDocType;
    ComboBox cboTipoVia;
    ComboBox cboProvincias;
    ComboBox cboPais;
    ComboBox cboClaveRetencion;
    ComboBox cboSubclave;
    NavigationButtons navegacion{[this](Step step) { navegar(step); }};
    CommandButton cmdSalvar{"&Guardar Cambios"};
    CommandButton cmdBorrar{"Borrar CIF/NIF"};
    CommandButton cmdSustituir{"Cambiar CIF/NIF"};
    CommandButton cmdInforme{"Informe"};
    CommandButton cmdSalir{"(ESC) - &Salir"};
};

}  // namespace FendaMaestros

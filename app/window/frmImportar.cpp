#include "app/window/frmImportar.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <numeric>

#include "app/Place.h"
#include "app/window/TextRows.h"
#include "interchange/ImportTexts.h"
#include "session/ErrorBd.h"
#include "toolkit/Format.h"
#include "toolkit/Raised.h"
#include "toolkit/Text.h"
#include "ui/LongWork.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

/// In the order of their lists.
constexpr std::array kinds{ExchangeKind::Accounts, ExchangeKind::Identities};
constexpr std::array encodings{Encoding::Utf8, Encoding::Windows1252};
constexpr std::array separators{';', ',', '\t'};

template <class Values, class Value>
int positionOf(const Values& values, const Value& value) {
    return static_cast<int>(std::ranges::find(values, value) - values.begin());
}

template <class Values>
auto chosen(const Values& values, const ComboBox& list) {
    return values.at(static_cast<std::size_t>(list.ListIndex()));
}

/// All columns of a kind, as assignColumns() takes them.
std::string assignments(ExchangeKind kind, const ColumnMap& columns) {
    std::string text;
    for (const ExchangeField field : fieldsOf(kind)) {
        text.append(text.empty() ? "" : ",").append(wordOf(kind, field)).append("=");
        if (columns.has(field)) text += std::to_string(columns.columnOf(field) + 1);
    }
    return text;
}

/// Of the first row behind the heading; none when there is none, or when the file cannot be read any more.
std::vector<std::string> firstCells(const ImportFile& file) try {
    std::vector<std::string> cells;
    if (!file.rows()->next(cells)) cells.clear();
    return cells;
} catch (const std::exception&) {
    return {};
}

/// The position among the fields of a kind of the one that a column holds; -1 when it holds none.
int fieldOf(const ImportForm& form, int column) {
    const auto fields = fieldsOf(form.kind);
    const auto field = std::ranges::find(fields, column, [&](ExchangeField f) { return form.columns.columnOf(f); });
    return field == fields.end() ? -1 : static_cast<int>(field - fields.begin());
}

std::string headingOf(const ImportForm& form, int column) {
    const std::string number = std::to_string(column + 1);
    return form.header ? number + " " + form.firstRow.at(static_cast<std::size_t>(column)) : number;
}

std::string detailOf(const ImportRow& row) {
    std::string detail = row.verdict == Verdict::Wrong ? row.why : changesText(row);
    if (row.verdict != Verdict::Wrong && !row.note.empty()) addSentence(detail, row.note);
    return detail;
}

constexpr int detailColumn = 4;

std::string textOf(const ImportRow& row, int column) {
    switch (column) {
        case 0:
            return std::to_string(row.line);
        case 1:
            return std::string(wordOf(row.verdict));
        case 2:
            return row.key;
        case 3:
            return row.name;
        default:
            return detailOf(row);
    }
}

void setWidths(DataGrid& grid, const std::vector<Twips>& widths) {
    for (std::size_t i = 0; i < widths.size(); ++i) grid.Columns.at(i).Width = widths[i];
}

std::string wrongRows(std::int64_t count) { return counted(static_cast<int>(count), "fila errónea", "filas erróneas"); }

/// What has been written, in one sentence.
std::string outcome(const ImportCounts& counts) {
    std::string text = "Importado: " + counted(static_cast<int>(counts.added), "nueva", "nuevas") + " y " +
                       counted(static_cast<int>(counts.changed), "con cambios", "con cambios");
    if (counts.wrong > 0) text += "; sin importar, " + wrongRows(counts.wrong);
    return text + ".";
}

}  // namespace

frmImportar::frmImportar() {
    Caption = sTituloVentana = "Importar un fichero";
    chkCabecera.Caption = "Con &cabecera";
    chkFueraDelPlan.Caption = "Admitir las de &fuera del plan";
    chkErroneas.Caption = "Solo las que están &mal";
    barProgreso.Visible = false;
    disponer();
    llenarListas();
    editField(Text1);
    Text1.Change = [this] { olvidar(); };
    cmdLeer.Click = [this] { leer(); };
    cmdExaminar.Click = [this] { examinar(); };
    dbgColumnas.DblClick = [this] { setFocus(cboDato); };
    cmdImportar.Click = [this] { importar(); };
    cmdGuardar.Click = [this] { guardarErroneas(); };
    cmdSalir.Click = [this] { unload(); };
    olvidar();
    tell("No se escribe nada hasta que se pulsa «Importar».");
}

void frmImportar::disponer() {
    add(Label1, "Label1");
    add(Text1, "Text1");
    add(cmdLeer, "cmdLeer");
    add(cmdExaminar, "cmdExaminar");
    add(Label2, "Label2");
    add(cboContiene, "cboContiene");
    add(Label3, "Label3");
    add(cboCodificacion, "cboCodificacion");
    add(cboSeparador, "cboSeparador");
    add(chkCabecera, "chkCabecera");
    add(dbgColumnas, "dbgColumnas");
    add(Label4, "Label4");
    add(cboDato, "cboDato");
    add(chkFueraDelPlan, "chkFueraDelPlan");
    add(chkErroneas, "chkErroneas");
    add(dbgFilas, "dbgFilas");
    add(barProgreso, "barProgreso");
    add(cmdImportar, "cmdImportar");
    add(cmdGuardar, "cmdGuardar");
    add(cmdSalir, "cmdSalir");

    using namespace arrange;
    layOut(column({
        fields({field(Label1, {plain(Text1), plain(cmdLeer), plain(cmdExaminar)})}),
        row({column({fields({field(Label2, cboContiene), field(Label3, {plain(cboCodificacion), plain(cboSeparador)}),
                             field(Label4, cboDato)}),
                     row({plain(chkCabecera), plain(chkFueraDelPlan), plain(chkErroneas)})}),
             filling(dbgColumnas)}),
        filling(dbgFilas),
        row({plain(barProgreso), buttons({&cmdImportar, &cmdGuardar, &cmdSalir})}),
    }));
}

void frmImportar::llenarListas() {
    for (const char* kind : {"Cuentas", "Identidades"}) cboContiene.AddItem(kind);
    for (const char* encoding : {"UTF-8", "Windows-1252"}) cboCodificacion.AddItem(encoding);
    for (const char* separator : {"; (punto y coma)", ", (coma)", "Tabulador"}) cboSeparador.AddItem(separator);

    const auto changes = [this](ComboBox& list, bool keepsColumns, auto choose) {
        list.Click = [this, &list, keepsColumns, choose] {
            if (showing_ || list.ListIndex() < 0) return;
            choose();
            cambiarForma(list, keepsColumns);
        };
    };
    changes(cboContiene, false, [this] { kind_ = chosen(kinds, cboContiene); });
    changes(cboCodificacion, true, [this] { choice_.encoding = chosen(encodings, cboCodificacion); });
    changes(cboSeparador, false, [this] { choice_.separator = chosen(separators, cboSeparador); });
    chkCabecera.Click = [this] {
        if (showing_) return;
        choice_.header = chkCabecera.Value();
        cambiarForma(chkCabecera);
    };
    chkFueraDelPlan.Click = [this] {
        if (!showing_) cambiarForma(chkFueraDelPlan, true);
    };
    cboDato.Click = [this] {
        if (!showing_) asignarColumna();
    };
    chkErroneas.Click = [this] {
        if (!showing_) mostrarFilas();
    };
}

// --- reading

void frmImportar::examinar() {
    const auto path = desktop().chooseOpenFile("Ficheros de texto (*.csv *.txt *.tsv)");
    if (!path) return;
    Text1.Text = *path;
    olvidar();
    leer();
}

void frmImportar::leer() {
    path_ = typedPath(Text1.Text);
    if (path_.empty()) return warn("Falta el fichero que se importa.", Text1);
    if (const std::string failure = releer(); !failure.empty()) return warn(failure, Text1);
    setFocus(preview_ ? dbgFilas : dbgColumnas);
}

std::string frmImportar::releer() {
    std::string failure;
    dbgFilas.bind(nullptr);
    preview_.reset();
    file_.reset();
    tell({});
    try {
        const BusyGuard busy(*this);
        file_ = std::make_unique<ImportFile>(path_, kind_, choice_);
        if (file_->tellsRowsApart()) leerFilas();
    } catch (const std::exception& error) {
        const auto* stopped = dynamic_cast<const ErrorBd*>(&error);
        if (!stopped || stopped->kind() != ErrorBd::Kind::Stopped) failure = error.what();
    }
    tell({});
    mostrarForma();
    mostrarColumnas();
    mostrarFilas();
    if (!failure.empty()) return failure;
    if (!file_->tellsRowsApart())
        tell(file_->form().kind == ExchangeKind::Accounts ? "Diga qué columna tiene el código de la cuenta."
                                                          : "Diga qué columna tiene el NIF.",
             StatusKind::Warning);
    else if (!preview_)
        tell("Se ha parado la lectura. «Leer» empieza otra vez.", StatusKind::Warning);
    return {};
}

void frmImportar::leerFilas() {
    const ImportForm& form = file_->form();
    LongWork work(desktop(), barProgreso, lblEstado, "filas leídas", static_cast<int>(form.csv.lines));
    preview_ =
        std::make_shared<ImportPreview>(instanciaActual().sesion(), form.kind, *file_->rows(), form.columns,
                                        ImportOptions{.outsidePlan = chkFueraDelPlan.Value()},
                                        [&work](std::int64_t rows) { return work.reached(static_cast<int>(rows)); });
}

void frmImportar::olvidar() {
    path_.clear();
    kind_.reset();
    choice_ = {};
    dbgFilas.bind(nullptr);
    preview_.reset();
    file_.reset();
    mostrarForma();
    mostrarColumnas();
    mostrarFilas();
}

// --- what is shown

void frmImportar::mostrarForma() {
    const Raised showing(showing_);
    if (path_.empty()) {
        for (ComboBox* list : {&cboContiene, &cboCodificacion, &cboSeparador}) list->setListIndex(-1);
        chkCabecera.setValue(false);
    }
    if (!file_) return;
    const ImportForm& form = file_->form();
    cboContiene.setListIndex(positionOf(kinds, form.kind));
    cboCodificacion.setListIndex(positionOf(encodings, form.csv.encoding));
    cboSeparador.setListIndex(positionOf(separators, form.csv.separator));
    chkCabecera.setValue(form.header);
    cboDato.Clear();
    cboDato.AddItem("(no se importa)");
    for (const ExchangeField field : fieldsOf(form.kind)) cboDato.AddItem(std::string(captionOf(form.kind, field)));
}

void frmImportar::mostrarColumnas() {
    const int current = std::max(dbgColumnas.currentRow(), 0);
    dbgColumnas.bind(nullptr);
    if (file_) {
        const ImportForm& form = file_->form();
        const auto text = [form, sample = firstCells(*file_)](int row, int column) {
            if (column == 0) return headingOf(form, row);
            if (column == 1) return row < std::ssize(sample) ? sample[static_cast<std::size_t>(row)] : std::string();
            const int field = fieldOf(form, row);
            if (field < 0) return std::string();
            return std::string(captionOf(form.kind, fieldsOf(form.kind)[static_cast<std::size_t>(field)]));
        };
        dbgColumnas.bind(std::make_shared<TextRows>(
            std::vector<std::string>{"Columna", "Ejemplo", "Se importa como"}, static_cast<int>(form.firstRow.size()),
            text, [this] { mostrarDato(); }, current));
        setWidths(dbgColumnas, {2000, 2000, 1900});
    }
    mostrarDato();
}

void frmImportar::mostrarDato() {
    const Raised showing(showing_);
    const int column = dbgColumnas.currentRow();
    cboDato.Enabled = file_ && column >= 0;
    cboDato.setListIndex(cboDato.Enabled ? fieldOf(file_->form(), column) + 1 : -1);
}

void frmImportar::mostrarFilas() {
    const ImportCounts counts = preview_ ? preview_->counts() : ImportCounts{};
    if (counts.wrong == 0) {
        const Raised showing(showing_);
        chkErroneas.setValue(false);
    }
    dbgFilas.Caption.clear();
    if (preview_) {
        const std::vector<ImportRow>& rows = preview_->rows();
        std::vector<std::size_t> shown(rows.size());
        std::iota(shown.begin(), shown.end(), std::size_t{0});
        if (chkErroneas.Value())
            std::erase_if(shown, [&rows](std::size_t row) { return rows[row].verdict != Verdict::Wrong; });
        const int count = static_cast<int>(shown.size());
        const auto text = [preview = preview_, shown = std::move(shown)](int row, int column) {
            return textOf(preview->rows()[shown[static_cast<std::size_t>(row)]], column);
        };
        const auto moved = [this, text] {
            const int row = dbgFilas.currentRow();
            if (!showing_) tell(row < 0 ? "" : text(row, detailColumn));
        };
        const Raised showing(showing_);
        const char* key = file_->form().kind == ExchangeKind::Accounts ? "Cuenta" : "NIF";
        dbgFilas.bind(std::make_shared<TextRows>(
            std::vector<std::string>{"Línea", "Resultado", key, "Nombre", "Qué cambia, o por qué"}, count, text,
            moved));
        setWidths(dbgFilas, {900, 1200, 1600, 3600, 7000});
        dbgFilas.Columns.front().TextAlignment = Alignment::Right;
        dbgFilas.Caption = countsText(counts);
        if (const std::string unused = unusedText(file_->form()); !unused.empty())
            dbgFilas.Caption += ". No se usan: " + unused;
    }
    habilitar();
}

void frmImportar::habilitar() {
    const ImportCounts counts = preview_ ? preview_->counts() : ImportCounts{};
    const bool accounts = file_ && file_->form().kind == ExchangeKind::Accounts;
    for (Control* control :
         std::initializer_list<Control*>{&cboContiene, &cboCodificacion, &cboSeparador, &chkCabecera})
        control->Enabled = !path_.empty();
    chkFueraDelPlan.Enabled = accounts;
    chkErroneas.Enabled = cmdGuardar.Enabled = counts.wrong > 0;
    cmdImportar.Enabled = counts.added + counts.changed > 0;
}

// --- what a person says of the file

void frmImportar::cambiarForma(Control& at, bool keepsColumns) {
    if (!keepsColumns) choice_.columns.clear();
    if (const std::string failure = releer(); !failure.empty()) warn(failure, at);
}

void frmImportar::asignarColumna() {
    const int column = dbgColumnas.currentRow(), chosenField = cboDato.ListIndex() - 1;
    const ImportForm& form = file_->form();
    const auto fields = fieldsOf(form.kind);
    ColumnMap columns = form.columns;
    if (const int before = fieldOf(form, column); before >= 0)
        columns.set(fields[static_cast<std::size_t>(before)], ColumnMap::none);
    if (chosenField >= 0) columns.set(fields[static_cast<std::size_t>(chosenField)], column);
    kind_ = form.kind;
    choice_.header = form.header;
    choice_.columns = assignments(form.kind, columns);
    cambiarForma(cboDato, true);
}

// --- importing

void frmImportar::importar() {
    if (!file_->isUnchanged()) {
        warn("El fichero ha cambiado, o ya no está. No se ha escrito nada; se vuelve a leer.", dbgFilas);
        return leer();
    }
    const ImportCounts counts = preview_->counts();
    if (counts.wrong > 0 && !confirmInPlace("Hay " + wrongRows(counts.wrong) + ". ¿Quiere importar las demás?",
                                            message::Exclamation, sTituloVentana))
        return;
    if (!escribir()) return;
    // It is written, whatever becomes of the file.
    releer();
    tell(outcome(counts), StatusKind::Good);
    setFocus(cmdSalir);
}

bool frmImportar::escribir() {
    const ImportCounts counts = preview_->counts();
    std::string failure;
    bool outdated = false;
    try {
        saveWithPatience([&] {
            LongWork work(desktop(), barProgreso, lblEstado, "filas escritas", static_cast<int>(preview_->writes()));
            preview_->apply(instanciaActual().sesion(), counts.wrong > 0,
                            [&work](std::int64_t rows) { return work.reached(static_cast<int>(rows)); });
        });
        return true;
    } catch (const OutdatedPreview& error) {
        failure = error.what();
        outdated = true;
    } catch (const ErrorBd& error) {
        if (error.kind() == ErrorBd::Kind::Stopped) {
            tell(error.what(), StatusKind::Warning);
            return false;
        }
        // Of a server that is lost only its own sentence knows what has been kept.
        failure = (error.kind() == ErrorBd::Kind::Lost ? "" : "No se ha escrito nada. ") + std::string(error.what());
    } catch (const std::exception& error) {
        failure = std::string("No se ha escrito nada. ") + error.what();
    }
    warn(failure, cmdImportar);
    if (outdated) leer();
    return false;
}

void frmImportar::guardarErroneas() {
    const std::string proposal = std::filesystem::path(path_).stem().string() + " - erróneas.csv";
    const auto path = desktop().chooseSaveFile(proposal, "Fichero CSV (*.csv)");
    if (!path) return;
    try {
        writeWrongRows(*preview_, file_->form(), path_, *path);
    } catch (const std::exception& failure) {
        return warn(failure.what(), cmdGuardar);
    }
    tell("En " + std::filesystem::path(*path).filename().string() + ": " + wrongRows(preview_->counts().wrong) +
             ". Corrija el fichero e impórtelo.",
         StatusKind::Good);
}

}  // namespace FendaMaestros

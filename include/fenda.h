/// @file
/// The master data of a Spanish double-entry accounting application, for hosts in any language: libfendamaestros.so.1.
///
/// What holds for every function:
/// - It gives a fenda_status. When that is not FENDA_OK, fenda_last_error() has the sentence for a person, in Spanish,
///   and the engine's own code; results are left alone. No exception leaves the library, whatever a callback does.
/// - Texts are UTF-8 with a zero behind them, of FENDA_TEXT_LIMIT bytes at most; anything else is FENDA_BAD_ARGUMENT.
///   So is a null pointer where it is not said to be allowed. Texts taken are copied. Texts given out (`char**`) belong
///   to the caller, who gives them back with fenda_free(). A `const char*` or `const fenda_value*` that a callback
///   receives is the library's and lasts as long as the call.
/// - Handles are names of things in the library and are never followed as pointers: a null handle, one that has been
///   closed and one of another kind are FENDA_BAD_HANDLE. Closing what another handle still needs is FENDA_IN_USE and
///   closes nothing.
/// - The thread that makes the first handle is the library's thread until the last one is closed; calls of others are
///   FENDA_WRONG_THREAD and do nothing. What has no handle may be called on any thread at any time.
/// - Callbacks are called on the library's thread, during a call of the host's. The callbacks of a connection are asked
///   in the middle of a statement: there every function with a handle, but those that fill the rows, is FENDA_NESTED.
///   All others may call the library, open further screens included.
/// - A callback tells a failure by returning a status other than FENDA_OK, after fenda_fail() with the reason.
/// - A structure that begins with its size, to be set to `sizeof`, gets further members at its end in later versions.
///   The others never change.
#ifndef FENDA_H
#define FENDA_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#ifndef FENDA_API
#if defined(__GNUC__)
#define FENDA_API __attribute__((visibility("default")))
#else
#define FENDA_API
#endif
#endif

/// The version of this interface. A library serves hosts of its own major version and of its minor version or a lower
/// one.
#define FENDA_INTERFACE_MAJOR 1
#define FENDA_INTERFACE_MINOR 0

/// Bytes of the longest text that a function takes, the zero behind it not counted.
#define FENDA_TEXT_LIMIT 1048576

/// Bytes that hold any account code, the zero behind it counted.
#define FENDA_CODE_SIZE 32

/// Bytes that a callback may write a path into, the zero behind it counted.
#define FENDA_PATH_SIZE 4096

/// How a call has ended.
typedef enum fenda_status {
    FENDA_OK = 0,
    // Of the database. Callbacks of a connection use these.
    FENDA_BUSY = 1,            ///< another program holds the data; the same may work later
    FENDA_READ_ONLY = 2,       ///< no right to write
    FENDA_FULL = 3,            ///< no room left
    FENDA_NOT_A_DATABASE = 4,  ///< missing, damaged or no database at all
    FENDA_NEWER_VERSION = 5,   ///< made by a newer version of the program
    FENDA_CONSTRAINT = 6,      ///< the database does not allow the value, such as a repeated key
    FENDA_REFUSED = 7,         ///< a text that is not carried out
    FENDA_SQL = 8,             ///< a text that the engine does not understand
    FENDA_LOST = 9,            ///< the server cannot be reached, or not any more; a later attempt connects again
    FENDA_STOPPED = 10,        ///< whoever waited has had it stopped
    FENDA_OTHER = 11,          ///< anything else
    // Of the call.
    FENDA_BAD_ARGUMENT = 20,  ///< null, not UTF-8, too long or out of range
    FENDA_BAD_HANDLE = 21,    ///< null, closed or of another kind
    FENDA_WRONG_THREAD = 22,  ///< the handles belong to another thread
    FENDA_IN_USE = 23,        ///< something else still needs it
    FENDA_NESTED = 24,        ///< not from within a callback of a connection
    FENDA_NO_WINDOWS = 25,    ///< no display, or windows are not installed
    FENDA_CALLBACK = 26,      ///< a callback has failed, raised an exception or broken a rule
    FENDA_SCRIPT = 27,        ///< a line of a script cannot be understood or carried out
    FENDA_OUT_OF_MEMORY = 28,
    FENDA_NOT_BUILT = 29,           ///< the library was built without what this needs
    FENDA_STATUS_LAST = 0x7fffffff  ///< none: room for those to come
} fenda_status;

/// Where screens are shown.
typedef struct fenda_desktop fenda_desktop;
/// An open company.
typedef struct fenda_session fenda_session;
/// The object whose operations a host calls.
typedef struct fenda_object fenda_object;
/// A screen that is being shown; its handle ends with it.
typedef struct fenda_form fenda_form;
/// Rows of a read: filled by a callback, or to be looked at.
typedef struct fenda_rows fenda_rows;

typedef enum fenda_type { FENDA_NULL = 0, FENDA_INTEGER = 1, FENDA_REAL = 2, FENDA_TEXT = 3 } fenda_type;

/// A value of a row or of a parameter. Only the member of its type counts.
typedef struct fenda_value {
    int32_t type;  ///< fenda_type
    int64_t integer;
    double real;
    const char* text;  ///< with a zero behind it
    size_t length;     ///< bytes of the text, the zero not counted
} fenda_value;

// --- What needs no handle

/// The version of the library, "1.0.0". The text is the library's and lasts as long as it is loaded. Not a status.
FENDA_API const char* fenda_version(void);

/// The version of the interface that the library has. Not a status.
/// @param[out] major  may be null
/// @param[out] minor  may be null
FENDA_API void fenda_interface_version(int32_t* major, int32_t* minor);

/// What the last call that failed on this thread has to say. The texts are the library's and last until the next call
/// on this thread that fails, or until the thread ends; they are "" when there is nothing to tell, and cut at 1,000
/// bytes.
/// @param[out] text         a sentence for a person, in Spanish; may be null
/// @param[out] native_code  the engine's code, 0 when the error is none of an engine; may be null
/// @param[out] native_text  the engine's own words; may be null
FENDA_API fenda_status fenda_last_error(const char** text, int32_t* native_code, const char** native_text);

/// For a callback that is about to return a failure: why, on this thread. Replaces what was told before.
/// @param text         a sentence for a person, in Spanish
/// @param native_code  the engine's code, or 0
/// @param native_text  the engine's own words; null for none
FENDA_API fenda_status fenda_fail(const char* text, int32_t native_code, const char* native_text);

/// Gives a text back that the library has given out. Null is allowed. Not a status.
FENDA_API void fenda_free(char* text);

/// Takes a text; called once for each.
typedef void (*fenda_text_sink)(void* context, const char* text);

/// Tells the names of the companies in a data folder, in Spanish order; none for a folder that is not there yet.
FENDA_API fenda_status fenda_folder_companies(const char* folder, fenda_text_sink sink, void* context);

/// Makes the demonstration company, with invented data, in a data folder, which need not be there yet.
/// @param[out] company  its name; may be null
FENDA_API fenda_status fenda_folder_create_demonstration(const char* folder, char** company);

/// Makes a company without data of its own in a data folder, which need not be there yet.
/// @param fiscal_year     1900 to 2999
/// @param account_digits  of a sub-account's code, 4 to 15
/// @param province        1 to 52, or 99 for abroad
/// @param name_order      0: a person's name comes first; 1: the surnames
FENDA_API fenda_status fenda_folder_create_company(const char* folder, const char* company, int32_t fiscal_year,
                                                   int32_t account_digits, int32_t province, int32_t name_order);

// --- Sessions

/// Opens a company of a data folder.
/// @param company  null or "" opens the first one
FENDA_API fenda_status fenda_session_open_folder(const char* folder, const char* company, fenda_session** session);

/// Opens a company of a PostgreSQL server.
/// @param connection  of libpq, "host=servidor dbname=conta" or "postgresql://..."
/// @param company     null or "" opens the first one
FENDA_API fenda_status fenda_session_open_server(const char* connection, const char* company, fenda_session** session);

/// A host's own open connection to one company and the shared database. The tables of the company are named bare, those
/// of the shared one behind "KXComun.dbo." in any case. Texts come as the screens write them: the host brings them into
/// its engine's dialect (see also fenda_sql_for()). One statement at a time; every callback but `release` is needed.
///
/// What the screens rely on, and the host has to guarantee, whatever its engine:
/// - Texts compare and sort as in Spanish (fenda_compare_spanish()): case and blanks at the end do not count, accents
///   do; a null comes before every value.
/// - Identities rise: a row that is inserted without one gets an identity above those of all rows that have ever been
///   kept. Inside a transaction SELECT MAX(id) behind an insert is therefore the row just inserted; gaps may stay.
/// - What a transaction has read stays true until it ends: nobody else changes, deletes or adds what would alter that
///   read. Where two transactions cannot both be kept so, one of them fails with FENDA_BUSY, in a statement or in its
///   commit, and is to be rolled back.
/// - A transaction covers both databases and is kept whole or not at all, through a crash too. Outside of one, each
///   write is kept by itself. Readers see what is kept, and of their own transaction also what is not yet.
/// - A statement that fails changes nothing and leaves the transaction open.
/// - While a session is open on it, nobody else begins or ends transactions on this connection.
///
/// The library's part: what is no single read never reaches `execute`, nor what is no single INSERT, UPDATE or DELETE
/// `run`. Texts hold no zero bytes. Transactions that nest are numbered, and a commit without one never reaches the
/// host. An exception of C++ that a callback raises is caught and is a failure.
typedef struct fenda_connection {
    size_t size;    ///< sizeof(fenda_connection)
    void* context;  ///< handed to every callback
    /// Runs one text that reads and hands its rows back: first a fenda_rows_column() for each column, then the cells of
    /// each row one after the other. Rows without a column, or whose last one is not whole, are a failure. The handle
    /// ends with the call.
    fenda_status (*execute)(void* context, const char* sql, fenda_rows* rows);
    /// Runs one INSERT, UPDATE or DELETE, each "?" of which takes the parameter of its position. A text that goes into
    /// a column of numbers is stored as the number it spells. `touched` receives how many rows it has touched.
    fenda_status (*run)(void* context, const char* sql, const fenda_value* parameters, size_t count, int64_t* touched);
    /// Begins a transaction, `depth` 0, or one inside another (a savepoint), `depth` the number of those open.
    fenda_status (*begin)(void* context, int32_t depth);
    /// Keeps the innermost transaction, whose depth is given. One that fails keeps nothing, and is rolled back next.
    fenda_status (*commit)(void* context, int32_t depth);
    /// Undoes the innermost transaction, whose depth is given; the outer ones stay open.
    fenda_status (*rollback)(void* context, int32_t depth);
    /// The session is closed: nothing more will be asked. May be null. Not called when the session was not opened.
    void (*release)(void* context);
} fenda_connection;

/// A parameter of the company: `Par_Ejercicio` (fiscal year), `Par_CtaNum` (digits of a sub-account's code),
/// `Par_Provincia`, `Par_Nombre`, `PAR_ORCONTANOM` (0: a person's name comes first). Case does not matter.
typedef struct fenda_parameter {
    const char* name;
    const char* value;  ///< a whole number, or a text
} fenda_parameter;

/// Opens a session on a host's own connection. Nothing is asked of it yet. FENDA_REFUSED when a parameter is missing
/// that the screens need, FENDA_OTHER when one makes no sense.
/// @param connection  copied
/// @param parameters  `count` of them
/// @param folder      for files that belong to the company; null or "" for none
FENDA_API fenda_status fenda_session_open_connection(const fenda_connection* connection,
                                                     const fenda_parameter* parameters, size_t count,
                                                     const char* folder, fenda_session** session);

/// FENDA_IN_USE while an object has it as MyBd or MyBdorigen, and during its own calls.
FENDA_API fenda_status fenda_session_close(fenda_session* session);

/// Runs one text that reads, in the language of the screens.
/// @param[out] rows  to be closed with fenda_rows_close()
FENDA_API fenda_status fenda_session_read(fenda_session* session, const char* sql, fenda_rows** rows);

// --- Rows

/// Fill rows, in `execute` alone: the names of the columns first, then the cells of row after row. FENDA_STOPPED says
/// that no more rows are wanted: `execute` is to return, with any status. FENDA_BAD_ARGUMENT for a column behind the
/// first cell, a cell before the first column, and a text that is not UTF-8 or holds a zero byte; whatever `execute`
/// returns then, the read fails.
FENDA_API fenda_status fenda_rows_column(fenda_rows* rows, const char* name);
/// A cell without a value. See fenda_rows_column().
FENDA_API fenda_status fenda_rows_null(fenda_rows* rows);
/// A cell with a whole number. See fenda_rows_column().
FENDA_API fenda_status fenda_rows_integer(fenda_rows* rows, int64_t value);
/// A cell with a real number. See fenda_rows_column().
FENDA_API fenda_status fenda_rows_real(fenda_rows* rows, double value);
/// A cell with a text of `length` bytes, which needs no zero behind it. See fenda_rows_column().
FENDA_API fenda_status fenda_rows_text(fenda_rows* rows, const char* text, size_t length);

/// How many rows and columns there are. Rows that are being filled are FENDA_BAD_HANDLE, here and below.
/// @param[out] count    may be null
/// @param[out] columns  may be null
FENDA_API fenda_status fenda_rows_size(fenda_rows* rows, int32_t* count, int32_t* columns);
/// @param column  from 0
FENDA_API fenda_status fenda_rows_column_name(fenda_rows* rows, int32_t column, char** name);
/// @param row         from 0
/// @param column      from 0
/// @param[out] value  its text is the library's and lasts until the rows are closed
FENDA_API fenda_status fenda_rows_value(fenda_rows* rows, int32_t row, int32_t column, fenda_value* value);
/// Rows that a callback was given are FENDA_IN_USE: they end with the callback.
FENDA_API fenda_status fenda_rows_close(fenda_rows* rows);

// --- Desktops

/// Real windows, for the person at this machine. They need the library's windows to be installed, and a display: else
/// FENDA_NO_WINDOWS, and everything else goes on working. One at a time. A host that has an application object of the
/// same toolkit keeps it, and must be on its thread.
FENDA_API fenda_status fenda_desktop_windows(fenda_desktop** desktop);

/// A desktop on which a script works in a person's place: the text of a script as docs/guion.md describes it. Screens
/// that the host's calls show take their lines from it, one after the other; lines that open companies or make new
/// objects are refused, for that is the host's. FENDA_SCRIPT, with the line, when it cannot be understood.
///
/// When a line fails, the screens close, the host's call gives FENDA_SCRIPT, and so does every later one that shows
/// something.
/// @param windows  on real windows, for somebody to see; as fenda_desktop_windows()
FENDA_API fenda_status fenda_desktop_script(const char* script, bool windows, fenda_desktop** desktop);

/// Carries out the lines of a script that are left, as the program does: those that open screens call the operations of
/// this object, which must be on this desktop. Fails too when something prepared for a message was not used.
FENDA_API fenda_status fenda_script_run(fenda_desktop* desktop, fenda_object* object);

/// What a script has printed so far. FENDA_BAD_ARGUMENT for a desktop without a script.
FENDA_API fenda_status fenda_script_output(fenda_desktop* desktop, char** output);

/// The buttons of messages.
typedef enum fenda_button { FENDA_ACCEPT = 1, FENDA_YES = 6, FENDA_NO = 7 } fenda_button;

/// A host that works in a person's place on a desktop without display. When `attend`, `answer` or `save_file` fails,
/// the screens close and the call that has shown them gives FENDA_CALLBACK.
typedef struct fenda_desktop_callbacks {
    size_t size;    ///< sizeof(fenda_desktop_callbacks)
    void* context;  ///< handed to every callback
    /// A screen is shown and idle: make gestures on it until it is closed. When this returns, the screen is closed.
    /// Called once for each screen; those that open over it come while a gesture is under way.
    fenda_status (*attend)(void* context, fenda_form* form);
    /// A message. `style` adds up 4 (the buttons are Yes and No, else Accept alone), 16, 32, 48 or 64 (critical,
    /// question, warning, information) and 256 (No is the default). `button` receives the answer, a fenda_button that
    /// the message has; it holds 0, which leaves the message as Esc does.
    fenda_status (*answer)(void* context, const char* text, const char* title, int32_t style, int32_t* button);
    /// Where to save a file: `proposal` is a name without folder, `kind` as "Hoja de cálculo (*.xlsx)". The path goes
    /// into the FENDA_PATH_SIZE bytes at `path`; left as "" it saves nothing. May be null: nothing is ever saved.
    fenda_status (*save_file)(void* context, const char* proposal, const char* kind, char* path);
    /// Whether long work is to be given up, asked now and then. May be null: never.
    bool (*stop_asked)(void* context);
    /// The desktop is closed. May be null. Not called when the desktop was not made.
    void (*release)(void* context);
} fenda_desktop_callbacks;

/// @param callbacks  copied
FENDA_API fenda_status fenda_desktop_callbacks_open(const fenda_desktop_callbacks* callbacks, fenda_desktop** desktop);

/// FENDA_IN_USE while an object is on it.
FENDA_API fenda_status fenda_desktop_close(fenda_desktop* desktop);

// --- Screens, for the host that attends them

/// What a control is.
typedef enum fenda_kind {
    FENDA_LABEL = 1,
    FENDA_FRAME = 2,
    FENDA_TEXT_BOX = 3,
    FENDA_COMBO_BOX = 4,
    FENDA_COMMAND_BUTTON = 5,
    FENDA_CHECK_BOX = 6,
    FENDA_OPTION_BUTTON = 7,
    FENDA_GRID = 8,
    FENDA_LIST = 9,
    FENDA_PAGES = 10,
    FENDA_PROGRESS = 11
} fenda_kind;

/// A control as a person sees it.
typedef struct fenda_control {
    const char* name;  ///< "cmdGuardar", "Text1(0)"
    int32_t kind;      ///< fenda_kind
    const char* text;  ///< of a field or list what it holds, of a box or option "sí" or "no", else its caption
    bool enabled;      ///< itself and what holds it
    bool visible;      ///< itself and what holds it
    bool focused;      ///< it has the focus
} fenda_control;

/// Takes a control; called once for each.
typedef void (*fenda_control_sink)(void* context, const fenda_control* control);

/// The class of the screen, "frmCentros".
FENDA_API fenda_status fenda_form_name(fenda_form* form, char** name);
/// The title of its window.
FENDA_API fenda_status fenda_form_caption(fenda_form* form, char** caption);
/// Whether it is still shown. The handle stays good until `attend` returns.
FENDA_API fenda_status fenda_form_is_open(fenda_form* form, bool* open);
/// What its status line says, "" for nothing.
FENDA_API fenda_status fenda_form_status(fenda_form* form, char** text);
/// Tells every control in tab order, hidden ones too.
FENDA_API fenda_status fenda_form_controls(fenda_form* form, fenda_control_sink sink, void* context);
/// What a control shows, as fenda_control::text. Names of controls are compared without regard to case, here and below;
/// one that is not there, or of a kind that the gesture cannot be made on, is FENDA_BAD_ARGUMENT.
FENDA_API fenda_status fenda_form_text(fenda_form* form, const char* control, char** text);
/// How many rows and columns a grid or list has, hidden columns counted.
/// @param[out] rows     may be null
/// @param[out] columns  may be null
/// @param[out] current  the current row from 0, -1 for none; may be null
FENDA_API fenda_status fenda_form_table(fenda_form* form, const char* control, int32_t* rows, int32_t* columns,
                                        int32_t* current);
/// The text shown in a cell of a grid or list.
/// @param row     from 0; -1 is the heading
/// @param column  from 0
FENDA_API fenda_status fenda_form_cell(fenda_form* form, const char* control, int32_t row, int32_t column, char** text);
/// The items of a combo box, in order.
FENDA_API fenda_status fenda_form_items(fenda_form* form, const char* control, fenda_text_sink sink, void* context);

/// Gestures. Each does what a person's does, through all that a real one goes through, and returns when the screen is
/// idle again. On what is disabled or hidden nothing happens, as for a person; nor on a screen that is closed.
///
/// Types a text into what has the focus.
FENDA_API fenda_status fenda_form_type(fenda_form* form, const char* text);
/// Presses and releases a key. Letters and digits are their capital's ASCII code; 8 Backspace, 9 Tab, 13 Enter,
/// 27 Escape, 33 PageUp, 34 PageDown, 35 End, 36 Home, 37 to 40 left, up, right, down, 46 Delete, 112 to 123 F1 to F12.
/// @param shift  1 Shift, 2 Control, 4 Alt, added up
FENDA_API fenda_status fenda_form_key(fenda_form* form, int32_t code, int32_t shift);
/// Clicks on a button, box, option or field.
FENDA_API fenda_status fenda_form_click(fenda_form* form, const char* control);
/// Chooses an item of a combo box, from 0.
FENDA_API fenda_status fenda_form_choose(fenda_form* form, const char* control, int32_t item);
/// Clicks on a row of a grid or list, from 0.
FENDA_API fenda_status fenda_form_click_row(fenda_form* form, const char* control, int32_t row);
/// Clicks twice on a row of a grid or list, from 0.
FENDA_API fenda_status fenda_form_double_click_row(fenda_form* form, const char* control, int32_t row);
/// Clicks on a heading of a grid, from 0.
FENDA_API fenda_status fenda_form_click_header(fenda_form* form, const char* control, int32_t column);
/// Presses the button in a cell of a grid's current row, from 0.
FENDA_API fenda_status fenda_form_click_cell_button(fenda_form* form, const char* control, int32_t column);
/// The window's close box.
FENDA_API fenda_status fenda_form_close(fenda_form* form);

// --- The object

/// Components of the host that screens ask for. What is null is the library's own. A failure ends the screen,
/// and the operation gives FENDA_CALLBACK.
typedef struct fenda_components {
    size_t size;    ///< sizeof(fenda_components)
    void* context;  ///< handed to every callback
    /// "KXOFFICE.KOFFICE": exports a listing to a spreadsheet. `rows` are those of the listing in the columns that are
    /// shown, named by their captions; they end with the call.
    fenda_status (*grid_to_excel)(void* context, const char* title, fenda_rows* rows);
    /// "FENDAREPORTES.FendaRep": shows the layout `sInforme` ("PlanCuentas1", "PlanCuentasDpto", "PlanCuentasCentro",
    /// "PlanCuentasNif") over the rows of `sSQL`. `sAcotacion1` is the selection, for the heading; `svariables` 1 when
    /// balances are wanted.
    fenda_status (*show_report)(void* context, fenda_session* session, const char* sInforme, const char* sSQL,
                                const char* sAcotacion1, int16_t svariables);
    /// "FENDA.FENDATA": the host's own search of accounts, `mode` 1 by code and 2 by name. `id` receives the one
    /// chosen, and holds 0 for none.
    fenda_status (*search_accounts)(void* context, fenda_session* session, int16_t mode, bool bTodas, int32_t* id);
    /// The object is closed. May be null. Not called when the object was not made.
    void (*release)(void* context);
} fenda_components;

/// Makes an object without a session. Several may live at once: an operation works with the object that it is called
/// on.
/// @param components  copied; null for the library's own
FENDA_API fenda_status fenda_object_new(fenda_desktop* desktop, const fenda_components* components,
                                        fenda_object** object);
/// FENDA_IN_USE during one of its operations.
FENDA_API fenda_status fenda_object_close(fenda_object* object);

/// Account code handed back by the creation of an account.
FENDA_API fenda_status fenda_get_Cuenta(fenda_object* object, char** Cuenta);
/// See fenda_get_Cuenta().
FENDA_API fenda_status fenda_set_Cuenta(fenda_object* object, const char* Cuenta);
/// Whether the host is invoicing.
FENDA_API fenda_status fenda_get_bFactu(fenda_object* object, bool* bFactu);
/// See fenda_get_bFactu().
FENDA_API fenda_status fenda_set_bFactu(fenda_object* object, bool bFactu);
/// The plan in force, 2008 or 1990; 0 while it is not known.
FENDA_API fenda_status fenda_get_Plan(fenda_object* object, int16_t* Plan);
/// See fenda_get_Plan().
FENDA_API fenda_status fenda_set_Plan(fenda_object* object, int16_t Plan);
/// A second session, needed only where accounts are saved; may be the same as MyBd. Null while there is none.
FENDA_API fenda_status fenda_get_MyBdorigen(fenda_object* object, fenda_session** MyBdorigen);
/// See fenda_get_MyBdorigen(). Null takes it away. FENDA_IN_USE during an operation of the object.
FENDA_API fenda_status fenda_set_MyBdorigen(fenda_object* object, fenda_session* MyBdorigen);
/// The session of every screen, to be set before any operation that reads or shows something. Null while there is none.
FENDA_API fenda_status fenda_get_MyBd(fenda_object* object, fenda_session** MyBd);
/// See fenda_get_MyBd(). Null takes it away. FENDA_IN_USE during an operation of the object.
FENDA_API fenda_status fenda_set_MyBd(fenda_object* object, fenda_session* MyBd);

// Operations. One that shows a screen returns when the screen is closed, and fails with what a screen could not handle
// itself.

/// Countries.
FENDA_API fenda_status fenda_jPaises(fenda_object* object);
/// Concepts of journal entries.
FENDA_API fenda_status fenda_jConceptos(fenda_object* object);
/// Departments.
FENDA_API fenda_status fenda_jDepartamentos(fenda_object* object);
/// Centres.
FENDA_API fenda_status fenda_jCentros(fenda_object* object);
/// Balance masses.
FENDA_API fenda_status fenda_jMasas(fenda_object* object);
/// The sub-accounts, on the account with this PCta_Id if it is not 0.
FENDA_API fenda_status fenda_jPlanCuentas(fenda_object* object, int32_t nIdCuenta);
/// Lets a person create a sub-account, linked to the tax identity `nIdNif` if that is not 0.
/// @param sCta         the code; with `bCalcula` what the next free code begins with, which is then written into it
/// @param size         bytes at `sCta`; with `bCalcula`, at least FENDA_CODE_SIZE
/// @param[out] Cuenta  the code saved, or the one that turned out to exist; left without either, the property's value;
///                     may be null
FENDA_API fenda_status fenda_CrearNuevaCuenta(fenda_object* object, char* sCta, size_t size, int32_t nIdNif,
                                              bool bCalcula, char** Cuenta);
/// The chart of accounts as a listing.
FENDA_API fenda_status fenda_jshowInformePlandeCuentas(fenda_object* object);
/// The accounts of the official plan.
FENDA_API fenda_status fenda_jshowPGCMantenimiento(fenda_object* object);
/// The checks of the chart of accounts.
FENDA_API fenda_status fenda_jshowPGCVerificacion(fenda_object* object);
/// Whether a code hangs from an account of the official plan of the year `nEjercicio`, or a person wants it all the
/// same, who is asked with `bPreguntar`.
FENDA_API fenda_status fenda_msValidaCuentaPlan(fenda_object* object, const char* sCuenta, int16_t nEjercicio,
                                                bool bPreguntar, bool* valid);
/// Lets a person pick an account.
/// @param n             1 by code, otherwise by name
/// @param bPGC          of the official plan
/// @param bSoloActivas  only those in use
/// @param[out] id       its PCta_Id, 0 for none
FENDA_API fenda_status fenda_fnBuscarCuentas(fenda_object* object, int16_t n, bool bPGC, bool bSoloActivas,
                                             int32_t* id);
/// Lets a person pick a concept.
/// @param n             1 by code, otherwise by name
/// @param[out] id  its Conce_Id, 0 for none
FENDA_API fenda_status fenda_fnBuscarConceptos(fenda_object* object, int16_t n, int32_t* id);
/// The register of tax identities. With a document that is not blank it opens on its entry, or on a new one with that
/// document, and closes after the first save.
/// @param sNif  null for none
FENDA_API fenda_status fenda_jNif(fenda_object* object, const char* sNif);
/// Gives what a list of withholding keys, or of the sub-keys of one key, is filled with, in order.
/// @param s             "-" for the keys, or the letter of the key whose sub-keys are wanted
/// @param n             the fiscal year
/// @param bConsulta     names the first of the keys as a filter does
/// @param sink          called with each item, in order
/// @param context       handed to `sink`
/// @param[out] chosen   the item chosen, from 0, or -1: then the list is empty, and to be disabled; may be null
FENDA_API fenda_status fenda_jCargaClavesRetencion(fenda_object* object, const char* s, int16_t n, bool bConsulta,
                                                   fenda_text_sink sink, void* context, int32_t* chosen);
/// The check letter of a personal tax number given as seven or more digits.
/// @param[out] letter   "" when there is none to compute
/// @param[out] mensaje  then the reason, else ""; may be null
FENDA_API fenda_status fenda_Calcula_letra_NIF(fenda_object* object, const char* valor, char** letter, char** mensaje);
/// The town registered for a country and a postal code, "" when none is.
FENDA_API fenda_status fenda_FnBuscaPoblacion(fenda_object* object, const char* PAIS, const char* Cpostal, char** town);
/// Whether a tax identifier is well formed. With `bDatos`, one that is registered as N.I.E. is accepted as it is.
/// @param sValor      rewritten in its normal form, which is never longer
/// @param[out] valid  the verdict
FENDA_API fenda_status fenda_FnVerificarCif(fenda_object* object, char* sValor, bool bDatos, bool* valid);

// --- For hosts whose engine does not speak the screens' language

/// Engines that the library can put texts for.
typedef enum fenda_dialect { FENDA_SQLITE = 1, FENDA_POSTGRESQL = 2 } fenda_dialect;

/// Puts a text of the screens, as `execute` or `run` receives it, for an engine; FENDA_REFUSED for what cannot be put.
///
/// FENDA_SQLITE: literals and "?" stay where they are. The connection has the shared database attached as KXComun, and
/// must know the collation ES (fenda_compare_spanish()), the functions len(1), year(1) and like(2) and like(3)
/// (fenda_spanish_length(), fenda_spanish_year(), fenda_spanish_like()), the aggregates sum(1) and avg(1), exact to
/// 1/10000 (whole numbers give a whole number, no value at all gives null), and "->"(2) as a function: it joins two
/// texts, gives null when one of them is, and fails when one is a number.
///
/// FENDA_POSTGRESQL: literals stay, parameters are $1, $2 ... It needs a database that `fenda servidor` has prepared.
FENDA_API fenda_status fenda_sql_for(int32_t dialect, const char* text, char** sql);

/// The statements that make the empty tables of a company, or of the shared database, parted by semicolons. Only
/// FENDA_SQLITE, where the tables are made under the attached name `schema`, "main" or "KXComun".
/// @param shared  false for a company, true for the shared database
FENDA_API fenda_status fenda_schema_for(int32_t dialect, const char* schema, bool shared, char** sql);

/// Compares two texts as in Spanish: case and blanks at the end do not count, accents do, ñ comes behind n.
/// @param[out] order  negative, 0 or positive
FENDA_API fenda_status fenda_compare_spanish(const char* a, const char* b, int32_t* order);

/// Whether a text is like a pattern: % stands for anything, _ for one character, case does not matter.
/// @param escape        the character that takes the meaning away from the one behind it; null for none
/// @param[out] matches  the verdict
FENDA_API fenda_status fenda_spanish_like(const char* pattern, const char* text, const char* escape, bool* matches);

/// How many characters a text has, blanks at the end not counted.
FENDA_API fenda_status fenda_spanish_length(const char* text, int64_t* characters);

/// The year of a date written year-month-day or day/month/year, 0 for anything else.
FENDA_API fenda_status fenda_spanish_year(const char* date, int32_t* year);

#ifdef __cplusplus
}
#endif

#endif

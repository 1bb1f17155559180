"""Where screens are shown: windows, a script, or a person whom the host plays."""

from __future__ import annotations

import abc
import enum
import weakref
from ctypes import byref, c_bool, c_int32, memmove, sizeof
from typing import TYPE_CHECKING, Any, Callable, List, NamedTuple, Optional

from ._library import (
    PATH_SIZE, CDesktopCallbacks, ControlSink, Handle, Library, TextSink,
    encoded, field_type, integer, library,
)  # fmt: skip
from .errors import BadArgument, Status

if TYPE_CHECKING:
    from .component import FendaMaes


class Answer(enum.IntEnum):
    """A button of a message."""

    ACCEPT = 1
    YES = 6
    NO = 7


class Message(NamedTuple):
    """A message over the screens."""

    text: str
    title: str
    #: 4 (the buttons are Yes and No, else Accept alone), 16, 32, 48 or 64 (critical, question, warning, information) and
    #: 256 (No is the default), added up
    style: int

    @property
    def is_question(self) -> bool:
        """Whether it takes Yes or No."""
        return self.style & 15 == 4


class Kind(enum.IntEnum):
    """What a control is."""

    LABEL = 1
    FRAME = 2
    TEXT_BOX = 3
    COMBO_BOX = 4
    COMMAND_BUTTON = 5
    CHECK_BOX = 6
    OPTION_BUTTON = 7
    GRID = 8
    LIST = 9
    PAGES = 10
    PROGRESS = 11


class Control(NamedTuple):
    """A control as a person sees it."""

    #: "cmdGuardar", "Text1(0)"
    name: str
    #: A `Kind`, or the number of one that a later library has added.
    kind: int
    #: Of a field or list what it holds, of a box or option "sí" or "no", else its caption.
    text: str
    enabled: bool
    visible: bool
    focused: bool


class TableSize(NamedTuple):
    """How much a grid or list holds."""

    rows: int
    #: Hidden ones counted.
    columns: int
    #: The current row from 0, None without one.
    current: Optional[int]


class Form:
    """A screen that is being shown: what a person sees on it, and a person's gestures, each of which returns when the
    screen is idle again. What is disabled or hidden takes none, nor does a screen that is closed. Names of controls are
    compared without regard to case. Good until `Person.attend` returns."""

    def __init__(self, library: Library, handle: int) -> None:
        self._library = library
        self._as_parameter_ = handle

    @property
    def name(self) -> str:
        """The class of the screen, "frmCentros"."""
        return self._library.text(self._library.form_name, self)

    @property
    def caption(self) -> str:
        """The title of its window."""
        return self._library.text(self._library.form_caption, self)

    @property
    def is_open(self) -> bool:
        open_ = c_bool()
        self._library.call(self._library.form_is_open, self, byref(open_))
        return open_.value

    @property
    def status(self) -> str:
        """What its status line says, "" for nothing."""
        return self._library.text(self._library.form_status, self)

    def controls(self) -> List[Control]:
        """Every control in tab order, hidden ones too."""
        found: List[Control] = []

        def take(_: Any, control: Any) -> None:
            seen = control[0]
            found.append(
                Control(seen.name.decode(), seen.kind, seen.text.decode(), seen.enabled, seen.visible, seen.focused)
            )

        self._library.call(self._library.form_controls, self, ControlSink(take), None)
        return found

    def text(self, control: str) -> str:
        """What a control shows, as `Control.text`."""
        return self._library.text(self._library.form_text, self, encoded(control))

    def table(self, control: str) -> TableSize:
        rows, columns, current = c_int32(), c_int32(), c_int32()
        self._library.call(
            self._library.form_table, self, encoded(control), byref(rows), byref(columns), byref(current)
        )
        return TableSize(rows.value, columns.value, current.value if current.value >= 0 else None)

    def cell(self, control: str, row: int, column: int) -> str:
        """The text shown in a cell of a grid or list, counted from 0; row -1 is the heading."""
        return self._library.text(self._library.form_cell, self, encoded(control), integer(row), integer(column))

    def items(self, control: str) -> List[str]:
        """The items of a combo box, in order."""
        found: List[str] = []
        sink = TextSink(lambda _, text: found.append(text.decode()))
        self._library.call(self._library.form_items, self, encoded(control), sink, None)
        return found

    def type(self, text: str) -> None:
        """Types a text into what has the focus."""
        self._library.call(self._library.form_type, self, encoded(text))

    def key(self, code: int, shift: int = 0) -> None:
        """Presses and releases a key: letters and digits are their capital's ASCII code, 9 Tab, 13 Enter, 27 Escape, 33
        to 40 PageUp, PageDown, End, Home, left, up, right, down, 46 Delete, 112 to 123 F1 to F12.

        :param shift: 1 Shift, 2 Control, 4 Alt, added up
        """
        self._library.call(self._library.form_key, self, integer(code), integer(shift))

    def click(self, control: str) -> None:
        """On a button, box, option or field."""
        self._library.call(self._library.form_click, self, encoded(control))

    def choose(self, control: str, item: int) -> None:
        """An item of a combo box, from 0."""
        self._on_place(self._library.form_choose, control, item)

    def click_row(self, control: str, row: int) -> None:
        """Of a grid or list, from 0."""
        self._on_place(self._library.form_click_row, control, row)

    def double_click_row(self, control: str, row: int) -> None:
        """Of a grid or list, from 0."""
        self._on_place(self._library.form_double_click_row, control, row)

    def click_header(self, control: str, column: int) -> None:
        """Of a grid, from 0."""
        self._on_place(self._library.form_click_header, control, column)

    def click_cell_button(self, control: str, column: int) -> None:
        """The button in a cell of a grid's current row, from 0."""
        self._on_place(self._library.form_click_cell_button, control, column)

    def close(self) -> None:
        """The window's close box."""
        self._library.call(self._library.form_close, self)

    def _on_place(self, gesture: Callable[..., int], control: str, place: int) -> None:
        self._library.call(gesture, self, encoded(control), integer(place))


class Person(abc.ABC):
    """Who works in a person's place, on a desktop without display. An exception closes the screens, and is the cause of
    what the call raises that has shown them."""

    @abc.abstractmethod
    def attend(self, form: Form) -> None:
        """A screen is shown and idle: make gestures on it until it is closed. When this returns, it is closed. Called
        once for each screen; those that open over it come while a gesture is under way."""

    @abc.abstractmethod
    def answer(self, message: Message) -> Optional[Answer]:
        """The button pressed, one that the message has; None leaves it."""

    def save_file(self, proposal: str, kind: str) -> Optional[str]:
        """Where to save a file; None saves nothing.

        :param proposal: a name without folder
        :param kind: as "Hoja de cálculo (*.xlsx)"
        """
        return None

    def stop_asked(self) -> bool:
        """Whether long work is to be given up, asked now and then."""
        return False


class Desktop(Handle):
    """Where screens are shown. Closing it while an object is on it raises `InUse`."""

    _person: Optional[Person] = None

    def __init__(self, library: Library, handle: int, tables: Any = None) -> None:
        super().__init__(library, handle, library.desktop_close, tables)

    @staticmethod
    def windows() -> Desktop:
        """Real windows, one such desktop at a time. Raises `NoWindows` without a display, and where the library's windows
        are not installed; everything else goes on working."""
        lib = library()
        return Desktop(lib, lib.opened(lib.desktop_windows))

    @staticmethod
    def script(text: str, windows: bool = False) -> ScriptDesktop:
        """A script works in a person's place (`docs/guion.md`): screens that the host's calls show take their lines from
        it, one after the other. When one fails, the call raises `ScriptFailed`, and so does every later one that shows
        something.

        :param windows: on real windows, for somebody to see
        """
        lib = library()
        return ScriptDesktop(lib, lib.opened(lib.desktop_script, encoded(text), windows))

    @staticmethod
    def callbacks(person: Person) -> Desktop:
        """Without display: `person` works on the screens."""
        lib = library()
        table = _person_table(lib, weakref.ref(person))
        desktop = Desktop(lib, lib.opened(lib.desktop_callbacks_open, byref(table)), table)
        desktop._person = person
        return desktop


class ScriptDesktop(Desktop):
    """A desktop on which a script works in a person's place."""

    def run(self, fenda: FendaMaes) -> None:
        """Carries out the lines that are left, as the program does: those that open screens call the operations of this
        object, which must be on this desktop."""
        self._library.call(self._library.script_run, self, fenda)

    @property
    def output(self) -> str:
        """What the script has printed so far."""
        return self._library.text(self._library.script_output, self)


def _person_table(lib: Library, host: Callable[[], Optional[Person]]) -> CDesktopCallbacks:
    """The structure `fenda_desktop_callbacks` for a person, to whom it refers weakly."""

    def alive() -> Person:
        person = host()
        if person is None:
            raise ReferenceError("Quien atiende las pantallas ya no existe.")
        return person

    def attend(_: Any, form: int) -> int:
        return lib.callback(lambda: alive().attend(Form(lib, form)))

    def answer(_: Any, text: bytes, title: bytes, style: int, button: Any) -> int:
        def work() -> None:
            chosen = alive().answer(Message(text.decode(), title.decode(), style))
            if chosen is not None:
                button[0] = int(chosen)

        return lib.callback(work)

    def save_file(_: Any, proposal: bytes, kind: bytes, path: int) -> int:
        def work() -> None:
            chosen = encoded(alive().save_file(proposal.decode(), kind.decode()) or "") + b"\0"
            if len(chosen) > PATH_SIZE:
                raise BadArgument("El nombre del fichero es demasiado largo.")
            memmove(path, chosen, len(chosen))

        return lib.callback(work)

    def stop_asked(_: Any) -> bool:
        wanted = False

        def work() -> None:
            nonlocal wanted
            wanted = alive().stop_asked()

        return lib.callback(work, always=True) != Status.OK or wanted

    table = CDesktopCallbacks(size=sizeof(CDesktopCallbacks))
    for callback in (attend, answer, save_file, stop_asked):
        setattr(table, callback.__name__, field_type(CDesktopCallbacks, callback.__name__)(callback))
    return table

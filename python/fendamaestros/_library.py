"""The C interface through ctypes: the library found, its functions declared, how a call ends turned into exceptions."""

from __future__ import annotations

import collections
import contextlib
import ctypes
import ctypes.util
import functools
import os
import signal
import sys
import sysconfig
import threading
import weakref
from ctypes import CFUNCTYPE, POINTER, byref, c_bool, c_char_p, c_double, c_int16, c_int32, c_int64, c_size_t, c_void_p
from pathlib import Path
from types import FrameType, TracebackType
from typing import Any, Callable, Deque, Iterator, Optional, Type, TypeVar, Union

from .errors import BadArgument, DatabaseError, FendaError, LibraryMissing, Status, error_class

MAJOR, MINOR = 1, 0
CODE_SIZE = 32
PATH_SIZE = 4096
# The library cuts what a callback tells at 1,000 bytes; a text that is shorter comes back as it was.
REASON_LENGTH = 240

Value = Union[None, int, float, str]
Self = TypeVar("Self", bound="Handle")

# --- Structures and callbacks, as fenda.h declares them


class CValue(ctypes.Structure):
    _fields_ = [("type", c_int32), ("integer", c_int64), ("real", c_double), ("text", c_char_p), ("length", c_size_t)]

    def value(self) -> Value:
        if self.type == 1:
            return int(self.integer)
        if self.type == 2:
            return float(self.real)
        return self.text.decode() if self.type == 3 else None


class CParameter(ctypes.Structure):
    _fields_ = [("name", c_char_p), ("value", c_char_p)]


class CControl(ctypes.Structure):
    _fields_ = [
        ("name", c_char_p), ("kind", c_int32), ("text", c_char_p),
        ("enabled", c_bool), ("visible", c_bool), ("focused", c_bool),
    ]  # fmt: skip


Release = CFUNCTYPE(None, c_void_p)
TextSink = CFUNCTYPE(None, c_void_p, c_char_p)
ControlSink = CFUNCTYPE(None, c_void_p, POINTER(CControl))


class CConnection(ctypes.Structure):
    _fields_ = [
        ("size", c_size_t),
        ("context", c_void_p),
        ("execute", CFUNCTYPE(c_int32, c_void_p, c_char_p, c_void_p)),
        ("run", CFUNCTYPE(c_int32, c_void_p, c_char_p, POINTER(CValue), c_size_t, POINTER(c_int64))),
        ("begin", CFUNCTYPE(c_int32, c_void_p, c_int32)),
        ("commit", CFUNCTYPE(c_int32, c_void_p, c_int32)),
        ("rollback", CFUNCTYPE(c_int32, c_void_p, c_int32)),
        ("release", Release),
    ]


class CDesktopCallbacks(ctypes.Structure):
    _fields_ = [
        ("size", c_size_t),
        ("context", c_void_p),
        ("attend", CFUNCTYPE(c_int32, c_void_p, c_void_p)),
        ("answer", CFUNCTYPE(c_int32, c_void_p, c_char_p, c_char_p, c_int32, POINTER(c_int32))),
        ("save_file", CFUNCTYPE(c_int32, c_void_p, c_char_p, c_char_p, c_void_p)),
        ("stop_asked", CFUNCTYPE(c_bool, c_void_p)),
        ("release", Release),
    ]


class CComponents(ctypes.Structure):
    _fields_ = [
        ("size", c_size_t),
        ("context", c_void_p),
        ("grid_to_excel", CFUNCTYPE(c_int32, c_void_p, c_char_p, c_void_p)),
        ("show_report", CFUNCTYPE(c_int32, c_void_p, c_void_p, c_char_p, c_char_p, c_char_p, c_int16)),
        ("search_accounts", CFUNCTYPE(c_int32, c_void_p, c_void_p, c_int16, c_bool, POINTER(c_int32))),
        ("release", Release),
    ]


def field_type(structure: Type[ctypes.Structure], name: str) -> Any:
    """The type of a callback of a structure."""
    return next(field[1] for field in structure._fields_ if field[0] == name)


_HANDLE = _OUT_HANDLE = c_void_p
_TEXT = c_char_p
_OUT_TEXT = POINTER(c_char_p)
_OUT_INT = POINTER(c_int32)
_OUT_BOOL = POINTER(c_bool)

#: The arguments of every function that gives a status.
_FUNCTIONS: dict[str, list[Any]] = {
    "last_error": [_OUT_TEXT, _OUT_INT, _OUT_TEXT],
    "fail": [_TEXT, c_int32, _TEXT],
    "folder_companies": [_TEXT, TextSink, c_void_p],
    "folder_create_demonstration": [_TEXT, _OUT_TEXT],
    "folder_create_company": [_TEXT, _TEXT, c_int32, c_int32, c_int32, c_int32],
    "session_open_folder": [_TEXT, _TEXT, _OUT_HANDLE],
    "session_open_server": [_TEXT, _TEXT, _OUT_HANDLE],
    "session_open_connection": [POINTER(CConnection), POINTER(CParameter), c_size_t, _TEXT, _OUT_HANDLE],
    "session_close": [_HANDLE],
    "session_read": [_HANDLE, _TEXT, _OUT_HANDLE],
    "rows_column": [_HANDLE, _TEXT],
    "rows_null": [_HANDLE],
    "rows_integer": [_HANDLE, c_int64],
    "rows_real": [_HANDLE, c_double],
    "rows_text": [_HANDLE, _TEXT, c_size_t],
    "rows_size": [_HANDLE, _OUT_INT, _OUT_INT],
    "rows_column_name": [_HANDLE, c_int32, _OUT_TEXT],
    "rows_value": [_HANDLE, c_int32, c_int32, POINTER(CValue)],
    "rows_close": [_HANDLE],
    "desktop_windows": [_OUT_HANDLE],
    "desktop_script": [_TEXT, c_bool, _OUT_HANDLE],
    "desktop_callbacks_open": [POINTER(CDesktopCallbacks), _OUT_HANDLE],
    "desktop_close": [_HANDLE],
    "script_run": [_HANDLE, _HANDLE],
    "script_output": [_HANDLE, _OUT_TEXT],
    "form_name": [_HANDLE, _OUT_TEXT],
    "form_caption": [_HANDLE, _OUT_TEXT],
    "form_is_open": [_HANDLE, _OUT_BOOL],
    "form_status": [_HANDLE, _OUT_TEXT],
    "form_controls": [_HANDLE, ControlSink, c_void_p],
    "form_text": [_HANDLE, _TEXT, _OUT_TEXT],
    "form_table": [_HANDLE, _TEXT, _OUT_INT, _OUT_INT, _OUT_INT],
    "form_cell": [_HANDLE, _TEXT, c_int32, c_int32, _OUT_TEXT],
    "form_items": [_HANDLE, _TEXT, TextSink, c_void_p],
    "form_type": [_HANDLE, _TEXT],
    "form_key": [_HANDLE, c_int32, c_int32],
    "form_click": [_HANDLE, _TEXT],
    "form_choose": [_HANDLE, _TEXT, c_int32],
    "form_click_row": [_HANDLE, _TEXT, c_int32],
    "form_double_click_row": [_HANDLE, _TEXT, c_int32],
    "form_click_header": [_HANDLE, _TEXT, c_int32],
    "form_click_cell_button": [_HANDLE, _TEXT, c_int32],
    "form_close": [_HANDLE],
    "object_new": [_HANDLE, POINTER(CComponents), _OUT_HANDLE],
    "object_close": [_HANDLE],
    "get_Cuenta": [_HANDLE, _OUT_TEXT],
    "set_Cuenta": [_HANDLE, _TEXT],
    "get_bFactu": [_HANDLE, _OUT_BOOL],
    "set_bFactu": [_HANDLE, c_bool],
    "get_Plan": [_HANDLE, POINTER(c_int16)],
    "set_Plan": [_HANDLE, c_int16],
    "get_MyBdorigen": [_HANDLE, _OUT_HANDLE],
    "set_MyBdorigen": [_HANDLE, _HANDLE],
    "get_MyBd": [_HANDLE, _OUT_HANDLE],
    "set_MyBd": [_HANDLE, _HANDLE],
    "jPaises": [_HANDLE],
    "jConceptos": [_HANDLE],
    "jDepartamentos": [_HANDLE],
    "jCentros": [_HANDLE],
    "jMasas": [_HANDLE],
    "jPlanCuentas": [_HANDLE, c_int32],
    "CrearNuevaCuenta": [_HANDLE, c_char_p, c_size_t, c_int32, c_bool, _OUT_TEXT],
    "jshowInformePlandeCuentas": [_HANDLE],
    "jshowPGCMantenimiento": [_HANDLE],
    "jshowPGCVerificacion": [_HANDLE],
    "msValidaCuentaPlan": [_HANDLE, _TEXT, c_int16, c_bool, _OUT_BOOL],
    "fnBuscarCuentas": [_HANDLE, c_int16, c_bool, c_bool, _OUT_INT],
    "fnBuscarConceptos": [_HANDLE, c_int16, _OUT_INT],
    "jNif": [_HANDLE, _TEXT],
    "jCargaClavesRetencion": [_HANDLE, _TEXT, c_int16, c_bool, TextSink, c_void_p, _OUT_INT],
    "Calcula_letra_NIF": [_HANDLE, _TEXT, _OUT_TEXT, _OUT_TEXT],
    "FnBuscaPoblacion": [_HANDLE, _TEXT, _TEXT, _OUT_TEXT],
    "FnVerificarCif": [_HANDLE, c_char_p, c_bool, _OUT_BOOL],
    "sql_for": [c_int32, _TEXT, _OUT_TEXT],
    "schema_for": [c_int32, _TEXT, c_bool, _OUT_TEXT],
    "compare_spanish": [_TEXT, _TEXT, _OUT_INT],
    "spanish_like": [_TEXT, _TEXT, _TEXT, _OUT_BOOL],
    "spanish_length": [_TEXT, POINTER(c_int64)],
    "spanish_year": [_TEXT, _OUT_INT],
}

# --- Arguments: ctypes cuts texts at a null character, and numbers that do not fit, without a word


def encoded(text: Union[str, os.PathLike[str]]) -> bytes:
    text = os.fspath(text)
    if "\0" in text:
        raise BadArgument("Un texto no puede llevar un carácter nulo.")
    try:
        return text.encode()
    except UnicodeEncodeError as error:
        raise BadArgument("Un texto tiene un carácter que no existe.") from error


def optional(text: Union[None, str, os.PathLike[str]]) -> Optional[bytes]:
    return None if text is None else encoded(text)


def integer(value: int, bits: int = 32) -> int:
    if not -(1 << bits - 1) <= value < 1 << bits - 1:
        raise BadArgument(f"El número {value} no cabe en {bits} bits.")
    return value


# --- Calls


class _Call:
    """A call of the library that is under way, and what the host's callbacks have raised in it."""

    def __init__(self) -> None:
        self.raised: Optional[BaseException] = None
        #: To be raised whatever the call gives.
        self.to_raise: Optional[BaseException] = None


class _Calls(threading.local):
    def __init__(self) -> None:
        self.stack: list[_Call] = []


class _Interrupts:
    """Ctrl+C while the library is at work. Python would raise it at the entry of the next callback, where nothing can
    catch it and it would be lost; so it waits for the callback's own code, or for the end of the call."""

    def __init__(self) -> None:
        #: Callbacks of the host can be called.
        self.callbacks = 0
        self._guarding = False
        self._in_host = 0
        self._waiting = False

    def _on_signal(self, number: int, frame: Optional[FrameType]) -> None:
        if self._in_host:
            signal.default_int_handler(number, frame)
        self._waiting = True

    @contextlib.contextmanager
    def guard(self) -> Iterator[None]:
        """Around a call of the library."""
        if self._guarding:
            was, self._in_host = self._in_host, 0
            try:
                yield
            finally:
                self._in_host = was
            self.raise_waiting()
            return
        main = threading.current_thread() is threading.main_thread()
        if not self.callbacks or not main or signal.getsignal(signal.SIGINT) is not signal.default_int_handler:
            yield
            return
        self._guarding, self._waiting, self._in_host = True, False, 0
        signal.signal(signal.SIGINT, self._on_signal)
        try:
            yield
        finally:
            self._guarding = False
            signal.signal(signal.SIGINT, signal.default_int_handler)
        self.raise_waiting()

    @contextlib.contextmanager
    def host(self) -> Iterator[None]:
        """Around the host's own code in a callback."""
        self._in_host += 1
        try:
            self.raise_waiting()
            yield
        finally:
            self._in_host -= 1

    def raise_waiting(self) -> None:
        if self._waiting:
            self._waiting = False
            raise KeyboardInterrupt


class Library:
    """A loaded library. Its functions are attributes without the prefix."""

    def __init__(self, path: str) -> None:
        try:
            self._loaded = ctypes.CDLL(path)
            version = self._loaded.fenda_interface_version
        except (OSError, AttributeError) as error:
            raise LibraryMissing(f"La biblioteca «{path}» no se puede cargar: {error}") from error
        self.path = path
        self._check_version(version)
        for name, arguments in _FUNCTIONS.items():
            setattr(self, name, self._function(name, arguments, c_int32))
        self._free = self._function("free", [c_char_p], None)
        self._version = self._function("version", [], c_char_p)
        self._calls = _Calls()
        self.interrupts = _Interrupts()
        self._to_close: Deque[tuple[Callable[..., int], int, Any]] = collections.deque()

    def __getattr__(self, name: str) -> Callable[..., int]:
        raise AttributeError(name)

    def _function(self, name: str, arguments: list[Any], result: Any) -> Any:
        try:
            function = self._loaded["fenda_" + name]
        except AttributeError as error:
            raise LibraryMissing(f"La biblioteca «{self.path}» no tiene fenda_{name}.") from error
        function.argtypes, function.restype = arguments, result
        return function

    def _check_version(self, version: Any) -> None:
        version.argtypes, version.restype = [_OUT_INT, _OUT_INT], None
        major, minor = c_int32(), c_int32()
        version(byref(major), byref(minor))
        if major.value != MAJOR or minor.value < MINOR:
            raise LibraryMissing(
                f"La biblioteca «{self.path}» tiene la versión {major.value}.{minor.value} de la interfaz, "
                f"y hace falta la {MAJOR}.{MINOR} o una posterior de la {MAJOR}."
            )

    def version(self) -> str:
        return str(self._version().decode())

    def call(self, function: Callable[..., int], *arguments: Any) -> None:
        """Calls a function of the library and raises what it tells."""
        call = _Call()
        self._calls.stack.append(call)
        try:
            if self.interrupts.callbacks:
                with self.interrupts.guard():
                    status = function(*arguments)
            else:
                status = function(*arguments)
        finally:
            self._calls.stack.pop()
        if status or call.to_raise:
            self._raise(status, call)

    def check(self, status: int) -> None:
        """Raises what a function has told that was called without `call`."""
        if status:
            raise self._told(status)

    def _raise(self, status: int, call: _Call) -> None:
        # Whoever kept what is raised would be in a circle with its traceback, and all that it sees would stay alive.
        to_raise, raised = call.to_raise, call.raised
        call.to_raise = call.raised = None
        try:
            if to_raise is not None:
                raise to_raise
            told = self._told(status)
            if raised is not None and (status == Status.CALLBACK or told.text == reason(raised)):
                raise told from raised
            raise told
        finally:
            to_raise = raised = told = None  # type: ignore[assignment]

    def _told(self, status: int) -> FendaError:
        text, code, native = c_char_p(), c_int32(), c_char_p()
        self.last_error(byref(text), byref(code), byref(native))
        words, own = ((bytes_ or b"").decode(errors="replace") for bytes_ in (text.value, native.value))
        return error_class(status)(words, code.value, own)

    def callback(self, work: Callable[[], None], otherwise: Status = Status.CALLBACK, always: bool = False) -> int:
        """The host's part of a callback: what it raises is told to the library, and kept for the call under way.

        :param otherwise: the status of what is no error of this package
        :param always: what it raises is raised again by a call that goes well, too
        """
        try:
            with self.interrupts.host():
                work()
            return Status.OK
        except BaseException as error:  # nothing may leave a callback
            self._keep(error, always)
            return self._tell(error, otherwise)

    def _keep(self, error: BaseException, always: bool) -> None:
        if not self._calls.stack:
            return
        call = self._calls.stack[-1]
        call.raised = error
        if always or not isinstance(error, Exception):
            call.to_raise = error

    def _tell(self, error: BaseException, otherwise: Status) -> int:
        code, native = 0, f"{type(error).__name__}: {error}"
        if isinstance(error, FendaError):
            code, native = error.native_code, error.native_text
        self.fail(_sayable(reason(error)), code, _sayable(native[:REASON_LENGTH]))
        return error.kind if isinstance(error, DatabaseError) else otherwise

    def text(self, function: Callable[..., int], *arguments: Any) -> str:
        """Calls a function whose last argument receives a text."""
        given = c_char_p()
        self.call(function, *arguments, byref(given))
        return self.taken(given)

    def taken(self, given: c_char_p) -> str:
        """A text that the library has given out, and gets back."""
        try:
            return (given.value or b"").decode()
        finally:
            self._free(given)

    def opened(self, function: Callable[..., int], *arguments: Any) -> int:
        """Calls a function whose last argument receives a handle."""
        self.close_what_waits()
        handle = c_void_p()
        self.call(function, *arguments, byref(handle))
        return handle.value or 0

    def close_quietly(self, close: Callable[..., int], handle: int, tables: Any) -> None:
        """For what nobody refers to any more. Where that comes about on another thread, in the middle of a call or
        before what uses it is closed, it is closed as soon as something else is opened or closed."""
        if close(handle) in (Status.IN_USE, Status.NESTED, Status.WRONG_THREAD):
            self._to_close.append((close, handle, tables))
        else:
            self.close_what_waits()

    def close_what_waits(self) -> None:
        for _ in range(len(self._to_close)):
            try:
                waiting = self._to_close.popleft()
            except IndexError:  # closed meanwhile, by closing another
                return
            self.close_quietly(*waiting)


def reason(error: BaseException) -> str:
    return (str(error) or type(error).__name__)[:REASON_LENGTH]


def _sayable(text: str) -> bytes:
    return text.replace("\0", " ").encode(errors="replace")


# --- Handles


class Handle:
    """Something open in the library: until `close`, the end of its `with`, or when nothing refers to it any more."""

    def __init__(self, library: Library, handle: int, close: Callable[..., int], tables: Any = None) -> None:
        """
        :param tables: callbacks that the library calls, which live as long as the handle. They must not refer to this
            object, nor to what does: it would never be let go of.
        """
        self._library = library
        self._as_parameter_ = handle
        self._close = close
        self._tables = tables
        if tables is not None:
            library.interrupts.callbacks += 1
        self._finalizer = weakref.finalize(self, _finalize, library, close, handle, tables)

    def close(self) -> None:
        """Closes it; what is closed already stays so. Raises `InUse` when something else still needs it."""
        if not self._finalizer.alive:
            return
        self._library.call(self._close, self)
        self._finalizer.detach()
        if self._tables is not None:
            self._library.interrupts.callbacks -= 1
        self._library.close_what_waits()

    @property
    def closed(self) -> bool:
        return not self._finalizer.alive

    def __enter__(self: Self) -> Self:
        return self

    def __exit__(
        self, kind: Optional[Type[BaseException]], error: Optional[BaseException], traceback: Optional[TracebackType]
    ) -> None:
        if kind is None:
            self.close()
        else:
            self._finalizer()


def _finalize(library: Library, close: Callable[..., int], handle: int, tables: Any) -> None:
    if tables is not None:
        library.interrupts.callbacks -= 1
    library.close_quietly(close, handle, tables)


# --- Where the library is


def _candidates() -> Iterator[str]:
    """From the nearest to the farthest: beside this package, beside the interpreter, where the system looks."""
    name = f"libfendamaestros.so.{MAJOR}"
    triplet = sysconfig.get_config_var("MULTIARCH") or ""
    prefixes = [parent.parent for parent in Path(__file__).resolve().parents if parent.name in ("lib", "lib64")]
    for prefix in [*prefixes, Path(sys.prefix), Path(sys.base_prefix)]:
        for folder in (f"lib/{triplet}" if triplet else "lib", "lib", "lib64"):
            if (file := prefix / folder / name).exists():
                yield str(file)
    yield name
    if found := ctypes.util.find_library("fendamaestros"):
        yield found


@functools.lru_cache(maxsize=None)
def library() -> Library:
    """The library: the file that the environment variable FENDA_LIBRARY names or, without it, the one installed. Raises
    `LibraryMissing`; a later call looks again."""
    if named := os.environ.get("FENDA_LIBRARY"):
        return Library(named)
    failure: Optional[LibraryMissing] = None
    for candidate in _candidates():
        try:
            return Library(candidate)
        except LibraryMissing as error:
            failure = failure or error
    raise LibraryMissing(
        "No se encuentra la biblioteca libfendamaestros: instálela, o diga dónde está con la variable FENDA_LIBRARY."
    ) from failure

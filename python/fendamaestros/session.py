"""Open companies: in a data folder, on a server, or on a connection that the host holds itself."""

from __future__ import annotations

import abc
import ctypes
import os
import weakref
from ctypes import byref, c_char_p, c_int32, c_void_p, sizeof
from decimal import Decimal
from typing import Any, Callable, Iterable, List, Mapping, Optional, Sequence, Tuple, Union

from ._library import (
    CConnection, CParameter, CValue, Handle, Library, Release, TextSink, Value,
    encoded, field_type, integer, library, optional,
)  # fmt: skip
from .errors import Status

Path = Union[str, "os.PathLike[str]"]


class Rows(List[Tuple[Value, ...]]):
    """The rows of a read, with the names of their `columns`."""

    def __init__(self, columns: Sequence[str], rows: Iterable[Sequence[Value]]) -> None:
        super().__init__(tuple(row) for row in rows)
        self.columns = tuple(columns)


class Connection(abc.ABC):
    """A host's own open connection to one company and the shared database, in its own engine. The tables of the company
    are named bare, those of the shared one behind "KXComun.dbo." in any case. Texts come as the screens write them; see
    also `sql_for`. What the screens rely on, and the host has to guarantee, stands at `fenda_connection` in `fenda.h`.

    What goes wrong is raised, best as a `DatabaseError` that says its kind; anything else counts as one of no kind. In
    here nothing may be called that is open in the library.
    """

    @abc.abstractmethod
    def execute(self, sql: str) -> Tuple[Sequence[str], Iterable[Sequence[Any]]]:
        """Runs one text that reads: the names of its columns, and its rows, as lazily as they come. Cells are None,
        whole numbers, numbers (also `Decimal`) and texts."""

    @abc.abstractmethod
    def run(self, sql: str, parameters: Sequence[Value]) -> int:
        """Runs one INSERT, UPDATE or DELETE, each "?" of which takes the parameter of its position: how many rows it
        has touched. A text that goes into a column of numbers is stored as the number it spells."""

    @abc.abstractmethod
    def begin(self, depth: int) -> None:
        """Begins a transaction, `depth` 0, or one inside of `depth` others (a savepoint)."""

    @abc.abstractmethod
    def commit(self, depth: int) -> None:
        """Keeps the innermost transaction, whose depth is given. One that fails keeps nothing, and is rolled back next."""

    @abc.abstractmethod
    def rollback(self, depth: int) -> None:
        """Undoes the innermost transaction, whose depth is given; the outer ones stay open."""


class Session(Handle):
    """An open company. Closing it while an object has it raises `InUse`."""

    #: The host's own, of a session on one.
    connection: Optional[Connection] = None

    def __init__(self, library: Library, handle: int, tables: Any = None) -> None:
        super().__init__(library, handle, library.session_close, tables)
        _open[handle] = self

    @classmethod
    def folder(cls, path: Path, company: Optional[str] = None) -> Session:
        """Opens a company of a data folder, the first one without its name."""
        lib = library()
        return cls(lib, lib.opened(lib.session_open_folder, encoded(path), optional(company)))

    @classmethod
    def server(cls, conninfo: str, company: Optional[str] = None) -> Session:
        """Opens a company of a PostgreSQL server, the first one without its name.

        :param conninfo: of libpq, "host=servidor dbname=conta" or "postgresql://..."
        """
        lib = library()
        return cls(lib, lib.opened(lib.session_open_server, encoded(conninfo), optional(company)))

    @classmethod
    def own(
        cls, connection: Connection, parameters: Mapping[str, Union[int, str]], folder: Optional[Path] = None
    ) -> Session:
        """A session on the host's own connection, of which nothing is asked yet.

        :param parameters: of the company, as `fenda_parameter` in `fenda.h` names them
        :param folder: for files that belong to the company
        """
        lib = library()
        table = connection_table(lib, weakref.ref(connection))
        pairs = [CParameter(encoded(name), encoded(str(value))) for name, value in parameters.items()]
        handle = lib.opened(
            lib.session_open_connection, byref(table), (CParameter * len(pairs))(*pairs), len(pairs), optional(folder)
        )
        session = cls(lib, handle, table)
        session.connection = connection
        return session

    def read(self, sql: str) -> Rows:
        """Runs one text that reads, in the language of the screens."""
        lib = self._library
        rows = lib.opened(lib.session_read, self, encoded(sql))
        try:
            return rows_of(lib, rows)
        finally:
            lib.call(lib.rows_close, rows)


#: By handle, for callbacks that are handed one.
_open: weakref.WeakValueDictionary[int, Session] = weakref.WeakValueDictionary()


def session_of(handle: Optional[int]) -> Optional[Session]:
    return _open.get(handle) if handle else None


# --- Rows


def rows_of(lib: Library, rows: int) -> Rows:
    """What a handle of rows holds, copied."""
    count, columns, value = c_int32(), c_int32(), CValue()
    lib.call(lib.rows_size, rows, byref(count), byref(columns))
    names = [lib.text(lib.rows_column_name, rows, column) for column in range(columns.value)]

    def cell(row: int, column: int) -> Value:
        lib.check(lib.rows_value(rows, row, column, byref(value)))
        return value.value()

    return Rows(names, (tuple(cell(row, column) for column in range(len(names))) for row in range(count.value)))


def _put(lib: Library, rows: int, value: Any) -> int:
    """Fills the next cell: a status."""
    if value is None:
        return lib.rows_null(rows)
    if isinstance(value, str):
        text = value.encode()
        return lib.rows_text(rows, text, len(text))
    if isinstance(value, int):
        return lib.rows_integer(rows, integer(value, 64))
    if isinstance(value, (float, Decimal)):
        return lib.rows_real(rows, float(value))
    raise TypeError(f"Una celda es {type(value).__name__}: ha de ser None, int, float, Decimal o str.")


def _fill(lib: Library, handle: int, columns: Sequence[str], rows: Iterable[Sequence[Any]]) -> None:
    for name in columns:
        lib.check(lib.rows_column(handle, encoded(name)))
    for row in rows:
        if len(row) != len(columns):
            raise ValueError(f"Una fila tiene {len(row)} celdas y hay {len(columns)} columnas.")
        for value in row:
            status = _put(lib, handle, value)
            if status == Status.STOPPED:
                return
            lib.check(status)


# --- The callbacks of a connection


def connection_table(
    lib: Library, host: Callable[[], Optional[Connection]], release: Optional[Callable[[int], Any]] = None
) -> CConnection:
    """The structure `fenda_connection` for a connection.

    :param host: gives the connection, for the structure is not to keep it alive
    :param release: called with the structure's context when nothing more will be asked
    """

    def told(work: Callable[[Connection], None]) -> int:
        return lib.callback(lambda: work(_alive(host)), Status.OTHER)

    def execute(_: Any, sql: bytes, rows: int) -> int:
        return told(lambda connection: _fill(lib, rows, *connection.execute(sql.decode())))

    def run(_: Any, sql: bytes, parameters: Any, count: int, touched: Any) -> int:
        def work(connection: Connection) -> None:
            touched[0] = connection.run(sql.decode(), [parameters[i].value() for i in range(count)])

        return told(work)

    def begin(_: Any, depth: int) -> int:
        return told(lambda connection: connection.begin(depth))

    def commit(_: Any, depth: int) -> int:
        return told(lambda connection: connection.commit(depth))

    def rollback(_: Any, depth: int) -> int:
        return told(lambda connection: connection.rollback(depth))

    table = CConnection(size=sizeof(CConnection))
    for callback in (execute, run, begin, commit, rollback):
        setattr(table, callback.__name__, field_type(CConnection, callback.__name__)(callback))
    if release is not None:
        table.release = Release(release)
    return table


def _alive(host: Callable[[], Optional[Connection]]) -> Connection:
    connection = host()
    if connection is None:
        raise ReferenceError("La conexión del anfitrión ya no existe.")
    return connection


# --- Data folders


def _told_texts(function: Callable[..., int], *arguments: Any) -> list[str]:
    """Calls a function whose last arguments are a sink of texts and its context."""
    texts: list[str] = []
    sink = TextSink(lambda _, text: texts.append(text.decode()))
    library().call(function, *arguments, sink, None)
    return texts


def folder_companies(folder: Path) -> list[str]:
    """The names of the companies in a data folder, in Spanish order; none for a folder that is not there yet."""
    return _told_texts(library().folder_companies, encoded(folder))


def create_demonstration(folder: Path) -> str:
    """Makes the demonstration company, with invented data, in a data folder, which need not be there yet: its name."""
    lib = library()
    return lib.text(lib.folder_create_demonstration, encoded(folder))


def create_company(
    folder: Path, company: str, fiscal_year: int, account_digits: int = 8, province: int = 28, surnames_first: bool = False
) -> None:
    """Makes a company without data of its own in a data folder, which need not be there yet.

    :param fiscal_year: 1900 to 2999
    :param account_digits: of a sub-account's code, 4 to 15
    :param province: 1 to 52, or 99 for abroad
    """
    lib = library()
    numbers = [integer(number) for number in (fiscal_year, account_digits, province, int(surnames_first))]
    lib.call(lib.folder_create_company, encoded(folder), encoded(company), *numbers)

"""A host that lends its own sqlite3 connection: what the connection has to know, and what it answers to the screens."""

import sqlite3
from typing import Any, Callable, List, Optional, Sequence, Tuple, Type

import fendamaestros as fm

# --- What the engine has to know


class Sum:
    """Exact to 1/10000, so that 0.1 + 0.2 is 0.3; a whole number when all values are."""

    EXACT_BELOW = 9e14

    def __init__(self) -> None:
        self.values: List[Any] = []

    def step(self, value: Any) -> None:
        if value is not None:
            self.values.append(value)

    def units(self) -> float:
        exact = all(abs(value) < self.EXACT_BELOW for value in self.values)
        return float(sum(round(value * 10000) if exact else value * 10000 for value in self.values))

    def finalize(self) -> Any:
        if not self.values:
            return None
        whole = all(isinstance(value, int) for value in self.values)
        return sum(self.values) if whole else self.units() / 10000


class Average(Sum):
    def finalize(self) -> Any:
        return self.units() / (10000 * len(self.values)) if self.values else None


def join(a: Any, b: Any) -> Optional[str]:
    if isinstance(a, (int, float)) or isinstance(b, (int, float)):
        raise TypeError("«+» une textos y no suma números")
    return None if a is None or b is None else a + b


def of_text(function: Callable[..., Any]) -> Callable[..., Any]:
    """A function of texts for the engine: null gives null, a number is the text that it is written as."""

    def called(*values: Any) -> Any:
        return None if None in values else function(*map(str, values))

    return called


def prepare(connection: sqlite3.Connection) -> None:
    """Teaches an open connection, with the shared database attached as KXComun, the language of the screens."""
    connection.isolation_level = None  # the screens say when a transaction begins
    connection.create_collation("ES", fm.compare_spanish)
    connection.create_function("->", 2, join, deterministic=True)
    connection.create_function("len", 1, of_text(fm.spanish_length), deterministic=True)
    connection.create_function("year", 1, of_text(lambda date: fm.spanish_year(date) or None), deterministic=True)
    for arguments in (2, 3):
        connection.create_function("like", arguments, of_text(fm.spanish_like), deterministic=True)
    connection.create_aggregate("sum", 1, Sum)
    connection.create_aggregate("avg", 1, Average)
    for schema in ("main", "KXComun"):  # only a rollback journal keeps a transaction on both files whole
        connection.execute(f"PRAGMA {schema}.journal_mode = DELETE")
        connection.execute(f"PRAGMA {schema}.synchronous = EXTRA")
    connection.execute("PRAGMA automatic_index = OFF")  # its filter takes equal texts of this order for different ones


def create_tables(connection: sqlite3.Connection) -> None:
    """For a company that is being made."""
    for schema, shared in (("main", False), ("KXComun", True)):
        connection.executescript(fm.schema_for(fm.Dialect.SQLITE, schema, shared))


# --- What the screens ask

ERRORS = {
    "SQLITE_READONLY": fm.ReadOnly, "SQLITE_FULL": fm.Full, "SQLITE_CORRUPT": fm.NotADatabase,
    "SQLITE_NOTADB": fm.NotADatabase, "SQLITE_CANTOPEN": fm.NotADatabase, "SQLITE_AUTH": fm.Refused,
    "SQLITE_INTERRUPT": fm.Stopped, "SQLITE_ERROR": fm.SqlError,
}  # fmt: skip


def kind_of(error: sqlite3.Error) -> Type[fm.DatabaseError]:
    if isinstance(error, sqlite3.IntegrityError):
        return fm.Constraint
    if "locked" in str(error):
        return fm.Busy
    name = getattr(error, "sqlite_errorname", "SQLITE_ERROR")  # Python 3.11 and later
    return next((kind for begin, kind in ERRORS.items() if name.startswith(begin)), fm.DatabaseError)


def failure(error: sqlite3.Error) -> fm.DatabaseError:
    """The same in the words of the screens."""
    code = getattr(error, "sqlite_errorcode", 0)
    return kind_of(error)(f"La base de datos ha fallado: {error}", code, str(error))


class SqliteConnection(fm.Connection):
    """Lends a connection that has been prepared."""

    def __init__(self, connection: sqlite3.Connection) -> None:
        self.connection = connection

    def execute(self, sql: str) -> Tuple[Sequence[str], Sequence[Tuple[Any, ...]]]:
        cursor = self.carried_out(fm.sql_for(fm.Dialect.SQLITE, sql))
        return [column[0] for column in cursor.description], self.rows(cursor)

    def run(self, sql: str, parameters: Sequence[fm.Value]) -> int:
        return self.carried_out(fm.sql_for(fm.Dialect.SQLITE, sql), parameters).rowcount

    def begin(self, depth: int) -> None:
        self.carried_out(f"SAVEPOINT nivel{depth}" if depth else "BEGIN")

    def commit(self, depth: int) -> None:
        self.carried_out(f"RELEASE nivel{depth}" if depth else "COMMIT")

    def rollback(self, depth: int) -> None:
        if depth:
            self.carried_out(f"ROLLBACK TO nivel{depth}")
            self.carried_out(f"RELEASE nivel{depth}")
        elif self.connection.in_transaction:  # a full disk may have undone it already
            self.carried_out("ROLLBACK")

    def carried_out(self, sql: str, parameters: Sequence[fm.Value] = ()) -> sqlite3.Cursor:
        try:
            return self.connection.execute(sql, parameters)
        except sqlite3.Error as error:
            raise failure(error) from error

    def rows(self, cursor: sqlite3.Cursor) -> List[Tuple[Any, ...]]:
        try:
            return cursor.fetchall()
        except sqlite3.Error as error:
            raise failure(error) from error


def lend(company_file: str, shared_file: str) -> fm.Session:
    """A session on the two files of a company, through a connection of Python's own."""
    connection = sqlite3.connect(company_file)
    connection.execute("ATTACH ? AS KXComun", (shared_file,))
    prepare(connection)
    parameters = dict(connection.execute("SELECT Par_Nom, Par_Valor FROM Parametros"))
    return fm.Session.own(SqliteConnection(connection), parameters)

"""What goes wrong, as exceptions. The text of each is a Spanish sentence for a person."""

from __future__ import annotations

import enum
from typing import Type


class Status(enum.IntEnum):
    """How a call of the library has ended."""

    OK = 0
    BUSY = 1
    READ_ONLY = 2
    FULL = 3
    NOT_A_DATABASE = 4
    NEWER_VERSION = 5
    CONSTRAINT = 6
    REFUSED = 7
    SQL = 8
    LOST = 9
    STOPPED = 10
    OTHER = 11
    BAD_ARGUMENT = 20
    BAD_HANDLE = 21
    WRONG_THREAD = 22
    IN_USE = 23
    NESTED = 24
    NO_WINDOWS = 25
    CALLBACK = 26
    SCRIPT = 27
    OUT_OF_MEMORY = 28
    NOT_BUILT = 29


class FendaError(Exception):
    """Whatever the library tells. `native_code` and `native_text` are the engine's own, 0 and "" when it is none of an
    engine. What a callback of the host has raised is the `__cause__`."""

    kind: Status = Status.OTHER

    def __init__(self, text: str = "", native_code: int = 0, native_text: str = "") -> None:
        super().__init__(text, native_code, native_text)
        self.text = text
        self.native_code = native_code
        self.native_text = native_text

    def __str__(self) -> str:
        return self.text


class LibraryMissing(FendaError, ImportError):
    """The library is not there, or not one that this package works with."""


class DatabaseError(FendaError):
    """Of the data. A `Connection` of the host raises these: what it raises otherwise counts as this one."""


class Busy(DatabaseError):
    """Another program holds the data; the same may work later."""

    kind = Status.BUSY


class ReadOnly(DatabaseError):
    """No right to write."""

    kind = Status.READ_ONLY


class Full(DatabaseError):
    """No room left."""

    kind = Status.FULL


class NotADatabase(DatabaseError):
    """Missing, damaged or no database at all."""

    kind = Status.NOT_A_DATABASE


class NewerVersion(DatabaseError):
    """Made by a newer version of the program."""

    kind = Status.NEWER_VERSION


class Constraint(DatabaseError):
    """The database does not allow the value, such as a repeated key."""

    kind = Status.CONSTRAINT


class Refused(DatabaseError):
    """A text that is not carried out."""

    kind = Status.REFUSED


class SqlError(DatabaseError):
    """A text that the engine does not understand."""

    kind = Status.SQL


class Lost(DatabaseError):
    """The server cannot be reached, or not any more; a later attempt connects again."""

    kind = Status.LOST


class Stopped(DatabaseError):
    """Whoever waited has had it stopped."""

    kind = Status.STOPPED


class UsageError(FendaError):
    """A call that the host should not have made."""


class BadArgument(UsageError, ValueError):
    """Too long, out of range or with a null character."""

    kind = Status.BAD_ARGUMENT


class BadHandle(UsageError):
    """What has been closed."""

    kind = Status.BAD_HANDLE


class WrongThread(UsageError):
    """What is open belongs to another thread."""

    kind = Status.WRONG_THREAD


class InUse(UsageError):
    """Something else still needs it."""

    kind = Status.IN_USE


class Nested(UsageError):
    """Not from within a `Connection`."""

    kind = Status.NESTED


class NoWindows(FendaError):
    """No display, or windows are not installed."""

    kind = Status.NO_WINDOWS


class CallbackFailed(FendaError):
    """Something of the host's has raised the exception that is the cause, or has broken a rule."""

    kind = Status.CALLBACK


class ScriptFailed(FendaError):
    """A line of a script cannot be understood or carried out."""

    kind = Status.SCRIPT


class OutOfMemory(FendaError, MemoryError):
    """No memory left."""

    kind = Status.OUT_OF_MEMORY


class NotBuilt(FendaError):
    """The library was built without what this needs."""

    kind = Status.NOT_BUILT


_CLASSES: dict[int, Type[FendaError]] = {
    error.kind: error
    for error in (
        Busy, ReadOnly, Full, NotADatabase, NewerVersion, Constraint, Refused, SqlError, Lost, Stopped, DatabaseError,
        BadArgument, BadHandle, WrongThread, InUse, Nested,
        NoWindows, CallbackFailed, ScriptFailed, OutOfMemory, NotBuilt,
    )
}  # fmt: skip


def error_class(status: int) -> Type[FendaError]:
    """The exception for a status; `FendaError` for one that a later library has added."""
    return _CLASSES.get(status, FendaError)

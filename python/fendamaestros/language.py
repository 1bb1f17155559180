"""For hosts whose engine does not speak the screens' language. These may be called on any thread, also from within a
`Connection`."""

from __future__ import annotations

import enum
from ctypes import byref, c_bool, c_int32, c_int64
from typing import Optional

from ._library import encoded, library, optional


class Dialect(enum.IntEnum):
    """Engines that the library can put texts for."""

    SQLITE = 1
    POSTGRESQL = 2


def version() -> str:
    """The version of the library, "1.0.0"."""
    return library().version()


def sql_for(dialect: Dialect, text: str) -> str:
    """Puts a text of the screens, as a `Connection` receives it, for an engine. What the engine has to know then stands
    at `fenda_sql_for` in `fenda.h`."""
    lib = library()
    return lib.text(lib.sql_for, int(dialect), encoded(text))


def schema_for(dialect: Dialect, schema: str, shared: bool) -> str:
    """The statements that make the empty tables of a company, or of the shared database, parted by semicolons; for
    SQLite alone.

    :param schema: the attached name that they are made under, "main" or "KXComun"
    """
    lib = library()
    return lib.text(lib.schema_for, int(dialect), encoded(schema), shared)


def compare_spanish(a: str, b: str) -> int:
    """Negative, 0 or positive: case and blanks at the end do not count, accents do, ñ comes behind n."""
    order = c_int32()
    lib = library()
    lib.call(lib.compare_spanish, encoded(a), encoded(b), byref(order))
    return order.value


def spanish_like(pattern: str, text: str, escape: Optional[str] = None) -> bool:
    """Whether a text is like a pattern: % stands for anything, _ for one character, case does not matter.

    :param escape: the character that takes the meaning away from the one behind it
    """
    matches = c_bool()
    lib = library()
    lib.call(lib.spanish_like, encoded(pattern), encoded(text), optional(escape), byref(matches))
    return matches.value


def spanish_length(text: str) -> int:
    """How many characters a text has, blanks at the end not counted."""
    characters = c_int64()
    lib = library()
    lib.call(lib.spanish_length, encoded(text), byref(characters))
    return characters.value


def spanish_year(date: str) -> int:
    """The year of a date written year-month-day or day/month/year, 0 for anything else."""
    year = c_int32()
    lib = library()
    lib.call(lib.spanish_year, encoded(date), byref(year))
    return year.value

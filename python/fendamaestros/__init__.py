"""The master data of a Spanish double-entry accounting application: screens and rules that a program loads.

>>> from fendamaestros import Desktop, FendaMaes, Session, create_demonstration
>>> create_demonstration("datos")
>>> FendaMaes(Desktop.windows(), Session.folder("datos")).jPlanCuentas()

One thread uses all that is open; calls block while a screen is shown. See docs/anfitrion.md.
"""

from ._library import Value
from .component import CheckLetter, Components, FendaMaes, NewAccount, VerifiedIdentifier, WithholdingKeys
from .desktop import Answer, Control, Desktop, Form, Kind, Message, Person, ScriptDesktop, TableSize
from .errors import (
    BadArgument, BadHandle, Busy, CallbackFailed, Constraint, DatabaseError, FendaError, Full, InUse, LibraryMissing,
    Lost, NewerVersion, Nested, NotADatabase, NotBuilt, NoWindows, OutOfMemory, ReadOnly, Refused, ScriptFailed, SqlError,
    Status, Stopped, UsageError, WrongThread,
)  # fmt: skip
from .language import (
    Dialect, compare_spanish, schema_for, spanish_length, spanish_like, spanish_year, sql_for, version,
)  # fmt: skip
from .session import Connection, Rows, Session, create_company, create_demonstration, folder_companies

__all__ = [
    "Answer", "BadArgument", "BadHandle", "Busy", "CallbackFailed", "CheckLetter", "Components", "Connection",
    "Constraint", "Control", "DatabaseError", "Desktop", "Dialect", "FendaError", "FendaMaes", "Form", "Full", "InUse",
    "Kind", "LibraryMissing", "Lost", "Message", "NewAccount", "NewerVersion", "Nested", "NotADatabase", "NotBuilt",
    "NoWindows", "OutOfMemory", "Person", "ReadOnly", "Refused", "Rows", "ScriptDesktop", "ScriptFailed", "Session",
    "SqlError", "Status", "Stopped", "TableSize", "UsageError", "Value", "VerifiedIdentifier", "WithholdingKeys",
    "WrongThread", "compare_spanish", "create_company", "create_demonstration", "folder_companies", "schema_for",
    "spanish_length", "spanish_like", "spanish_year", "sql_for", "version",
]  # fmt: skip

"""Whether a host's own connections keep what the screens rely on: for a host's own tests, over libfendacontrato."""

from __future__ import annotations

import ctypes
import functools
import itertools
from ctypes import CFUNCTYPE, POINTER, byref, c_char_p, c_int32, c_size_t, c_void_p, sizeof
from pathlib import Path
from typing import Any, Callable, List, Optional, Tuple

from ._library import MAJOR, CConnection, TextSink, field_type, library, optional
from .errors import LibraryMissing, Status
from .session import Connection, connection_table


class _CContractHost(ctypes.Structure):
    _fields_ = [
        ("size", c_size_t),
        ("context", c_void_p),
        ("empty_company", CFUNCTYPE(c_int32, c_void_p, POINTER(CConnection))),
        ("report", TextSink),
    ]


@functools.lru_cache(maxsize=None)
def _contract() -> Any:
    """The library of the contract, which is beside the library or where the system looks."""
    name = f"libfendacontrato.so.{MAJOR}"
    beside = Path(library().path).with_name(name)
    try:
        loaded = ctypes.CDLL(str(beside) if beside.exists() else name)
        run = loaded.fenda_contract_run
    except (OSError, AttributeError) as error:
        raise LibraryMissing(f"La biblioteca «{name}» no se puede cargar: {error}") from error
    run.argtypes, run.restype = [POINTER(_CContractHost), c_char_p], c_int32
    return run


def failures(
    empty_company: Callable[[], Connection], cases: Optional[str] = None, report: Callable[[str], None] = print
) -> int:
    """Tries connections of the host: how many cases have failed.

    :param empty_company: makes a company and a shared database of their own with all their tables, empty, and gives a
        connection to both; called anew for each case. The connection is let go of at the end of the case
    :param cases: their names with * and ?, parted by colons; None for all
    :param report: takes each line of the report
    """
    run, lib = _contract(), library()
    numbers = itertools.count(1)
    kept: dict[int, Tuple[Connection, CConnection]] = {}
    # What is at work in a structure must not go with it, so it goes with the next case.
    released: List[int] = []
    failed = 0

    def make(_: Any, place: Any) -> int:
        def work() -> None:
            while released:
                del kept[released.pop()]
            connection, number = empty_company(), next(numbers)
            table = connection_table(lib, lambda: connection, release=released.append)
            table.context = number
            kept[number] = connection, table
            place[0] = table

        return lib.callback(work)

    def tried() -> int:
        nonlocal failed
        failed = run(byref(host), optional(cases))
        return Status.OK if failed >= 0 else Status.OTHER

    host = _CContractHost(size=sizeof(_CContractHost))
    host.empty_company = field_type(_CContractHost, "empty_company")(make)
    host.report = TextSink(lambda _, line: report(line.decode()))
    lib.call(tried)
    return failed

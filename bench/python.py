"""Calls through the Python package, in microseconds: the check of an identifier and the look-up of an account, whole and
as the bare call of the library by ctypes that is inside."""

import ctypes
import statistics
import tempfile
import time
from typing import Callable

from fendamaestros import Desktop, FendaMaes, Session, create_demonstration
from fendamaestros._library import library

ROUNDS, CALLS = 9, 5000


def microseconds(call: Callable[[], object]) -> float:
    """Of one call: the median of the rounds."""
    spent = []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        for _ in range(CALLS):
            call()
        spent.append((time.perf_counter() - start) * 1e6 / CALLS)
    return statistics.median(spent)


def tell(what: str, whole: float, bare: float) -> None:
    print(f"{what:24}{whole:8.2f} µs   por ctypes a secas {bare:8.2f} µs   {whole / bare:.2f} veces".replace(".", ","))


def main(folder: str) -> None:
    create_demonstration(folder)
    lib = library()
    with Desktop.script("") as desktop, Session.folder(folder) as session, FendaMaes(desktop, session) as fenda:
        identifier, valid = ctypes.create_string_buffer(b"12345678Z"), ctypes.c_bool()
        place = ctypes.byref(valid)
        tell(
            "FnVerificarCif",
            microseconds(lambda: fenda.FnVerificarCif("12345678Z")),
            microseconds(lambda: lib.FnVerificarCif(fenda, identifier, False, place)),
        )

        sql = "SELECT PCta_Id, PCta_Des FROM PCta WHERE PCta_Cta = '43000005'"
        rows = ctypes.c_void_p()

        def read() -> None:
            lib.session_read(session, sql.encode(), ctypes.byref(rows))
            lib.rows_close(rows)

        tell("Búsqueda de una cuenta", microseconds(lambda: session.read(sql)), microseconds(read))


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as temporary:
        main(temporary)

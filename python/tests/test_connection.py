"""A host's own connection: that of Python's sqlite3, and those that break the rules."""

import glob
import os
import sqlite3
import threading
import time
import unittest
from typing import Any, Callable, Iterator, List, Sequence

import anfitrion_sqlite
import fendamaestros as fm
from support import WithDemonstration

PARAMETERS = {"Par_Ejercicio": 2010, "Par_CtaNum": 8, "Par_Provincia": 28, "Par_Nombre": "Mía", "PAR_ORCONTANOM": 0}


def raising(error: BaseException) -> Callable[..., Any]:
    def raise_it(*_: Any) -> Any:
        raise error

    return raise_it


class Lent(WithDemonstration):
    """The demonstration company through a connection of the host's."""

    def setUp(self) -> None:
        super().setUp()
        self.fenda.close()
        self.session.close()
        shared = os.path.join(self.folder, "KXComun.db")
        [self.company] = [name for name in glob.glob(os.path.join(self.folder, "*.db")) if name != shared]
        self.session = anfitrion_sqlite.lend(self.company, shared)
        self.addCleanup(self.session.close)
        self.fenda = self.object(self.session)

    def plain(self, sql: str) -> List[Any]:
        """What stands in the company's file, for anybody who opens it."""
        with sqlite3.connect(self.company) as connection:
            connection.create_collation("ES", lambda a, b: (a > b) - (a < b))
            return connection.execute(sql).fetchall()

    def name_and_save(self, form: fm.Form) -> None:
        form.type("Embalajes Tresveredas S.A.")
        form.click("cmdGuardar")

    def test_an_account_is_made(self) -> None:
        script = 'escribir "Embalajes Ñúñez"\nresponder "Grabación finalizada" Aceptar\npulsar cmdGuardar\n'
        with fm.Desktop.script(script) as desktop, fm.FendaMaes(desktop, self.session) as fenda:
            account = fenda.CrearNuevaCuenta("430", 11, True)
        self.assertEqual(account.Cuenta, "43000012")
        self.assertEqual(
            self.plain("SELECT PCta_Cta, PCta_Des, Pcta_IdNif FROM PCta ORDER BY PCta_Id DESC LIMIT 1"),
            [("43000012", "Embalajes Ñúñez", 11)],
        )

    def test_a_save_waits_for_another_program(self) -> None:
        other = sqlite3.connect(self.company, isolation_level=None, check_same_thread=False)
        self.addCleanup(other.close)
        other.execute("BEGIN IMMEDIATE")
        self.session.connection.connection.execute("PRAGMA busy_timeout = 0")
        self.worker.work = self.name_and_save
        letting_go = threading.Timer(0.2, other.execute, ("ROLLBACK",))
        letting_go.start()
        self.assertEqual(self.fenda.CrearNuevaCuenta("430", 11, True).Cuenta, "43000012")
        letting_go.join()

    def test_a_save_that_fails_is_rolled_back_and_told(self) -> None:
        connection = self.session.connection
        commit, connection.commit = connection.commit, raising(fm.Full("El disco está lleno."))
        self.worker.work = self.name_and_save
        accounts = self.plain("SELECT COUNT(*) FROM PCta")
        self.fenda.CrearNuevaCuenta("430", 11, True)
        self.assertIn("El disco está lleno.", self.worker.messages[0].text)
        self.assertEqual(self.plain("SELECT COUNT(*) FROM PCta"), accounts)
        self.assertFalse(connection.connection.in_transaction)
        connection.commit = commit
        self.assertEqual(self.fenda.CrearNuevaCuenta("430", 11, True).Cuenta, "43000012")

    def test_long_reads_are_given_up_when_the_person_wants(self) -> None:
        connection = self.session.connection
        execute = connection.execute
        given = []

        def slowly(sql: str) -> Any:
            columns, rows = execute(sql)

            def one_by_one() -> Iterator[Any]:
                for row in rows * 200:
                    given.append(row)
                    time.sleep(0.01 if len(given) < 100 else 0)
                    yield row

            return columns, one_by_one() if "PCta_SubCuenta" in sql and len(rows) > 20 else rows

        self.worker.work = lambda form: form.click("cmdIniciar")
        connection.execute = slowly
        self.worker.stop_asked = lambda: len(given) > 0  # type: ignore
        self.fenda.jshowInformePlandeCuentas()
        self.assertLess(len(given), 500)
        self.worker.stop_asked = raising(LookupError("nadie contesta"))  # type: ignore
        given.clear()
        with self.assertRaises(fm.CallbackFailed) as raised:
            self.fenda.jshowInformePlandeCuentas()
        self.assertIsInstance(raised.exception.__cause__, LookupError)

    def test_the_screens_work_on_it(self) -> None:
        self.fenda.jshowInformePlandeCuentas()
        self.fenda.jNif()
        self.fenda.jPlanCuentas()
        self.assertEqual(len(self.worker.screens), 3)
        self.assertEqual(self.session.read("SELECT TOP 1 LEN(Centro_Des) AS n FROM Centro").columns, ("n",))


class Ours(fm.Connection):
    """Gives every read the same answer."""

    def __init__(self, answer: Callable[[], Any] = lambda: (["a", "b"], [])) -> None:
        self.answer = answer
        self.asked: List[str] = []
        self.written: List[Sequence[fm.Value]] = []

    def execute(self, sql: str) -> Any:
        self.asked.append(sql)
        return self.answer()

    def run(self, sql: str, parameters: Sequence[fm.Value]) -> int:
        self.written.append(parameters)
        return 1

    def begin(self, depth: int) -> None:
        self.asked.append(f"begin {depth}")

    def commit(self, depth: int) -> None:
        self.asked.append(f"commit {depth}")

    def rollback(self, depth: int) -> None:
        self.asked.append(f"rollback {depth}")


class Rules(unittest.TestCase):
    def reads(self, answer: Callable[[], Any], sql: str = "SELECT a, b FROM Centro") -> fm.Rows:
        with fm.Session.own(Ours(answer), PARAMETERS) as session:
            return session.read(sql)

    def test_values_come_through_as_they_are(self) -> None:
        row = (None, -(1 << 63), 2.5, "ñandú €", "")
        rows = self.reads(lambda: (["n", "í", "r", "t", "v"], iter([row, row[::-1]])))
        self.assertEqual(rows.columns, ("n", "í", "r", "t", "v"))
        self.assertEqual(rows, [row, row[::-1]])
        self.assertEqual([type(value) for value in rows[0]], [type(None), int, float, str, str])

    def test_rows_that_break_a_rule_are_errors_with_their_cause(self) -> None:
        for answer, cause in (
            (lambda: (["a", "b"], [(1,)]), ValueError),
            (lambda: (["a"], [(b"bytes",)]), TypeError),
            (lambda: (["a"], [(1 << 63,)]), fm.BadArgument),
            (lambda: (["a"], [("con\0nulo",)]), fm.BadArgument),
            (lambda: None, TypeError),
            (raising(ZeroDivisionError("cero")), ZeroDivisionError),
        ):
            with self.subTest(cause), self.assertRaises(fm.FendaError) as raised:
                self.reads(answer)
            self.assertIsInstance(raised.exception.__cause__, cause)
        with self.assertRaises(fm.FendaError):
            self.reads(lambda: ([], []))

    def test_kinds_of_errors_arrive_with_the_engines_words(self) -> None:
        for kind in (fm.Busy, fm.Lost, fm.Constraint):
            with self.assertRaises(kind) as raised:
                self.reads(raising(kind("El servidor está ocupado.", 1222, "lock request time out")))
            error = raised.exception
            self.assertEqual(
                (str(error), error.native_code, error.native_text),
                ("El servidor está ocupado.", 1222, "lock request time out"),
            )

    def test_an_interrupt_comes_through_as_it_is(self) -> None:
        with self.assertRaises(KeyboardInterrupt):
            self.reads(raising(KeyboardInterrupt()))

    def test_what_is_no_read_never_reaches_the_host(self) -> None:
        connection = Ours()
        with fm.Session.own(connection, PARAMETERS) as session:
            with self.assertRaises(fm.Refused):
                session.read("DELETE FROM Centro")
        self.assertEqual(connection.asked, [])

    def test_nothing_open_may_be_called_from_within(self) -> None:
        connection = Ours()
        with fm.Session.own(connection, PARAMETERS) as session:
            connection.answer = lambda: session.read("SELECT 1")
            with self.assertRaises(fm.FendaError) as raised:
                session.read("SELECT 2")
        self.assertIsInstance(raised.exception.__cause__, fm.Nested)

    def test_a_company_without_what_the_screens_need(self) -> None:
        with self.assertRaises(fm.Refused):
            fm.Session.own(Ours(), {"Par_Nombre": "Mía"})


class Language(unittest.TestCase):
    def test_what_an_engine_is_taught(self) -> None:
        self.assertEqual([fm.compare_spanish("Señor  ", "SEÑOR"), fm.compare_spanish("a", "b") < 0], [0, True])
        self.assertTrue(fm.spanish_like("%ÑO_", "señor"))
        self.assertTrue(fm.spanish_like("10\\%", "10%", "\\"))
        self.assertFalse(fm.spanish_like("10\\%", "100", "\\"))
        self.assertEqual(fm.spanish_length("ñandú  "), 5)
        self.assertEqual([fm.spanish_year(date) for date in ("2026-03-01", "1/3/2009", "mañana")], [2026, 2009, 0])
        put = fm.sql_for(fm.Dialect.SQLITE, "SELECT TOP 2 isnull(a,'') FROM KXComun.dbo.X ORDER BY a")
        self.assertIn("LIMIT 2", put)
        self.assertIn("$1", fm.sql_for(fm.Dialect.POSTGRESQL, "DELETE FROM Centro WHERE Centro_Id = ?"))
        self.assertIn("kxcomun.", fm.schema_for(fm.Dialect.SQLITE, "KXComun", True).lower())


if __name__ == "__main__":
    unittest.main()

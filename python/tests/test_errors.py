"""What goes wrong: as which exception it arrives, what it leaves open, and what may not keep a handle alive."""

import gc
import os
import signal
import subprocess
import sys
import threading
import time
import unittest
import weakref
from typing import Any, Callable, List, Type

import fendamaestros as fm
from support import WithDemonstration, Worker, demonstration


def on_another_thread(work: Callable[[], Any]) -> List[BaseException]:
    raised: List[BaseException] = []

    def run() -> None:
        try:
            work()
        except BaseException as error:
            raised.append(error)

    thread = threading.Thread(target=run)
    thread.start()
    thread.join()
    return raised


class Errors(WithDemonstration):
    def test_each_kind_is_an_exception_of_its_own(self) -> None:
        missing = os.path.join(self.folder, "no", "existe")
        refused: List[tuple[Type[fm.FendaError], Callable[[], Any]]] = [
            (fm.Refused, lambda: self.session.read("DELETE FROM Centro")),
            (fm.SqlError, lambda: self.session.read("SELECT * FROM Nada")),
            (fm.DatabaseError, lambda: fm.Session.folder(missing, "Ninguna")),
            (fm.DatabaseError, lambda: fm.create_company(self.folder, "Una", 1492)),
            (fm.BadArgument, lambda: fm.Session.folder("con\0nulo")),
            (fm.BadArgument, lambda: self.fenda.FnVerificarCif("x" * (1 << 20) + "x")),
            (fm.BadArgument, lambda: self.fenda.fnBuscarConceptos(70000)),
            (fm.BadArgument, lambda: self.fenda.jPlanCuentas(1 << 40)),
            (fm.BadArgument, lambda: self.fenda.FnVerificarCif("\udcff")),
            (fm.InUse, self.session.close),
            (fm.InUse, self.desktop.close),
        ]
        for kind, call in refused:
            with self.subTest(kind), self.assertRaises(kind) as raised:
                call()
            self.assertNotEqual(str(raised.exception), "")
        self.assertEqual(self.fenda.FnVerificarCif("12345678Z"), (True, "12345678Z"))

    def test_the_engines_own_words_come_along(self) -> None:
        with self.assertRaises(fm.SqlError) as raised:
            self.session.read("SELECT * FROM Nada")
        self.assertNotEqual(raised.exception.native_code, 0)
        self.assertIn("Nada", raised.exception.native_text)
        self.assertEqual(raised.exception.kind, fm.Status.SQL)

    def test_what_is_closed_stays_closed(self) -> None:
        session = fm.Session.folder(self.folder)
        with session:
            self.assertFalse(session.closed)
        session.close()
        self.assertTrue(session.closed)
        with self.assertRaises(fm.BadHandle):
            session.read("SELECT 1")
        with self.assertRaises(fm.BadHandle):
            self.fenda.MyBd = session
        self.assertIs(self.fenda.MyBd, self.session)

    def test_an_error_inside_with_is_not_hidden_by_what_cannot_be_closed(self) -> None:
        with self.assertRaises(ZeroDivisionError):
            with fm.Session.folder(self.folder) as session:
                fenda = fm.FendaMaes(self.desktop, session)
                raise ZeroDivisionError
        fenda.close()

    def test_another_thread_is_refused_and_stateless_functions_are_not(self) -> None:
        [error] = on_another_thread(lambda: self.fenda.FnVerificarCif("12345678Z"))
        self.assertIsInstance(error, fm.WrongThread)
        compared: List[int] = []
        self.assertEqual(on_another_thread(lambda: compared.append(fm.compare_spanish("caña", "canto"))), [])
        self.assertGreater(compared[0], 0)


class Raising(WithDemonstration):
    def test_what_a_person_raises_is_the_cause(self) -> None:
        def fall(form: fm.Form) -> None:
            raise LookupError("me he perdido")

        self.worker.work = fall
        with self.assertRaises(fm.CallbackFailed) as raised:
            self.fenda.jCentros()
        self.assertIsInstance(raised.exception.__cause__, LookupError)
        self.worker.work = fm.Form.close
        self.fenda.jCentros()

    def test_what_is_raised_below_a_second_screen_arrives_above_the_first(self) -> None:
        def work(form: fm.Form) -> None:
            if form.name == "frmConceptosAutomaticos":
                raise KeyError("dentro")
            form.click("cmdAuto")

        self.worker.work = work
        with self.assertRaises(fm.CallbackFailed) as raised:
            self.fenda.jConceptos()
        causes = []
        error = raised.exception
        while error is not None:
            causes.append(type(error))
            error = error.__cause__
        self.assertIn(KeyError, causes)

    def test_an_answer_that_the_message_does_not_have(self) -> None:
        self.worker.reply = fm.Answer.ACCEPT
        with self.assertRaises(fm.FendaError):
            self.fenda.msValidaCuentaPlan("99900001", 2009)

    def test_an_interrupt_ends_the_screens_and_arrives_wherever_it_finds_the_call(self) -> None:
        lost: List[Any] = []
        hook, sys.unraisablehook = sys.unraisablehook, lost.append
        try:
            for delay in range(40):
                self.interrupted(0.002 + delay * 0.0003)
        finally:
            sys.unraisablehook = hook
        self.assertEqual(lost, [])
        self.assertIs(signal.getsignal(signal.SIGINT), signal.default_int_handler)
        self.worker.work = fm.Form.close
        self.fenda.jCentros()

    def interrupted(self, delay: float) -> None:
        def forever(form: fm.Form) -> None:
            while True:
                form.click_header("DataGrid1", 2)

        self.worker.work = forever
        timer = threading.Timer(delay, os.kill, (os.getpid(), signal.SIGINT))
        with self.assertRaises(KeyboardInterrupt):
            timer.start()
            self.fenda.jCentros()
            time.sleep(5)
        timer.join()


class Lifetimes(WithDemonstration):
    def test_nothing_but_the_host_keeps_a_handle_alive(self) -> None:
        class Circular(Worker):
            desktop: fm.Desktop

        def everything() -> weakref.ref:
            person = Circular()
            person.desktop = fm.Desktop.callbacks(person)
            fenda = fm.FendaMaes(person.desktop, fm.Session.folder(demonstration()))
            person.work = lambda form: fenda.FnVerificarCif("") and None
            fenda.jCentros()
            try:
                fenda.fnBuscarConceptos(1 << 20)
            except fm.BadArgument:
                pass
            return weakref.ref(fenda)

        self.doCleanups()
        seen = everything()
        gc.collect()
        self.assertIsNone(seen())
        # Only when nothing at all is open may another thread begin.
        self.assertEqual(on_another_thread(lambda: fm.Session.folder(demonstration()).close()), [])

    def test_what_ends_without_a_circle_is_closed_at_once(self) -> None:
        self.doCleanups()
        gc.disable()
        try:
            fenda = fm.FendaMaes(fm.Desktop.callbacks(Worker()), fm.Session.folder(demonstration()))
            with self.assertRaises(fm.FendaError):
                fenda.FnVerificarCif("x" * (1 << 21))
            del fenda
            self.assertEqual(on_another_thread(lambda: fm.Session.folder(demonstration()).close()), [])
        finally:
            gc.enable()

    def test_what_another_thread_lets_go_of_is_closed_by_the_next_that_opens(self) -> None:
        self.doCleanups()
        kept = [fm.Session.folder(demonstration())]
        on_another_thread(kept.clear)
        fm.Session.folder(demonstration()).close()
        self.assertEqual(on_another_thread(lambda: fm.Session.folder(demonstration()).close()), [])


class Loading(unittest.TestCase):
    def told(self, library: str) -> str:
        code = "import fendamaestros as f\ntry: f.version()\nexcept f.LibraryMissing as e: print(e)"
        return subprocess.run(
            [sys.executable, "-c", code], capture_output=True, encoding="utf-8",
            env={**os.environ, "FENDA_LIBRARY": library, "PYTHONIOENCODING": "utf-8"},
        ).stdout  # fmt: skip

    def test_what_is_no_library_of_this_version(self) -> None:
        self.assertIn("no se puede cargar", self.told("/no/existe.so"))
        self.assertIn("no se puede cargar", self.told("libc.so.6"))

    @unittest.skipUnless("FENDA_OTHER_VERSION" in os.environ, "no library of another version")
    def test_another_major_version(self) -> None:
        said = self.told(os.environ["FENDA_OTHER_VERSION"])
        self.assertIn("2.0", said)
        self.assertIn("1.0", said)


if __name__ == "__main__":
    unittest.main()

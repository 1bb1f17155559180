"""Properties, operations and screens, through a person of callbacks and through scripts."""

import gc
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import anfitrion
import fendamaestros as fm
from support import WithDemonstration

TAB, ESCAPE, F10, F11 = 9, 27, 121, 122


class Operations(WithDemonstration):
    def test_each_screen_is_opened_by_its_own_operation(self) -> None:
        operations = {
            "jPaises": "frmPaises", "jConceptos": "frmConceptos", "jDepartamentos": "frmDepartamentos",
            "jCentros": "frmCentros", "jMasas": "frmMasas", "jPlanCuentas": "frmPlanCtas",
            "jshowInformePlandeCuentas": "frmPlandeCuentas", "jshowPGCMantenimiento": "frmPlanGC",
            "jshowPGCVerificacion": "frmPlanVerificar", "jNif": "frmNif",
        }  # fmt: skip
        for operation in operations:
            getattr(self.fenda, operation)()
        self.assertEqual(dict(zip(operations, self.worker.screens)), operations)

    def test_arguments_choose_what_a_screen_shows(self) -> None:
        shown = []
        self.worker.work = lambda form: shown.extend(control.text for control in form.controls())
        [(account, code)] = self.session.read("SELECT PCta_Id, PCta_Cta FROM PCta WHERE PCta_Cta = '43000005'")
        self.fenda.jPlanCuentas(account)
        self.assertIn(code, shown)
        [(document,)] = self.session.read("SELECT TOP 1 Nif_Doc FROM KXComun.dbo.Nif ORDER BY Nif_Id DESC")
        self.fenda.jNif(document)
        self.assertIn(document, shown)

    def test_what_is_computed(self) -> None:
        fenda = self.fenda
        self.assertEqual(fenda.FnVerificarCif("12.345.678-z"), (True, "12345678Z"))
        self.assertFalse(fenda.FnVerificarCif("12345678A"))
        self.assertEqual(fenda.Calcula_letra_NIF("12345678"), ("Z", ""))
        self.assertFalse(fenda.Calcula_letra_NIF("1"))
        self.assertNotEqual(fenda.Calcula_letra_NIF("1").mensaje, "")
        self.assertEqual(fenda.FnBuscaPoblacion("011", "00000"), "")
        self.assertTrue(fenda.msValidaCuentaPlan("43000001", 2009, False))
        self.assertFalse(fenda.msValidaCuentaPlan("99900001", 2009, bPreguntar=False))
        keys = fenda.jCargaClavesRetencion("-", 2010, True)
        self.assertEqual((keys.items[0].strip(" -"), keys.chosen), ("Todos", 0))
        self.assertGreater(len(fenda.jCargaClavesRetencion("G", 2010).items), 1)
        self.assertEqual(fenda.jCargaClavesRetencion("Ñ", 2010), ([], None))

    def test_a_person_is_asked_whether_a_strange_account_will_do(self) -> None:
        for answer, expected in ((fm.Answer.YES, True), (fm.Answer.NO, False), (None, False)):
            self.worker.reply = answer
            self.assertIs(self.fenda.msValidaCuentaPlan("99900001", 2009), expected)
        message = self.worker.messages[0]
        self.assertTrue(message.is_question)
        self.assertIn("Cuenta no pertenece al PGC", message.text)

    def test_an_account_is_made_and_its_row_stored(self) -> None:
        def name_and_save(form: fm.Form) -> None:
            form.type("Embalajes Tresveredas S.A.")
            form.click("cmdGuardar")

        self.worker.work = name_and_save
        self.assertEqual(self.fenda.CrearNuevaCuenta("430", 11, True), ("43000012", "43000012"))
        self.assertEqual([message.text for message in self.worker.messages], ["Grabación finalizada"])
        self.assertEqual(self.fenda.Cuenta, "43000012")
        rows = self.session.read("SELECT PCta_Des, Pcta_IdNif, PCta_Subcuenta FROM PCta WHERE PCta_Cta = '43000012'")
        self.assertEqual(rows, [("Embalajes Tresveredas S.A.", 11, 1)])

        self.worker.work = fm.Form.close
        self.fenda.Cuenta = "ninguna"
        self.assertEqual(self.fenda.CrearNuevaCuenta("430", 11, True), ("ninguna", "43000013"))

    def test_properties(self) -> None:
        with fm.Session.folder(self.folder) as other, fm.FendaMaes(self.desktop) as fenda:
            self.assertIsNone(fenda.MyBd)
            fenda.MyBd, fenda.MyBdorigen = self.session, other
            fenda.Cuenta, fenda.bFactu, fenda.Plan = "43000007ñ", True, 1990
            self.assertIs(fenda.MyBd, self.session)
            self.assertIs(fenda.MyBdorigen, other)
            self.assertEqual((fenda.Cuenta, fenda.bFactu, fenda.Plan), ("43000007ñ", True, 1990))
            fenda.MyBd = None
            self.assertIsNone(fenda.MyBd)
            fenda.bFactu = False
            self.assertFalse(fenda.bFactu)
        self.assertIs(self.fenda.MyBdorigen, self.session)


    def test_the_object_keeps_its_sessions_open(self) -> None:
        self.fenda.MyBd = fm.Session.folder(self.folder)
        gc.collect()
        self.assertFalse(self.fenda.MyBd.closed)  # type: ignore
        self.assertEqual(self.fenda.FnBuscaPoblacion("011", "00000"), "")

    def test_a_company_is_made_as_it_was_asked_for(self) -> None:
        fm.create_company(self.folder, "Mía", 2011, account_digits=9, province=15, surnames_first=True)
        self.assertIn("Mía", fm.folder_companies(self.folder))
        with fm.Session.folder(self.folder, "Mía") as session:
            stored = {name: str(value) for name, value in session.read("SELECT Par_Nom, Par_Valor FROM Parametros")}
        expected = {"Par_Nombre": "Mía", "Par_Ejercicio": "2011", "Par_CtaNum": "9", "Par_Provincia": "15"}
        self.assertEqual(stored, {**expected, "PAR_ORCONTANOM": "1"})


class Screens(WithDemonstration):
    def test_gestures_and_what_is_seen(self) -> None:
        seen = {}

        def work(form: fm.Form) -> None:
            seen["name"], seen["caption"] = form.name, form.caption
            seen["rows"] = form.table("DataGrid1")
            form.click_row("datagrid1", 3)
            seen["current"] = form.table("DataGrid1").current
            seen["cell"] = form.cell("DataGrid1", 3, 2), form.text("Text1(1)")
            form.click_header("DataGrid1", 2)
            seen["heading"] = form.cell("DataGrid1", -1, 2)
            form.click("cmdNueva")
            form.type("77")
            form.key(TAB)
            seen["focus"] = [control.name for control in form.controls() if control.focused]
            form.type("Almacén de Lugo")
            form.click("cmdGuardar")
            seen["status"] = form.status
            form.key(ESCAPE)
            seen["open"] = form.is_open

        self.worker.work = work
        self.worker.reply = fm.Answer.YES
        self.fenda.jCentros()
        self.assertEqual((seen["name"], seen["caption"]), ("frmCentros", "Fichero maestro de Centros de trabajo"))
        self.assertEqual(seen["rows"], (12, 3, 0))
        self.assertEqual(seen["current"], 3)
        self.assertEqual(*seen["cell"])
        self.assertIn("Descripción", seen["heading"])
        self.assertEqual(seen["focus"], ["Text1(1)"])
        self.assertNotEqual(seen["status"], "")
        self.assertFalse(seen["open"])
        stored = self.session.read("SELECT Centro_Des FROM Centro WHERE Centro_Cod = 77")
        self.assertEqual(stored, [("Almacén de Lugo",)])

    def test_lists_and_kinds_of_controls(self) -> None:
        kinds, chosen, items = {}, [], []

        def work(form: fm.Form) -> None:
            if form.name == "frmConceptos":
                return form.click("cmdAuto")
            kinds.update((control.name, fm.Kind(control.kind)) for control in form.controls())
            items.extend(form.items("Combo1"))
            form.choose("Combo1", 2)
            chosen.append(form.text("Combo1"))

        self.worker.work = work
        self.fenda.jConceptos()
        self.assertEqual(chosen, [items[2]])
        self.assertEqual(
            [kinds[name] for name in ("Combo1", "Check1(0)", "cmdGuardar", "DataGrid1", "Text1(2)", "Label1")],
            [fm.Kind.COMBO_BOX, fm.Kind.CHECK_BOX, fm.Kind.COMMAND_BUTTON, fm.Kind.GRID, fm.Kind.TEXT_BOX, fm.Kind.LABEL],
        )
        self.assertEqual(self.worker.screens, ["frmConceptos", "frmConceptosAutomaticos"])

    def test_a_screen_is_gone_when_it_is_closed(self) -> None:
        kept = []
        self.worker.work = kept.append
        self.fenda.jCentros()
        with self.assertRaises(fm.BadHandle):
            kept[0].caption

    def test_searches_give_what_is_chosen(self) -> None:
        def first(form: fm.Form) -> None:
            form.key(13)

        self.worker.work = first
        [(account,)] = self.session.read(
            "SELECT TOP 1 PCta_Id FROM PCta WHERE PCta_Subcuenta = 1 AND PCta_bActiva = 1 ORDER BY PCta_Cta"
        )
        self.assertEqual(self.fenda.fnBuscarCuentas(1), account)
        self.assertGreater(self.fenda.fnBuscarConceptos(1), 0)
        self.worker.work = fm.Form.close
        self.assertEqual((self.fenda.fnBuscarCuentas(2), self.fenda.fnBuscarConceptos(2)), (0, 0))

    def test_a_file_is_saved_where_the_person_says(self) -> None:
        target = Path(self.folder) / "centros.xlsx"
        self.worker.save_file = lambda proposal, kind: str(target) if "xlsx" in kind else None  # type: ignore
        self.worker.work = lambda form: form.click("cmdExcel")
        self.fenda.jCentros()
        self.assertTrue(target.read_bytes().startswith(b"PK"))


def root(error: BaseException) -> BaseException:
    """The first cause."""
    while error.__cause__ is not None:
        error = error.__cause__
    return error


class HostsComponents(WithDemonstration):
    def test_screens_ask_the_components_of_the_host(self) -> None:
        sheets, reports, searches = [], [], []

        def search(session: fm.Session, mode: int, everything: bool) -> int:
            searches.append((session, mode, everything))
            return 0

        fenda = self.object(
            self.session,
            fm.Components(
                grid_to_excel=lambda title, rows: sheets.append((title, rows.columns, rows[1])),
                show_report=lambda *arguments: reports.append(arguments),
                search_accounts=search,
            ),
        )
        def work(form: fm.Form) -> None:
            if form.name == "frmCentros":
                return form.click("cmdExcel")
            form.click("Text1(2)")
            form.key(F10)
            form.key(F11)
            form.click("cmdIniciar")
            form.click("cmdInforme")

        self.worker.work = work
        fenda.jCentros()
        fenda.jshowInformePlandeCuentas()
        self.assertEqual(searches, [(self.session, 1, True), (self.session, 2, True)])
        [(session, layout, sql, selection, balances)] = reports
        self.assertIs(session, self.session)
        self.assertEqual((layout, balances), ("PlanCuentas1", 0))
        self.assertGreater(len(session.read(sql)), 10)
        self.assertNotIn("SELECT", selection)
        [(title, columns, row)] = sheets
        self.assertEqual(len(columns), len(row))
        self.assertIn("Descripción", columns[1])
        self.assertIn("entros", title)

    def test_what_a_component_raises_closes_the_screens(self) -> None:
        def broken(title: str, rows: fm.Rows) -> None:
            raise OSError("la hoja no se deja")

        fenda = self.object(self.session, fm.Components(grid_to_excel=broken))
        self.worker.work = lambda form: form.click("cmdExcel")
        with self.assertRaisesRegex(fm.CallbackFailed, "la hoja no se deja") as raised:
            fenda.jCentros()
        self.assertIsInstance(root(raised.exception), OSError)


class Scripts(WithDemonstration):
    def test_a_script_works_in_a_persons_place(self) -> None:
        with fm.Desktop.script("comprobar pantalla = frmCentros\ndecir hecho\ncerrar") as desktop:
            with fm.FendaMaes(desktop, self.session) as fenda:
                fenda.jCentros()
            self.assertEqual(desktop.output.splitlines(), ["hecho"])

    def test_the_lines_that_are_left_are_carried_out(self) -> None:
        with fm.Desktop.script("abrir jPaises\ncomprobar pantalla = frmPaises\ncerrar\ndecir fin") as desktop:
            with fm.FendaMaes(desktop, self.session) as fenda:
                desktop.run(fenda)
            self.assertIn("fin", desktop.output)

    def test_a_line_that_fails(self) -> None:
        with self.assertRaises(fm.ScriptFailed) as raised:
            fm.Desktop.script("decir uno\nbailar")
        self.assertIn("2", str(raised.exception))
        with fm.Desktop.script("comprobar filas DataGrid1 = 99\ncerrar") as desktop:
            with fm.FendaMaes(desktop, self.session) as fenda:
                with self.assertRaises(fm.ScriptFailed):
                    fenda.jCentros()


@unittest.skipUnless("FENDA_WINDOWS" in os.environ, "no windows were built")
class Windows(WithDemonstration):
    def test_a_script_on_real_windows(self) -> None:
        lines = 'comprobar celda DataGrid1 1 2 = "Oficina central"\ncerrar'
        with fm.Desktop.script(lines, windows=True) as desktop, fm.FendaMaes(desktop, self.session) as fenda:
            fenda.jCentros()

    def test_without_a_display_all_but_windows_works(self) -> None:
        code = """
import fendamaestros as fm
try:
    fm.Desktop.windows()
except fm.NoWindows as error:
    print(bool(str(error)), fm.compare_spanish("a", "b") < 0)
"""
        displays = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")
        without = {name: value for name, value in os.environ.items() if name not in displays}
        run = subprocess.run([sys.executable, "-c", code], capture_output=True, encoding="utf-8", env=without)
        self.assertEqual(run.stdout, "True True\n", run.stderr)


class Example(unittest.TestCase):
    def test_the_host_of_thirty_lines(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            run = subprocess.run(
                [sys.executable, anfitrion.__file__, folder],
                capture_output=True, encoding="utf-8", env={**os.environ, "PYTHONIOENCODING": "utf-8"},
            )  # fmt: skip
        self.assertEqual(run.stderr, "")
        self.assertEqual(run.stdout.splitlines(), ["válido 12345678Z", "43000012 Embalajes Tresveredas S.A."])


if __name__ == "__main__":
    unittest.main()

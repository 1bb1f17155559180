"""The object whose operations a host calls."""

from __future__ import annotations

import dataclasses
import weakref
from ctypes import byref, c_bool, c_char_p, c_int16, c_int32, c_void_p, create_string_buffer, sizeof
from typing import Any, Callable, List, NamedTuple, Optional

from ._library import (
    CODE_SIZE, CComponents, Handle, Library, TextSink, encoded, field_type, integer, optional
)  # fmt: skip
from .desktop import Desktop
from .session import Rows, Session, rows_of, session_of


@dataclasses.dataclass
class Components:
    """Components of the host that screens ask for. What is None is the library's own. What one raises is told to the
    person at the screen."""

    #: "KXOFFICE.KOFFICE": exports a listing, given its title and the rows of the columns that are shown.
    grid_to_excel: Optional[Callable[[str, Rows], None]] = None
    #: "FENDAREPORTES.FendaRep": shows the layout `sInforme` over the rows of `sSQL`: session, sInforme, sSQL,
    #: sAcotacion1 (the selection, for the heading), svariables (1 with balances).
    show_report: Optional[Callable[[Optional[Session], str, str, str, int], None]] = None
    #: "FENDA.FENDATA": searches an account, given the session, 1 for by code or 2 for by name, and bTodas: its PCta_Id,
    #: 0 for none.
    search_accounts: Optional[Callable[[Optional[Session], int, bool], int]] = None


class NewAccount(NamedTuple):
    """What `CrearNuevaCuenta` gives."""

    #: The code saved, or the one that turned out to exist; left without either, the property's value.
    Cuenta: str
    #: The code that was offered.
    sCta: str


class VerifiedIdentifier(NamedTuple):
    """What `FnVerificarCif` gives; true when it is valid."""

    valid: bool
    #: In its normal form.
    sValor: str

    def __bool__(self) -> bool:
        return self.valid


class CheckLetter(NamedTuple):
    """What `Calcula_letra_NIF` gives; true when there is a letter."""

    letter: str
    #: Why there is none, else "".
    mensaje: str

    def __bool__(self) -> bool:
        return self.letter != ""


class WithholdingKeys(NamedTuple):
    """What a list of withholding keys is filled with."""

    items: List[str]
    #: From 0; None when there is nothing to choose, and the list is to be disabled.
    chosen: Optional[int]


class FendaMaes(Handle):
    """The object whose operations a host calls. One that shows a screen returns when the screen is closed. All of them
    raise `FendaError`."""

    def __init__(
        self,
        desktop: Desktop,
        MyBd: Optional[Session] = None,
        MyBdorigen: Optional[Session] = None,
        components: Optional[Components] = None,
    ) -> None:
        """
        :param MyBd: the session of every screen
        :param MyBdorigen: a second one, where accounts are saved too; without it, MyBd
        """
        lib = desktop._library
        table = None if components is None else _components_table(lib, weakref.ref(components), components)
        handle = lib.opened(lib.object_new, desktop, None if table is None else byref(table))
        super().__init__(lib, handle, lib.object_close, table)
        # What the object works with stays open as long as it.
        self._desktop = desktop
        self._components = components
        self._MyBd: Optional[Session] = None
        self._MyBdorigen: Optional[Session] = None
        if MyBd is not None:
            self.MyBd = MyBd
        if MyBdorigen is not None or MyBd is not None:
            self.MyBdorigen = MyBdorigen or MyBd

    def close(self) -> None:
        super().close()
        self._MyBd = self._MyBdorigen = None

    # --- Properties

    @property
    def Cuenta(self) -> str:
        """Account code handed back by the creation of an account."""
        return self._library.text(self._library.get_Cuenta, self)

    @Cuenta.setter
    def Cuenta(self, value: str) -> None:
        self._library.call(self._library.set_Cuenta, self, encoded(value))

    @property
    def bFactu(self) -> bool:
        """Whether the host is invoicing."""
        value = c_bool()
        self._library.call(self._library.get_bFactu, self, byref(value))
        return value.value

    @bFactu.setter
    def bFactu(self, value: bool) -> None:
        self._library.call(self._library.set_bFactu, self, value)

    @property
    def Plan(self) -> int:
        """The plan in force, 2008 or 1990; 0 while it is not known."""
        value = c_int16()
        self._library.call(self._library.get_Plan, self, byref(value))
        return value.value

    @Plan.setter
    def Plan(self, value: int) -> None:
        self._library.call(self._library.set_Plan, self, integer(value, 16))

    @property
    def MyBd(self) -> Optional[Session]:
        """The session of every screen, to be set before any operation that reads or shows something."""
        return self._session(self._library.get_MyBd)

    @MyBd.setter
    def MyBd(self, session: Optional[Session]) -> None:
        self._library.call(self._library.set_MyBd, self, session)
        self._MyBd = session

    @property
    def MyBdorigen(self) -> Optional[Session]:
        """A second session, needed only where accounts are saved; may be the same as MyBd."""
        return self._session(self._library.get_MyBdorigen)

    @MyBdorigen.setter
    def MyBdorigen(self, session: Optional[Session]) -> None:
        self._library.call(self._library.set_MyBdorigen, self, session)
        self._MyBdorigen = session

    def _session(self, function: Callable[..., int]) -> Optional[Session]:
        handle = c_void_p()
        self._library.call(function, self, byref(handle))
        return session_of(handle.value)

    # --- Operations

    def jPaises(self) -> None:
        """Countries."""
        self._library.call(self._library.jPaises, self)

    def jConceptos(self) -> None:
        """Concepts of journal entries."""
        self._library.call(self._library.jConceptos, self)

    def jDepartamentos(self) -> None:
        """Departments."""
        self._library.call(self._library.jDepartamentos, self)

    def jCentros(self) -> None:
        """Centres."""
        self._library.call(self._library.jCentros, self)

    def jMasas(self) -> None:
        """Balance masses."""
        self._library.call(self._library.jMasas, self)

    def jPlanCuentas(self, nIdCuenta: int = 0) -> None:
        """The sub-accounts, on the account with this PCta_Id if it is not 0."""
        self._library.call(self._library.jPlanCuentas, self, integer(nIdCuenta))

    def CrearNuevaCuenta(self, sCta: str, nIdNif: int = 0, bCalcula: bool = False) -> NewAccount:
        """Lets a person create a sub-account with the code `sCta` or, with `bCalcula`, with the next free one that begins
        with it; linked to the tax identity `nIdNif` if that is not 0."""
        code = encoded(sCta)
        offered = create_string_buffer(code, max(len(code) + 1, CODE_SIZE))
        cuenta = c_char_p()
        lib = self._library
        lib.call(lib.CrearNuevaCuenta, self, offered, len(offered), integer(nIdNif), bCalcula, byref(cuenta))
        return NewAccount(lib.taken(cuenta), offered.value.decode())

    def jshowInformePlandeCuentas(self) -> None:
        """The chart of accounts as a listing."""
        self._library.call(self._library.jshowInformePlandeCuentas, self)

    def jshowPGCMantenimiento(self) -> None:
        """The accounts of the official plan."""
        self._library.call(self._library.jshowPGCMantenimiento, self)

    def jshowPGCVerificacion(self) -> None:
        """The checks of the chart of accounts."""
        self._library.call(self._library.jshowPGCVerificacion, self)

    def msValidaCuentaPlan(self, sCuenta: str, nEjercicio: int, bPreguntar: bool = True) -> bool:
        """Whether a code hangs from an account of the official plan of the year `nEjercicio`, or a person wants it all
        the same, who is asked with `bPreguntar`."""
        valid = c_bool()
        lib = self._library
        lib.call(lib.msValidaCuentaPlan, self, encoded(sCuenta), integer(nEjercicio, 16), bPreguntar, byref(valid))
        return valid.value

    def fnBuscarCuentas(self, n: int, bPGC: bool = False, bSoloActivas: bool = True) -> int:
        """Lets a person pick an account: its PCta_Id, 0 for none.

        :param n: 1 by code, otherwise by name
        :param bPGC: of the official plan
        :param bSoloActivas: only those in use
        """
        found = c_int32()
        self._library.call(self._library.fnBuscarCuentas, self, integer(n, 16), bPGC, bSoloActivas, byref(found))
        return found.value

    def fnBuscarConceptos(self, n: int) -> int:
        """Lets a person pick a concept, by code (1) or by name: its Conce_Id, 0 for none."""
        found = c_int32()
        self._library.call(self._library.fnBuscarConceptos, self, integer(n, 16), byref(found))
        return found.value

    def jNif(self, sNif: Optional[str] = None) -> None:
        """The register of tax identities. With a document that is not blank it opens on its entry, or on a new one with
        that document, and closes after the first save."""
        self._library.call(self._library.jNif, self, optional(sNif))

    def jCargaClavesRetencion(self, s: str, n: int, bConsulta: bool = False) -> WithholdingKeys:
        """What a list of withholding keys, or of the sub-keys of one key, is filled with.

        :param s: "-" for the keys, or the letter of the key whose sub-keys are wanted
        :param n: the fiscal year
        :param bConsulta: names the first of the keys as a filter does
        """
        items: List[str] = []
        chosen = c_int32()
        sink = TextSink(lambda _, text: items.append(text.decode()))
        lib = self._library
        lib.call(lib.jCargaClavesRetencion, self, encoded(s), integer(n, 16), bConsulta, sink, None, byref(chosen))
        return WithholdingKeys(items, chosen.value if chosen.value >= 0 else None)

    def Calcula_letra_NIF(self, valor: str) -> CheckLetter:
        """The check letter of a personal tax number given as seven or more digits."""
        letter, mensaje = c_char_p(), c_char_p()
        lib = self._library
        lib.call(lib.Calcula_letra_NIF, self, encoded(valor), byref(letter), byref(mensaje))
        return CheckLetter(lib.taken(letter), lib.taken(mensaje))

    def FnBuscaPoblacion(self, PAIS: str, Cpostal: str) -> str:
        """The town registered for a country and a postal code, "" when none is."""
        return self._library.text(self._library.FnBuscaPoblacion, self, encoded(PAIS), encoded(Cpostal))

    def FnVerificarCif(self, sValor: str, bDatos: bool = False) -> VerifiedIdentifier:
        """Whether a tax identifier is well formed. With `bDatos`, one that is registered as N.I.E. is accepted as it
        is."""
        identifier = create_string_buffer(encoded(sValor))
        valid = c_bool()
        self._library.call(self._library.FnVerificarCif, self, identifier, bDatos, byref(valid))
        return VerifiedIdentifier(valid.value, identifier.value.decode())


def _components_table(lib: Library, host: Callable[[], Optional[Components]], given: Components) -> CComponents:
    """The structure `fenda_components` for those that are given, to which it refers weakly."""

    def grid_to_excel(_: Any, title: bytes, rows: int) -> int:
        def work() -> None:
            getattr(host(), "grid_to_excel")(title.decode(), rows_of(lib, rows))

        return lib.callback(work)

    def show_report(_: Any, session: int, layout: bytes, sql: bytes, selection: bytes, balances: int) -> int:
        def work() -> None:
            texts = (text.decode() for text in (layout, sql, selection))
            getattr(host(), "show_report")(session_of(session), *texts, balances)

        return lib.callback(work)

    def search_accounts(_: Any, session: int, mode: int, all_accounts: bool, found: Any) -> int:
        def work() -> None:
            found[0] = integer(getattr(host(), "search_accounts")(session_of(session), mode, all_accounts))

        return lib.callback(work)

    table = CComponents(size=sizeof(CComponents))
    for callback in (grid_to_excel, show_report, search_accounts):
        if getattr(given, callback.__name__) is not None:
            setattr(table, callback.__name__, field_type(CComponents, callback.__name__)(callback))
    return table

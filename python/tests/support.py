"""What the tests share: the demonstration company in a folder of its own, and people who work on screens."""

from __future__ import annotations

import shutil
import tempfile
import unittest
from typing import Callable, List, Optional

import fendamaestros as fm

_made: Optional[tempfile.TemporaryDirectory[str]] = None


def demonstration() -> str:
    """The folder of a demonstration company, copied from one that is made once."""
    global _made
    if _made is None:
        _made = tempfile.TemporaryDirectory()
        fm.create_demonstration(_made.name)
    folder = tempfile.mkdtemp()
    shutil.copytree(_made.name, folder, dirs_exist_ok=True)
    return folder


class Worker(fm.Person):
    """Does the same on every screen, and gives every message the same answer."""

    def __init__(
        self, work: Callable[[fm.Form], None] = fm.Form.close, answer: Optional[fm.Answer] = None
    ) -> None:
        self.work = work
        self.reply = answer
        self.messages: List[fm.Message] = []
        self.screens: List[str] = []

    def attend(self, form: fm.Form) -> None:
        self.screens.append(form.name)
        self.work(form)

    def answer(self, message: fm.Message) -> Optional[fm.Answer]:
        self.messages.append(message)
        return self.reply


class WithDemonstration(unittest.TestCase):
    """Each case has the demonstration company, and a `worker` on a desktop of callbacks."""

    def setUp(self) -> None:
        self.folder = demonstration()
        self.addCleanup(shutil.rmtree, self.folder)
        self.session = fm.Session.folder(self.folder)
        self.addCleanup(self.session.close)
        self.worker = Worker()
        self.desktop = fm.Desktop.callbacks(self.worker)
        self.addCleanup(self.desktop.close)
        self.fenda = self.object(self.session)

    def object(self, session: fm.Session, components: Optional[fm.Components] = None) -> fm.FendaMaes:
        fenda = fm.FendaMaes(self.desktop, session, components=components)
        self.addCleanup(fenda.close)
        return fenda

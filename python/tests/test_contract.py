"""The session contract, on the callbacks of hosts in Python."""

import sqlite3
import unittest
from typing import List

import anfitrion_sqlite
import fendamaestros as fm
from fendamaestros import contract


def empty_company() -> fm.Connection:
    connection = sqlite3.connect(":memory:")
    connection.execute("ATTACH ':memory:' AS KXComun")
    anfitrion_sqlite.prepare(connection)
    anfitrion_sqlite.create_tables(connection)
    return anfitrion_sqlite.SqliteConnection(connection)


class Forgetful(anfitrion_sqlite.SqliteConnection):
    """Keeps what a transaction inside another has undone."""

    def rollback(self, depth: int) -> None:
        if depth == 0:
            super().rollback(depth)
        else:
            self.commit(depth)


class Contract(unittest.TestCase):
    def test_the_example_keeps_it(self) -> None:
        report: List[str] = []
        self.assertEqual(contract.failures(empty_company, report=report.append), 0, "\n".join(report))
        self.assertGreater(sum(line.startswith("BIEN") for line in report), 15)

    def test_one_that_does_not_is_found(self) -> None:
        report: List[str] = []
        failed = contract.failures(
            lambda: Forgetful(empty_company().connection), "*Transaction*:*Spanish*", report.append  # type: ignore
        )
        self.assertGreater(failed, 0)
        self.assertTrue(any("FALLA" in line and "TransactionsNest" in line for line in report), report)


if __name__ == "__main__":
    unittest.main()

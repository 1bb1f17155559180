"""`pip install` of the package, offline, beside an installed library."""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PACKAGE = Path(__file__).resolve().parents[1]


def can_install(python: str) -> bool:
    code = "import setuptools, wheel, pip, venv"
    return os.path.exists(python) and subprocess.run([python, "-c", code], capture_output=True).returncode == 0


PYTHON = next(filter(can_install, (sys.executable, "/usr/bin/python3")), "")


@unittest.skipUnless(PYTHON, "no Python has pip, setuptools, wheel and venv")
class Installation(unittest.TestCase):
    def test_it_finds_the_library_beside_it(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            prefix, sources = Path(folder) / "prefix", Path(folder) / "sources"
            shutil.copytree(PACKAGE, sources, ignore=shutil.ignore_patterns("__pycache__", "*.egg-info", "build"))
            self.run_quietly(PYTHON, "-m", "venv", "--system-site-packages", "--without-pip", prefix)
            python = prefix / "bin" / "python"
            self.run_quietly(
                python, "-m", "pip", "install", "--quiet", "--no-build-isolation", "--no-index", "--no-deps", sources
            )
            library = Path(os.environ["FENDA_LIBRARY"])
            shutil.copy(library, prefix / "lib" / "libfendamaestros.so.1")
            # Without the variable that names the library, and from a folder where no package lies about.
            kept = ("PATH", "LD_PRELOAD", "ASAN_OPTIONS")
            said = subprocess.run(
                [python, "-c", "import fendamaestros as f; print(f.compare_spanish('ñ', 'n') > 0, f.__file__)"],
                capture_output=True, encoding="utf-8", cwd=folder, env={name: os.environ[name] for name in kept if name in os.environ},
            )  # fmt: skip
            self.assertEqual(said.stderr, "")
            self.assertTrue(said.stdout.startswith(f"True {prefix}"), said.stdout)
            self.assertTrue(list(prefix.glob("lib/python3*/site-packages/fendamaestros/py.typed")))

    def run_quietly(self, *words: object) -> None:
        left_out = ("PYTHONPATH", "LD_PRELOAD")
        environment = {name: value for name, value in os.environ.items() if name not in left_out}
        run = subprocess.run([str(word) for word in words], capture_output=True, encoding="utf-8", env=environment)
        self.assertEqual(run.returncode, 0, run.stderr)


if __name__ == "__main__":
    unittest.main()

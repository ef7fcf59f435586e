"""A bench: velotrace_cli in a folder of its own, with the simulated generator at port 1.

VELOTRACE_CLI and VELOTRACE_SIM name the programs.
"""

import os
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

import pytest

SOURCES = Path(__file__).resolve().parents[2]
WAIT = 60  # seconds, for a busy machine


def until(condition, what):
    """Waits for a condition and returns its value."""
    end = time.monotonic() + WAIT
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.01)
    raise AssertionError(f"timed out waiting for {what}")


class Bench:
    def __init__(self, folder):
        self.folder = folder
        self.port = folder / "com1"
        self._log = folder / "simulator.log"
        self._control = folder / "ctl"
        for name in ("marlo_rs232.ini", "timing_pattern.ini"):
            shutil.copy(SOURCES / "assets" / name, folder)
        self.cli = folder / "velotrace_cli"
        shutil.copy(os.environ["VELOTRACE_CLI"], self.cli)
        (folder / "python").mkdir()
        shutil.copy(SOURCES / "python" / "velotrace.py", folder / "python")
        with open(self._log, "wb") as log:
            self._simulator = subprocess.Popen(
                [os.environ["VELOTRACE_SIM"], "--control", self._control, self.port],
                stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        until(lambda: self.port.is_symlink() and self._control.exists(), "the simulator")

    def close(self):
        self._simulator.terminate()
        self._simulator.wait(WAIT)

    def send(self, line):
        """Sends a line to the simulator and returns its reply."""
        return subprocess.run([os.environ["VELOTRACE_SIM"], "--send", self._control, line], check=True,
                              capture_output=True, text=True, timeout=WAIT).stdout.strip()

    def sink(self, number=1):
        """The EDID of a sink."""
        return bytes.fromhex(self.send(f"sink {number}"))

    def sent(self):
        """What the desk has sent so far, a line each."""
        lines = self._log.read_text().splitlines()
        return [line[2:] for line in lines if line.startswith("> ")]

    def environment(self):
        """With velotrace_cli on PATH and the bench's velotrace.py."""
        return {**os.environ, "PATH": f"{self.folder}:{os.environ['PATH']}",
                "PYTHONPATH": str(self.folder / "python")}


@pytest.fixture
def tmp_path():
    """Pytest's own would stay, with a copy of the program for each test. A space in the name must do no harm."""
    with tempfile.TemporaryDirectory(prefix="velotrace test ") as folder:
        yield Path(folder)


@pytest.fixture
def bench(tmp_path):
    bench = Bench(tmp_path)
    yield bench
    bench.close()

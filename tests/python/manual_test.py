"""The examples of the manual, run as they are printed."""

import re
import subprocess
from datetime import datetime

import pytest
from conftest import SOURCES, WAIT

CHAPTER = "## velotrace_cli"


def examples():
    """The fenced blocks of the chapter, by the file name in their first comment."""
    manual = (SOURCES / "docs" / "manual.md").read_text()
    chapter = re.search(rf"^{CHAPTER}.*?(?=^## |\Z)", manual, re.M | re.S).group()
    found = {}
    for block in re.findall(r"^```\w+\n(.*?)^```$", chapter, re.M | re.S):
        name = re.search(r"^# (\w+\.\w+)", block, re.M).group(1)
        found[name] = block
    return found


@pytest.fixture
def example(bench):
    """Writes an example to the bench and runs it as an operator does."""
    (bench.folder / "master.bin").write_bytes(bench.sink())

    def run(name, *words, keys=""):
        file = bench.folder / name
        file.write_text(examples()[name])
        file.chmod(0o755)
        command = [file] if name.endswith(".sh") else ["/usr/bin/python3", "-m", "pytest", "-p", "no:cacheprovider", name]
        done = subprocess.run([*command, *words], cwd=bench.folder, env=bench.environment(), input=keys,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=WAIT)
        return done.returncode, done.stdout

    return run


def test_the_chapter_has_three_examples():
    assert list(examples()) == ["nightly.sh", "stamp.sh", "test_display.py"]


def test_nightly_run(bench, example):
    assert example("nightly.sh") == (0, "")
    log = (bench.folder / "nightly.log").read_text().splitlines()
    assert log[1:] == ["  3  [03] 640x480 60Hz", " 68  [68] 1280x720p 60Hz", " 79  [79] 1920x1080p 60Hz",
                       "Match entirely.", "failures: 0"]
    assert [line for line in bench.sent() if line.startswith("TIM")] == ["TIM003", "TIM068", "TIM079"]


def test_nightly_run_with_failures(bench, example):
    bench.send("refuse TIM068 none")
    bench.send("sink 1 none")
    assert example("nightly.sh")[0] == 1
    log = (bench.folder / "nightly.log").read_text().splitlines()
    assert log[1:3] == ["  3  [03] 640x480 60Hz", "velotrace_cli: Link Error"]
    assert log[-1] == "failures: 2"


def test_stamping_line(bench, example):
    (bench.folder / "next.txt").write_text("1001\n")
    status, shown = example("stamp.sh", "2", keys="\n")
    assert status == 0, shown
    assert (bench.folder / "next.txt").read_text() == "1003\n"
    units = [line.split() for line in (bench.folder / "units.log").read_text().splitlines()]
    assert [unit[1:] for unit in units] == [["1001", "PASS"], ["1002", "PASS"]]
    for unit in units:
        datetime.fromisoformat(unit[0])
    assert bench.sink()[12:16] == (1002).to_bytes(4, "little")


def test_stamping_line_with_a_failed_unit(bench, example):
    (bench.folder / "next.txt").write_text("7\n")
    bench.send("protect 1 on")
    status, shown = example("stamp.sh", "3", keys="\n\n")
    assert status == 1, shown
    assert "go on with --serial 7" in shown
    assert (bench.folder / "next.txt").read_text() == "7\n"


def test_pytest(bench, example):
    status, shown = example("test_display.py")
    assert status == 0 and "3 passed" in shown, shown
    assert [line for line in bench.sent() if line in ("TIM003", "TIM079")] == ["TIM003", "TIM079"]


def test_pytest_with_a_display_that_has_a_wrong_checksum(bench, example):
    wrong = bytearray(bench.sink())
    wrong[20] ^= 1
    (bench.folder / "wrong.bin").write_bytes(wrong)
    bench.send(f"sink 1 {bench.folder / 'wrong.bin'}")
    status, shown = example("test_display.py")
    assert status == 1 and "1 failed, 2 passed" in shown, shown

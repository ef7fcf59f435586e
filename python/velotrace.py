"""Operates a VELOTRACE generator from Python: a client of velotrace_cli, in one file without dependencies.

    from velotrace import Desk

    with Desk(port=1) as desk:
        desk.set_timing("1920x1080p 60Hz")
        edid = desk.read_edid()

Each method is one command of velotrace_cli and returns its answer. A command that fails raises an exception of the
class that belongs to the exit status; the desk then takes the next command. Python 3.9 or later, on Linux and Windows.
"""

from __future__ import annotations

import json
import operator
import os
import shlex
import shutil
import subprocess
import tempfile
from pathlib import Path
from typing import Any, Callable, Dict, Iterable, List, Literal, NamedTuple, Optional, Tuple, Union

__all__ = [
    "Desk", "Version", "Row", "Status", "Panel", "Color", "Step", "SavedEdid", "Unit",
    "DeskError", "GeneratorError", "CommandError", "UnusableError", "RunTimeFailure", "EndedError", "ProgramError",
]

FileName = Union[str, "os.PathLike[str]"]
Source = Literal["hdmi-out", "hdmi-in", "vga"]


class Version(NamedTuple):
    program: str
    firmware: str


class Row(NamedTuple):
    """A row of the catalogue."""

    row: int
    name: str


class Status(NamedTuple):
    """What the generator outputs; None is not known."""

    timing: Optional[Row]
    pattern: Optional[Row]
    output: Optional[str]
    hdcp: Optional[str]


class Panel(NamedTuple):
    """The confirmed setting of each group of the panel; None is not known."""

    output: Optional[str]
    hdcp: Optional[str]
    audio: Optional[str]
    lpcm: Optional[str]
    color_space: Optional[str]
    deep_color: Optional[str]
    autorun: Optional[str]
    favorite: Optional[str]


class Color(NamedTuple):
    """The colour setting: red, green and blue for the mode "rgb", Cr, Y and Cb for "ycbcr"."""

    mode: str
    values: Tuple[int, int, int]


class Step(NamedTuple):
    """A used step of the autorun list; timing and pattern are rows."""

    step: int
    timing: int
    pattern: int
    seconds: int


class SavedEdid(NamedTuple):
    file: str
    checksums: Tuple[bool, ...]  #: of each block: correct
    sha256: str


class Unit(NamedTuple):
    """A stamped unit: "PASS" or "FAIL"."""

    serial: int
    result: str


class DeskError(Exception):
    """A failed command. `status` is the exit status of velotrace_cli, None if it gave none; `fields` is its answer."""

    status: Optional[int] = None

    def __init__(self, sentence: str, fields: Optional[Dict[str, Any]] = None) -> None:
        super().__init__(sentence)
        self.fields: Dict[str, Any] = fields or {}
        self.units: List[Unit] = []  #: of stamp_edid: the finished units, the failed one last


class GeneratorError(DeskError):
    """The generator did not answer, or not as required."""

    status = 1

    @property
    def differences(self) -> Optional[int]:
        """The number of different bytes that a verification has found."""
        return self.fields.get("differences")


class CommandError(DeskError, ValueError):
    """The command makes no sense; nothing was sent."""

    status = 2


class UnusableError(DeskError):
    """The port or a file can't be used."""

    status = 3


class RunTimeFailure(DeskError):
    """A run-time failure of the desk: its number and sentence."""

    status = 4


class EndedError(DeskError):
    """A signal ended velotrace_cli."""

    status = 130


class ProgramError(DeskError):
    """velotrace_cli can't be started, has ended without an answer, or is closed."""


_ERRORS = {e.status: e for e in (GeneratorError, CommandError, UnusableError, RunTimeFailure, EndedError)}

_PATIENCE = 10.0  # seconds for the end of velotrace_cli, which lets the line finish


class Desk:
    """A desk on a port, which one program at a time can use; close it, or use it in a with statement.

    port: 1 to 8, or the path of a device; by default the port of the desk's settings.
    program: the file of velotrace_cli; by default the one that was installed with this module, or the first on PATH.

    The port is opened by the first command that needs it. Use a desk in one thread at a time. An exception in the
    middle of a command, such as KeyboardInterrupt, closes the desk.
    """

    def __init__(self, port: Union[int, FileName, None] = None, program: Optional[FileName] = None) -> None:
        self._process: Optional[subprocess.Popen[bytes]] = None
        command = [os.fspath(program) if program is not None else _find_program(), "--json", "--quiet"]
        if port is not None:
            command.append("--port=" + (str(port) if isinstance(port, int) else os.fspath(port)))
        command += ["-", "--keep-going"]
        self._errors = tempfile.TemporaryFile()
        try:
            self._process = subprocess.Popen(
                command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self._errors)
        except (OSError, ValueError) as e:
            self._errors.close()
            raise ProgramError(f"{command[0]} can't be started: {e}") from e

    def __enter__(self) -> Desk:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def close(self) -> None:
        """Closes the port and ends velotrace_cli. The second time it does nothing."""
        self._end(at_once=False)

    # the generator

    def version(self) -> Version:
        """The versions of the program and of the generator's firmware."""
        answer = self._ask("version")
        return Version(answer["program"], answer["firmware"])

    def timings(self) -> List[Row]:
        """The timings of the catalogue; no port is needed."""
        return [_row(row) for row in self._ask("list", "timings")["rows"]]

    def patterns(self) -> List[Row]:
        """The patterns of the catalogue; no port is needed."""
        return [_row(row) for row in self._ask("list", "patterns")["rows"]]

    def status(self) -> Status:
        """What the generator outputs."""
        answer = self._ask("status")
        timing, pattern = (_row(answer[which]) if answer[which] else None for which in ("timing", "pattern"))
        return Status(timing, pattern, answer["output"], answer["hdcp"])

    def set_timing(self, row_or_name: Union[int, str]) -> Row:
        """Outputs a timing: its row, its name, or a part of the name that only one row has."""
        return _row(self._ask("set", "timing", "--", str(row_or_name)))

    def set_pattern(self, row_or_name: Union[int, str]) -> Row:
        """Outputs a pattern: its row, its name, or a part of the name that only one row has."""
        return _row(self._ask("set", "pattern", "--", str(row_or_name)))

    def panel(self) -> Panel:
        """The settings of the panel."""
        return _panel(self._ask("panel"))

    def set_panel(self, group: str, value: Union[int, str]) -> Panel:
        """Presses one switch of the panel, as in set_panel("output", "hdmi"), and returns what is known after it.

        The groups and values: output pc hd dvi hdmi; hdcp off on; audio ext-7.1 ext-opt int-sine; lpcm 2 5.1 7.1;
        color-space rgb444 yuv444 yuv422; deep-color 8 10 12; autorun off on; favorite off on.
        """
        return _panel(self._ask("panel", "--", group, str(value)))

    def reset_panel(self) -> Panel:
        """Resets the generator's settings; none is known after it."""
        return _panel(self._ask("panel", "reset"))

    def color(self) -> Color:
        """The colours of the colour pattern."""
        return _color(self._ask("color"))

    def set_color(self, first: int, second: int, third: int) -> Color:
        """Sets red, green and blue, or Cr, Y and Cb, from 0 to 255."""
        return _color(self._ask("color", "--", *_numbers((first, second, third))))

    def string(self) -> str:
        """The custom string."""
        return str(self._ask("string")["text"])

    def set_string(self, text: str) -> str:
        """Sets the custom string, at most 12 characters."""
        return str(self._ask("string", "--", text)["text"])

    def favorite_timings(self) -> List[int]:
        """The rows of the favorite timings."""
        return list(self._ask("favorites", "timings")["rows"])

    def favorite_patterns(self) -> List[int]:
        """The rows of the favorite patterns."""
        return list(self._ask("favorites", "patterns")["rows"])

    def set_favorite_timings(self, rows: Union[Iterable[int], Literal["all"]]) -> List[int]:
        """Makes these rows the favorites and no others. Without a row the generator has its default favorites."""
        return self._set_favorites("timings", rows)

    def set_favorite_patterns(self, rows: Union[Iterable[int], Literal["all"]]) -> List[int]:
        """Makes these rows the favorites and no others. Without a row the generator has its default favorites."""
        return self._set_favorites("patterns", rows)

    def autorun(self) -> List[Step]:
        """The used steps of the autorun list."""
        return _steps(self._ask("autorun"))

    def save_autorun(self, file: FileName) -> List[Step]:
        """Saves the autorun list as CSV: step,timing,pattern,seconds."""
        return _steps(self._ask("autorun", "-o", _path(file)))

    def set_autorun(self, steps: Union[Iterable[Step], FileName]) -> List[Step]:
        """Sets the autorun list from steps or from a CSV file. Steps that are not named are unused."""
        if isinstance(steps, (str, os.PathLike)):
            return _steps(self._ask("autorun", "--", _path(steps)))
        lines = [",".join(_numbers(step)) for step in steps]
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "autorun.csv")
            file.write_text("\n".join(["step,timing,pattern,seconds", *lines, ""]), encoding="utf-8")
            return _steps(self._ask("autorun", "--", _path(file)))

    # the EDID of a sink

    def read_edid(self, source: Source = "hdmi-out") -> bytes:
        """Reads the 256 bytes of the sink's EDID."""
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "read.bin")
            self.save_edid(file, source)
            return file.read_bytes()

    def save_edid(self, file: FileName, source: Source = "hdmi-out", c_style: bool = False) -> SavedEdid:
        """Reads the sink's EDID and saves it as .hex or .bin; with c_style the .hex file is an initialiser in C."""
        style = ["--c"] if c_style else []
        answer = self._ask("edid", "read", _source(source), *style, "--", _path(file))
        return SavedEdid(answer["file"], tuple(answer["checksums"]), answer["sha256"])

    def write_edid(self, edid: Union[bytes, FileName], source: Source = "hdmi-out", verify: bool = True) -> None:
        """Writes an EDID to the sink, bytes or a .hex, .bin or .ddc file, and reads it back to compare."""
        unverified = [] if verify else ["--no-verify"]
        self._use_edid(edid, "write", _source(source), *unverified)

    def verify_edid(self, edid: Union[bytes, FileName], source: Source = "hdmi-out") -> None:
        """Compares the sink with an EDID. Raises GeneratorError with the number of `differences`."""
        self._use_edid(edid, "verify", _source(source))

    def erase_edid(self, source: Source = "hdmi-out") -> None:
        """Erases the sink's EDID, which nothing brings back. Takes up to almost three minutes."""
        self._ask("edid", "erase", _source(source), "--yes")

    def stamp_edid(self, edid: Union[bytes, FileName], serial: int, count: int = 1, step: int = 1,
                   source: Source = "hdmi-out") -> List[Unit]:
        """Writes an EDID with its serial number to one unit after the other, and verifies it.

        Stops at the first unit that fails: the exception has the finished `units`, the failed one last. Between the
        units nothing waits; to let the operator change the unit, call this for each.
        """
        numbers = _numbers((serial, count, step))
        options = [option + number for option, number in zip(("--serial=", "--count=", "--step="), numbers)]
        if isinstance(edid, (bytes, bytearray)):
            with tempfile.TemporaryDirectory() as folder:
                return self._stamp(_path(_edid_file(folder, edid)), operator.index(count), source, options)
        return self._stamp(_path(edid), operator.index(count), source, options)

    # how the commands work

    def _set_favorites(self, which: str, rows: Union[Iterable[int], Literal["all"]]) -> List[int]:
        if isinstance(rows, str):
            if rows != "all":
                raise CommandError(f'rows, or "all": {rows!r}')
            words = ["--all"]
        else:
            chosen = _numbers(rows)
            words = ["--", *chosen] if chosen else ["--none"]
        return list(self._ask("favorites", which, *words)["rows"])

    def _use_edid(self, edid: Union[bytes, FileName], command: str, *options: str) -> None:
        if isinstance(edid, (bytes, bytearray)):
            with tempfile.TemporaryDirectory() as folder:
                self._ask("edid", command, *options, "--", _path(_edid_file(folder, edid)))
        else:
            self._ask("edid", command, *options, "--", _path(edid))

    def _stamp(self, file: str, count: int, source: str, options: List[str]) -> List[Unit]:
        units: List[Unit] = []

        def take(answer: Dict[str, Any]) -> bool:
            units.append(Unit(answer["serial"], answer["result"]))
            return len(units) == count and units[-1].result == "PASS"

        try:
            self._converse(["edid", "stamp", _source(source), *options, "--", file], take)
        except DeskError as e:
            e.units = units
            raise
        return units

    def _ask(self, *words: str) -> Dict[str, Any]:
        answers: List[Dict[str, Any]] = []

        def take(answer: Dict[str, Any]) -> bool:
            answers.append(answer)
            return True

        self._converse(words, take)
        return answers[0]

    def _converse(self, words: Iterable[str], take: Callable[[Dict[str, Any]], bool]) -> None:
        """Sends a command and gives each answer to `take`, until that returns true or the command fails."""
        line = _line_of(words)
        process = self._process
        if process is None or process.stdin is None:
            raise ProgramError("the desk is closed")
        try:
            try:
                process.stdin.write(line)
                process.stdin.flush()
            except OSError:
                pass  # it has ended, perhaps with an answer that says why
            while True:
                answer = self._next_answer(process)
                if "error" in answer:
                    raise _ERRORS.get(answer.get("status"), ProgramError)(answer["error"], answer)
                if take(answer):
                    return
        except (GeneratorError, CommandError, UnusableError, RunTimeFailure):
            raise
        except EndedError:
            self.close()
            raise
        except BaseException:
            # the next answer would belong to this command
            self._end(at_once=True)
            raise

    def _next_answer(self, process: subprocess.Popen[bytes]) -> Dict[str, Any]:
        assert process.stdout is not None
        line = process.stdout.readline()
        if not line.endswith(b"\n"):
            raise ProgramError(f"velotrace_cli has ended with status {process.wait()}: {self._last_error()}")
        try:
            answer = json.loads(line)
        except ValueError:
            answer = None
        if not isinstance(answer, dict):
            raise ProgramError(f"velotrace_cli gives a meaningless answer: {line!r}")
        return answer

    def _last_error(self) -> str:
        self._errors.seek(0)
        lines = self._errors.read().decode("utf-8", "replace").split("\n")
        return next((line for line in reversed(lines) if line.strip()), "it gives no reason")

    def _end(self, at_once: bool) -> None:
        process, self._process = self._process, None
        if process is None:
            return
        try:
            try:
                if process.stdin is not None:
                    process.stdin.close()
            except OSError:
                pass
            if at_once:
                process.terminate()
            process.wait(_PATIENCE)
        except subprocess.TimeoutExpired:
            pass
        finally:
            process.kill()  # nothing if it has ended
            process.wait()
            if process.stdout is not None:
                process.stdout.close()
            self._errors.close()


def _find_program() -> str:
    name = "velotrace_cli.exe" if os.name == "nt" else "velotrace_cli"
    here = Path(__file__).resolve().parent
    # the folder of an archive, the sources, an installation
    for folder in (".", "..", "../build/bin", "../../../bin"):
        file = here / folder / name
        if file.is_file():
            return os.path.normpath(file)
    found = shutil.which(name)
    if found is None:
        raise ProgramError("velotrace_cli is neither beside velotrace.py nor on PATH")
    return found


def _line_of(words: Iterable[str]) -> bytes:
    line = []
    for word in words:
        if any(c in word for c in "\n\r\0"):
            raise CommandError(f"a word with a line end or a zero: {word!r}")
        line.append(shlex.quote(word))
    try:
        # a file name may hold bytes that are not UTF-8
        return (" ".join(line) + "\n").encode("utf-8", "surrogateescape")
    except UnicodeEncodeError as e:
        raise CommandError(f"a character in a word has no code: {e}") from e


def _numbers(values: Iterable[int]) -> List[str]:
    return [str(operator.index(value)) for value in values]


def _path(file: FileName) -> str:
    name = os.fspath(file)
    if not name:
        raise CommandError("a file needs a name")
    # the working folder may have changed since velotrace_cli began
    return os.path.abspath(name)


def _source(source: str) -> str:
    return "--source=" + source


def _edid_file(folder: str, edid: bytes) -> Path:
    file = Path(folder, "edid.bin")
    file.write_bytes(edid)
    return file


def _row(answer: Dict[str, Any]) -> Row:
    return Row(answer["row"], answer["name"])


def _panel(answer: Dict[str, Any]) -> Panel:
    return Panel(*(answer[field.replace("_", "-")] for field in Panel._fields))


def _color(answer: Dict[str, Any]) -> Color:
    first, second, third = answer["values"]
    return Color(answer["mode"], (first, second, third))


def _steps(answer: Dict[str, Any]) -> List[Step]:
    return [Step(s["step"], s["timing"], s["pattern"], s["seconds"]) for s in answer["steps"]]

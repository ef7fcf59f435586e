"""python/velotrace.py against the simulated generator, and against programs that misbehave."""

import ast
import os
import shutil
import signal
import subprocess
import sys
import threading

import pytest
from conftest import SOURCES, WAIT, until

import velotrace
from velotrace import (Color, CommandError, Desk, DeskError, EndedError, GeneratorError, Panel, ProgramError, Row,
                       RunTimeFailure, Step, Unit, UnusableError, Version)

RESET_PANEL = Panel(None, None, None, None, None, None, None, None)


@pytest.fixture
def desk(bench):
    with Desk(program=bench.cli) as desk:
        yield desk


def with_serial(edid, serial):
    """Bytes 12 to 15 hold the number, and byte 127 makes the sum of the block 0."""
    block = bytearray(edid[:128])
    block[12:16] = serial.to_bytes(4, "little")
    block[127] = -sum(block[:127]) % 256
    return bytes(block) + edid[128:]


def program(folder, *lines):
    """A program in place of velotrace_cli."""
    file = folder / "other_program"
    file.write_text("\n".join(["#!/bin/bash", *lines, ""]))
    file.chmod(0o755)
    return file


# what the commands do


def test_version(desk):
    assert desk.version() == Version("v1.3G", "v1.2")


def test_lists_need_no_port(bench):
    with Desk(port=bench.folder / "missing", program=bench.cli) as desk:
        timings = desk.timings()
        patterns = desk.patterns()
    assert (len(timings), timings[2]) == (79, Row(3, "[03] 640x480 60Hz"))
    assert (len(patterns), patterns[0]) == (64, Row(1, "[01] Colour Bar 100%"))


def test_status_and_rows(bench, desk):
    assert desk.set_timing(7) == Row(7, "[07] 720x400 85Hz")
    assert desk.set_timing("1920x1080p 60Hz") == Row(79, "[79] 1920x1080p 60Hz")
    assert desk.set_pattern("smpte") == Row(4, "[04] SMPTE Bar")
    assert bench.sent() == ["TIM007", "TIM079", "PAT004"]
    status = desk.status()
    assert status.timing == Row(79, "[79] 1920x1080p 60Hz")
    assert status.pattern == Row(4, "[04] SMPTE Bar")
    assert (status.output, status.hdcp) == ("HDMI", "OFF")


def test_panel(bench, desk):
    assert desk.set_panel("output", "dvi") == RESET_PANEL._replace(output="dvi")
    assert desk.set_panel("deep-color", 10).deep_color == "10"
    panel = desk.panel()
    assert (panel.output, panel.hdcp, panel.deep_color, panel.favorite) == ("dvi", "off", "10", "off")
    assert "output 3 (DVI)" in bench.send("state")
    assert desk.reset_panel() == RESET_PANEL


def test_colors(bench, desk):
    assert desk.set_color(255, 0, 128) == Color("rgb", (255, 0, 128))
    assert desk.color() == Color("rgb", (255, 0, 128))
    assert "colours 255, 0, 128" in bench.send("state")
    with pytest.raises(CommandError):
        desk.set_color(256, 0, -1)


def test_favorites(desk):
    assert desk.set_favorite_timings([5, 79]) == [5, 79]
    assert desk.favorite_timings() == [5, 79]
    assert desk.set_favorite_timings([]) == [1, 23]
    assert desk.set_favorite_patterns("all") == list(range(1, 65))
    assert desk.favorite_patterns() == list(range(1, 65))
    with pytest.raises(CommandError):
        desk.set_favorite_timings("--all")
    with pytest.raises(CommandError):
        desk.set_favorite_timings([80])


def test_autorun(bench, desk):
    steps = [Step(1, 7, 3, 5), Step(32, 79, 64, 600)]
    assert desk.set_autorun(steps) == steps
    assert desk.autorun() == steps
    file = bench.folder / "list of the night.csv"
    assert desk.save_autorun(file) == steps
    assert file.read_text().split() == ["step,timing,pattern,seconds", "1,7,3,5", "32,79,64,600"]
    file.write_text("step,timing,pattern,seconds\n2,1,1,10\n")
    assert desk.set_autorun(file) == [Step(2, 1, 1, 10)]
    with pytest.raises(UnusableError, match="line 2"):
        desk.set_autorun([Step(1, 7, 3, 6)])


def test_edid(bench, desk):
    edid = desk.read_edid()
    assert edid == bench.sink(1)
    assert desk.read_edid("vga") == bench.sink(3) != edid
    changed = with_serial(edid, 77)
    desk.write_edid(changed)
    assert bench.sink() == changed
    with pytest.raises(GeneratorError) as failure:
        desk.verify_edid(edid)
    assert failure.value.differences == sum(a != b for a, b in zip(edid, changed))
    assert failure.value.fields["verified"] is False
    desk.verify_edid(changed)


def test_edid_files(bench, desk, monkeypatch):
    monkeypatch.chdir(bench.folder)
    saved = desk.save_edid("it's a \"sink\" #1.hex", source="hdmi-in", c_style=True)
    assert saved.file == str(bench.folder / "it's a \"sink\" #1.hex")
    assert "0x00" in open(saved.file).read().lower()
    assert all(sum(bench.sink(2)[i:i + 128]) % 256 == 0 for i in (0, 128)) == all(saved.checksums)
    desk.write_edid(saved.file, verify=False)
    assert bench.sink(1) == bench.sink(2)
    desk.verify_edid(saved.file)


def test_erases_the_sink_that_is_named(bench, desk):
    bench.send("erase 200")
    kept = bench.sink(1)
    desk.erase_edid("vga")
    assert bench.sink(1) == kept
    assert bench.sink(3) != kept
    assert "ERS001" in bench.sent()


def test_stamps_units(bench, desk):
    edid = bench.sink()
    assert desk.stamp_edid(edid, 1001, count=2, step=5) == [Unit(1001, "PASS"), Unit(1006, "PASS")]
    assert bench.sink() == with_serial(edid, 1006)
    bench.send("sink 1 none")
    with pytest.raises(GeneratorError, match="1011") as failure:
        desk.stamp_edid(edid, 1011, count=3)
    assert failure.value.units == [Unit(1011, "FAIL")]
    assert desk.set_timing(3).row == 3


# failures


def test_an_exception_for_each_status():
    statuses = {e.status: e for e in DeskError.__subclasses__()}
    assert statuses == {1: GeneratorError, 2: CommandError, 3: UnusableError, 4: RunTimeFailure, 130: EndedError,
                        None: ProgramError}


def test_goes_on_after_a_silent_generator(bench, desk):
    bench.send("silent")
    with pytest.raises(GeneratorError, match="Link Error") as failure:
        desk.set_timing(3)
    assert failure.value.status == 1
    bench.send("speak")
    assert desk.set_timing(4) == Row(4, "[04] 640x480 72.8Hz")


def test_goes_on_after_each_other_failure(bench, desk):
    with pytest.raises(CommandError, match="1080p"):
        desk.set_timing("1080p")
    with pytest.raises(UnusableError, match="missing.bin"):
        desk.write_edid(bench.folder / "missing.bin")
    catalogue = bench.folder / "timing_pattern.ini"
    catalogue.rename(bench.folder / "kept")
    with Desk(program=bench.cli) as another, pytest.raises(RunTimeFailure, match="53"):
        another.timings()
    (bench.folder / "kept").rename(catalogue)
    assert desk.set_timing(3).row == 3


def test_a_missing_port(bench):
    for port in (2, "/dev/pts/none", bench.folder / "no port"):
        if port == 2:
            (bench.folder / "com2").symlink_to(bench.folder / "unplugged")
        with Desk(port=port, program=bench.cli) as desk:
            with pytest.raises(UnusableError):
                desk.version()
            assert len(desk.timings()) == 79


def test_a_port_that_can_not_be(bench):
    with Desk(port=9, program=bench.cli) as desk:
        with pytest.raises(CommandError, match="--port"):
            desk.version()
        with pytest.raises(ProgramError):
            desk.version()


def test_a_port_that_another_desk_holds(bench, desk):
    desk.version()
    with Desk(port=bench.port, program=bench.cli) as second, pytest.raises(UnusableError, match="in use by"):
        second.version()


def test_a_missing_program(tmp_path):
    not_a_program = tmp_path / "data"
    not_a_program.write_text("")
    for file in (tmp_path / "missing", not_a_program, tmp_path):
        with pytest.raises(ProgramError, match="can't be started"):
            Desk(program=file)


def test_an_ended_program(bench):
    with Desk(program=bench.cli) as desk:
        process = desk._process
        bench.send("silent")
        threading.Thread(target=lambda: (until(bench.sent, "the command"), process.terminate())).start()
        with pytest.raises(EndedError):
            desk.set_timing(3)
        with pytest.raises(ProgramError, match="closed"):
            desk.set_timing(3)
        assert process.returncode == 130


def test_a_killed_program(bench):
    with Desk(program=bench.cli) as desk:
        desk.timings()
        desk._process.kill()
        desk._process.wait()
        with pytest.raises(ProgramError, match="-9"):
            desk.timings()
        with pytest.raises(ProgramError, match="closed"):
            desk.timings()


@pytest.mark.parametrize("lines, reason", [
    (["exit 5"], "status 5: it gives no reason"),
    (["echo a reason >&2", "exit 1"], "a reason"),
    (["read", "echo hello", "read"], "meaningless"),
    (["read", "echo '[1]'", "read"], "meaningless"),
    (["read", "printf '{}'"], "has ended"),
    (["read", """echo '{"error":"new","status":77}'""", "read"], "new"),
])
def test_a_program_that_is_no_velotrace_cli(tmp_path, lines, reason):
    with Desk(program=program(tmp_path, *lines)) as desk:
        process = desk._process
        with pytest.raises(ProgramError, match=reason):
            desk.version()
        assert process.returncode is not None


def test_the_second_unit_fails(tmp_path):
    answers = ['{"serial":1,"result":"PASS"}', '{"serial":2,"result":"FAIL"}', '{"error":"unit 2","status":1}']
    with Desk(program=program(tmp_path, "read", *(f"echo '{a}'" for a in answers), "read")) as desk:
        with pytest.raises(GeneratorError) as failure:
            desk.stamp_edid("a.bin", 1, 3)
        assert failure.value.units == [Unit(1, "PASS"), Unit(2, "FAIL")]


def test_messages_do_not_block_the_program(tmp_path):
    talker = program(tmp_path, "read", "head -c 1000000 /dev/zero >&2", "echo '{\"rows\":[]}'", "read")
    with Desk(program=talker) as desk:
        assert desk.timings() == []


# the end


def test_close_ends_the_program_and_can_be_repeated(bench):
    desk = Desk(program=bench.cli)
    desk.version()
    process = desk._process
    desk.close()
    assert process.returncode == 0
    desk.close()
    with pytest.raises(ProgramError, match="closed"):
        desk.version()
    with Desk(port=bench.port, program=bench.cli) as next_desk:
        next_desk.version()


def test_close_ends_a_program_that_does_not_end(tmp_path, monkeypatch):
    monkeypatch.setattr(velotrace, "_PATIENCE", 0.1)
    desk = Desk(program=program(tmp_path, "trap '' TERM", "while true; do sleep 0.05; done"))
    process = desk._process
    desk.close()
    assert process.returncode == -signal.SIGKILL


def test_a_broken_conversation_ends_the_program_in_order(tmp_path):
    busy = program(tmp_path, "read", "echo hello", "while true; do sleep 0.05; done")
    with Desk(program=busy) as desk:
        process = desk._process
        with pytest.raises(ProgramError, match="meaningless"):
            desk.version()
        assert process.returncode == -signal.SIGTERM


def test_an_exception_of_the_caller_closes_the_desk(bench):
    with pytest.raises(KeyError), Desk(program=bench.cli) as desk:
        process = desk._process
        raise KeyError
    assert process.returncode == 0


@pytest.mark.parametrize("managed", [True, False])
@pytest.mark.parametrize("interrupt", [os.kill, os.killpg], ids=["caller", "terminal"])
def test_an_interrupt_leaves_no_process(bench, managed, interrupt):
    bench.send("silent")
    desk = f"Desk(program={str(bench.cli)!r})"
    script = ["from velotrace import Desk"]
    if managed:
        script += [f"with {desk} as desk:", "    print(desk._process.pid, flush=True)", "    desk.set_timing(3)"]
    else:
        script += [f"desk = {desk}", "print(desk._process.pid, flush=True)", "try:", "    desk.set_timing(3)",
                   "except KeyboardInterrupt:", "    desk.close()", "    raise"]
    caller = subprocess.Popen([sys.executable, "-c", "\n".join(script)], env=bench.environment(),
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, start_new_session=True)
    process = int(caller.stdout.readline())
    until(bench.sent, "the command")
    interrupt(caller.pid, signal.SIGINT)
    _, errors = caller.communicate(timeout=WAIT)
    assert "KeyboardInterrupt" in errors
    with pytest.raises(ProcessLookupError):
        os.kill(process, 0)


def test_a_killed_caller_leaves_no_process(bench):
    script = f"from velotrace import Desk; d = Desk(program={str(bench.cli)!r}); d.version(); " \
             "print(d._process.pid, flush=True); input()"
    caller = subprocess.Popen([sys.executable, "-c", script], env=bench.environment(), stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, text=True)
    process = int(caller.stdout.readline())
    caller.kill()
    caller.communicate()

    def has_ended():
        try:
            return open(f"/proc/{process}/stat").read().rpartition(") ")[2].startswith("Z")
        except FileNotFoundError:
            return True

    until(has_ended, "the end of velotrace_cli")


# the words


@pytest.mark.parametrize("text", [
    "it's", 'a "quote"', "a\\b\\", "#1", "; panel", "-", "--", "-h", "--help", "status", "$HOME", "a  b", "[1,2]", "7",
    "é ß"])
def test_a_word_is_a_text_and_nothing_else(bench, desk, text):
    assert desk.set_string(text) == text
    assert desk.string() == text
    # nothing but the upload and the download
    assert {line[:3] for line in bench.sent() if not line.startswith("hex:")} <= {"MOT", "ESC"}


@pytest.mark.parametrize("word", ["3\nset timing 4", "3\rpanel", "3\n", "\0", "a\ud800"])
def test_a_line_end_in_a_word_is_refused(bench, desk, word):
    for command in (desk.set_timing, desk.set_pattern, desk.set_string, desk.write_edid, desk.save_edid,
                    desk.read_edid, desk.erase_edid, desk.set_autorun, lambda w: desk.set_panel(w, "on"),
                    lambda w: desk.set_panel("hdcp", w), lambda w: desk.stamp_edid(w, 1)):
        with pytest.raises(CommandError):
            command(word)
    assert bench.sent() == []


@pytest.mark.parametrize("word", ["--help", "-h", "--", "", "-o", "--yes", "--source", "vga --yes", "@", "hdcp off"])
def test_a_strange_word_is_refused(bench, desk, word):
    for command in (desk.set_timing, desk.set_pattern, desk.read_edid, desk.erase_edid, desk.save_edid,
                    desk.write_edid, lambda w: desk.set_panel(w, "on"), lambda w: desk.set_panel("hdcp", w)):
        with pytest.raises((CommandError, UnusableError)):
            command(word)
    assert bench.sent() == []


def test_a_file_name_that_is_not_utf_8(bench, desk):
    file = os.fsdecode(os.fsencode(bench.folder) + b"/\xff.bin")
    desk.save_edid(file)
    assert os.path.getsize(file) == 256


# the module


def test_finds_the_program(bench, monkeypatch):
    source = SOURCES / "python" / "velotrace.py"
    # in a folder of an archive, installed, in the sources
    for module, cli in (("a/velotrace.py", "a/velotrace_cli"), ("b/python/velotrace.py", "b/velotrace_cli"),
                        ("c/share/velotrace-desk/python/velotrace.py", "c/bin/velotrace_cli"),
                        ("d/python/velotrace.py", "d/build/bin/velotrace_cli")):
        for file, origin in ((bench.folder / module, source), (bench.folder / cli, bench.cli)):
            file.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(origin, file)
        monkeypatch.setattr(velotrace, "__file__", str(bench.folder / module))
        assert os.path.samefile(velotrace._find_program(), bench.folder / cli)
    (bench.folder / "e").mkdir()
    monkeypatch.setattr(velotrace, "__file__", str(bench.folder / "e" / "velotrace.py"))
    (bench.folder / "path").mkdir()
    bench.cli.rename(bench.folder / "path" / "velotrace_cli")
    monkeypatch.setenv("PATH", str(bench.folder / "path"))
    assert velotrace._find_program() == str(bench.folder / "path" / "velotrace_cli")
    monkeypatch.setenv("PATH", str(bench.folder / "e"))
    with pytest.raises(ProgramError, match="PATH"):
        Desk()


def test_needs_python_3_9_and_nothing_else():
    tree = ast.parse((SOURCES / "python" / "velotrace.py").read_text(), feature_version=(3, 9))
    imported = set()
    for node in ast.walk(tree):
        if isinstance(node, ast.Import):
            imported |= {name.name for name in node.names}
        elif isinstance(node, ast.ImportFrom):
            imported.add(node.module)
    assert imported <= set(sys.stdlib_module_names)


def test_everything_public_has_a_docstring():
    for name in velotrace.__all__:
        assert getattr(velotrace, name).__doc__, name
    for name, method in vars(Desk).items():
        assert name.startswith("_") or method.__doc__, name

"""The manual page, the manual's chapter and the completion against what `velotrace_cli --help` lists."""

import functools
import os
import re
import subprocess

import pytest
from conftest import SOURCES, WAIT

PAGE = re.sub(r"\\f.", "", (SOURCES / "docs" / "man" / "velotrace_cli.1").read_text()).replace("\\-", "-")
COMPLETION = SOURCES / "packaging" / "linux" / "completion" / "velotrace_cli"
SOURCES_OF_EDID = ["hdmi-out", "hdmi-in", "vga"]


@functools.lru_cache(None)
def help_of(*command):
    return subprocess.run([os.environ["VELOTRACE_CLI"], *command, "--help"], check=True, capture_output=True, text=True,
                          timeout=WAIT).stdout


def section(name, *command):
    """The first words of the lines of a section of the help."""
    found = re.search(rf"^{name}:\n((?:  .*\n)+)", help_of(*command), re.M)
    return re.findall(r"^  (\S+)", found.group(1), re.M) if found else []


def commands(*parent):
    """Every command with its subcommands."""
    for name in section("Subcommands", *parent):
        yield (*parent, name)
        yield from commands(*parent, name)


def options(*command):
    return [option for names in section("Options", *command) for option in names.split(",")]


def panel_groups():
    lines = re.search(r"^Groups and values:\n((?:  .*\n)+)", help_of("panel") + "\n", re.M).group(1).splitlines()
    return {line.split()[0]: line.split()[1:] for line in lines}


ALL = [(), *commands()]


def complete(*words, folder="."):
    script = f'source "{COMPLETION}"; COMP_WORDS=(velotrace_cli "$@"); COMP_CWORD=$#; _velotrace_cli; ' \
             'for reply in "${COMPREPLY[@]}"; do echo "$reply"; done'
    done = subprocess.run(["/bin/bash", "-u", "-c", script, "bash", *words], cwd=folder, check=True,
                          capture_output=True, text=True, timeout=WAIT)
    assert done.stderr == ""
    return done.stdout.split("\n")[:-1]


def test_the_help_is_read_whole():
    assert {("status",), ("list", "timings"), ("set", "pattern"), ("edid", "stamp"), ("batch",)} <= set(ALL)
    assert len(ALL) == 23
    assert options("edid", "write") == ["-h", "--help", "--source", "--no-verify"]
    assert panel_groups()["lpcm"] == ["2", "5.1", "7.1"]


# the manual page


@pytest.mark.parametrize("command", ALL, ids=" ".join)
def test_the_page_has_the_command(command):
    if not section("Subcommands", *command):
        assert re.search(rf'"?\b{" ".join(command)}\b', PAGE)
    for option in options(*command):
        assert re.search(rf"(?<![\w-]){option}(?![\w-])", PAGE), option


def test_the_page_has_the_panel():
    for group, values in panel_groups().items():
        assert "\n" + " ".join([group, *values]) + "\n" in PAGE


def test_the_page_has_every_status():
    for status in re.findall(r"(\d+) [a-z]", help_of()[help_of().index("Exit status:"):]):
        assert f"\n.TP\n.B {status}\n" in PAGE


def test_the_manual_has_every_command():
    manual = (SOURCES / "docs" / "manual.md").read_text()
    chapter = re.search(r"^## velotrace_cli.*?(?=^## )", manual, re.M | re.S).group()
    for command in commands():
        if command != ("batch",) and not section("Subcommands", *command):
            assert re.search(rf"`{' '.join(command)}\b", chapter), command
    for group, values in panel_groups().items():
        assert f"`{group}` {' '.join(values)}" in " ".join(chapter.split())


# the completion


@pytest.mark.parametrize("command", ALL, ids=" ".join)
def test_completes_subcommands_and_options(command):
    for name in section("Subcommands", *command):
        assert name in complete(*command, "")
        assert complete(*command, name[:-1]) == [name]
    # the short forms need no completion
    offered = complete(*command, "--")
    assert sorted(offered) == sorted(option for option in options(*command) if option.startswith("--"))


def test_completes_after_the_options_of_the_program():
    for before in (["--json"], ["--quiet", "--json"], ["--port", "3"], ["--port", "=", "/dev/ttyUSB0"],
                   ["--port", "status", "--json"]):
        assert complete(*before, "sta") == ["status"]
        assert complete(*before, "edid", "er") == ["erase"]


def test_completes_the_panel():
    assert set(complete("panel", "")) == {"reset", *panel_groups()}
    for group, values in panel_groups().items():
        assert complete("panel", group, "") == values
    assert complete("panel", "output", "h") == ["hd", "hdmi"]
    assert complete("panel", "output", "hd", "") == []
    assert complete("panel", "reset", "") == []


def test_completes_sources_and_ports():
    for command in ("read", "write", "verify", "erase", "stamp"):
        assert complete("edid", command, "--source", "") == SOURCES_OF_EDID
        assert complete("edid", command, "--source", "=") == SOURCES_OF_EDID
        assert complete("edid", command, "--source", "=", "v") == ["vga"]
        for source in SOURCES_OF_EDID:
            assert source in help_of("edid", command)
    for words in (["--port", ""], ["--port", "="]):
        assert set("12345678") <= set(complete(*words))


def test_completes_files(tmp_path):
    for name in ("a.hex", "b.BIN", "c.ddc", "list.csv", "notes.txt", "the last.bin"):
        (tmp_path / name).touch()
    (tmp_path / "folder").mkdir()
    edids = {"a.hex", "b.BIN", "c.ddc", "the last.bin", "folder"}
    for command in ("write", "verify", "stamp"):
        assert set(complete("edid", command, "", folder=tmp_path)) == edids
    assert set(complete("edid", "read", "", folder=tmp_path)) == edids - {"c.ddc"}
    assert complete("edid", "write", "--source", "vga", "the", folder=tmp_path) == ["the last.bin"]
    assert set(complete("autorun", "", folder=tmp_path)) == {"list.csv", "folder"}
    assert set(complete("autorun", "-o", "", folder=tmp_path)) == {"list.csv", "folder"}
    assert complete("--port", "fol", folder=tmp_path) == ["folder"]
    for words in (["edid", "stamp", "--serial"], ["status"], ["edid", "erase"]):
        assert complete(*words, "", folder=tmp_path) == []


def test_is_loaded_for_the_program():
    assert re.search(r"^complete -F _velotrace_cli velotrace_cli$", COMPLETION.read_text(), re.M)

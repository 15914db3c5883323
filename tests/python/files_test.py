"""Description files are loaded, parsed, written and checked."""

import io
import json
import os
import subprocess
import sys
import threading

import plddb
import pytest

from conftest import SOURCE, TOOL, run_tool

GOOD = '<DeviceDatabase><Family Name="F"><Device Name="D" CodeName="D" Comm="JTAG"/></Family></DeviceDatabase>'


def run_python(code, **environment):
    """Runs code in a new Python; the environment's description files are not set otherwise."""
    clean = {name: value for name, value in os.environ.items() if name not in ("PLDDB_PATH", "XDG_CONFIG_HOME")}
    return subprocess.run(
        [sys.executable, "-c", code], env={**clean, "HOME": "/nonexistent", **environment}, capture_output=True, text=True,
        check=True, timeout=60,
    ).stdout.split()  # fmt: skip


def test_without_a_file_ones_own_and_the_shipped_ones_are_read(tmp_path):
    shipped = sorted(path.name for path in (SOURCE / "data").glob("*.xml"))
    own = tmp_path / "own.xml"
    own.write_text(GOOD)
    (tmp_path / "plddb").mkdir()
    (tmp_path / "plddb" / "user.xml").write_text(GOOD)
    code = "import os, plddb; print(*[os.path.basename(file) for file in plddb.load().files])"
    assert run_python(code) == shipped
    assert run_python(code, PLDDB_PATH=str(own)) == ["own.xml", *shipped]
    assert run_python(code, PLDDB_PATH=str(own), XDG_CONFIG_HOME=str(tmp_path)) == ["own.xml", "user.xml", *shipped]
    assert run_python(code.replace("plddb.load()", f"plddb.load({str(own)!r})")) == ["own.xml"]
    assert run_python("import plddb; print(plddb.data_files() == plddb.load().files)") == ["True"]


@pytest.mark.parametrize("kind", [str, os.fsencode, lambda path: path])
def test_files_are_named_as_everywhere_in_python(tmp_path, kind):
    path = tmp_path / os.fsdecode(b"a\xffb.xml")
    path.write_text(GOOD)
    db = plddb.load(kind(path))
    assert db.files == [str(path)]
    assert plddb.load(kind(tmp_path)).files == [str(path)]
    assert [str(one) for one in plddb.check(kind(path))] == [str(one) for one in plddb.check(kind(tmp_path))]


def test_files_that_do_not_load_raise_with_all_their_faults(tmp_path):
    first = tmp_path / "1.xml"
    first.write_text('<DeviceDatabase>\n<Family Nmae="F"/>\n<Family Name="F"><Device IRLength="x"/></Family></DeviceDatabase>')
    second = tmp_path / "2.xml"
    second.write_text("")
    missing = tmp_path / "missing.xml"
    with pytest.raises(plddb.Error) as raised:
        plddb.load(first, second, missing)
    faults = raised.value.faults
    assert [fault.file for fault in faults] == sorted(fault.file for fault in faults)
    assert {fault.file for fault in faults} == {str(first), str(second), str(missing)}
    assert (faults[0].line, faults[0].column >= 1) == (2, True)
    assert str(faults[0]) == f"{faults[0].file}:{faults[0].line}:{faults[0].column}: error: {faults[0].text}"
    assert str(raised.value).splitlines()[0] == str(faults[0])
    empty = tmp_path / "empty"
    empty.mkdir()
    with pytest.raises(plddb.Error) as raised:
        plddb.load(empty)
    assert raised.value.faults[0].text == "no *.xml file in this folder"
    for wrong in (None, 5, 1.5, object()):
        with pytest.raises(TypeError):
            plddb.load(wrong)
    with pytest.raises(ValueError):
        plddb.load("a\0b")


def test_a_text_is_parsed_under_a_name():
    assert plddb.parse(GOOD).families[0].name == "F"
    for text in (GOOD.encode(), bytearray(GOOD.encode()), io.StringIO(GOOD), io.BytesIO(GOOD.encode())):
        assert plddb.parse(text).families[0].name == "F"
    for text in ("", "<", "\0", "x" * 1000, b"\xff\xff", "\udcff", GOOD[:-1]):
        with pytest.raises(plddb.Error) as raised:
            plddb.parse(text, "own name")
        assert raised.value.faults[0].file == "own name"
    for wrong in (None, 5, []):
        with pytest.raises(TypeError):
            plddb.parse(wrong)


def test_bytes_that_are_no_utf_8_survive():
    db = plddb.parse(GOOD)
    device = db.families[0].devices[0]
    device.name = device.alias_name = "a\udcff"
    assert device.name == device.alias_name == "a\udcff"
    assert db.get_device_with_name("A\udcff") is device
    copied = plddb.parse(plddb.write(db)).families[0].devices[0]
    assert copied.name == copied.alias_name == "aÿ"  # a file is UTF-8: its bytes become characters


def test_what_is_written_is_what_the_command_writes(tmp_path, shipped):
    text = plddb.write(shipped)
    assert plddb.write(plddb.parse(text)) == text
    if TOOL:
        (tmp_path / "all.xml").write_text(text)
        run = subprocess.run([TOOL, "export", tmp_path / "all.xml"], capture_output=True, text=True, check=True, timeout=60)
        assert run.stdout == text


def test_an_empty_database_is_written():
    assert plddb.parse(plddb.write(plddb.Database())).families == []
    assert plddb.Database().version is None


def finding_as_json(one):
    return {
        "file": one.file,
        "line": one.line,
        "column": one.column,
        "severity": one.severity,
        "code": one.code,
        "text": one.text,
        "related": [{"file": file, "line": line, "column": column} for file, line, column in one.related],
    }


CHECKED = sorted(path for folder in ("tests/tool/data", "tests/check/corpus", "tests/check") for path in (SOURCE / folder).glob("*.xml"))


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize("files", [*([path] for path in CHECKED), CHECKED[:3], CHECKED[-3:], CHECKED], ids=len)
def test_findings_are_those_of_the_command(files):
    run = subprocess.run([TOOL, "check", "--json", *files], capture_output=True, text=True, check=False, timeout=60)
    answer = json.loads(run.stdout)
    findings = [finding_as_json(one) for one in plddb.check(*files)]
    assert [{key: one.get(key) for key in findings[0]} for one in answer] == findings if findings else answer == []


def test_a_missing_file_is_a_finding(tmp_path):
    missing = plddb.check(tmp_path / "missing.xml")
    assert [(one.severity, one.line, one.column) for one in missing] == [("error", 1, 1)]
    assert "missing.xml:1:1: error[" in str(missing[0])


def test_other_threads_run_while_files_are_loaded():
    counted = []
    done = threading.Event()

    def count():
        while not done.wait(0.0001):
            counted.append(1)

    thread = threading.Thread(target=count)
    thread.start()
    for _ in range(5):
        plddb.load(SOURCE / "data")
    done.set()
    thread.join()
    assert counted


def test_lists_of_the_command_and_the_tree_agree(shipped):
    if not TOOL:
        return
    families = run_tool("list", "--all", "--json")["families"]
    assert [one["name"] for one in families] == [family.name for family in shipped.families]
    assert [one["devices"] for one in families] == [family.device_count for family in shipped.families]

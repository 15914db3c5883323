"""The type stub names what the module has, and is correct."""

import ast
import inspect
import os
import pydoc
import subprocess
import sys
from pathlib import Path

import plddb

STUB = Path(plddb.__file__).with_name("__init__.pyi")  # which the build makes


def members(cls):
    """Names of a class's own members: nothing of Python's own, but what makes it a sequence or comparable."""
    special = {"__len__", "__getitem__", "__contains__", "__reversed__", "__eq__", "_repr_svg_"}
    return {name for name in vars(cls) if not name.startswith("_") or name in special}


def stub():
    tree = ast.parse(STUB.read_text())
    classes = {node.name: node for node in tree.body if isinstance(node, ast.ClassDef) and node.name[0] != "_"}
    functions = {node.name for node in tree.body if isinstance(node, ast.FunctionDef)}
    return classes, functions


def declared(node):
    names = {one.name for one in node.body if isinstance(one, ast.FunctionDef)}
    names |= {one.target.id for one in node.body if isinstance(one, ast.AnnAssign)}
    return names - {"__init__", "__hash__", "__iter__"}


def test_the_stub_and_the_module_have_the_same_names():
    classes, functions = stub()
    assert set(classes) | functions == set(plddb.__all__)
    for name, node in classes.items():
        cls = getattr(plddb, name)
        if not issubclass(cls, Exception):
            assert declared(node) == members(cls), name


def test_properties_that_can_be_set_are_declared_so():
    for name, node in stub()[0].items():
        attributes = {one.target.id for one in node.body if isinstance(one, ast.AnnAssign)} - {"__hash__", "faults"}
        settable = {
            key for key, value in vars(getattr(plddb, name)).items() if isinstance(value, property) and value.fset is not None
        }
        assert attributes == settable, name


def test_mypy_is_content(tmp_path):
    program = tmp_path / "program.py"
    program.write_text(
        """import plddb

def lengths(db: plddb.Database) -> dict[str, int]:
    return {device.name or "": device.ir_length for family in db.families for device in family.devices}

def names(text: str) -> list[str | None]:
    chain: plddb.Chain = plddb.load("a.xml").identify(text, comm="JTAG")
    for position in chain:
        if position.match is not None:
            position.match.list_control_status = [plddb.ControlStatus(bit_name="DONE", index=1)]
    try:
        plddb.check("a.xml")[0].severity
    except plddb.Error as error:
        return [fault.text for fault in error.faults]
    return [position.match.name for position in chain if position.match]

device = plddb.Database().new_family().new_device()
device.ir_length = "8"  # EXPECTED
plddb.Database().identify(1.5)  # EXPECTED
plddb.Database().get_family(b"x")  # EXPECTED
"""
    )
    run = subprocess.run(
        [sys.executable, "-m", "mypy", "--strict", "--no-error-summary", "--cache-dir", str(tmp_path / "cache"),
         "--python-version", "3.11", str(STUB), str(program)],
        env={"MYPYPATH": str(STUB.parent.parent), "PATH": "/usr/bin:/bin"}, capture_output=True, text=True, check=False,
    )  # fmt: skip
    lines = [line for line in run.stdout.splitlines() if ": error:" in line]
    expected = [i for i, line in enumerate(program.read_text().splitlines(), 1) if "EXPECTED" in line]
    assert sorted({int(line.split(":")[1]) for line in lines if line.startswith(str(program))}) == expected, run.stdout
    assert [line for line in lines if not line.startswith(str(program))] == []


def test_the_module_is_as_the_stub_describes_it(tmp_path):
    run = subprocess.run(
        [sys.executable, "-B", "-m", "mypy.stubtest", "plddb", "--concise"], cwd=tmp_path,
        env={**os.environ, "MYPYPATH": str(STUB.parent.parent)}, capture_output=True, text=True, check=False,
    )  # fmt: skip
    # pybind11 has a metaclass and an __init__ of its own for every class.
    usual = ("is inconsistent, metaclass differs", ".__init__ is inconsistent, stub does not have *args argument")
    lines = [line for line in run.stdout.splitlines() if line and not any(words in line for words in usual)]
    assert (lines, run.stderr) == ([], "")


def test_everything_is_documented():
    for name in plddb.__all__:
        one = getattr(plddb, name)
        assert inspect.getdoc(one), name
        if inspect.isclass(one) and not issubclass(one, Exception):
            for member in members(one) - {"__len__", "__getitem__", "__contains__", "__reversed__", "__eq__"}:
                assert inspect.getdoc(getattr(one, member)), f"{name}.{member}"


def test_help_reads_well():
    text = pydoc.plain(pydoc.render_doc(plddb))
    for words in ("import plddb", "Instruction register, bits.", "class Device(Record)", "load(", "Raises Error"):
        assert words in text, words
    for words in ("_plddb.", "std::", "0x7f", "arg0"):
        assert words not in text, words

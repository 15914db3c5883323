"""Programming files against chains, and makers' BSDL files."""

import json
import os
import subprocess
import warnings

import plddb
import pytest

from conftest import SOURCE, TOOL, run_tool
from documentation_test import BSDL

FOLDERS = [
    "altera", "efinix", "gowin", "intel_hex", "isc", "jedec", "programming_file", "stapl", "svf", "xilinx_bin", "xilinx_bit", "xsvf",
]  # fmt: skip
FILES = sorted(path for folder in FOLDERS for path in (SOURCE / "fuzz/corpus" / folder).glob("*"))
BSDL_FILES = sorted([*(SOURCE / "fuzz/corpus/bsdl").glob("*"), *(SOURCE / "tests/tool/data").glob("*.bsd")])
FLOW = (SOURCE / "fuzz/corpus/bsdl/flow").read_text()  # with times of IEEE 1532
JEDEC = "\x02Own file*\nNOTE DEVICE XC9572XL-7VQ44C*\nN DEVICE XC9572XL*\nQF46656*\nF0*\n\x03"


@pytest.fixture
def jedec(tmp_path):
    path = tmp_path / "top.jed"
    path.write_text(JEDEC)
    return path


def statement_as_json(one):
    kind, _, number = one.place.partition(" ")
    return {
        "kind": one.kind,
        "text": one.text,
        "value": f"0x{one.value:08X}" if one.kind == "id" else one.value,
        "mask": None if one.mask is None else f"0x{one.mask:08X}",
        {"line": "line", "byte": "offset"}[kind]: int(number.partition(",")[0]),
    }


def verdict_as_json(verdict):
    return {
        "file": verdict.file,
        "format": verdict.format,
        "statements": [statement_as_json(one) for one in verdict.statements],
        "fuseCount": verdict.fuse_count,
        "devices": [device.name for device in verdict.devices],
        "verdict": verdict.fit,
        "positions": verdict.positions,
    }


def compare(answers, verdicts):
    for answer, verdict in zip(answers, verdicts):
        reasons = answer.pop("reasons")
        assert answer == verdict_as_json(verdict)
        assert reasons[: len(verdict.reasons)] == verdict.reasons
        assert len(reasons) == len(verdict.reasons) + len(verdict.faults)
        for reason, fault in zip(reasons[len(verdict.reasons) :], verdict.faults):
            assert reason.startswith("damaged (") and reason.endswith(fault.text.partition(": ")[2] or fault.text)


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize(
    "ids", [["0x59604093"], ["0x0362D093"], ["0x59604093", "0x0362D093", "0x59604093"], ["0x12345677"], []], ids=len
)
def test_a_verdict_is_that_of_the_command(shipped, jedec, ids):
    files = [str(jedec), *(str(path) for path in FILES)]
    chain = shipped.identify(ids) if ids else shipped
    compare(run_tool("fits", "--json", *files, *ids), [plddb.fits(file, chain) for file in files])


@pytest.mark.skipif(not TOOL, reason="the command is not built")
def test_the_order_of_the_chain_counts(shipped, jedec):
    for order in ("tdo", "tdi"):
        answer = run_tool("fits", "--json", str(jedec), "0x59604093", "0x0362D093", "--order", order, "--ir", "1=6")
        compare(answer, [plddb.fits(jedec, shipped.identify([0x59604093, 0x0362D093], order=order, ir={1: 6}))])


def test_a_file_is_judged_without_a_chain(shipped, jedec):
    verdict = plddb.fits(jedec, shipped)
    assert (verdict.fit, verdict.positions, verdict.format) == ("unknown", [], "jedec")
    assert all(device.database is shipped for device in verdict.devices)


def test_any_file_is_read(shipped, tmp_path):
    for content in (b"", b"\0", b"\xff" * 1000, b"hello", JEDEC.encode()[:20]):
        path = tmp_path / "any"
        path.write_bytes(content)
        verdict = plddb.fits(path, shipped)
        repr(verdict), repr(verdict.statements), verdict.faults, verdict.remark
    for missing in (tmp_path / "missing", tmp_path):
        with pytest.raises(plddb.Error) as raised:
            plddb.fits(missing, shipped)
        assert raised.value.faults[0].file == str(missing)
    for wrong in (None, 5, "chain"):
        with pytest.raises(TypeError):
            plddb.fits(path, wrong)


def test_a_deleted_device_of_the_chain_raises(tree, jedec):
    chain = tree.identify(0x0ABC0043)
    plddb.fits(jedec, chain)
    tree.families[0].delete_device(1)
    with pytest.raises(plddb.DeletedError):
        plddb.fits(jedec, chain)


def test_a_bsdl_file_states_its_facts(tmp_path):
    path = tmp_path / "own.bsd"
    path.write_text(BSDL)
    bsdl = plddb.read_bsdl(path)
    assert (bsdl.file, bsdl.entity, bsdl.ir_length, bsdl.bscan_length) == (str(path), "PLD1234", 8, 1)
    assert (bsdl.capture, bsdl.packages, bsdl.maximum_tck, bsdl.usercodes) == ("XXXXXX01", ["TQ100"], 10e6, [])
    assert bsdl.instructions["IDCODE"] == ["11111110"]
    assert repr(bsdl) == "<plddb.BsdlFile PLD1234>"
    device = bsdl.describe("F", vendor="Acme").families[0].devices[0]
    assert (device.ir_length, device.vendor, device.id_instruction) == (8, "Acme", 0xFE)


def test_a_device_of_a_bsdl_file_is_added_as_the_command_does(tmp_path, tree):
    own = tmp_path / "own.bsd"
    own.write_text(BSDL)
    into = tmp_path / "into.xml"
    into.write_text(plddb.write(tree))
    text = plddb.read_bsdl(own).add_to(into, family="PLD1200")
    assert [device.name for device in plddb.parse(text).families[0].devices][3] == "PLD1234"
    if TOOL:
        run = subprocess.run([TOOL, "import", "--family", "PLD1200", "--into", into, own], capture_output=True, text=True, check=False)
        assert run.returncode == 0, run.stderr
        assert text == (run.stdout or into.read_text())


@pytest.mark.filterwarnings("ignore::UserWarning")
@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize("path", BSDL_FILES, ids=lambda path: path.name)
def test_a_bsdl_file_is_described_or_refused_as_by_the_command(path):
    run = subprocess.run(
        [TOOL, "import", "--family", "F", "--vendor", "V", path], capture_output=True, check=False, timeout=60
    )
    try:
        file = plddb.read_bsdl(path)
        text = file.to_xml("F", vendor="V")
        described = plddb.write(file.describe("F", vendor="V"))
    except plddb.Error as error:
        assert run.returncode == 2, run.stdout
        assert {str(fault) for fault in error.faults} <= set(run.stderr.decode(errors="surrogateescape").splitlines())
        assert error.faults
    else:
        assert run.returncode == 0, run.stderr
        assert run.stdout.decode() == text
        assert plddb.write(plddb.parse(text)) == described


@pytest.fixture
def makers(tmp_path):
    """Two packages of a device, with the times of IEEE 1532."""
    texts = {"a": FLOW, "b": FLOW.replace("TQ100", "BG256")}
    paths = [tmp_path / f"{name}.bsd" for name in texts]
    for path, text in zip(paths, texts.values()):
        path.write_text(text)
    return paths


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize("units", [None, "s", "ms", "us", "ns"])
def test_several_files_and_units_are_taken_as_by_the_command(makers, units):
    first, second = (plddb.read_bsdl(path) for path in makers)
    options = [] if units is None else ["--units", units]
    run = subprocess.run([TOOL, "import", "--family", "F", *makers, *options], capture_output=True, text=True, check=False)
    assert run.returncode == 0, run.stderr
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        assert first.to_xml("F", units=units, others=[second]) == run.stdout
    assert [str(one.message) for one in caught] == [line for line in run.stderr.splitlines() if "warning: " in line]
    assert bool(caught) == (units == "ns")
    device = first.describe("F", others=(second,)).families[0].devices[0]
    assert [package.type for package in device.packages] == ["TQ100", "BG256"]


def test_what_is_left_out_is_a_warning_whatever_the_name_of_the_file(tmp_path):
    path = tmp_path / os.fsdecode(b"\xffa.bsd")
    path.write_text(FLOW)
    with pytest.warns(UserWarning, match="not plain ASCII: BSDLFile is left out"):
        assert plddb.read_bsdl(path).describe("F").device_count == 1


def test_wrong_options_of_describing_are_refused(makers):
    bsdl = plddb.read_bsdl(makers[0])
    with pytest.raises(ValueError):
        bsdl.describe("F", units="min")
    for wrong in ({"units": 1}, {"others": ["b.bsd"]}, {"others": 5}, {"others": [None]}):
        with pytest.raises(TypeError):
            bsdl.describe("F", **wrong)
    with pytest.raises(TypeError):
        bsdl.to_xml()


def finding_as_json(one):
    return {"file": one.file, "line": one.line, "column": one.column, "severity": one.severity, "code": one.code, "text": one.text}


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize("missing", [False, True])
def test_descriptions_are_compared_with_makers_files_as_by_the_command(tmp_path, makers, missing):
    described = tmp_path / "described.xml"
    text = plddb.read_bsdl(makers[0]).to_xml("F")
    described.write_text(text.replace('IRLength="8"', 'IRLength="9"').replace(' BSCANLength="4"', ""))
    bad = tmp_path / "bad.bsd"
    bad.write_text("entity")
    for files in ([described], [tmp_path / "missing.xml", described]):
        options = ["--missing"] if missing else []
        run = subprocess.run(
            [TOOL, "check", "--json", *files, *options, "--bsdl", *makers, bad], capture_output=True, text=True, check=False
        )
        findings = plddb.check(*files, bsdl=[*makers, bad], missing=missing)
        assert [{key: one[key] for key in finding_as_json(findings[0])} for one in json.loads(run.stdout)] == [
            finding_as_json(one) for one in findings
        ]
        assert ("bsdl-missing" in [one.code for one in findings]) == missing
        assert "bsdl-ir-length" in [one.code for one in findings]


def test_makers_files_are_given_as_a_list(makers):
    for wrong in (str(makers[0]), 5, [None]):
        with pytest.raises(TypeError):
            plddb.check(makers[0], bsdl=wrong)
    assert [one.code for one in plddb.check(makers[0], bsdl=[])] == ["load"]


@pytest.mark.skipif(not TOOL, reason="the command is not built")
def test_the_codes_of_findings_are_those_of_the_command():
    run = subprocess.run([TOOL, "check", "--list-codes"], capture_output=True, text=True, check=True)
    listed = [tuple(line.split(None, 2)[:2]) for line in run.stdout.splitlines() if line[:1].strip()]
    assert [(code.name, code.severity) for code in plddb.finding_codes()] == listed
    assert all(code.meaning and isinstance(code.formerly, str) for code in plddb.finding_codes())


def test_a_bsdl_file_that_cannot_be_used_raises(tmp_path):
    path = tmp_path / "bad.bsd"
    for content in ("", "entity", BSDL.replace("is 8;", "is ;")):
        path.write_text(content)
        with pytest.raises(plddb.Error) as raised:
            plddb.read_bsdl(path)
        assert raised.value.faults[0].file == str(path)
    with pytest.raises(plddb.Error):
        plddb.read_bsdl(tmp_path / "missing.bsd")

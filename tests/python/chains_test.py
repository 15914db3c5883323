"""identify answers what the command answers."""

import sys
from xml.etree import ElementTree

import plddb
import pytest

from conftest import SOURCE, TOOL, run_tool

SCANS = sorted((SOURCE / "tests/tool/data/scans").glob("*.txt"))
IDS = [
    ["0x59604093"],
    ["0x59604093", "0x4BA00477", "0x0362D093"],
    ["0x12345677", "0x00000000", "0xFFFFFFFF", "0x00000001", "0x7F7F7F7F"],
    ["0xA9604093", "0x0362D092", "0x1362D093", "0x0362D193"],
    ["0x59604093"] * 300,
]


def text_or_none(text):
    return text or None


def hexadecimal(value, digits):
    return f"0x{value:0{digits}X}"


def device_as_json(device):
    return {
        "family": device.family_object.name,
        "name": device.name,
        "codeName": device.code_name,
        "irLength": device.ir_length or None,
    }


def unknown_as_json(unknown):
    if unknown is None:
        return None
    misread = None
    if unknown.misread is not None:
        id_, device, how = unknown.misread
        misread = {**device_as_json(device), "id": hexadecimal(id_, 8), "how": how}
    answer = {"kind": unknown.kind, "meaning": unknown.meaning, "misread": misread}
    if unknown.part is None:
        return answer
    return {
        **answer,
        "version": hexadecimal(unknown.version, 1),
        "part": hexadecimal(unknown.part, 4),
        "manufacturer": {
            "field": hexadecimal(unknown.manufacturer, 3),
            "bank": unknown.bank,
            "code": hexadecimal(unknown.code, 2),
            "maker": unknown.maker,
            "vendor": unknown.vendor,
        },
        "nearest": [
            {**device_as_json(device), "id": hexadecimal(device.jtag_device_id, 8), "difference": difference}
            for device, difference in unknown.nearest
        ],
        "stub": unknown.stub,
    }


def position_as_json(position):
    return {
        "position": position.index,
        "id": None if position.id is None else hexadecimal(position.id, 8),
        "kind": position.kind,
        "match": None if position.match is None else device_as_json(position.match),
        "candidates": [candidate.device.code_name or "" for candidate in position.candidates],
        "ambiguous": position.is_ambiguous,
        "ranked": [
            {
                **device_as_json(candidate.device),
                "reason": candidate.reason,
                "comparedBits": hexadecimal(candidate.bits, 8),
                "searchOrder": candidate.search_order,
            }
            for candidate in position.ranked
        ],
        "irLength": position.ir_length,
        "unknown": unknown_as_json(position.unknown),
    }


def known_members(answer, like):
    """What of the command's answer the module has, too: files are not among it."""
    if isinstance(answer, dict) and isinstance(like, dict):
        return {name: known_members(value, like.get(name)) for name, value in answer.items() if name in like}
    if isinstance(answer, list) and isinstance(like, list) and len(answer) == len(like):
        return [known_members(one, other) for one, other in zip(answer, like)]
    return answer


def compare(answer, chain):
    positions = [position_as_json(position) for position in chain]
    assert known_members(answer, positions) == positions
    for element in answer:
        assert element["tool"] == text_or_none(chain.tool)
        scan = element["scan"]
        assert (scan or {}).get("format") == text_or_none(chain.format)
        if scan:
            assert scan["nearest"] == chain.nearest
            assert scan["name"] == text_or_none(chain[element["position"]].name)


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize("scan", SCANS, ids=lambda path: path.stem)
def test_a_scan_gives_the_answer_of_the_command(shipped, scan):
    text = scan.read_text(errors="surrogateescape")
    for trust in ([], ["--trust-ir"]):
        compare(run_tool("identify", "--format", "json", "--scan", str(scan), *trust), shipped.identify(text, trust_ir=bool(trust)))


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize("comm", ["JTAG", "ISP", "DUAL"])
@pytest.mark.parametrize("ids", IDS, ids=len)
def test_ids_give_the_answer_of_the_command(shipped, ids, comm):
    answer = run_tool("identify", "--format", "json", "--comm", comm, *ids)
    compare(answer, shipped.identify(ids, comm))
    compare(answer, shipped.identify([int(one, 16) for one in ids], comm=comm))


def test_ids_come_in_many_forms(shipped):
    for asked in (0x59604093, [0x59604093], (0x59604093,), {0x59604093}, "59604093", "0x59604093\n", b"0x59604093", ["59604093"],
                  iter([0x59604093]), (one for one in [0x59604093])):  # fmt: skip
        chain = shipped.identify(asked)
        assert [position.match.name for position in chain] == ["XC9572XL"]
    assert [position.id for position in shipped.identify([None, 0])] == [None, 0]
    assert len(shipped.identify([])) == 0


@pytest.mark.parametrize(
    "asked,error",
    [(None, TypeError), (1.5, TypeError), (object(), TypeError), (["x"], ValueError), ([1.5], TypeError), ([b"1"], TypeError),
     (-1, OverflowError), (2**32, OverflowError), ([2**32], OverflowError), ([[1]], TypeError), ("", plddb.Error),
     ("no scan", plddb.Error), ("0x123456789", plddb.Error), ("\udcff", plddb.Error), (b"\xff\xfe", plddb.Error)],
)  # fmt: skip
def test_what_is_no_id_is_refused(shipped, asked, error):
    with pytest.raises(error) as raised:
        shipped.identify(asked)
    if error is plddb.Error:
        fault = raised.value.faults[0]
        assert (fault.file, fault.line >= 1, fault.column >= 1) == ("<scan>", True, True)
        assert fault.text in str(raised.value)


def test_a_chain_is_a_sequence(shipped):
    chain = shipped.identify([0x59604093, 0x12345677, 0x0362D093])
    assert len(chain) == len(chain.positions) == len(list(chain)) == 3
    assert [position.index for position in chain] == [0, 1, 2]
    assert chain[-1].id == chain[2].id == 0x0362D093
    for outside in (3, -4, 2**40):
        with pytest.raises(IndexError):
            _ = chain[outside]
    assert "XC9572XL" in repr(chain) and "unknown" in repr(chain)


def test_a_notebook_shows_a_chain_as_its_drawing(shipped):
    svg = ElementTree.fromstring(shipped.identify([0x59604093, 0x12345677, None])._repr_svg_())
    assert svg.tag == "{http://www.w3.org/2000/svg}svg"
    texts = [element.text for element in svg.iter("{http://www.w3.org/2000/svg}text")]
    assert {"TDI", "TDO", "XC9572XL", "0x12345677", "no IDCODE"} <= set(texts)
    assert shipped.identify([])._repr_svg_() is None
    assert len(ElementTree.fromstring(shipped.identify([0x59604093] * 1000)._repr_svg_())) > 1000


def test_answers_follow_changes(tree):
    assert tree.identify(0x0DEF0043)[0].match is None
    device = tree.families[0].devices[0]
    device.jtag_device_id = 0x0DEF0043
    assert tree.identify(0x0DEF0043)[0].match is device
    assert tree.identify(0x0ABC0043)[0].match is None
    device.device_id_scan_mask = 0
    assert tree.identify(0x0DEF0043)[0].match is None
    tree.families[0].delete_device(1)
    assert tree.identify(0x0DEF0043)[0].match is None


def test_makers_are_named():
    assert plddb.maker(0x59604093).startswith("Xilinx")
    assert plddb.maker(0x00000001).startswith("reserved")
    for wrong in (-1, 2**32):
        with pytest.raises(OverflowError):
            plddb.maker(wrong)


def test_an_answer_counts_its_references(shipped):
    """Nothing of an answer stays behind."""
    device = shipped.get_device_with_name("XC9572XL")
    before = sys.getrefcount(device)
    for _ in range(100):
        repr(shipped.identify([0x59604093]))
    assert sys.getrefcount(device) == before

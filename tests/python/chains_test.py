"""identify answers what the command answers."""

import collections.abc
import io
import sys
from xml.etree import ElementTree

import plddb
import pytest

from conftest import SOURCE, TOOL, read_tool, run_tool_with_messages

SCANS = sorted(path for folder in ("tests/tool/data/scans", "fuzz/corpus/scan") for path in (SOURCE / folder).glob("*"))
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


def match_as_json(position):
    device = position.match
    if device is None:
        return None
    return {
        **device_as_json(device),
        "packages": list(dict.fromkeys(package.type for package in device.packages if package.type)),
        "vendor": device.vendor,
        "neighbour": device.family_object.hidden,
        "hint": position.hint,
    }


def unknown_as_json(unknown):
    if unknown is None:
        return None
    misread = None
    if unknown.misread is not None:
        id_, device, how = unknown.misread
        misread = {**device_as_json(device), "file": device.file, "id": hexadecimal(id_, 8), "how": how}
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
            {
                **device_as_json(device),
                "file": device.file,
                "id": hexadecimal(device.jtag_device_id, 8),
                "difference": difference,
            }
            for device, difference in unknown.nearest
        ],
        "stub": unknown.stub,
    }


def scan_as_json(chain, position):
    if not chain.format:
        return None
    return {
        "format": chain.format,
        "nearest": chain.nearest,
        "name": text_or_none(position.name),
        "irLength": position.scanned_ir_length,
        "irLengthIsGuess": position.is_scanned_ir_length_guess,
    }


def position_as_json(chain, position):
    return {
        "position": position.index,
        "id": None if position.id is None else hexadecimal(position.id, 8),
        "kind": position.kind,
        "match": match_as_json(position),
        "candidates": [candidate.device.code_name or "" for candidate in position.candidates],
        "ambiguous": position.is_ambiguous,
        "ranked": [
            {
                **device_as_json(candidate.device),
                "file": candidate.device.file,
                "reason": candidate.reason,
                "comparedBits": hexadecimal(candidate.bits, 8),
                "searchOrder": candidate.search_order,
            }
            for candidate in position.ranked
        ],
        "irLength": position.ir_length,
        "unknown": unknown_as_json(position.unknown),
        "order": {"TDO": "nearest TDO first", "TDI": "nearest TDI first", None: "order as printed"}[chain.nearest],
        "tool": text_or_none(chain.tool),
        "scan": scan_as_json(chain, position),
    }


def compare(arguments, chain):
    """The chain is what the command answers, and so are its notes."""
    answer, messages = run_tool_with_messages("identify", "--format", "json", *arguments)
    for element in answer:
        for texts_of_fields in ("idcodeInstruction", "bypassInstruction"):
            (element["match"] or {}).pop(texts_of_fields, None)
    assert answer == [position_as_json(chain, position) for position in chain]
    assert messages == ["plddb: warning: " + note for note in chain.notes]


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize("scan", SCANS, ids=lambda path: path.stem)
def test_a_scan_gives_the_answer_of_the_command(shipped, scan):
    text = scan.read_bytes()
    for options, arguments in (
        ([], {}),
        (["--trust-ir", "--order", "tdo"], {"trust_ir": True, "order": "tdo"}),
        (["--ir", "0=5", "--order", "tdi", "--comm", "DUAL"], {"ir": {0: 5}, "order": "tdi", "comm": "DUAL"}),
    ):
        compare(["--scan", str(scan), *options], shipped.identify(text, **arguments))


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize("comm", ["JTAG", "ISP", "DUAL"])
@pytest.mark.parametrize("ids", IDS, ids=len)
def test_ids_give_the_answer_of_the_command(shipped, ids, comm):
    compare(["--comm", comm, *ids], shipped.identify(ids, comm))
    compare(["--comm", comm, "--ir", "0=65535", *ids], shipped.identify([int(one, 16) for one in ids], comm=comm, ir={0: 65535}))


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize(
    "names", [["XC9572XL"], ["xc9572xl", "Artix-7"], ["XC7A35T", "XC9572XL"], ["XC9572XL"] * 3, ["a\x1b", "\udcff"]]
)
def test_what_is_expected_is_compared_as_by_the_command(shipped, names):
    for ids in (["0x59604093"], ["0x59604093", "0x0362D093"], ["0x59604093", "0x12345677"]):
        answer = read_tool("identify", "--expect", ",".join(names), *ids)
        differences = [line for line in answer.splitlines() if not line.endswith(", as expected")]
        assert shipped.identify(ids).expect(names) == differences
        assert shipped.identify(ids).expect(name for name in names) == differences


def test_ids_come_in_many_forms(shipped):
    for asked in (bytearray(b"59604093"), io.StringIO("0x59604093\n"), io.BytesIO(b"0x59604093\n"),
                  0x59604093, [0x59604093], (0x59604093,), {0x59604093}, "59604093", "0x59604093\n", b"0x59604093", ["59604093"],
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


@pytest.mark.parametrize(
    "arguments,error",
    [({"comm": "jtag"}, ValueError), ({"comm": ""}, ValueError), ({"comm": None}, ValueError), ({"comm": 1}, TypeError),
     ({"order": "TDO"}, ValueError), ({"order": ""}, ValueError), ({"order": 1}, TypeError), ({"ir": {1: 5}}, ValueError),
     ({"ir": {-1: 5}}, ValueError), ({"ir": {0: 1}}, ValueError), ({"ir": {0: 65536}}, ValueError), ({"ir": {0: -1}}, ValueError),
     ({"ir": {0: 2**70}}, OverflowError), ({"ir": {0: "5"}}, TypeError), ({"ir": {"0": 5}}, TypeError), ({"ir": 5}, TypeError),
     ({"trust": True}, TypeError)],
)  # fmt: skip
def test_wrong_options_are_refused(shipped, arguments, error):
    with pytest.raises(error):
        shipped.identify([0x59604093], **arguments)


def test_expected_names_are_a_list(shipped):
    chain = shipped.identify(0x59604093)
    assert chain.expect([]) == ["position 0: found XC9572XL (0x59604093), expected nothing"]
    assert chain.expect(("XC9500XL",)) == []
    for wrong in ("XC9572XL", None, 5, [5], [None], [b"XC9572XL"]):
        with pytest.raises(TypeError):
            chain.expect(wrong)


def test_a_chain_behaves_as_a_sequence(shipped):
    chain = shipped.identify([0x59604093, 0x12345677, 0x0362D093, 0x59604093])
    positions = list(chain)
    assert isinstance(chain, collections.abc.Sequence)
    assert issubclass(plddb.Chain, collections.abc.Sequence)
    for part in (slice(None), slice(1, 3), slice(None, None, -1), slice(-2, None), slice(9, 20), slice(3, 0, -2)):
        assert chain[part] == positions[part]
    assert list(reversed(chain)) == positions[::-1]
    assert [chain.index(position) for position in positions] == [0, 1, 2, 3]
    assert all(position in chain and chain.count(position) == 1 for position in positions)
    assert len(set(positions)) == len(set(chain)) == 4
    other = shipped.identify([0x59604093, 0x12345677, 0x0362D093, 0x59604093])
    for stranger in (other[0], None, 0, "XC9572XL", positions[0].match):
        assert stranger not in chain and chain.count(stranger) == 0 and chain[0] != stranger
        with pytest.raises(ValueError):
            chain.index(stranger)
    for wrong in (None, "0", 1.0, 2**70):
        with pytest.raises((TypeError, IndexError)):
            _ = chain[wrong]
    for change in (lambda: chain.__setitem__(0, None), lambda: chain.append(None), lambda: chain.__delitem__(0)):
        with pytest.raises((TypeError, AttributeError)):
            change()
    assert list(shipped.identify([])) == shipped.identify([])[:] == []


def test_candidates_are_equal_when_they_are_the_same_device_for_the_same_reason(shipped):
    first, second = shipped.identify([0x0484A093, 0x0484A093])
    assert first.candidates == second.candidates and len(first.candidates) > 1
    assert first.candidates[0] != first.candidates[1]
    assert len(set(first.candidates + second.candidates)) == len(first.candidates)
    assert sorted(first.ranked, key=lambda one: one.search_order) == first.candidates
    assert first != second
    assert first.candidates[0] != first.match


def test_an_ambiguous_position_raises_when_any_of_its_devices_was_deleted(tree):
    family = tree.families[0]
    for device in family.devices:
        device.jtag_device_id = 0x0ABC0043
    chain = tree.identify(0x0ABC0043)
    family.delete_device(3)
    assert "deleted" in repr(chain)
    for use in ("is_ambiguous", "ir_length", "kind", "hint", "ranked"):
        with pytest.raises(plddb.DeletedError):
            getattr(chain[0], use)
    for use in (chain.to_svg, lambda: chain.notes, lambda: chain.expect([])):
        with pytest.raises(plddb.DeletedError):
            use()
    assert [candidate.device.is_deleted for candidate in chain[0].candidates] == [False, False, True]


def test_a_chain_counts_and_indexes_its_positions(shipped):
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
    chain = shipped.identify(0x59604093)
    assert chain.to_svg() == chain._repr_svg_()
    assert shipped.identify([]).to_svg() is shipped.identify([])._repr_svg_() is None
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

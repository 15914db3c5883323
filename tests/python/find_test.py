"""find answers with all devices that a text may mean."""

import plddb
import pytest

from conftest import TOOL, run_tool

TEXTS = [
    "XC9572XL", "xc9572xl", "XC9572XL-10VQG44C", "9572XL-VQ44", "XC95*XL", "XC9?36XL", "0x59604093", "59604093", "46656", "Artix-7",
    "VQ44", "artix", "7A35", "XC7A35T-1CPG236C", "LCMXO2", "cores", "*", "?", "XC9572XL-ZZ", "nothing of this name", "XC9572L",
    "0x12345677", " XC9572XL ", "é", "\udcff", "\x1b", "XC" * 1000, "-", "0", "4294967296", "10M08", "EP4CE22F17C6N",
]  # fmt: skip


def mark_as_json(mark):
    if mark is None:
        return None
    return {
        "name": mark.name,
        "package": mark.package or None,
        "packageDescribed": mark.is_package_described,
        "leadFree": mark.is_lead_free,
        "speed": mark.speed or None,
        "temperature": mark.temperature or None,
        "unknown": mark.unknown,
    }


def match_as_json(match):
    device = match.device
    return {
        "key": match.keys[0],
        "matchedBy": match.keys,
        "match": match.kind,
        "name": device.name,
        "family": device.family_object.name,
        "codeName": device.code_name,
        "packages": list(dict.fromkeys(package.type for package in device.packages if package.type)),
        "file": device.file,
        "mark": mark_as_json(match.mark),
    }


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize("text", TEXTS, ids=lambda text: repr(text[:20]))
def test_the_answer_is_that_of_the_command(shipped, text):
    answer = run_tool("find", "--json", "--all", "--", text)
    for one in answer["matches"]:
        del one["line"]
    assert answer["matches"] == [match_as_json(match) for match in shipped.find(text)]
    assert answer["suggestions"] == ([] if answer["matches"] else shipped.near_names(text))


@pytest.mark.skipif(not TOOL, reason="the command is not built")
@pytest.mark.parametrize("family", ["XC9500XL", "xc9500xl", "Artix-7"])
def test_so_is_the_answer_in_a_family(shipped, family):
    for text in ("XC9572XL", "XC*", "VQ44", "7A"):
        answer = run_tool("find", "--json", "--all", "--family", family, text)
        assert [one["name"] for one in answer["matches"]] == [match.device.name for match in shipped.find(text, family)]


def test_names_are_suggested(shipped):
    assert "XC9572XL" in shipped.near_names("XC9572L")
    assert shipped.near_names("") == shipped.near_names("\udcff" * 40) == []
    with pytest.raises(TypeError):
        shipped.near_names(b"x")


@pytest.mark.parametrize(
    "text,kind,keys,names",
    [
        ("xc9572xl", "exact", ["name", "code-name"], ["XC9572XL"]),
        (" XC9572XL ", "exact", ["name", "code-name"], ["XC9572XL"]),
        ("XC95*XL", "pattern", None, ["XC9536XL", "XC9572XL", "XC95144XL", "XC95288XL"]),
        ("nothing of this name", None, None, []),
        ("", None, None, []),
        ("\udcff", None, None, []),
    ],
)
def test_a_text_finds_its_devices(shipped, text, kind, keys, names):
    matches = shipped.find(text)
    assert [match.device.name for match in matches] == names
    for match in matches:
        assert match.kind == kind
        assert keys is None or match.keys == keys
        assert match.device is shipped.get_device_with_name(match.device.name)
        assert match.device.name in repr(match)


def test_a_mark_on_a_chip_is_read(shipped):
    (match,) = shipped.find("XC9572XL-10VQ44C")[:1]
    assert match.device.name == "XC9572XL"
    mark = match.mark
    assert mark is None or (mark.package, mark.speed) == ("VQ44", "-10")


def test_a_family_limits_the_search(shipped):
    assert shipped.find("XC9572XL", family="Artix-7") == []
    assert [match.device.name for match in shipped.find("XC9572XL", "XC9500XL")] == ["XC9572XL"]


def test_wrong_arguments_are_refused(shipped):
    for wrong in (5, b"x", []):
        with pytest.raises(TypeError):
            shipped.find(wrong)


def test_matches_outlive_the_search(tree):
    (match,) = plddb.parse(plddb.write(tree)).find("PLD1214A")
    assert match.device.database.families[0].devices[1].name == "PLD1214A"

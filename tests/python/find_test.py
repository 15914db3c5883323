"""find answers with all devices that a text may mean."""

import plddb
import pytest


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

"""Every lookup of the library, under its own name."""

import plddb
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st


@pytest.fixture
def keys(tree):
    """The tree with what the lookups look for in its second device."""
    device = tree.families[0].devices[1]
    device.alias_name = "ALIAS1"
    device.vendor = "Acme"
    device.isp_device_id = 0x80
    device.physical_ues_length = 16
    device.fuse_number = 5828
    package = device.packages[1]
    package.pon = "PLD1214A-5BG"
    package.backup_pon = "PLD1214A-5BG"
    package.alias_pon = "ALIAS-PON"
    package.jdf = "device12.jdf"
    package.orvo_setting = "orvo"
    return tree


FOUND = [
    ("get_device_with_name", "pld1214a"),
    ("get_device_with_code_name", "Code1"),
    ("get_device_with_code_name", "alias1"),
    ("get_device_with_pon", "pld1214a", True),
    ("get_device_with_pon", "alias-pon", False),
    ("get_device_with_comm", "JTAG", "pld1214a"),
    ("get_device_with_comm_and_code_name", "JTAG", "code1"),
    ("get_device_with_comm_and_id", "JTAG", 0x5ABC1043),
    ("get_device_with_comm_and_id", "ISP", 0x80),
    ("get_device_with_comm_and_id_and_code_name", "JTAG", 0x5ABC1043, "CODE1"),
    ("get_device_with_comm_and_id_no_mask", "JTAG", 0x0ABC1043),
    ("get_device_with_jdf_file_name", "device34.jdf"),
    ("get_device_with_entity_name", "pld1214a_5bg"),
    ("get_device_with_entity_name_disregard_ues", "PLD1214A_5BG"),
    ("get_device_with_fuse_map_and_full_name", 5892, "CODE1"),
    ("get_device_with_fuse_map_and_full_name_ex", 5828, "code1"),
]
MISSING = [
    ("get_device_with_name", "pld"),
    ("get_device_with_name", ""),
    ("get_device_with_name", None),
    ("get_device_with_name", "\udcff"),
    ("get_device_with_name", "x" * 100000),
    ("get_device_with_pon", "pld1214a", False),
    ("get_device_with_comm", "jtag", "pld1214a"),
    ("get_device_with_comm_and_id", "JTAG", 0),
    ("get_device_with_comm_and_id", "other", 0x0ABC1043),
    ("get_device_with_comm_and_id", None, 0x0ABC1043),
    ("get_device_with_comm_and_id_no_mask", "JTAG", 0x5ABC1043),
    ("get_device_with_comm_and_id_and_code_name", "JTAG", 0x5ABC1043, "code1"),
    ("get_device_with_jdf_file_name", "device1.jdf"),
    ("get_device_with_entity_name", "x"),
    ("get_device_with_fuse_map_and_full_name", 1, "CODE1"),
]


@pytest.mark.parametrize("row", FOUND)
def test_a_lookup_finds_its_device(keys, row):
    name, *arguments = row
    assert getattr(keys, name)(*arguments) is keys.families[0].devices[1]


@pytest.mark.parametrize("row", MISSING)
def test_a_lookup_answers_none(keys, row):
    name, *arguments = row
    assert getattr(keys, name)(*arguments) is None


@pytest.mark.parametrize("row", FOUND)
def test_wrong_arguments_are_refused(keys, row):
    name, *arguments = row
    lookup = getattr(keys, name)
    with pytest.raises(TypeError):
        lookup()
    with pytest.raises(TypeError):
        lookup(*arguments, "more")
    for i, argument in enumerate(arguments):
        if isinstance(argument, bool):
            continue  # anything is true or false
        for wrong in (b"x", 1.5, [], -1):
            with pytest.raises((TypeError, OverflowError)):
                lookup(*arguments[:i], wrong, *arguments[i + 1 :])


def test_lookups_by_package(keys):
    first, second, _ = keys.families[0].devices
    assert keys.get_device_with_package("TQ100", "pld1214a") is second
    assert keys.get_device_with_package("tq100", "pld1214a") is None
    assert keys.get_device_with_package_and_code_name("BG256", "code0") is first
    assert second.get_package("BG256") is second.packages[1]
    assert second.get_package("bg256") is None
    assert second.get_package_type_with_jdf_file("device12.jdf") == "BG256"
    assert second.get_package_pon_with_jdf_file("device12.jdf") == "PLD1214A-5BG"
    assert second.get_orvo_setting_with_jdf_file("device12.jdf") == "orvo"
    assert second.get_orvo_setting_with_jdf_file("x") is None
    assert second.packages[1].entity_name == "PLD1214A_5BG"


def test_lookups_of_a_family(keys):
    family = keys.families[0]
    second = family.devices[1]
    for row in (
        family.get_device("pld1214a"),
        family.get_device(1),
        family.get_device("JTAG", 0x0ABC1043),
        family.get_device("ISP", 0x80),
        family.get_device("TQ100", "code1"),
        family.get_device_with_code_name("code1"),
        family.get_device_with_code_name("JTAG", "code1"),
        family.get_device_with_code_nameand_vendor("code1", "acme"),
        family.get_device_with_comm("JTAG", "pld1214a"),
        family.get_device_with_package("TQ100", "pld1214a"),
    ):
        assert row is second
    assert family.get_last_device() is family.devices[2]
    assert [family.get_device_pos(name) for name in ("pld1204a", "PLD1224A", "x")] == [0, 2, -1]
    for none in (family.get_device("x"), family.get_device(3), family.get_device(-1), family.get_device("JTAG", 5)):
        assert none is None
    assert family.insert_new_device(9) is None
    assert family.add_new_device(3) is family.devices[3]
    assert family.insert_new_device(1) is family.devices[0]


def test_families_of_a_database(keys):
    family = keys.families[0]
    family.alias_name = "OTHER"
    assert keys.get_family("PLD1200") is keys.get_family("OTHER") is keys.get_family(0) is keys.get_last_family() is family
    assert keys.get_family("pld1200") is keys.get_family(1) is keys.get_family(-1) is None
    assert plddb.Database().get_last_family() is None
    assert (keys.family_count, keys.device_count, family.device_count) == (1, 3, 3)


def test_attributes_of_a_family_by_name(keys):
    family = keys.families[0]
    family.bypass_inst, family.id_code_inst, family.isc_release = "0xFF", "0xFE", 7
    family.hidden = family.fpga_device = True
    answers = {
        "get_bypass_instwfamily_name": ("0xFF", None),
        "get_id_code_instwfamily_name": ("0xFE", None),
        "get_isc_releasewfamily_name": (7, 0),
        "get_hiddenwfamily_name": (True, False),
        "get_fpga_devicewfamily_name": (True, False),
        "get_fpga_loader_supportwfamily_name": (False, False),
        "get_re_initializewfamily_name": (False, False),
        "get_debug_modewfamily_name": (False, False),
        "get_extensionwfamily_name": ("*.jed", None),
    }
    for name, (known, unknown) in answers.items():
        assert getattr(keys, name)("PLD1200") == known, name
        assert getattr(keys, name)("x") == getattr(keys, name)(None) == unknown, name


def test_lists_of_candidates(keys):
    devices = keys.families[0].devices
    devices[2].jtag_device_id = 0x0ABC1043
    assert keys.get_device_list_with_comm_and_id("JTAG", 0x1ABC1043) == ["CODE1", "CODE2"]
    assert keys.list_devicenames == ["CODE1", "CODE2"]
    assert keys.get_device_list_with_comm_and_id("JTAG", 0) == []
    assert keys.list_devicenames == ["CODE1", "CODE2"]
    assert keys.get_device_code_name_with_fuse_map(5828) == ["CODE1"]
    assert keys.get_device_with_fuse_map(5828) == ["PLD1214A"]
    assert keys.get_device_with_fuse_map(5828) == ["PLD1214A"]
    assert keys.get_device_comm_isp_with_fuse_map(5828) == 0
    devices[1].comm = "ISP"
    assert keys.get_device_comm_isp_with_fuse_map(5828) == 1


def test_several_files_are_searched_in_turn(tmp_path, tree):
    (tmp_path / "b.xml").write_text(plddb.write(tree))
    tree.families[0].devices[0].ir_length = 99
    tree.families[0].name = "FIRST"
    (tmp_path / "a.xml").write_text(plddb.write(tree))
    db = plddb.load(tmp_path)
    assert [family.name for family in db.families] == ["FIRST", "PLD1200"]
    assert db.get_device_with_name("PLD1204A").ir_length == 99
    assert plddb.load(tmp_path / "b.xml", tmp_path / "a.xml").get_device_with_name("PLD1204A").ir_length == 8
    assert db.get_family("PLD1200") is db.get_family(1) is db.get_last_family()
    assert db.get_isc_releasewfamily_name("PLD1200") == 0
    assert db.get_extensionwfamily_name("PLD1200") == "*.jed"
    assert db.get_device_list_with_comm_and_id("JTAG", 0x0ABC0043) == ["CODE0", "CODE0"]
    assert [candidate.search_order for candidate in db.identify(0x0ABC0043)[0].candidates] == [1, 2]
    db.new_family().name = "LAST"
    assert db.get_family(2).name == "LAST"
    assert db.delete_family(1) and not db.delete_family(2) and not db.delete_family(-1)
    assert [family.name for family in db.families] == ["FIRST", "LAST"]


def test_bypass_devices_and_hidden_families(tree):
    device = tree.families[0].devices[0]
    device.name = "JTAG-ISC"
    assert [plddb.is_bypass_device(device, mode) for mode in range(-1, 8)] == [mode in (3, 5) for mode in range(-1, 8)]
    assert not plddb.is_hiden_family(tree.families[0])
    tree.families[0].hidden = True
    assert plddb.is_hiden_family(tree.families[0])


@settings(max_examples=100, deadline=None)
@given(st.integers(-(2**70), 2**70), st.text(alphabet=st.characters(), max_size=20))
def test_no_argument_breaks_a_lookup(shipped, number, text):
    for call in (
        lambda: shipped.get_device_with_comm_and_id(text, number),
        lambda: shipped.get_family(number),
        lambda: shipped.get_device_code_name_with_fuse_map(number),
        lambda: shipped.get_device_with_pon(text, True),
        lambda: shipped.families[0].get_device(number),
        lambda: shipped.identify(number, text),
        lambda: shipped.identify(text),
        lambda: plddb.maker(number),
    ):
        try:
            call()
        except (OverflowError, TypeError, ValueError, plddb.Error):
            pass

"""Fields of records are properties."""

import plddb
import pytest

RECORDS = {"Family": plddb.Family, "Device": plddb.Device, "Package": plddb.Package, "Adapter": plddb.Adapter}


def record(tree, kind):
    device = tree.families[0].devices[0]
    package = device.packages[0]
    return {"Family": tree.families[0], "Device": device, "Package": package, "Adapter": package.adapters[0]}[kind]


def fields(marker):
    """The properties of records whose documentation has these words."""
    return [
        (kind, name)
        for kind, cls in RECORDS.items()
        for name, value in vars(cls).items()
        if isinstance(value, property) and value.fset is not None and marker in (value.__doc__ or "")
    ]


RANGES = [
    ("from 0 to 255", 0, 255),
    ("from 0 to 65,535", 0, 65535),
    ("of 32 bits, from 0", 0, 2**32 - 1),
    ("signed number of 32 bits", -(2**31), 2**31 - 1),
]
NUMBERS = [(kind, name, least, most) for marker, least, most in RANGES for kind, name in fields(marker)]
TEXTS = fields("A text; None while unset.")
FLAGS = fields("A flag.")


def test_all_kinds_of_fields_are_there():
    assert len(TEXTS) >= 35
    assert len(NUMBERS) >= 50
    assert len(FLAGS) >= 8


@pytest.mark.parametrize("kind,name,least,most", NUMBERS)
def test_a_number_keeps_what_fits(tree, kind, name, least, most):
    one = record(tree, kind)
    for value in (most, least, 1, True):
        setattr(one, name, value)
        if name != "bitstream_col_width":  # 0 answers data_length
            assert getattr(one, name) == value, name
    for value in (most + 1, least - 1, 2**64, -(2**64), 10**30):
        with pytest.raises(OverflowError, match=name):
            setattr(one, name, value)
    for value in ("1", 1.0, None, b"1", [], object()):
        with pytest.raises(TypeError):
            setattr(one, name, value)
    assert getattr(one, name) == 1


@pytest.mark.parametrize("kind,name", TEXTS)
def test_a_text_keeps_any_bytes(tree, kind, name):
    one = record(tree, kind)
    for text in ("", "a", "é漢😀", "\udc80\udcff", "a\udcffb", "x" * 70000, "\n\t", "\x7f"):
        setattr(one, name, text)
        expected = None if name == "bitstream_model_template" and text == "" else text
        assert getattr(one, name) == expected
    setattr(one, name, "kept")
    for wrong, error in ((1, TypeError), (b"x", TypeError), ("a\0b", ValueError), ("\ud800", UnicodeEncodeError)):
        with pytest.raises(error):
            setattr(one, name, wrong)
    assert getattr(one, name) == "kept"
    setattr(one, name, None)  # on purpose two fields of a family take it for the empty text
    assert getattr(one, name) == {"icf_file": "", "bitstream_model_template": None}.get(name, "kept")


@pytest.mark.parametrize("kind,name", FLAGS)
def test_a_flag_is_true_or_false(tree, kind, name):
    one = record(tree, kind)
    for value in (True, False, True):
        setattr(one, name, value)
        assert getattr(one, name) is value
    for wrong in (1, 0, None, "true", []):
        with pytest.raises(TypeError):
            setattr(one, name, wrong)


def test_new_records_have_the_defaults_of_the_library():
    family = plddb.Database().new_family()
    device = family.new_device()
    assert (family.name, family.hidden, family.isc_release, family.icf_file) == (None, False, 0, "")
    assert (device.name, device.ir_length, device.jtag_device_id, device.disable_device_stapl_support) == (None, 0, 0, False)
    assert (device.packages, device.list_control_status, device.multiboot_cfg_addr, device.sys_io) == ([], [], [], [])


def test_names_follow_the_stems_of_the_library():
    for name in (
        "ir_length jtag_device_id isp_device_id jtag_device_id_backup device_id_scan_mask bscan_length arch_length e_row "
        "isp_logical_ues_length usercode_instruction turbo_alg_index bsdl_file soft_ip_file number_of_external_asc"
    ).split():
        assert isinstance(getattr(plddb.Device, name), property), name
    for name in "xfp_file id_code_inst ieee1532_compliant cdr_fixed fpga_loader_support cfg_pin_count".split():
        assert isinstance(getattr(plddb.Family, name), property), name
    for name in "type pon jdf ini orvo_setting backup_pon alias_pon".split():
        assert isinstance(getattr(plddb.Package, name), property), name


def test_setting_the_access_mode_sets_the_algorithm_options():
    device = plddb.Database().new_family().new_device()
    device.comm = "DUAL"
    assert device.alg_options == "DUAL"
    device.alg_options = "x"
    assert device.comm == "DUAL"


def test_unknown_names_are_refused(tree):
    for one in (tree, *(record(tree, kind) for kind in RECORDS)):
        with pytest.raises(AttributeError):
            one.ir_lenght = 8
        with pytest.raises(AttributeError):
            _ = one.ir_lenght


def test_a_property_takes_only_its_own_kind_of_record(tree):
    family, device = tree.families[0], tree.families[0].devices[0]
    for wrong in (family, tree, None, object(), 1):
        with pytest.raises(TypeError):
            plddb.Device.ir_length.fget(wrong)
        with pytest.raises(TypeError):
            plddb.Device.ir_length.fset(wrong, 1)
    with pytest.raises(TypeError):
        plddb.Family.name.fget(device)


def test_records_show_what_they_are(tree):
    family = tree.families[0]
    device = family.devices[1]
    assert repr(device) == "<plddb.Device PLD1214A of PLD1200, IDCODE 0x0ABC1043>"
    assert repr(family) == "<plddb.Family PLD1200, 3 devices>"
    assert repr(tree) == "<plddb.Database of 1 family, 3 devices>"
    assert repr(device.packages[0]) == "<plddb.Package TQ100>"
    assert repr(device.packages[0].adapters[0]) == "<plddb.Adapter A-TQ100 of Acme>"
    assert repr(plddb.Database().new_family().new_device()) == "<plddb.Device without name>"
    device.name = "\udcff"
    assert "\udcff" in repr(device)

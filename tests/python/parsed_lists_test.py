"""Parsed lists are lists of named values."""

import plddb
import pytest

#        property,                class,              first text setter,                    fields with values
ROWS = [
    ("list_control_reg_zero", plddb.ControlRegZero, "set_list_control_reg0_frequency",
     {"frequency": "10", "master_clock": "m", "clock_divider": "\udcff"}),
    ("list_control_reg_one", plddb.ControlRegOne, "set_list_control_reg1_bit_name",
     {"bit_name": "b", "value": -1, "address": 2**31 - 1, "column": 3}),
    ("list_persistent_fuse", plddb.PersistentFuse, "set_list_persistent_fuse_address",
     {"value": 1, "address": -(2**31), "column": 3}),
    ("list_control_status", plddb.ControlStatus, "set_list_control_status_bit_name",
     {"bit_name": "DONE", "control": "c", "text": "é", "index": 4}),
    ("control_voltage", plddb.ControlVoltage, "set_control_voltage_vcc_core",
     {"vcc_core": "1.2", "vccj": "3.3", "pin_list": "A1 B2"}),
]  # fmt: skip


@pytest.fixture
def device():
    return plddb.Database().new_family().new_device()


@pytest.mark.parametrize("name,cls,setter,values", ROWS)
def test_a_list_of_values_is_kept(device, name, cls, setter, values):
    assert getattr(device, name) == []
    setattr(device, name, [cls(**values), cls()])
    first, second = getattr(device, name)
    assert {field: getattr(first, field) for field in values} == values
    assert first == cls(**values) != second == cls()
    assert repr(first) == f"plddb.{cls.__name__}(" + ", ".join(f"{k}={v!r}" for k, v in values.items()) + ")"


@pytest.mark.parametrize("name,cls,setter,values", ROWS)
def test_an_entry_is_changed_in_place(device, name, cls, setter, values):
    setattr(device, name, [cls(), cls()])
    entry = getattr(device, name)[1]
    for field, value in values.items():
        setattr(entry, field, value)
    assert getattr(device, name) == [cls(), cls(**values)]


@pytest.mark.parametrize("name,cls,setter,values", ROWS)
def test_text_setters_make_entries(device, name, cls, setter, values):
    getattr(device, setter)("LABEL;1;2;3;" if name != "control_voltage" else "1")
    assert len(getattr(device, name)) == (1 if name == "control_voltage" else 3)
    getattr(device, setter)(None)
    assert len(getattr(device, name)) == (1 if name == "control_voltage" else 3)
    for wrong in (1, b"", []):
        with pytest.raises(TypeError):
            getattr(device, setter)(wrong)


@pytest.mark.parametrize("name,cls,setter,values", ROWS)
def test_what_is_no_entry_is_refused(device, name, cls, setter, values):
    setattr(device, name, [cls()])
    others = [row[1] for row in ROWS if row[1] is not cls]
    for wrong in ([1], [None], ["x"], [others[0]()], None, 5, [cls(), others[1]()]):
        with pytest.raises(TypeError):
            setattr(device, name, wrong)
    assert len(getattr(device, name)) == 1
    with pytest.raises(TypeError):
        cls(colour=1)
    with pytest.raises(TypeError):
        cls(1)
    with pytest.raises(TypeError):
        hash(cls())
    assert (cls() == 1) is False


def test_blocks_of_embedded_memory(device):
    device.set_list_control_ebr_bit_name("8")
    device.set_list_control_ebr_column("0 to 31")
    device.set_list_control_ebr_address("0 to 1")
    device.set_list_control_ebr_name("EBR0")
    block = device.list_control_ebr[0]
    assert block.name == "EBR0"
    assert [entry.column for entry in block.entries] == [0, 8, 16, 24] * 2
    entry = block.entries[3]
    entry.value = True
    entry.address = 77
    assert device.list_control_ebr[0].entries[3] == plddb.ControlEBR(bit_name="4", value=True, address=77, column=24)
    block.entries = [plddb.ControlEBR(bit_name="x")]
    assert device.list_control_ebr[0].entries == [plddb.ControlEBR(bit_name="x")]
    with pytest.raises(plddb.DeletedError):
        _ = entry.column
    block.name = "other"
    device.list_control_ebr = [block, plddb.ControlEBRList(name="own", entries=[plddb.ControlEBR()])]
    assert [one.name for one in device.list_control_ebr] == ["other", "own"]
    with pytest.raises(plddb.DeletedError):
        _ = block.name


def test_boundary_scan_controls_and_modes_of_a_family():
    family = plddb.Database().new_family()
    family.set_list_b_scan_control("X;A;B;")
    family.list_b_scan_control[0].default_value = 5
    assert family.list_b_scan_control == [plddb.BScanControl(default_value=5, controls=["A", "B"])]
    family.list_b_scan_control[0].controls.append("lost")  # a new list each time
    assert family.list_b_scan_control[0].controls == ["A", "B"]
    family.list_b_scan_control = [plddb.BScanControl(controls=["\udcff"])]
    family.set_b_scan_default_value(3)
    assert family.list_b_scan_control == [plddb.BScanControl(default_value=3, controls=["\udcff"])]
    family.set_list_programming_mode_control("M;JTAG;SPI;")
    assert family.list_programming_mode_control == ["JTAG", "SPI"]
    family.list_programming_mode_control = ("A",)
    family.list_programming_mode_control = []
    assert family.list_programming_mode_control == ["A"]
    family.set_operation_list('"Erase", "Program"')
    family.add_operation_list("Verify")
    family.delete_operation_list("Erase")
    assert family.operations == ["Program", "Verify"]


def test_lists_of_numbers_and_texts(device):
    device.multiboot_cfg_addr = [1, -2, 2**31 - 1]
    device.set_multiboot_cfg_addr("16; 32 48")
    assert device.multiboot_cfg_addr == [1, -2, 2**31 - 1, 16, 32, 48]
    device.multiboot_cfg_addr = []
    device.multiboot_auto_add = range(3)
    assert (device.multiboot_cfg_addr, device.multiboot_auto_add) == ([], [0, 1, 2])
    for wrong in (["1"], [None], [2**31], 5):
        with pytest.raises((TypeError, OverflowError)):
            device.multiboot_auto_add = wrong
    device.set_sys_io_list('"LVTTL", "LVCMOS33"')
    device.add_sys_io_list("X")
    assert device.sys_io == ["LVTTL", "LVCMOS33", "X"]
    device.set_list_address_range("R;0 to 5;6 to 7;")
    assert device.list_address_range == ["0 to 5", "6 to 7"]

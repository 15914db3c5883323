"""Records keep their database alive; what was deleted or replaced raises."""

import gc
import random
import threading

import plddb
import pytest
from hypothesis import HealthCheck, settings
from hypothesis import strategies as st
from hypothesis.stateful import Bundle, RuleBasedStateMachine, consumes, multiple, rule


def every_use(one):
    """Uses each member of a record that needs no argument."""
    for name, value in vars(type(one)).items():
        if isinstance(value, property):
            yield name, lambda name=name: getattr(one, name)


def is_deleted(one):
    """Whether every use raises; repr never does."""
    assert "deleted" in repr(one)
    for name, use in every_use(one):
        with pytest.raises(plddb.DeletedError):
            use()
            pytest.fail(name)
    return one.is_deleted


def test_records_outlive_all_other_references(tree):
    device = tree.families[0].devices[0]
    held = [device, device.packages[0], device.packages[0].adapters[0], device.family_object]
    names = [device.name, "TQ100", "A-TQ100", "PLD1200"]
    device.set_list_control_status_bit_name("S;A;B;")
    entry = device.list_control_status[1]
    other = plddb.parse(plddb.write(tree)).families[0].devices[2]
    del tree, device
    gc.collect()
    assert [held[0].name, held[1].type, held[2].adapter_name, held[3].name] == names
    assert entry.bit_name == "B"
    assert other.name == "PLD1224A"
    assert other.database.families[0].devices[0].name == "PLD1204A"


def test_one_record_is_one_object(tree):
    device = tree.families[0].devices[0]
    assert device is tree.families[0].devices[0]
    assert device is tree.get_device_with_name("pld1204a")
    assert device is tree.identify(0x0ABC0043)[0].match
    assert device.database is tree
    assert device.family_object is tree.families[0]


def test_a_deleted_family_takes_all_its_records_along(tree):
    family = tree.families[0]
    devices = family.devices
    packages = [package for device in devices for package in device.packages]
    adapters = [adapter for package in packages for adapter in package.adapters]
    devices[0].set_list_control_status_bit_name("S;A;")
    entry = devices[0].list_control_status[0]
    chain = tree.identify(0x0ABC0043)
    assert tree.delete_family("PLD1200")
    assert all(is_deleted(one) for one in [family, *devices, *packages, *adapters])
    with pytest.raises(plddb.DeletedError):
        _ = entry.bit_name
    with pytest.raises(plddb.DeletedError):
        entry.bit_name = "x"
    with pytest.raises(plddb.DeletedError):
        chain._repr_svg_()
    with pytest.raises(plddb.DeletedError):
        _ = chain[0].ir_length
    assert chain[0].match.is_deleted
    assert "deleted" in repr(chain)
    assert tree.families == []
    assert not tree.delete_family("PLD1200")


@pytest.mark.parametrize(
    "delete,gone",
    [
        (lambda family: family.delete_device(1), 0),
        (lambda family: family.delete_device(3), 2),
        (lambda family: family.delete_device("code1"), 1),
        (lambda family: family.delete_device(0), None),
        (lambda family: family.delete_device(4), None),
        (lambda family: family.delete_device(-1), None),
        (lambda family: family.delete_device("other"), None),
    ],
)
def test_a_deleted_device_is_gone_alone(tree, delete, gone):
    family = tree.families[0]
    devices = family.devices
    packages = [device.packages[0] for device in devices]
    assert delete(family) is (gone is not None)
    for i, device in enumerate(devices):
        assert device.is_deleted == (i == gone)
        assert packages[i].is_deleted == (i == gone)
    assert family.devices == [device for i, device in enumerate(devices) if i != gone]


def test_deleted_adapters_raise(tree):
    package = tree.families[0].devices[0].packages[0]
    package.add_adapter("Acme", "B")
    first, second = package.adapters
    package.remove_adapter(5)
    package.remove_adapter(-1)
    package.remove_adapter(0)
    assert is_deleted(first)
    assert second.adapter_name == "B"
    package.clear_adapter_list()
    assert is_deleted(second)
    assert package.adapters == []


def test_methods_of_deleted_records_raise(tree):
    device = tree.families[0].devices[0]
    family = tree.families[0]
    package = device.packages[0]
    tree.delete_family(0)
    for use in (
        device.new_package,
        device.restore_device_backup_value,
        lambda: device.change_device_cdr_value("H-"),
        lambda: device.get_package("TQ100"),
        lambda: device.set_list_control_status_bit_name("S;A;"),
        lambda: device.set_sys_io_list('"A"'),
        lambda: plddb.is_bypass_device(device, 6),
        lambda: plddb.is_hiden_family(family),
        family.new_device,
        lambda: family.get_device("x"),
        lambda: family.get_device(0),
        lambda: family.insert_new_device(1),
        lambda: family.delete_device(1),
        lambda: package.add_adapter("a", "b"),
        package.clear_adapter_list,
    ):
        with pytest.raises(plddb.DeletedError):
            use()


def test_entries_of_a_replaced_list_raise(tree):
    device = tree.families[0].devices[0]
    device.set_list_control_status_bit_name("S;A;B;")
    device.set_list_control_reg1_bit_name("S;R;")
    old = device.list_control_status
    other = device.list_control_reg_one[0]
    device.list_control_status = []  # keeps the old list
    assert [entry.bit_name for entry in old] == ["A", "B"]
    device.set_list_control_status_bit_name("S;C;")  # lengthens it
    assert [entry.bit_name for entry in old] == ["A", "B"]
    device.list_control_status = [old[1]]
    for entry in old:
        with pytest.raises(plddb.DeletedError):
            _ = entry.index
        assert repr(entry) == "<plddb.ControlStatus (deleted)>"
    assert other.bit_name == "R"
    assert [entry.bit_name for entry in device.list_control_status] == ["B"]


def test_an_iteration_survives_what_is_deleted_meanwhile(tree):
    seen = 0
    for device in tree.families[0].devices:
        tree.families[0].delete_device(1)
        seen += device.is_deleted
    assert seen == 3


def test_a_merged_copy_shares_nothing(tree):
    copy = tree.copy()
    copy.families[0].devices[0].name = "other"
    assert tree.families[0].devices[0].name == "PLD1204A"
    tree.add_new_device_list(tree)
    assert tree.family_count == 1
    tree.add_new_device_list(copy)
    assert [family.devices[0].name for family in tree.families] == ["PLD1204A", "other"]
    copy.delete_family(0)
    assert tree.families[1].devices[0].name == "other"


def test_threads_read_and_write_one_database(tree):
    failures = []
    stop = threading.Event()

    def attempt(work):
        def run():
            try:
                while not stop.is_set():
                    work()
            except Exception as failure:  # noqa: BLE001: reported below
                failures.append(failure)

        return threading.Thread(target=run)

    def read():
        tree.identify([0x0ABC0043, 0x0ABC1043, 0x12345678] * 100)
        tree.get_device_list_with_comm_and_id("JTAG", 0x0ABC0043)
        plddb.write(tree)

    def write():
        family = tree.new_family()
        for _ in range(5):
            family.new_device().jtag_device_id = random.getrandbits(32)
        family.devices[0].set_list_control_status_bit_name("S;A;")
        tree.delete_family(tree.family_count - 1)

    threads = [attempt(read), attempt(read), attempt(write)]
    for thread in threads:
        thread.start()
    for _ in range(50):
        read()
    stop.set()
    for thread in threads:
        thread.join(60)
    assert failures == []
    assert tree.family_count == 1


class Lifetimes(RuleBasedStateMachine):
    """Any order of making, deleting and using records; a model in Python knows what is alive."""

    families = Bundle("families")
    devices = Bundle("devices")
    packages = Bundle("packages")

    def __init__(self):
        super().__init__()
        self.db = plddb.Database()
        self.alive = {}  # a family: its devices; a device: its packages

    @rule(target=families)
    def make_family(self):
        family = self.db.new_family()
        self.alive[family] = []
        return family

    @rule(target=devices, family=families, front=st.booleans())
    def make_device(self, family, front):
        if family not in self.alive:
            with pytest.raises(plddb.DeletedError):
                family.new_device()
            return multiple()
        device = family.add_new_device(0) if front else family.new_device()
        self.alive[family].insert(0 if front else len(self.alive[family]), device)
        self.alive[device] = []
        return device

    @rule(target=packages, device=devices)
    def make_package(self, device):
        if device not in self.alive:
            with pytest.raises(plddb.DeletedError):
                device.new_package()
            return multiple()
        package = device.new_package()
        self.alive[device].append(package)
        return package

    @rule(family=families, position=st.integers(-1, 5))
    def delete_device(self, family, position):
        if family not in self.alive:
            return
        devices = self.alive[family]
        if 1 <= position <= len(devices):
            assert family.delete_device(position)
            del self.alive[devices.pop(position - 1)]
        else:
            assert not family.delete_device(position)

    @rule(family=families)
    def delete_family(self, family):
        if family in self.alive:
            for device in self.alive.pop(family):
                del self.alive[device]
            assert self.db.delete_family(self.db.families.index(family))

    @rule(family=consumes(families))
    def forget_family(self, family):
        if family not in self.alive:
            del family
            gc.collect(0)

    @rule(device=devices)
    def use_device(self, device):
        assert device.is_deleted == (device not in self.alive)
        if device in self.alive:
            assert device.packages == self.alive[device]
            device.name = "used"
        else:
            with pytest.raises(plddb.DeletedError):
                device.name = "used"

    @rule(package=packages)
    def use_package(self, package):
        assert package.is_deleted == all(package not in held for held in self.alive.values())

    @rule()
    def compare_all(self):
        assert self.db.families == [one for one in self.alive if isinstance(one, plddb.Family)]
        for family in self.db.families:
            assert family.devices == self.alive[family]


TestLifetimes = Lifetimes.TestCase
TestLifetimes.settings = settings(max_examples=40, stateful_step_count=30, deadline=None, suppress_health_check=list(HealthCheck))

"""Every operation of the library has a counterpart in the module, or a row that names what Python has in its place."""

import builtins
import re

import plddb
import pytest

from conftest import SOURCE

CLASSES = {
    "Adapter": plddb.Adapter, "DeviceInfo": plddb.Device, "DeviceList": plddb.Database, "FamilyList": plddb.Family,
    "Package": plddb.Package, "PackageList": plddb.Device,
}  # fmt: skip

ELSEWHERE = {
    # Python's own texts and lists
    "DeviceStrElement": "str", "FindSubString": "str", "LObjList": "list", "LObject": "object", "LString": "str",
    "strlwr": "str", "strupr": "str", "util_strncpy": "str",
    # lists of the module, which can be counted and indexed
    "DeviceInfo::GetSysIOCount": "Device.sys_io",
    "FamilyList::GetOperation": "Family.operations", "FamilyList::GetOperationCount": "Family.operations",
    "Package::GetAdapter": "Package.adapters", "Package::GetAdapterCount": "Package.adapters",
    "Package::GetAdapterName": "Adapter.adapter_name", "Package::GetAdapterVendor": "Adapter.vendor_name",
    "PackageList::GetLastPackage": "Device.packages", "PackageList::GetPackageCount": "Device.packages",
    # other names
    "DeviceInfo::GetDevicePackage": "Device.packages",
    "DeviceInfo::SetUSERCODEIntruction": "Device.usercode_instruction",
    "FamilyList::Is1532Compliant": "Family.ieee1532_compliant", "FamilyList::Set1532Compliant": "Family.ieee1532_compliant",
    "DeviceList::operator=": "Database.assign_device_list",
    # a device belongs to the family that made it
    "DeviceInfo::SetFamilyObject": "Family.new_device",
    # what DeviceListOwner.h has without exporting it
    "MakeDeviceList": "Database", "CopyDeviceList": "Database.copy", "AssignDeviceList": "Database.assign_device_list",
    "ReleaseDevices": "Family.delete_device",
}  # fmt: skip

RECORDS = {
    "CBScanControl": plddb.BScanControl, "CControlEBR": plddb.ControlEBR, "CControlEBRList": plddb.ControlEBRList,
    "CControlRegOne": plddb.ControlRegOne, "CControlRegZero": plddb.ControlRegZero, "CControlStatus": plddb.ControlStatus,
    "CControlVoltage": plddb.ControlVoltage, "CPersistent_fuse": plddb.PersistentFuse,
    "CMultiboot_fuses": None,  # no record of a tree holds one
}  # fmt: skip


def snake(name):
    """"ir_length" for "IRLength"."""
    return re.sub(r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])", "_", name).lower()


def operations():
    """(name, arguments) of what the library exports for callers, and of what DeviceListOwner.h adds."""
    for line in (SOURCE / "tests/exported_operations.txt").read_text().splitlines():
        kind, _, operation = line.partition(" ")
        if kind in ("allocates", "steady"):
            yield re.fullmatch(r"\s*([\w:~=]+)\((.*)\)( const)?", operation).groups()[:2]
    header = (SOURCE / "include/DeviceListOwner.h").read_text()
    for name in re.findall(r"^inline \w+ (\w+)\(", header, re.MULTILINE):
        yield name, ""


def is_settable(cls, name):
    return getattr(getattr(cls, name, None), "fset", None) is not None


def has_counterpart(cls, member, arguments):
    rest = snake(re.sub("^(Get|Set|Is)", "", member))
    if member.startswith("Set"):
        is_method = hasattr(cls, "set_" + rest) and not arguments.startswith("std::vector")
        return is_method or is_settable(cls, rest)
    return hasattr(cls, snake(member)) or hasattr(cls, rest)


OPERATIONS = sorted(set(operations()))


@pytest.mark.parametrize("name,arguments", OPERATIONS)
def test_an_operation_has_its_counterpart(name, arguments):
    owner, _, member = name.partition("::")
    if name in ELSEWHERE or owner in ELSEWHERE:
        return
    if not member:
        assert callable(getattr(plddb, snake(name)))
    elif member.strip("~") != owner:  # trees are made and destroyed by their owners
        assert has_counterpart(CLASSES[owner], member, arguments), name


def test_each_row_is_needed_and_names_what_there_is():
    names = {name for name, _ in OPERATIONS} | {name.partition("::")[0] for name, _ in OPERATIONS}
    for row, counterpart in ELSEWHERE.items():
        assert row in names, row
        owner, _, member = counterpart.partition(".")
        cls = getattr(plddb, owner, None) or getattr(builtins, owner)
        assert not member or hasattr(cls, member), row
        if "::" in row and not row.endswith("="):
            assert not has_counterpart(CLASSES[row.partition("::")[0]], row.partition("::")[2], ""), row


def test_the_fields_of_control_records_have_theirs():
    headers = {path.stem for path in (SOURCE / "include").glob("C*.h")}
    assert headers == set(RECORDS)
    for header, cls in RECORDS.items():
        text = (SOURCE / f"include/{header}.h").read_text()
        fields = re.findall(r"^  (?:std::\S+|int|bool|unsigned \w+) (\w+)(?: = \S+)?;", text, re.MULTILINE)
        assert fields, header
        for field in fields:
            assert cls is None or is_settable(cls, snake(field)), f"{header}.{field}"


def test_adapters_are_set_and_copied(tree):
    first, second = tree.families[0].devices[:2]
    package = first.packages[0]
    adapter = package.adapters[0]
    assert package.set_adapter(0, "B", None) is adapter
    assert (adapter.vendor_name, adapter.adapter_name) == ("B", "A-TQ100")
    assert package.set_adapter(0, adapter.adapter_name, adapter.vendor_name) is adapter
    assert (adapter.vendor_name, adapter.adapter_name) == ("A-TQ100", "B")
    for outside in (1, -1, 2**31 - 1):
        assert package.set_adapter(outside, "a", "b") is None
    copy = second.packages[1].add_adapter(adapter)
    assert (copy.vendor_name, copy.adapter_name) == ("A-TQ100", "B")
    copy.vendor_name = "C"
    assert adapter.vendor_name == "A-TQ100"
    assert second.packages[1].adapters[-1] is copy
    package.remove_adapter(0)
    with pytest.raises(plddb.DeletedError):
        second.packages[1].add_adapter(adapter)
    with pytest.raises(TypeError):
        package.add_adapter(None)


def test_packages_are_copied_to_another_device(tree):
    first, second = tree.families[0].devices[:2]
    first.copy_package_list(second)
    first.copy_package_list(first)
    assert [package.type for package in first.packages] == ["TQ100", "BG256"] * 4
    first.packages[2].type = "other"
    assert second.packages[0].type == "TQ100"
    tree.families[0].delete_device("code1")
    with pytest.raises(plddb.DeletedError):
        first.copy_package_list(second)


def test_a_device_has_at_most_65535_packages(tree):
    device = tree.families[0].devices[0]
    while len(device.packages) <= 2**15 - 1:
        device.copy_package_list(device)
    assert len(device.packages) == 2**15
    other = tree.families[0].devices[1]
    other.copy_package_list(device)
    with pytest.raises(OverflowError):
        device.copy_package_list(device)
    for _ in range(2**15 - 1):
        last = device.new_package()
    with pytest.raises(OverflowError):
        device.new_package()
    assert len(device.packages) == 65535
    tree.families[0].delete_device("code0")
    assert last.is_deleted


def test_a_database_is_assigned_to_another(tree):
    db = plddb.Database()
    db.version, db.comment = "1", "old"
    family = db.new_family()
    device = family.new_device()
    tree.version = "2"
    db.assign_device_list(db)
    assert not family.is_deleted
    db.assign_device_list(tree)
    assert family.is_deleted and device.is_deleted
    assert (db.version, db.comment) == ("2", "old")
    assert [family.name for family in db.families] == ["PLD1200"]
    db.families[0].devices[0].name = "changed"
    assert tree.families[0].devices[0].name == "PLD1204A"
    db.assign_device_list(plddb.Database())
    assert (db.families, db.version, db.comment) == ([], "2", "old")


def test_a_record_knows_its_file(tmp_path, tree):
    (tmp_path / "a.xml").write_text(plddb.write(tree))
    (tmp_path / "b.xml").write_text(plddb.write(tree))
    db = plddb.load(tmp_path)
    assert [family.file for family in db.families] == db.files == [str(tmp_path / "a.xml"), str(tmp_path / "b.xml")]
    assert [candidate.device.file for candidate in db.identify(0x0ABC0043)[0].candidates] == db.files
    assert tree.families[0].file == tree.families[0].devices[0].file == ""

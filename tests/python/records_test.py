"""What the command lists, shows and merges is what the records of the module have."""

import subprocess

import plddb
import pytest

from conftest import SOURCE, TOOL, run_tool
from operations_test import snake

pytestmark = pytest.mark.skipif(not TOOL, reason="the command is not built")

SHOWN = ["XC9572XL", "0x0362D093", "EP1K10", "ARM JTAG-DP (ADIv5) revision 4", "10M08", "XC95*XL", "Artix-7", "cores"]


def id_or_none(number):
    return f"0x{number:08X}" if number else None


def package_types(device):
    return list(dict.fromkeys(package.type for package in device.packages if package.type))


def listed(device):
    return {
        "family": device.family_object.name,
        "name": device.name,
        "codeName": device.code_name,
        "maker": device.vendor,
        "jtagId": id_or_none(device.jtag_device_id),
        "ispId": id_or_none(device.isp_device_id),
        "scanMask": id_or_none(device.device_id_scan_mask),
        "irLength": device.ir_length or None,
        "packages": package_types(device),
        "file": device.file,
    }


def test_all_devices_are_those_of_the_list(shipped):
    answer = run_tool("list", "--devices", "--all", "--json")["devices"]
    assert answer == [listed(device) for family in shipped.families for device in family.devices]
    assert len(answer) == shipped.device_count


def test_filters_of_the_list_are_comprehensions(shipped):
    devices = [device for family in shipped.families for device in family.devices]
    rows = [
        (["--maker", "xilinx"], [one for one in devices if "xilinx" in (one.vendor or "").lower()]),
        (["--package", "vq44"], [one for one in devices if "vq44" in [kind.lower() for kind in package_types(one)]]),
        (["--ir", "6"], [one for one in devices if one.ir_length == 6]),
    ]
    for options, expected in rows:
        answer = run_tool("list", "--all", "--json", *options)["devices"]
        assert answer == [listed(device) for device in expected], options


def test_all_files_are_those_of_the_list(shipped):
    files = {file: [family for family in shipped.families if family.file == file] for file in shipped.files}
    assert [(one["file"], one["families"], one["devices"]) for one in run_tool("list", "--files", "--json")["files"]] == [
        (file, len(families), sum(family.device_count for family in families)) for file, families in files.items()
    ]


def value_of(text, field):
    """What the command shows, as the module has it."""
    if isinstance(field, bool):
        return text == "true"
    return int(text, 0) if isinstance(field, int) else text


@pytest.mark.parametrize("text", SHOWN)
def test_a_device_has_the_values_that_are_shown(shipped, text):
    answer = run_tool("show", "--all", "--json", text)
    matches = shipped.find(text)
    device = matches[0].device
    assert (answer["matchedBy"], answer["match"], answer["file"]) == (matches[0].keys, matches[0].kind, device.file)
    assert len(answer["others"]) == len(matches) - 1
    assert answer["bypassModes"] == [mode for mode in range(7) if plddb.is_bypass_device(device, mode)]
    for record, element in ((device, answer["device"]), (device.family_object, answer["family"])):
        assert element["fields"]
        for stem, shown in element["fields"].items():
            name = snake(stem).replace("intruction", "instruction")
            assert getattr(record, name) == value_of(shown["value"], getattr(record, name)), stem


def test_files_are_merged_as_by_the_command(tmp_path):
    files = [tmp_path / name for name in ("a.xml", "b.xml", "c.xml")]
    for file, name in zip(files, ("xilinx", "gowin", "xilinx")):
        file.write_text(plddb.write(plddb.load(SOURCE / f"data/{name}.xml")))  # without the comments
    run = subprocess.run([TOOL, "merge", "--force", *files], capture_output=True, text=True, check=True, timeout=60)
    assert run.stdout == plddb.write(plddb.load(*files))

"""Trees that are built in Python are written and loaded as they are."""

import plddb
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st

# What XML can hold: no control characters.
TEXT = st.text(st.characters(blacklist_categories=("Cs", "Cc"), blacklist_characters="\ufffe\uffff"), min_size=1, max_size=12)


def settable(cls, words):
    return [
        name
        for name, value in vars(cls).items()
        if isinstance(value, property) and value.fset is not None and words in (value.__doc__ or "")
    ]


TEXTS = {cls: settable(cls, "A text; None while unset.") for cls in (plddb.Family, plddb.Device, plddb.Package)}
NUMBERS = {cls: settable(cls, "OverflowError") for cls in (plddb.Family, plddb.Device)}
FLAGS = {cls: settable(cls, "A flag.") for cls in (plddb.Family, plddb.Device)}


def fill(data, record, required):
    cls = type(record)
    for name, value in data.draw(st.dictionaries(st.sampled_from(TEXTS[cls]), TEXT, max_size=6)).items():
        setattr(record, name, value)
    if cls in NUMBERS:
        for name, value in data.draw(st.dictionaries(st.sampled_from(NUMBERS[cls]), st.integers(0, 255), max_size=6)).items():
            setattr(record, name, value)
        for name in data.draw(st.sets(st.sampled_from(FLAGS[cls]))):
            setattr(record, name, True)
    for name in required:
        setattr(record, name, data.draw(TEXT))


def draw_tree(data):
    db = plddb.Database()
    db.version, db.comment = data.draw(TEXT), data.draw(TEXT)
    for _ in range(data.draw(st.integers(0, 3))):
        family = db.new_family()
        fill(data, family, ["name"])
        for _ in range(data.draw(st.integers(0, 3))):
            device = family.new_device()
            fill(data, device, ["name", "comm"])
            device.list_control_status = data.draw(st.lists(st.builds(plddb.ControlStatus, bit_name=TEXT, index=st.integers(0, 99))))
            device.multiboot_cfg_addr = data.draw(st.lists(st.integers(-5, 2**31 - 1), max_size=4))
            for _ in range(data.draw(st.integers(0, 2))):
                package = device.new_package()
                fill(data, package, ["type"])
                package.add_adapter(data.draw(TEXT), data.draw(TEXT))
    return db


def values(record):
    """All that can be set, but the lists of records."""
    return {name: getattr(record, name) for name in (*TEXTS.get(type(record), ()), *NUMBERS.get(type(record), ()))}


@settings(max_examples=60, deadline=None, suppress_health_check=list(HealthCheck))
@given(st.data())
def test_any_tree_is_written_and_loaded(data):
    db = draw_tree(data)
    text = plddb.write(db)
    copy = plddb.parse(text)
    assert plddb.write(copy) == text
    assert [family.name for family in db.copy().families] == [family.name for family in db.families]
    assert (copy.version, copy.comment) == (db.version, db.comment)
    for family, other in zip(db.families, copy.families):
        assert family.name == other.name
        for device, same in zip(family.devices, other.devices):
            assert device.list_control_status == same.list_control_status
            assert device.multiboot_cfg_addr == same.multiboot_cfg_addr
            assert device.name == same.name
            assert [package.type for package in device.packages] == [package.type for package in same.packages]
            assert [values(package)["pon"] for package in device.packages] == [package.pon for package in same.packages]
            adapters = [[one.adapter_name for one in package.adapters] for package in device.packages]
            assert adapters == [[one.adapter_name for one in package.adapters] for package in same.packages]

"""Whatever it is given, the module raises an exception, and never ends the process."""

import copy
import multiprocessing
import pickle
import subprocess
import sys
import threading

import plddb
import pytest

from conftest import SOURCE

CLASSES = [one for one in vars(plddb).values() if isinstance(one, type) and not issubclass(one, Exception)]
ENTRIES = [plddb.BScanControl, plddb.ControlEBR, plddb.ControlEBRList, plddb.ControlRegOne, plddb.ControlRegZero,
           plddb.ControlStatus, plddb.ControlVoltage, plddb.PersistentFuse]  # fmt: skip
STRANGE = [None, -1, 0, 2**31, 2**32, 2**64, -(2**64), 1.5, float("nan"), "", "a\0b", "\ud800", "\udcff", "x" * 100000, b"x", b"",
           bytearray(b"x"), [], [None], (), {}, {1: 2}, set(), object(), plddb, SOURCE, range(3), iter([]), Ellipsis, True,
           type, slice(None)]  # fmt: skip
CALLABLE = [(name, getattr(plddb, name)) for name in plddb.__all__ if not isinstance(getattr(plddb, name), type)]
DUPLICATE = (
    '<DeviceDatabase><Family Name="F">'
    + '<Device Name="D" CodeName="D" Comm="JTAG" jtagDeviceID="0x0ABC0043" DeviceIDScanMask="0x0FFFFFFF"/>' * 2
    + "</Family></DeviceDatabase>"
)  # fmt: skip
EXPECTED = (TypeError, ValueError, OverflowError, IndexError, plddb.Error, plddb.DeletedError)


def methods(one):
    return [
        getattr(one, name) for name in dir(type(one)) if not name.startswith("_") and callable(getattr(type(one), name))
    ]  # fmt: skip


def attempt(call):
    try:
        call()
    except EXPECTED as error:
        assert str(error) or error.args == ()


@pytest.mark.parametrize("value", STRANGE, ids=lambda value: repr(value)[:20])
def test_any_argument_is_taken_or_refused(tree, value):
    chain = tree.identify(0x0ABC0043)
    device = tree.families[0].devices[0]
    records = [tree, chain, chain[0], tree.families[0], device, device.packages[0], device.packages[0].adapters[0]]
    calls = [function for name, function in CALLABLE if name not in ("load", "check")]
    calls += [method for one in records for method in methods(one)]
    for call in sorted(calls, key=lambda call: call.__name__.startswith(("delete", "assign", "clear", "remove"))):  # these last
        attempt(lambda call=call: call(value))
        attempt(lambda call=call: call(value, value))
        attempt(lambda call=call: call(device, value))
        attempt(lambda call=call: call(0, value))
        attempt(lambda call=call: call("JTAG", value, value))
        attempt(lambda call=call: call(text=value))
    if not isinstance(value, type(SOURCE)):
        attempt(lambda: plddb.load(value))
        attempt(lambda: plddb.check(value))


@pytest.mark.parametrize("value", STRANGE, ids=lambda value: repr(value)[:20])
def test_any_value_is_set_or_refused(tree, value):
    device = tree.families[0].devices[0]
    for cls in ENTRIES:
        for name in vars(cls()) if hasattr(cls(), "__dict__") else dir(cls):
            if not name.startswith("_"):
                attempt(lambda cls=cls, name=name: cls(**{name: value}))
    for one in (tree, tree.families[0], device, device.packages[0], device.packages[0].adapters[0]):
        for name, member in vars(type(one)).items():
            if isinstance(member, property) and member.fset is not None:
                attempt(lambda one=one, name=name: setattr(one, name, value))
    plddb.write(tree)
    repr(tree.families)


@pytest.mark.parametrize("cls", CLASSES, ids=lambda cls: cls.__name__)
def test_no_object_is_made_without_its_constructor(cls):
    def use():
        one = cls.__new__(cls)
        repr(one)
        for name, value in vars(cls).items():
            if isinstance(value, property):
                getattr(one, name)

    for make in (use, lambda: object.__new__(cls)):
        with pytest.raises(TypeError):
            make()
    if cls not in ENTRIES and cls is not plddb.Database:
        with pytest.raises(TypeError):
            cls()


def test_entries_are_pickled_and_copied(tree):
    device = tree.families[0].devices[0]
    device.list_control_status = [plddb.ControlStatus(bit_name="DONE\udcff", index=3)]
    nested = plddb.ControlEBRList(name="a", entries=[plddb.ControlEBR(column=3), plddb.ControlEBR(value=True)])
    for one in (device.list_control_status[0], nested, *(cls() for cls in ENTRIES)):
        copies = [pickle.loads(pickle.dumps(one, protocol)) for protocol in range(pickle.HIGHEST_PROTOCOL + 1)]
        for other in [copy.copy(one), copy.deepcopy(one), *copies]:
            assert (type(other), other) == (type(one), one)
    tree.delete_family(0)
    assert copies[0] == plddb.PersistentFuse()


class File:
    """What looks like an open file, and reads anything."""

    def __init__(self, content):
        self.read = lambda: self if content is File else content


@pytest.mark.parametrize("content", [*STRANGE, File], ids=lambda value: repr(value)[:20])
def test_a_file_may_read_anything(shipped, content):
    attempt(lambda: plddb.parse(File(content)))
    attempt(lambda: shipped.identify(File(content)))


def test_faults_and_findings_are_values(tmp_path):
    path = tmp_path / "bad\udcff.xml"
    path.write_text(DUPLICATE)
    findings = plddb.check(path)
    with pytest.raises(plddb.Error) as raised:
        plddb.load(tmp_path / "missing\udcff.xml", tmp_path / "other.xml")
    faults = raised.value.faults
    assert findings[0].related and len(faults) == 2
    for one in (*findings, *faults):
        copies = [pickle.loads(pickle.dumps(one, protocol)) for protocol in range(pickle.HIGHEST_PROTOCOL + 1)]
        for other in [copy.copy(one), copy.deepcopy(one), *copies]:
            assert (other, hash(other), str(other)) == (one, hash(one), str(one))
            assert getattr(other, "related", None) == getattr(one, "related", None)
    assert findings == plddb.check(path) and faults[0] != faults[1] and faults[0] != findings[0]
    assert len({*faults, *faults}) == 2


def fail(path):
    plddb.load(path)


@pytest.mark.parametrize("method", ["fork", "spawn"])
def test_an_error_comes_out_of_another_process(tmp_path, method):
    with multiprocessing.get_context(method).Pool(1) as pool, pytest.raises(plddb.Error) as raised:
        pool.apply(fail, (tmp_path / "missing.xml",))
    assert [fault.file for fault in raised.value.faults] == [str(tmp_path / "missing.xml")]
    assert pickle.loads(pickle.dumps(plddb.DeletedError("x"))).args == ("x",)


def test_records_and_answers_are_not(tree):
    device = tree.families[0].devices[0]
    chain = tree.identify([0x0ABC0043, 0x12345677])
    for one in (tree, tree.families[0], device, device.packages[0], chain, chain[0], chain[0].candidates[0], chain[1].unknown):
        for attempt_to in (copy.copy, copy.deepcopy, *(lambda one, p=p: pickle.dumps(one, p) for p in range(6))):
            with pytest.raises(TypeError, match="cannot pickle or copy a " + type(one).__name__):
                attempt_to(one)


def test_faults_are_readable(tmp_path):
    with pytest.raises(plddb.Error) as raised:
        plddb.load(tmp_path / "missing.xml")
    (fault,) = raised.value.faults
    assert str(raised.value) == str(fault) == f"{tmp_path}/missing.xml:1:1: error: {fault.text}"
    assert fault.text == "cannot read the file: No such file or directory"
    assert (fault.line, fault.column, repr(fault)) == (1, 1, f"<plddb.Fault {fault}>")
    assert issubclass(plddb.Error, Exception) and plddb.Error("x").faults == []
    many = '<DeviceDatabase><Family Name="F">' + '<Device IRLength="x"/>' * 1000 + "</Family></DeviceDatabase>"
    with pytest.raises(plddb.Error) as raised:
        plddb.parse(many)
    assert len(str(raised.value).splitlines()) == 21
    assert len(raised.value.faults) >= 100


def test_records_are_equal_and_hashed_as_what_they_are(tree):
    device = tree.families[0].devices[0]
    same = tree.identify(0x0ABC0043)[0].match
    assert device == same and hash(device) == hash(same) and {device: 1}[same] == 1
    assert device in tree.families[0].devices and tree.families[0].devices.index(same) == 0
    assert device != tree.families[0].devices[1] and device != tree.copy().families[0].devices[0]
    assert device not in (None, "PLD1204A", tree)


def test_eight_threads_read_and_load(shipped):
    ids = [0x59604093, 0x0362D093, 0x12345677] * 50
    expected = [position.match for position in shipped.identify(ids)]
    names = shipped.get_device_list_with_comm_and_id("JTAG", 0x0484A093)
    failures = []

    def work(number):
        try:
            for _ in range(20):
                assert [position.match for position in shipped.identify(ids)] == expected
                assert shipped.identify(ids[number % 3], "DUAL")[0].id == ids[number % 3]
                assert shipped.get_device_list_with_comm_and_id("JTAG", 0x0484A093) == names
                assert shipped.get_device_with_name("xc9572xl") is expected[0]
            if number % 4 == 0:
                assert plddb.load(SOURCE / "data").device_count == shipped.device_count
        except BaseException as failure:  # noqa: BLE001: reported below
            failures.append(failure)

    threads = [threading.Thread(target=work, args=(number,)) for number in range(8)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert failures == []


def test_a_long_reading_ends_though_others_keep_writing(tree):
    stop = threading.Event()

    def write():
        while not stop.is_set():
            tree.families[0].devices[0].ir_length = 5

    thread = threading.Thread(target=write)
    thread.start()
    try:
        for _ in range(20):
            assert len(tree.identify(range(0x0ABC0043, 0x0ABC0043 + 2000))) == 2000
    finally:
        stop.set()
        thread.join()


def run_python(code):
    done = subprocess.run([sys.executable, "-X", "dev", "-c", code], capture_output=True, text=True, check=False, timeout=60)
    return done.returncode, done.stdout, done.stderr


def test_daemon_threads_do_not_disturb_the_end_of_the_process():
    code = """if True:
        import threading, plddb
        db = plddb.load(%r)
        began = threading.Barrier(4)
        def work():
            began.wait()
            while True:
                db.identify([0x59604093] * 300)
                plddb.write(db)
        for _ in range(3):
            threading.Thread(target=work, daemon=True).start()
        began.wait()
    """
    assert run_python(code % str(SOURCE / "data/xilinx.xml")) == (0, "", "")


def test_a_subinterpreter_is_refused():
    code = """if True:
        import sys
        import _xxsubinterpreters as interpreters
        def attempt():
            one = interpreters.create()
            interpreters.run_string(one, f"import sys; sys.path[:] = {sys.path}\\ntry: import plddb\\nexcept ImportError as e: print(e)")
            interpreters.destroy(one)
        attempt()
        import plddb
        attempt()
        print(plddb.Database())
    """
    try:
        import _xxsubinterpreters  # noqa: F401
    except ImportError:
        return  # no module of this Python makes them
    refusal = "plddb cannot be used in a subinterpreter\n"
    assert run_python(code) == (0, refusal * 2 + "<plddb.Database of 0 families, 0 devices>\n", "")


def test_nothing_is_left_at_the_end_of_the_process():
    code = (
        "import plddb; db = plddb.load(%r); chain = db.identify(0x59604093); device = chain[0].match;"
        "held = [db, chain, device, device.packages]; held.append(held)" % str(SOURCE / "data")
    )  # fmt: skip
    assert run_python(code) == (0, "", "")

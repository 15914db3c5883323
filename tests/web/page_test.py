"""The page in a browser: each answer is that of the command, and nothing that is pasted or dropped harms it."""

import gzip
import json
import pathlib
import re
import time

import pytest

from conftest import ROOT, SITE

DATA = ROOT / "tests" / "tool" / "data"
SCANS = sorted((DATA / "scans").glob("*.txt"))
TAB, ENTER, SPACE = "\ue004", "\ue007", " "

TEXTS = {
    "ids": "0x59604093\n0x4BA00477\n0x0362D093\n",
    "one id without a line end": "0x59604093",
    "comment and blank lines": "# a board\n\n  0x59604093  # first\n\n",
    "unknown": "0x12345093\n0x4BA00477\n",
    "ambiguous": "0x020F30DD\n",
    "misread": "0xB2C08127\n",
    "bypass, stuck": "0x00000000\n0xFFFFFFFF\n0x00000001\n",
    "many": "0x59604093\n0x12345093\n" * 40,
    "carriage returns": "0x59604093\r\n0x4BA00477\r\n",
}


def paste(page, text):
    """Puts a text into the scan at once, as pasting does."""
    page.run("""const scan = document.getElementById('scan'); scan.value = arguments[0];
                scan.dispatchEvent(new Event('input', {bubbles: true}))""", text)


def form(page, name):
    """The chain in a form of the command, as the page shows it."""
    return page.run("""const form = document.getElementById('form'); form.value = arguments[0];
                       form.dispatchEvent(new Event('change'));
                       return document.getElementById('form-text').textContent""", name)


def search(page, text):
    page.run("""const find = document.getElementById('find'); find.value = arguments[0];
                find.dispatchEvent(new Event('input', {bubbles: true}))""", text)


def rows(page, selector):
    return page.run("""return [...document.querySelectorAll(arguments[0] + ' tbody tr')].map((row) =>
                       [...row.cells].map((cell) => cell.innerText.trim()))""", selector)


def without_folders(text):
    """Files of the page have no folders."""
    return text.replace(str(ROOT / "build" / "demo" / "share" / "plddb") + "/", "")


def json_of(text):
    """A JSON text of the command, its files without their folders."""
    def strip(value):
        if isinstance(value, dict):
            return {k: pathlib.Path(v).name if k == "file" and v else strip(v) for k, v in value.items()}
        return [strip(v) for v in value] if isinstance(value, list) else value
    return strip(json.loads(text))


# --- The chain --------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("scan", SCANS, ids=lambda path: path.stem)
def test_a_scan_gives_what_the_command_gives(page, plddb, scan):
    paste(page, scan.read_text(encoding="utf-8", errors="replace"))
    if not page.run("return document.getElementById('form') !== null"):
        assert plddb("identify", "--scan", scan) == "" and page.text("#faults") != ""
        return
    assert json.loads(form(page, "json")) and json_of(form(page, "json")) == json_of(plddb("identify", "--format", "json", "--scan", scan))
    for name in ["tsv", "svg", "openocd"]:
        assert form(page, name) == plddb("identify", "--format", name, "--scan", scan), name


@pytest.mark.parametrize("name", TEXTS)
def test_a_text_gives_what_the_command_gives(page, plddb, name, tmp_path):
    (tmp_path / "scan").write_bytes(TEXTS[name].encode())
    paste(page, TEXTS[name])
    assert json_of(form(page, "json")) == json_of(plddb("identify", "--format", "json", "--scan", tmp_path / "scan"))
    for other in ["tsv", "openocd"]:
        assert form(page, other) == plddb("identify", "--format", other, "--scan", tmp_path / "scan"), other


@pytest.mark.parametrize("options", [["--order", "tdi"], ["--order", "tdo"], ["--comm", "DUAL"], ["--comm", "ISP"], ["--trust-ir"],
                                     ["--ir", "0=5"]], ids=" ".join)
def test_options_are_those_of_the_command(page, plddb, options):
    scan = DATA / "scans" / "openfpgaloader_unknown.txt"
    control = {"--order": "order", "--comm": "comm", "--trust-ir": "trust", "--ir": "ir"}[options[0]]
    paste(page, scan.read_text())
    page.run("""const control = document.getElementById(arguments[0]);
                if (arguments[1] === null) control.checked = true; else control.value = arguments[1];
                control.dispatchEvent(new Event('input')); control.dispatchEvent(new Event('change'))""",
             control, options[1] if len(options) > 1 else None)
    assert json_of(form(page, "json")) == json_of(plddb("identify", "--format", "json", "--scan", scan, *options))


def test_a_wrong_ir_length_is_explained(page):
    paste(page, "0x59604093")
    for wrong in ["7=4", "x", "0=1", "0=4 0=4", "0=99999999999999999999"]:
        page.run("const ir = document.getElementById('ir'); ir.value = arguments[0]; ir.dispatchEvent(new Event('input'))", wrong)
        assert "--ir" in page.text("#answer"), wrong


def test_the_table_shows_positions_candidates_and_help(page):
    paste(page, "0x59604093\n0x020F30DD\n0x12345093\n0xB2C08127\n")
    table = page.text("#positions")
    for text in ["XC9572XL", "XC9500XL", "ambiguous", "EP4CE22", "masked 0x0FFFFFFF", "unknown", "part number 0x2345", "Xilinx",
                 "Probably misread"]:
        assert text in table, text
    assert page.text("#status") == "4 TAPs: 2 identified, 1 ambiguous, 2 unknown."


def test_the_chain_is_drawn_in_rows_that_fit(page):
    paste(page, "0x59604093\n" * 6)
    for width in [360, 700, 1280, 1920]:
        page.resize(width)
        page.run_async("await new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done)))")
        drawn = page.run("const svg = document.querySelector('figure svg').getBoundingClientRect(); return [svg.left, svg.right]")
        assert drawn[0] >= 0 and drawn[1] <= width, width
        assert page.run("return document.querySelectorAll('figure rect.box').length") == 6


def test_faults_have_line_and_column_and_lead_there(page, plddb, tmp_path):
    paste(page, "0x59604093\n  0xZZ\n0x4BA00477\n")
    assert "Line 2, column 3" in page.text("#faults")
    page.click("#faults button")
    assert page.run("const s = document.getElementById('scan'); return [document.activeElement === s, s.value.slice(s.selectionStart)"
                    ".split('\\n')[0]]") == [True, "0xZZ"]


# --- The address ------------------------------------------------------------------------------------------------------------------


def test_the_address_restores_the_view(page, browser):
    url = (SITE / "index.html").as_uri()
    browser.open(url + "#scan=0x59604093%0A0x4BA00477&order=tdi&comm=DUAL&ir=1%3D4&trust=1&find=XC9572XL")
    assert page.text("#status").startswith("2 TAPs")
    assert page.run("return ['order', 'comm', 'ir'].map((id) => document.getElementById(id).value)") == ["tdi", "DUAL", "1=4"]
    assert page.text("#device-title") == "XC9572XL"
    page.run("location.hash = '#scan=0x0362D093'")
    page.wait("return document.getElementById('status').innerText.startsWith('1 TAP')")
    assert page.run("return document.getElementById('order').value") == ""


@pytest.mark.parametrize("text", ["0x59604093", "a&b=c%20+d #x\n0x59604093", "ä☃𐀀\n0x59604093\n", "0x59604093\n" * 3000], ids=range(4))
def test_the_address_carries_any_scan(page, browser, text):
    paste(page, text)
    page.wait("return location.hash !== ''")
    address = page.run("return location.href")
    browser.open(address)
    assert page.run("return document.getElementById('scan').value") == text


@pytest.mark.parametrize("hash", ["#scan=%E0%A4%A", "#scan=", "#=", "#&&&", "#scan", "#comm=<b>&order=x&scan=1", "#find=%00", "#chain-title",
                                  "#scan=" + "%3Cscript%3Ealert(1)%3C/script%3E"])
def test_any_address_is_read(page, browser, hash):
    browser.open((SITE / "index.html").as_uri() + hash)
    assert page.text("#status") != "Loading…"


# --- Devices ----------------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("text", ["XC9572XL", "XC9572XL-10VQG44C", "0x59604093", "XC95*XL", "Artix-7", "VQ44", "xc7z0", "46656", "ARM"])
def test_find_lists_what_the_command_lists(page, plddb, text):
    answer = json.loads(plddb("find", "--all", "--json", text))
    search(page, text)
    expected = [[m["name"], m["family"], ", ".join(m["matchedBy"]), pathlib.Path(m["file"]).name + ":" + str(m["line"])]
                for m in answer["matches"]]
    assert expected != []
    if len(expected) > 1:
        assert rows(page, "#found") == expected[:50]
    assert page.text("#device-title") == expected[0][0]


def test_find_suggests_what_is_near(page, plddb):
    search(page, "XC9527XL")
    suggestions = json.loads(plddb("find", "--json", "XC9527XL"))["suggestions"]
    assert suggestions and page.run("return [...document.querySelectorAll('#found button')].map((b) => b.innerText)") == suggestions
    page.click("#found button")
    assert page.text("#device-title") == suggestions[0]


@pytest.mark.parametrize("text", ["XC9572XL", "EP4CE22", "XC7Z010", "STM32F1 high density boundary scan", "GW1N-1"])
def test_a_device_is_shown_as_the_command_shows_it(page, plddb, text):
    answer = json.loads(plddb("show", "--json", text))
    search(page, text)
    fields = [[name, f["value"], "" if f["line"] is None else str(f["line"])] for name, f in answer["device"]["fields"].items()]
    shown = page.run("""return [...document.querySelector('#device table.fields').querySelectorAll('tbody tr')].map((row) =>
                        [...row.cells].map((cell) => cell.textContent))""")
    assert shown == fields
    heads = page.run("return [...document.querySelectorAll('#device > div > h4')].map((h) => h.textContent)")
    assert heads[:1] == list(answer["device"]["lists"])[:1]


# --- Files ------------------------------------------------------------------------------------------------------------------------

JEDEC = "\x02Design file\nN DEVICE XC9572XL-10-VQ44*\nQP44*\nQF46656*\nF0*\nC0000*\n\x030000\n"
SVF = "! a sample\nTRST OFF;\nSIR 8 TDI (fe);\nSDR 32 TDI (00000000) TDO (f9604093) MASK (0fffffff);\n"


def program_files(folder):
    files = {"top.jed": JEDEC.encode(), "top.svf": SVF.encode(), "packed.jed": gzip.compress(JEDEC.encode()),
             "empty.jed": b"", "noise.bin": bytes(i * 7 % 251 for i in range(5000)), "note.txt": b"hello", "cut.jed": JEDEC.encode()[:30],
             "<b>.svf": SVF.encode(), "XC7.jed": JEDEC.replace("XC9572XL-10-VQ44", "XC9536XL-5-VQ44").encode()}
    for name, content in files.items():
        (folder / name).write_bytes(content)
    return [folder / name for name in files]


@pytest.mark.parametrize("chain", ["", "0x59604093\n0x4BA00477\n", "0x0362D093\n", "0x59604093\n0x59604093\n", "0x12345093\n"])
def test_programming_files_are_judged_as_by_the_command(page, plddb, tmp_path, chain):
    files = program_files(tmp_path)
    paste(page, chain)
    page.type("#program-file", "\n".join(map(str, files)))
    page.wait("return document.querySelectorAll('#judged article').length === arguments[0]", len(files))
    for i, file in enumerate(files):
        article = page.run("""const a = document.querySelectorAll('#judged article')[arguments[0]];
                              return [a.querySelector('h3').textContent, a.textContent]""", i)
        lines = plddb("fits", file, *chain.split()).splitlines()
        assert article[0] == lines[0].replace(str(tmp_path) + "/", "")
        for line in lines[1:]:
            assert line.strip() in article[1], line


def test_programming_files_are_judged_anew_for_another_chain(page, tmp_path):
    (tmp_path / "top.svf").write_bytes(SVF.encode())
    page.type("#program-file", str(tmp_path / "top.svf"))
    page.wait("return document.querySelector('#judged article') !== null")
    for chain, text in [("0x59604093", "fits position 0"), ("0x0362D093", "fits no position"), ("", "Paste a scan")]:
        paste(page, chain)
        page.wait("return document.getElementById('judged').innerText.includes(arguments[0])", text)


def test_own_descriptions_come_first(page):
    page.type("#own-file", str(DATA / "first.xml"))
    page.wait("return document.querySelector('#added article .good') !== null")
    names = re.findall(r'<Device\b[^>]*?\bName="([^"]+)"', (DATA / "first.xml").read_text())
    search(page, names[0])
    assert "first.xml" in page.text("#device")
    page.click("#added article button")
    assert page.text("#added") == ""
    search(page, names[0])
    assert "first.xml" not in page.text("#search")


def test_findings_and_faults_are_those_of_check(page, plddb):
    for name in ["broken.xml", "keys.xml", "odd_names.xml", "lists.xml"]:
        page.type("#own-file", str(DATA / name))
        page.wait("return document.querySelector(`#added article[data-file='${arguments[0]}']`) !== null", name)
        expected = [[f"{f['line']}:{f['column']}", f["severity"], f"{f['text']} [{f['code']}]"]
                    for f in json.loads(plddb("check", "--format", "json", DATA / name))]
        shown = page.run("""return [...document.querySelectorAll(`#added article[data-file='${arguments[0]}'] tbody tr`)].map((row) =>
                            [...row.cells].map((cell) => cell.textContent))""", name)
        assert shown == [[place, severity, text.replace(str(DATA) + "/", "")] for place, severity, text in expected][:100], name
    assert "not added" in page.text("#added article[data-file='broken.xml']")


def test_a_bsdl_file_becomes_a_device(page):
    page.type("#own-file", str(DATA / "pld1234a_tq100.bsd"))
    page.wait("return document.querySelector('#added article .good') !== null")
    search(page, "PLD1234A")
    assert page.text("#device-title") == "PLD1234A"
    (identifier,) = page.run("""return [...document.querySelectorAll('#device tr')].filter((r) => r.cells[0].textContent === 'jtagDeviceID')
                                .map((r) => r.cells[1].textContent)""") or [None]
    if identifier:
        paste(page, identifier)
        assert "PLD1234A" in page.text("#positions")


def test_a_faulty_bsdl_file_is_explained(page, tmp_path):
    (tmp_path / "bad.bsd").write_text("entity X is\n  port (TCK : in bit)\n")
    page.type("#own-file", str(tmp_path / "bad.bsd"))
    page.wait("return document.querySelector('#added article .bad') !== null")
    assert re.search(r"\d+:\d+", page.text("#added table"))


def test_files_can_be_dropped(page):
    drop = """const [id, name, text] = arguments; const transfer = new DataTransfer();
              transfer.items.add(new File([text], name));
              document.getElementById(id).dispatchEvent(new DragEvent('drop', {dataTransfer: transfer, bubbles: true, cancelable: true}))"""
    page.run(drop, "scan", "log.txt", "0x59604093")
    page.wait("return document.getElementById('status').innerText.startsWith('1 TAP')")
    page.run(drop, "program-drop", "top.svf", SVF)
    page.wait("return document.getElementById('judged').innerText.includes('fits position 0')")
    page.run(drop, "own-drop", "first.xml", (DATA / "first.xml").read_text())
    page.wait("return document.querySelector('#added article .good') !== null")


# --- Hostile input ----------------------------------------------------------------------------------------------------------------

SCRIPT = "<script>document.title = 'hurt'</script><img src=x onerror=\"document.title = 'hurt'\">"


def test_nothing_pasted_becomes_markup(page, tmp_path):
    title = page.run("return document.title")
    paste(page, f"Info : JTAG tap: {SCRIPT} tap/device found: 0x59604093 (mfg: {SCRIPT})\n0x59604093\n{SCRIPT}\n")
    search(page, SCRIPT)
    xml = ('<DeviceList Version="1"><Family Name="{0}"><Device Name="{0}" CodeName="{0}" Vendor="{0}" CommIntf="JTAG" '
           'jtagDeviceID="0x12345093" deviceIDScanMask="0xFFFFFFFF"/></Family></DeviceList>')
    escaped = SCRIPT.replace("&", "&amp;").replace("<", "&lt;").replace('"', "&quot;")
    (tmp_path / "own.xml").write_text(xml.format(escaped))
    page.type("#own-file", str(tmp_path / "own.xml"))
    page.wait("return document.querySelector('#added article') !== null")
    paste(page, "0x12345093")
    search(page, "<script")
    (tmp_path / "x.svf").write_text(f"! {SCRIPT}\n" + SVF)
    page.type("#program-file", str(tmp_path / "x.svf"))
    page.wait("return document.querySelector('#judged article') !== null")
    assert page.run("return [document.title, document.querySelectorAll('main script, main img, main iframe').length]") == [title, 0]


@pytest.mark.parametrize("line, times", [("0x59604093\\n", 900000), ("x", 10000000), ("\\n", 10000000), ("0xZZ\\n", 2000000),
                                         ("Info : JTAG tap: a.b tap/device found: 0x59604093\\n", 200000)], ids=range(5))
def test_ten_megabytes_are_read_or_refused_and_the_page_lives(page, line, times):
    # On purpose hidden: the browser takes many seconds to lay out so many lines, which tests nothing of the page.
    page.run(f"""const scan = document.getElementById('scan'); scan.hidden = true; scan.value = '{line}'.repeat({times});
                 scan.dispatchEvent(new Event('input'))""")
    assert page.run("return document.getElementById('answer').textContent.length") < 400000
    paste(page, "0x59604093")
    assert page.text("#status").startswith("1 TAP: 1 identified")


@pytest.mark.parametrize("zone, limit", [("own-file", 64), ("scan-file", 64), ("program-file", 256)])
def test_huge_files_are_refused_with_a_word(page, tmp_path, zone, limit):
    with open(tmp_path / "huge.bin", "wb") as file:
        file.truncate((limit << 20) + 1)  # takes no room on the disk
    page.type("#" + zone, str(tmp_path / "huge.bin"))
    page.wait("return document.querySelector('main').innerText.includes(arguments[0])", f"huge.bin: larger than {limit} MiB")


def test_binary_files_are_answered_in_every_zone(page, tmp_path):
    content = bytes(range(256)) * 4000
    (tmp_path / "noise").write_bytes(content)
    for zone in ["own-file", "scan-file", "program-file"]:
        page.type("#" + zone, str(tmp_path / "noise"))
    page.wait("return document.querySelector('#judged article') !== null && document.querySelector('#added article .bad') !== null")
    page.run("""const scan = document.getElementById('scan'); scan.value = '\\0\\x01\\ud800\\uffff'.repeat(100);
                scan.dispatchEvent(new Event('input'))""")
    paste(page, "0x59604093")
    assert page.text("#status").startswith("1 TAP: 1 identified")


BREAK_DOWN = """
  const decode = TextDecoder.prototype.decode;
  TextDecoder.prototype.decode = () => { TextDecoder.prototype.decode = decode; throw new WebAssembly.RuntimeError('unreachable'); };"""


def test_a_program_that_breaks_down_is_started_anew_with_the_users_files(page):
    page.type("#own-file", str(DATA / "first.xml"))
    page.wait("return document.querySelector('#added article .good') !== null")
    paste(page, "0x0ABCD043")
    expected = form(page, "json")
    page.run("""window.starts = 0; const start = WebAssembly.instantiate;
                WebAssembly.instantiate = (...all) => start(...all).then((instance) => { ++window.starts; return instance; });""")
    page.run(BREAK_DOWN)
    paste(page, "0x4BA00477")
    assert "has started its program again" in page.text("#answer")
    page.wait("return window.starts === 1")
    paste(page, "0x0ABCD043")
    assert form(page, "json") == expected and "FIRST" in expected


def test_a_page_without_memory_says_so_and_lives(page, tmp_path):
    page.run("""const start = WebAssembly.instantiate;
                WebAssembly.instantiate = (...all) => start(...all).then((instance) => { window.library = instance.exports; return instance; });""")
    page.run(BREAK_DOWN)
    paste(page, "0x4BA00477")
    page.wait("return window.library !== undefined")
    page.run("""window.taken = {};
                for (const size of [1 << 24, 1 << 16, 1 << 8, 16]) {
                  taken[size] = [];
                  for (let at = library.allocate(size); at !== 0; at = library.allocate(size)) taken[size].push(at);
                }""")
    for _ in range(2):  # no room for the text, then no room for the answer
        paste(page, "0x59604093\n" * 1000)
        assert "this needs more memory than the page may use" in page.text("#answer")
        page.run("library.release(taken[1 << 16].pop())")
    page.run("for (const at of Object.values(taken).flat()) library.release(at)")
    paste(page, "0x59604093")
    assert page.text("#status").startswith("1 TAP: 1 identified")


# --- The page itself --------------------------------------------------------------------------------------------------------------


def test_the_policy_forbids_all_but_own_files(page, browser, server):
    browser.open(server)
    blocked = page.run_async("""
      const blocked = [];
      document.addEventListener('securitypolicyviolation', (event) => blocked.push(event.effectiveDirective));
      const script = document.createElement('script'); script.textContent = 'document.title = "hurt"'; document.body.append(script);
      const style = document.createElement('style'); style.textContent = 'body { display: none }'; document.body.append(style);
      await fetch('index.html').catch(() => {});
      await new Promise((resolve) => { const image = new Image(); image.onload = image.onerror = resolve; image.src = 'http://127.0.0.1:1/x.png'; });
      try { eval('1'); blocked.push('eval ran'); } catch (error) { }
      await new Promise((resolve) => setTimeout(resolve, 100));
      return [document.title, ...blocked];""")
    browser.console()
    for directive in ["script-src-elem", "style-src-elem", "connect-src", "img-src"]:
        assert directive in blocked
    assert "hurt" not in blocked and "eval ran" not in blocked


def test_only_own_files_are_loaded(page, browser, server):
    browser.open(server)
    paste(page, "0x59604093")
    names = page.run("return performance.getEntriesByType('resource').map((entry) => entry.name)")
    assert {name.rsplit("/", 1)[0] for name in names} == {server.rsplit("/", 1)[0]}
    assert {name.rsplit("/", 1)[1] for name in names} <= {path.name for path in SITE.iterdir()}


def test_markup_has_no_scripts_and_styles_of_its_own():
    text = (SITE / "index.html").read_text()
    assert not re.search(r"<script(?![^>]*\bsrc=)|\son\w+=|\sstyle=|<style|https?://", text)


@pytest.mark.parametrize("width", [360, 480, 720, 721, 1024, 1280, 1408, 1920])
def test_no_width_needs_sideways_scrolling(page, width):
    page.resize(width)
    paste(page, "0x59604093\n0x020F30DD\n0x12345093\n0xB2C08127\n0x4BA00477\n")
    search(page, "XC9572XL")
    assert page.run("return document.documentElement.scrollWidth <= window.innerWidth")


def test_the_keyboard_alone_suffices(page):
    paste(page, "0x12345093")
    search(page, "XC95*")
    wanted = page.run("""const all = [...document.querySelectorAll('a[href], button, input, select, textarea, summary, [tabindex="0"]')]
                           .filter((e) => e.checkVisibility() && !e.disabled);
                         all.forEach((e, i) => { e.dataset.walk = i; }); document.activeElement.blur(); return all.length""")
    seen = set()
    for _ in range(wanted + 20):
        page.press(TAB)
        state = page.run("""const e = document.activeElement; const at = getComputedStyle(e.labels && e.classList.contains('unseen') ? e.labels[0] : e);
                            return [e.dataset.walk ?? null, at.outlineStyle]""")
        if state[0] is not None:
            seen.add(int(state[0]))
            assert state[1] != "none", page.run("return document.activeElement.outerHTML")
    assert seen == set(range(wanted))


def test_keys_work_the_controls(page):
    page.run("document.querySelector('#examples button').focus()")
    page.press(ENTER)
    assert page.text("#status").startswith("2 TAPs")
    page.run("document.querySelector('#positions button').focus()")
    page.press(SPACE)
    page.wait("return document.activeElement.id === 'device-title'")


CONTRASTS = """
  const channel = (c) => { c /= 255; return c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4; };
  const numbers = (colour) => colour.match(/[\\d.]+/g).map(Number);
  const light = ([r, g, b]) => 0.2126 * channel(r) + 0.7152 * channel(g) + 0.0722 * channel(b);
  const ground = (e) => { for (; e; e = e.parentElement) { const c = numbers(getComputedStyle(e).backgroundColor);
                            if (c.length < 4 || c[3] === 1) return c; } return [255, 255, 255]; };
  const low = [];
  let checked = 0;
  const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  while (walker.nextNode()) {
    const e = walker.currentNode.parentElement;
    if (!walker.currentNode.data.trim() || !e.checkVisibility()) continue;
    const inDrawing = e.closest('svg');
    const box = inDrawing && e.closest('g') && e.closest('g').querySelector('rect');
    const text = numbers(getComputedStyle(e)[inDrawing ? 'fill' : 'color']);
    const behind = box ? numbers(getComputedStyle(box).fill) : ground(e);
    const [a, b] = [light(text), light(behind)].sort((x, y) => y - x);
    ++checked;
    if ((a + 0.05) / (b + 0.05) < 4.5) low.push([e.tagName, walker.currentNode.data.slice(0, 30), (a + 0.05) / (b + 0.05)]);
  }
  return [checked, low];"""


@pytest.mark.parametrize("scheme", ["light", "dark"])
def test_contrast_is_4_5_or_more(page, scheme, tmp_path):
    page.scheme(scheme)
    paste(page, "0x59604093\n0x020F30DD\n0x12345093\n0xB2C08127\n")
    search(page, "XC9572XL-10VQG44C")
    page.type("#program-file", "\n".join(map(str, program_files(tmp_path))))
    page.type("#own-file", str(DATA / "keys.xml"))
    page.wait("return document.querySelector('#judged article') !== null && document.querySelector('#added article') !== null")
    checked, low = page.run(CONTRASTS)
    assert checked > 150 and low == []


def test_markup_is_accessible(page, tmp_path):
    paste(page, "0x59604093\n0x020F30DD\n0x12345093\n0xB2C08127\n")
    search(page, "XC95*")
    page.type("#program-file", "\n".join(map(str, program_files(tmp_path))))
    page.wait("return document.querySelector('#judged article') !== null")
    faults = page.run("""
      const faults = [];
      const all = (selector) => [...document.querySelectorAll(selector)];
      const ids = all('[id]').map((e) => e.id);
      for (const id of new Set(ids)) if (ids.filter((other) => other === id).length > 1) faults.push('id twice: ' + id);
      for (const e of all('input, select, textarea')) if (!e.labels.length && !e.getAttribute('aria-label')) faults.push('no label: ' + e.outerHTML);
      for (const e of all('button, a, summary')) if (!e.textContent.trim()) faults.push('no name: ' + e.outerHTML);
      for (const name of ['aria-labelledby', 'aria-describedby', 'for']) for (const e of all(`[${name}]`))
        for (const id of e.getAttribute(name).split(' ')) if (!document.getElementById(id)) faults.push(name + ' leads nowhere: ' + id);
      let level = 0;
      for (const e of all('h1, h2, h3, h4')) { const next = Number(e.tagName[1]); if (next > level + 1) faults.push('heading skipped: ' + e.textContent); level = next; }
      for (const e of all('th')) if (!e.scope) faults.push('th without scope: ' + e.textContent);
      for (const e of all('svg')) if (!e.getAttribute('aria-label')) faults.push('drawing without a name');
      for (const e of all('section, article')) if (!e.hidden && e.tagName === 'SECTION' && !e.getAttribute('aria-labelledby')) faults.push('section without a name');
      if (!document.documentElement.lang || !document.title) faults.push('no lang or title');
      if (all('main').length !== 1 || all('h1').length !== 1) faults.push('one main, one h1');
      if (!all('[role=status]').length) faults.push('no live region');
      return faults;""")
    assert faults == []


def test_it_prints(page):
    paste(page, "0x59604093\n0x12345093\n")
    pdf = page.cdp("Page.printToPDF", printBackground=False)["data"]
    assert len(pdf) > 10000


def test_nothing_is_cut_on_paper(page):
    page.resize(680)  # pixels: the room for text on A4
    page.cdp("Emulation.setEmulatedMedia", media="print")
    paste(page, "Info : JTAG tap: board.fpga tap/device found: 0x13722093 (mfg: 0x049 (Xilinx), part: 0x3722, ver: 0x1)\n" * 7 +
          "Info : JTAG tap: other.fpga tap/device found: 0x020F30DD (mfg: 0x06e (Altera), part: 0x20f3, ver: 0x0)\n")
    cut = page.run("""return [...document.querySelectorAll('textarea, .wide, figure, pre')].filter((e) => e.checkVisibility() &&
                      (e.scrollWidth > e.clientWidth || e.scrollHeight > e.clientHeight + 1)).map((e) => e.outerHTML)""")
    page.cdp("Emulation.setEmulatedMedia", media="")
    assert cut == []


def test_copying_without_a_clipboard(page):
    paste(page, "0x59604093")
    page.run("""navigator.clipboard.writeText = () => Promise.reject(new Error('refused'));
                window.copied = ''; document.execCommand = () => { window.copied = document.activeElement.value; return true; }""")
    page.click(".forms button")
    page.wait("return window.copied.includes('jtag newtap')")


def test_figures(page, browser, server, capsys):
    browser.open(server + "#scan=0x59604093")
    first = page.run("return performance.now()")
    started = page.run("""const n = performance.getEntriesByType('navigation')[0]; return performance.getEntriesByName('answered')[0].startTime - n.startTime""")
    times = page.run("""const scan = document.getElementById('scan'); const times = [];
      for (let i = 0; i < 60; ++i) {
        scan.value = '0x59604093\\n0x4BA00477\\n0x0362D093\\n0x0000000' + i % 10 + '\\n0x12345093\\n';
        const start = performance.now(); scan.dispatchEvent(new Event('input')); times.push(performance.now() - start);
      }
      return times.sort((a, b) => a - b)""")
    files = [path.read_bytes() for path in sorted(SITE.iterdir())]
    size = sum(len(gzip.compress(content, 9)) for content in files)
    with capsys.disabled():
        print(f"\nfirst answer {started:.0f} ms after navigation; then {times[0]:.1f} ms at best, {times[30]:.1f} ms in the median "
              f"(with the table drawn); {size} bytes compressed, {sum(map(len, files))} in all")
    assert size <= 400000 and first > 0

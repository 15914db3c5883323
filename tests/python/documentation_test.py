"""The examples of docs/python.md run, and print what the page shows."""

import os
import re
import subprocess
import sys
from pathlib import Path

import plddb
import pytest

from conftest import SOURCE

PAGE = (SOURCE / "docs/python.md").read_text()
EXAMPLES = re.findall(r"```python\n(.*?)```\n\n```text\n(.*?)```", PAGE, re.DOTALL)
BSDL = """\
entity PLD1234 is
  generic (PHYSICAL_PIN_MAP : string := "TQ100");
  port (TCK, TDI, TMS : in bit; TDO : out bit; A : inout bit);
  use STD_1149_1_2001.all;
  attribute COMPONENT_CONFORMANCE of PLD1234 : entity is "STD_1149_1_2001";
  attribute PIN_MAP of PLD1234 : entity is PHYSICAL_PIN_MAP;
  constant TQ100 : PIN_MAP_STRING := "TCK : 1, TDI : 2, TMS : 3, TDO : 4, A : 5";
  attribute TAP_SCAN_IN of TDI : signal is true;
  attribute TAP_SCAN_OUT of TDO : signal is true;
  attribute TAP_SCAN_MODE of TMS : signal is true;
  attribute TAP_SCAN_CLOCK of TCK : signal is (10.0e6, BOTH);
  attribute INSTRUCTION_LENGTH of PLD1234 : entity is 8;
  attribute INSTRUCTION_OPCODE of PLD1234 : entity is
    "BYPASS (11111111), EXTEST (00000000), SAMPLE (00000001), PRELOAD (00000001), IDCODE (11111110)";
  attribute INSTRUCTION_CAPTURE of PLD1234 : entity is "XXXXXX01";
  attribute IDCODE_REGISTER of PLD1234 : entity is "XXXX" & "1010101111001101" & "00000100001" & "1";
  attribute BOUNDARY_LENGTH of PLD1234 : entity is 1;
  attribute BOUNDARY_REGISTER of PLD1234 : entity is "0 (BC_1, A, input, X)";
end PLD1234;
"""


def test_every_example_has_its_output():
    assert len(EXAMPLES) == PAGE.count("```python") >= 5


@pytest.mark.parametrize("code,output", EXAMPLES, ids=range(len(EXAMPLES)))
def test_an_example_prints_what_the_page_shows(tmp_path, code, output):
    (tmp_path / "pld1234.bsd").write_text(BSDL)
    clean = {name: value for name, value in os.environ.items() if name not in ("PLDDB_PATH", "XDG_CONFIG_HOME")}
    run = subprocess.run(
        [sys.executable, "-c", code], cwd=tmp_path, env={**clean, "HOME": "/nonexistent"}, capture_output=True, text=True,
        timeout=60, check=False,
    )  # fmt: skip
    assert (run.stdout, run.stderr) == (output, "")


def test_mypy_accepts_every_example(tmp_path):
    for number, (code, _) in enumerate(EXAMPLES):
        (tmp_path / f"example{number}.py").write_text(code)
    run = subprocess.run(
        [sys.executable, "-m", "mypy", "--strict", "--python-version", "3.11", "."], cwd=tmp_path,
        env={"MYPYPATH": str(Path(plddb.__file__).parent.parent), "PATH": "/usr/bin:/bin"}, capture_output=True, text=True, check=False,
    )  # fmt: skip
    assert run.stdout.startswith("Success"), run.stdout

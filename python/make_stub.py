"""Writes the package's type stub: plddb.pyi, with the fields of records that the headers declare.

    python3 python/make_stub.py __init__.pyi

On purpose it reads the headers, and does not ask the module: one that is built for another machine cannot be run. The test
python.stub compares the stub with the module.
"""

import re
import sys
from pathlib import Path

SOURCE = Path(__file__).resolve().parent.parent
TYPES = {"const char*": "str | None", "bool": "bool"}  # all others are numbers

# void SetIRLength(unsigned short bits);   unsigned short GetIRLength() const;
FIELD = re.compile(r"^  void Set\w+\(([\w ]+\*?) \w+\); +[\w* ]+ (?:Get|Is)([A-Za-z]\w*)\(\) const;", re.MULTILINE)


def snake(name: str) -> str:
    """"ir_length" for "IRLength"."""
    return re.sub(r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])", "_", name).lower()


def fields(header: str) -> str:
    """A line for each field that a header sets and gets."""
    declared = FIELD.findall((SOURCE / "include" / header).read_text())
    return "".join(f"    {snake(name)}: {TYPES.get(kind, 'int')}\n" for kind, name in declared)


def stub() -> str:
    text = (SOURCE / "python/plddb.pyi").read_text()
    return re.sub(r"    # the fields of (\w+\.h)\n", lambda line: fields(line[1]), text)


if __name__ == "__main__":
    target = Path(sys.argv[1])
    target.unlink(missing_ok=True)  # it may be a link to another file
    target.write_text(stub())

"""What several test files use."""

import json
import os
import subprocess
from pathlib import Path

import plddb
import pytest

SOURCE = Path(os.environ["PLDDB_SOURCE"])
TOOL = os.environ.get("PLDDB_TOOL", "")


@pytest.fixture(scope="session")
def shipped() -> plddb.Database:
    """The shipped database; tests do not change it."""
    return plddb.load(SOURCE / "data")


@pytest.fixture
def tree() -> plddb.Database:
    """A database of one family of three devices, each with two packages, each with an adapter."""
    db = plddb.Database()
    family = db.new_family()
    family.name = "PLD1200"
    for i in range(3):
        device = family.new_device()
        device.name = f"PLD12{i}4A"
        device.code_name = f"CODE{i}"
        device.comm = "JTAG"
        device.jtag_device_id = 0x0ABC0043 + (i << 12)
        device.device_id_scan_mask = 0x0FFFFFFF
        device.ir_length = 8
        for kind in ("TQ100", "BG256"):
            package = device.new_package()
            package.type = kind
            package.add_adapter("Acme", "A-" + kind)
    return db


def run(subcommand: str, *arguments: str) -> subprocess.CompletedProcess:
    """The command, over the shipped descriptions."""
    all_arguments = [TOOL, subcommand, "--db", str(SOURCE / "data"), *arguments]
    done = subprocess.run(all_arguments, capture_output=True, timeout=60, check=False)
    assert done.returncode in (0, 1), done.stderr
    return done


def read_tool(*arguments: str) -> str:
    """What the command prints."""
    return run(*arguments).stdout.decode(errors="surrogateescape")


def run_tool_with_messages(*arguments: str) -> tuple:
    """What the command answers as JSON, and its messages."""
    done = run(*arguments)
    return json.loads(done.stdout), done.stderr.decode().splitlines()


def run_tool(*arguments: str) -> object:
    """What the command answers as JSON."""
    return run_tool_with_messages(*arguments)[0]

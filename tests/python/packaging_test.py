"""The archive of the sources that pip builds from is complete. scripts/test-packages builds and installs it."""

import re
import subprocess
import sys
import tarfile

import plddb
import pytest

from conftest import SOURCE


@pytest.fixture(scope="module")
def archive(tmp_path_factory):
    """The names of the files in the archive, without its root folder."""
    folder = tmp_path_factory.mktemp("sdist")
    subprocess.run(
        [sys.executable, "-B", "setup.py", "-q", "egg_info", "--egg-base", folder, "sdist", "--dist-dir", folder],
        cwd=SOURCE, check=True, capture_output=True, timeout=120,
    )  # fmt: skip
    (path,) = folder.glob("*.tar.gz")
    version = re.search(r"^project\(plddb VERSION ([0-9.]+)", (SOURCE / "CMakeLists.txt").read_text(), re.MULTILINE)[1]
    assert path.name == f"plddb-{version}.tar.gz"
    with tarfile.open(path) as tar:
        return {name.partition("/")[2] for name in tar.getnames()}


def libraries():
    """The folders that setup.py compiles."""
    text = (SOURCE / "setup.py").read_text()
    return re.findall(r'"(\w+)"', re.search(r"LIBRARIES = \[(.*?)\]", text, re.DOTALL)[1])


def test_all_sources_and_descriptions_are_in_the_archive(archive):
    expected = ["setup.py", "pyproject.toml", "LICENSE", "README.md", "CMakeLists.txt", "descriptions/plddb.xsd"]
    for folder in [*libraries(), "include"]:
        files = [path for path in (SOURCE / folder).rglob("*") if path.suffix in (".h", ".cpp", ".py", ".pyi")]
        assert files, folder
        expected += [str(path.relative_to(SOURCE)) for path in files if "__pycache__" not in path.parts]
    expected += [str(path.relative_to(SOURCE)) for path in (SOURCE / "data").glob("*.xml")]
    assert sorted(set(expected) - archive) == []


def test_the_module_has_the_version_of_the_library():
    assert f"project(plddb VERSION {plddb.__version__} " in (SOURCE / "CMakeLists.txt").read_text()


def test_setup_compiles_the_files_of_this_system():
    code = (
        "import setuptools; setuptools.setup = lambda **all: print(*all['ext_modules'][0].sources);"
        "exec(open('setup.py').read())"
    )  # fmt: skip
    run = subprocess.run([sys.executable, "-B", "-c", code], cwd=SOURCE, check=True, capture_output=True, text=True, timeout=60)
    sources = run.stdout.split()
    assert "descriptions/platform_posix.cpp" in sources
    assert [source for source in sources if source.endswith("_windows.cpp")] == []


def test_setup_compiles_the_folders_that_the_module_is_made_of():
    made = re.findall(r"^\s*add_subdirectory\((\w+)\)", (SOURCE / "CMakeLists.txt").read_text(), re.MULTILINE)
    others = {"web", "tool", "tests", "examples", "fuzz", "bench"}
    core = {"foundation", "package", "device", "family", "database"}
    assert set(libraries()) == core | (set(made) - others)

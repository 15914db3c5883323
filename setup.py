"""Builds the Python package out of the source tree: the libraries, the module over them, and the shipped descriptions."""

import os
import re
import shutil
import subprocess
import sys
from glob import glob
from pathlib import Path

from pybind11.setup_helpers import ParallelCompile, Pybind11Extension, build_ext
from setuptools import setup
from setuptools.command.build_py import build_py

LIBRARIES = [
    "foundation", "package", "device", "family", "database", "descriptions", "chain", "find", "check", "bsdl", "programming_files", "python",
]  # fmt: skip

# What each system does in its own way is in a file of its own.
OTHER_SYSTEM = "_posix.cpp" if os.name == "nt" else "_windows.cpp"
SOURCES = sorted(
    file for folder in LIBRARIES for file in glob(folder + "/**/*.cpp", recursive=True) if not file.endswith(OTHER_SYSTEM)
)

VERSION = re.search(r"^project\(plddb VERSION ([0-9.]+)", Path("CMakeLists.txt").read_text(), re.MULTILINE).group(1)


class BuildWithDataAndStub(build_py):
    """The descriptions lie in data/ of the source tree, and in the package once it is installed; its type stub is made."""

    def run(self):
        super().run()
        package = Path(self.build_lib) / "plddb"
        (package / "data").mkdir(parents=True, exist_ok=True)
        for file in [*glob("data/*.xml"), "descriptions/plddb.xsd"]:
            shutil.copy(file, package / "data")
        subprocess.run([sys.executable, "python/make_stub.py", package / "__init__.pyi"], check=True)


ParallelCompile(default=0).install()
setup(
    version=VERSION,
    cmdclass={"build_ext": build_ext, "build_py": BuildWithDataAndStub},
    ext_modules=[
        Pybind11Extension(
            "plddb._plddb",
            SOURCES,
            include_dirs=[".", "include", *LIBRARIES],
            define_macros=[("PLDDB_STATIC", None), ("PLDDB_INSTALLED_DATA", '"/usr/share/plddb"'), ("PLDDB_VERSION", f'"{VERSION}"')],
            libraries=["pugixml", "z"],
            cxx_std=17,
        )
    ],
)

import functools
import http.server
import os
import pathlib
import subprocess
import sys
import threading

import pytest

sys.path.insert(0, str(pathlib.Path(__file__).parent))

from browser import Browser  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[2]
SITE = ROOT / "build" / "web"
COMMAND = os.environ.get("PLDDB", str(ROOT / "build" / "demo" / "bin" / "plddb"))


@pytest.fixture(scope="session")
def browser(tmp_path_factory):
    browser = Browser(tmp_path_factory.mktemp("profile"))
    yield browser
    browser.close()


@pytest.fixture
def page(browser):
    """The page, from file://, as a first visitor sees it. A test fails if the console got any message."""
    browser.resize(1280)
    browser.scheme("light")
    browser.open((SITE / "index.html").as_uri())
    browser.console()
    yield browser
    messages = [m for m in browser.console() if "expected by a test" not in m]
    assert messages == []


@pytest.fixture(scope="session")
def server():
    """The address of the page on a server."""

    class Quiet(http.server.SimpleHTTPRequestHandler):
        def log_message(self, *arguments):
            pass

    served = http.server.ThreadingHTTPServer(("127.0.0.1", 0), functools.partial(Quiet, directory=str(SITE)))
    threading.Thread(target=served.serve_forever, daemon=True).start()
    yield f"http://127.0.0.1:{served.server_port}/index.html"
    served.shutdown()


@pytest.fixture(scope="session")
def plddb(tmp_path_factory):
    """Runs the command, and returns what it prints."""
    environment = {**os.environ, "HOME": str(tmp_path_factory.mktemp("home")), "PLDDB_PATH": "", "XDG_CONFIG_HOME": ""}

    def run(*arguments, text=None):
        done = subprocess.run([COMMAND, *map(str, arguments)], input=text, capture_output=True, env=environment, check=False)
        return done.stdout.decode("utf-8", "replace")

    return run

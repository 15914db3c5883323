"""Chromium, driven by chromedriver through WebDriver, with nothing but Python's standard library."""

import base64
import json
import subprocess
import time
import urllib.request


class Browser:
    """A window without a screen, and its profile, which ends with it."""

    def __init__(self, folder):
        self.driver = subprocess.Popen(
            ["chromedriver", "--port=0"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        port = None
        while port is None:
            line = self.driver.stdout.readline()
            assert line, "chromedriver does not start"
            if "started successfully on port" in line:
                port = line.split("port")[1].strip(" .\n")
        self.base = f"http://127.0.0.1:{port}"
        arguments = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
                     "--disable-background-networking", f"--user-data-dir={folder}"]
        capabilities = {"browserName": "chrome", "goog:chromeOptions": {"args": arguments, "binary": "/usr/bin/chromium"},
                        "goog:loggingPrefs": {"browser": "ALL"}}
        answer = self._call("POST", "/session", {"capabilities": {"alwaysMatch": capabilities}})
        self.base += "/session/" + answer["sessionId"]
        self._call("POST", "/timeouts", {"script": 250000})  # milliseconds

    def close(self):
        try:
            self._call("DELETE", "", None)
        finally:
            self.driver.terminate()
            self.driver.wait()

    def _call(self, method, path, body):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.base + path, data, {"Content-Type": "application/json"}, method=method)
        try:
            with urllib.request.urlopen(request, timeout=300) as response:
                return json.load(response)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"].split("\n")[0]) from None

    def open(self, url):
        """Opens a page anew, and waits until it is ready."""
        self._call("POST", "/url", {"url": "about:blank"})
        self._call("POST", "/url", {"url": url})
        self.wait("return document.documentElement.dataset.ready === 'true'")

    def run(self, script, *arguments):
        return self._call("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def run_async(self, script, *arguments):
        """Runs the body of an asynchronous function."""
        wrapped = "const done = arguments[arguments.length - 1]; (async (...a) => {" + script + \
            "})(...arguments).then(done, (e) => done('failed: ' + e))"
        return self._call("POST", "/execute/async", {"script": wrapped, "args": list(arguments)})

    def wait(self, condition, *arguments, seconds=60):
        """Waits until a script gives something true, and returns that."""
        end = time.monotonic() + seconds
        while True:
            value = self.run(condition, *arguments)
            if value:
                return value
            assert time.monotonic() < end, f"never true: {condition}\nstatus: {self.text('#status')}"
            time.sleep(0.02)

    def find(self, selector):
        return next(iter(self._call("POST", "/element", {"using": "css selector", "value": selector}).values()))

    def click(self, selector):
        self._call("POST", f"/element/{self.find(selector)}/click", {})

    def type(self, selector, keys):
        self._call("POST", f"/element/{self.find(selector)}/value", {"text": keys})

    def press(self, keys):
        """Presses keys, one after the other, wherever the focus is."""
        actions = [{"type": kind, "value": key} for key in keys for kind in ("keyDown", "keyUp")]
        self._call("POST", "/actions", {"actions": [{"type": "key", "id": "keyboard", "actions": actions}]})

    def text(self, selector):
        return self.run("return (document.querySelector(arguments[0]) || {}).innerText || ''", selector)

    def cdp(self, command, **parameters):
        return self._call("POST", "/goog/cdp/execute", {"cmd": command, "params": parameters})

    def resize(self, width, height=1000):
        self.cdp("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)

    def scheme(self, name):
        """Whether the system is "dark" or "light"."""
        self.cdp("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": name}])

    def screenshot(self, path):
        """The whole page."""
        size = self.run("return [innerWidth, document.documentElement.scrollHeight]")
        shot = self.cdp("Page.captureScreenshot", captureBeyondViewport=True,
                        clip={"x": 0, "y": 0, "width": size[0], "height": size[1], "scale": 1})
        with open(path, "wb") as file:
            file.write(base64.b64decode(shot["data"]))

    def console(self):
        """What the console got since the last call."""
        return [entry["message"] for entry in self._call("POST", "/se/log", {"type": "browser"})]

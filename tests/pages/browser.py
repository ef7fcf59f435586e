"""A browser at work in a test: Debian's chromium without a window, driven through chromedriver by the W3C WebDriver
protocol. Needs nothing but Python's own library."""

import base64
import json
import os
import re
import subprocess
import urllib.error
import urllib.request


class Failure(Exception):
    """The browser answers with an error."""


class Browser:
    """Starts a browser; use it in a `with` statement, which ends it."""

    def __init__(self, profile):
        self._driver = subprocess.Popen(
            ["chromedriver", "--port=0"], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True
        )
        self._address = None
        for line in self._driver.stdout:
            started = re.search(r"started successfully on port (\d+)", line)
            if started:
                self._address = f"http://127.0.0.1:{started[1]}"
                break
        if self._address is None:
            raise Failure("chromedriver does not start")
        arguments = ["--headless=new", "--disable-gpu", "--disable-dev-shm-usage", "--hide-scrollbars",
                     "--disable-background-networking", "--no-first-run", f"--user-data-dir={profile}"]
        if os.geteuid() == 0:
            arguments.append("--no-sandbox")
        capabilities = {
            "alwaysMatch": {
                "browserName": "chrome",
                "goog:chromeOptions": {"args": arguments},
                "goog:loggingPrefs": {"browser": "ALL", "performance": "ALL"},
            }
        }
        self._session = ""
        answer = self._ask("POST", "/session", {"capabilities": capabilities})
        self._session = "/session/" + answer["sessionId"]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            self._ask("DELETE", "")
        except (OSError, Failure):
            pass  # the browser is gone; what went wrong is known already
        finally:
            self._driver.terminate()
            self._driver.wait()

    def _ask(self, method, path, body=None):
        data = None if method != "POST" else json.dumps(body or {}).encode()
        request = urllib.request.Request(self._address + self._session + path, data, method=method)
        request.add_header("Content-Type", "application/json")
        try:
            with urllib.request.urlopen(request, timeout=120) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise Failure(error.read().decode()) from error

    def devtools(self, command, **parameters):
        """A command of the browser's own protocol."""
        return self._ask("POST", "/goog/cdp/execute", {"cmd": command, "params": parameters})

    def open(self, url):
        """Loads a page and waits until it is there."""
        self._ask("POST", "/url", {"url": url})

    def run(self, script, *arguments):
        """Runs a function's body in the page and returns its result."""
        return self._ask("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def find(self, selector):
        element = self._ask("POST", "/element", {"using": "css selector", "value": selector})
        return next(iter(element.values()))

    def click(self, selector):
        """Clicks as a hand does: scrolls the element into view and fails if something covers it."""
        self._ask("POST", f"/element/{self.find(selector)}/click")

    def type(self, selector, text):
        self._ask("POST", f"/element/{self.find(selector)}/value", {"text": text})

    def address(self):
        return self._ask("GET", "/url")

    def console(self):
        """What the console has received since the last call."""
        return self._ask("POST", "/se/log", {"type": "browser"})

    def requests(self):
        """The addresses that were asked for since the last call."""
        messages = (json.loads(entry["message"])["message"] for entry in self._ask("POST", "/se/log", {"type": "performance"}))
        return [m["params"]["request"]["url"] for m in messages if m["method"] == "Network.requestWillBeSent"]

    def look(self, width, dark):
        """Sets the width of the window in pixels and the scheme."""
        self.devtools("Emulation.setDeviceMetricsOverride", width=width, height=900, deviceScaleFactor=1,
                      mobile=width < 600)
        scheme = {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}
        self.devtools("Emulation.setEmulatedMedia", features=[scheme])

    def take_picture(self, path, clip=None):
        """Saves a picture of the whole page, or of a part of it."""
        part = {"clip": clip} if clip else {}
        answer = self.devtools("Page.captureScreenshot", format="png", captureBeyondViewport=True, **part)
        with open(path, "wb") as file:
            file.write(base64.b64decode(answer["data"]))

    def print_to(self, path):
        """Prints the page to a PDF on A4."""
        answer = self.devtools("Page.printToPDF", printBackground=True, paperWidth=8.27, paperHeight=11.69,
                               preferCSSPageSize=True)
        with open(path, "wb") as file:
            file.write(base64.b64decode(answer["data"]))

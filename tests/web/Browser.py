"""A headless Chromium that is driven through a pipe, and a web server for a folder on this machine.

Its clicks and keys are those of a user for the page: sound may begin with them."""

import base64
import functools
import http.server
import json
import os
import shutil
import subprocess
import tempfile
import threading
import time
import unittest

CHROMIUM = shutil.which("chromium")
LIMIT = 20  # seconds for one reply


KEY_CODES = {"Tab": 9, "Enter": 13, "Escape": 27} # for what the browser itself does with them


class QuietHandler(http.server.SimpleHTTPRequestHandler):
    extensions_map = {
        **http.server.SimpleHTTPRequestHandler.extensions_map,
        ".js": "text/javascript",
        ".wasm": "application/wasm",
    }

    def log_message(self, *_):
        pass


class Server:
    """Serves `folder` at `address`."""

    def __init__(self, folder):
        handler = functools.partial(QuietHandler, directory=str(folder))
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        self.address = f"http://127.0.0.1:{self.server.server_port}"
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def close(self):
        self.server.shutdown()
        self.server.server_close()


class Browser:
    def __init__(self):
        self.profile = tempfile.mkdtemp(prefix="zelvatone-web-")
        toRead, toWrite = os.pipe(), os.pipe()  # the browser reads from 3 and writes to 4
        self.process = subprocess.Popen(
            # No sandbox: it refuses to start for root, as whom tests run in containers.
            ["sh", "-c", f'exec "$0" "$@" 3<&{toRead[0]} 4>&{toWrite[1]}', CHROMIUM, "--headless",
             "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
             "--disable-background-networking", "--disable-component-update", "--disable-sync",
             "--hide-scrollbars", "--remote-debugging-pipe", f"--user-data-dir={self.profile}",
             "about:blank"],
            pass_fds=(toRead[0], toWrite[1]), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(toRead[0])
        os.close(toWrite[1])
        self.commands = os.fdopen(toRead[1], "wb", buffering=0)
        self.replies = os.fdopen(toWrite[0], "rb")
        self.waiting = {}
        self.events = []
        self.arrival = threading.Condition()
        self.count = 0
        threading.Thread(target=self.read, daemon=True).start()

    def close(self):
        self.process.kill()
        self.process.wait()
        shutil.rmtree(self.profile, ignore_errors=True)

    def read(self):
        message = b""
        while byte := self.replies.read1(65536):
            *whole, message = (message + byte).split(b"\0")
            with self.arrival:
                for text in whole:
                    self.take(json.loads(text))
                self.arrival.notify_all()

    def take(self, reply):
        if "id" in reply:
            self.waiting[reply["id"]] = reply
        else:
            self.events.append(reply)

    def send(self, method, session=None, **params):
        self.count += 1
        call = {"id": self.count, "method": method, "params": params}
        if session:
            call["sessionId"] = session
        self.commands.write(json.dumps(call).encode() + b"\0")
        with self.arrival:
            if not self.arrival.wait_for(lambda: call["id"] in self.waiting, LIMIT):
                raise TimeoutError(method)
            reply = self.waiting.pop(call["id"])
        if "error" in reply:
            raise RuntimeError(f"{method}: {reply['error']['message']}")
        return reply["result"]

    def open(self, address, width=1280, height=900, isDark=False, density=1):
        return Tab(self, address, width, height, isDark, density)


def startBrowser(folder):
    """Returns a browser and a server of `folder`, which end with the tests of the module."""
    server, browser = Server(folder), Browser()
    unittest.addModuleCleanup(server.close)
    unittest.addModuleCleanup(browser.close)
    return browser, server


class Tab:
    """A page that has loaded: `page` is there."""

    def __init__(self, browser, address, width, height, isDark, density):
        self.browser = browser
        target = browser.send("Target.createTarget", url="about:blank")["targetId"]
        self.target = target
        self.session = browser.send("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.send(f"{domain}.enable")
        self.send("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=density, mobile=width < 600)
        self.send("Emulation.setTouchEmulationEnabled", enabled=width < 600)
        self.send("Emulation.setEmulatedMedia",
                  features=[{"name": "prefers-color-scheme", "value": "dark" if isDark else "light"}])
        self.send("Emulation.setFocusEmulationEnabled", enabled=True)
        self.send("Page.navigate", url=address)
        self.until("!!globalThis.page || !!document.querySelector('#failure:not([hidden])')")

    def send(self, method, **params):
        return self.browser.send(method, self.session, **params)

    def close(self):
        self.browser.send("Target.closeTarget", targetId=self.target)

    def evaluate(self, expression):
        """The value of a JavaScript expression, awaited."""
        reply = self.send("Runtime.evaluate", expression=expression, awaitPromise=True,
                          returnByValue=True, userGesture=False)
        if "exceptionDetails" in reply:
            details = reply["exceptionDetails"]
            raise RuntimeError(details.get("exception", {}).get("description", details["text"]))
        return reply["result"].get("value")

    def until(self, expression, limit=LIMIT):
        """Waits until the expression is true; what throws is not true yet."""
        end = time.monotonic() + limit
        tried = f"(() => {{ try {{ return {expression}; }} catch {{ return null; }} }})()"
        while not (value := self.evaluate(tried)):
            if time.monotonic() > end:
                raise TimeoutError(expression)
            time.sleep(0.02)
        return value

    def errors(self):
        """What the console told of errors and warnings."""
        told = []
        for event in list(self.browser.events):
            if event.get("sessionId") != self.session:
                continue
            params = event["params"]
            if event["method"] == "Runtime.exceptionThrown":
                told.append(params["exceptionDetails"]["exception"].get("description", "exception"))
            elif event["method"] == "Log.entryAdded" and params["entry"]["level"] in ("error", "warning"):
                told.append(f'{params["entry"]["text"]} {params["entry"].get("url", "")}')
            elif event["method"] == "Runtime.consoleAPICalled" and params["type"] in ("error", "warning"):
                told.append(str(params["args"]))
        return told

    def requests(self):
        """The addresses that the page has fetched."""
        return [event["params"]["request"]["url"] for event in list(self.browser.events)
                if event.get("sessionId") == self.session
                and event["method"] == "Network.requestWillBeSent"]

    def bytesReceived(self, start):
        """Of all files that have arrived since the browser had told `start` events."""
        return sum(event["params"]["encodedDataLength"] for event in list(self.browser.events)[start:]
                   if event.get("sessionId") == self.session and event["method"] == "Network.loadingFinished")

    def middleOf(self, selector):
        """In whole pixels, as a mouse has them."""
        place = self.evaluate(
            f"(() => {{ const e = document.querySelector({json.dumps(selector)});"
            "e.scrollIntoView({ block: 'center', behavior: 'instant' }); const r = e.getBoundingClientRect();"
            "return [Math.round(r.left + r.width / 2), Math.round(r.top + r.height / 2)]; })()")
        return tuple(place)

    ALT, CTRL, SHIFT = 1, 2, 8

    def mouse(self, kind, x, y, modifiers=0, **more):
        self.send("Input.dispatchMouseEvent", type=kind, x=x, y=y, modifiers=modifiers,
                  **({"button": "left", "buttons": 1, "clickCount": 1} if kind != "mouseWheel" else {}), **more)

    def click(self, selector, modifiers=0):
        x, y = self.middleOf(selector)
        self.mouse("mousePressed", x, y, modifiers)
        self.mouse("mouseReleased", x, y, modifiers)

    def key(self, key, code=None, modifiers=0, isUp=True, isDown=True):
        params = {"key": key, "code": code or key, "modifiers": modifiers}
        if key in KEY_CODES:
            params["windowsVirtualKeyCode"] = KEY_CODES[key]
        if isDown:
            self.send("Input.dispatchKeyEvent", type="keyDown" if len(key) == 1 and not modifiers else "rawKeyDown",
                      **params, **({"text": key} if len(key) == 1 and not modifiers else {}))
        if isUp:
            self.send("Input.dispatchKeyEvent", type="keyUp", **params)

    def picture(self, path, whole=True):
        data = self.send("Page.captureScreenshot", format="png", captureBeyondViewport=whole)["data"]
        with open(path, "wb") as file:
            file.write(base64.b64decode(data))

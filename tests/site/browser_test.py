"""The site in a real browser: headless chromium, driven over its DevTools
pipe with nothing but the standard library. Loads the index from file://,
types into the search box, sorts a column, follows a link to a board page,
and saves a screenshot of both pages as artefacts."""
import base64
import json
import os
import select
import shutil
import subprocess
import tempfile
import time
import unittest

from sitecheck import ODD_REPO, run_site

ARTEFACTS = os.environ.get("SITE_ARTEFACTS") or os.path.join(tempfile.gettempdir(), "zr_site_browser")


def chromium_path():
    path = os.environ.get("CHROMIUM") or shutil.which("chromium")
    if not path:
        raise RuntimeError("chromium is not installed; scripts/setup-deps.sh installs it (Debian package chromium)")
    return path


class Browser:
    """One headless chromium and one page of it, over --remote-debugging-pipe
    (commands on descriptor 3, answers on 4, each message ended by a NUL)."""

    def __init__(self, profile):
        to_child_r, self._to_child = os.pipe()
        self._from_child, from_child_w = os.pipe()

        def wire():
            # Copies first: either end may itself be descriptor 3 or 4.
            read_end, write_end = os.dup(to_child_r), os.dup(from_child_w)
            os.dup2(read_end, 3)
            os.dup2(write_end, 4)

        self.proc = subprocess.Popen(
            [chromium_path(), "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
             "--disable-background-networking", "--disable-component-update", "--disable-sync",
             "--remote-debugging-pipe", "--user-data-dir=" + profile, "about:blank"],
            pass_fds=(3, 4), preexec_fn=wire, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        os.close(to_child_r)
        os.close(from_child_w)
        self._buffer = b""
        self._next = 0
        self.events = []
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        self.page("Page.enable")
        self.page("Emulation.setDeviceMetricsOverride", width=1280, height=900, deviceScaleFactor=1, mobile=False)

    def close(self):
        try:
            self.call("Browser.close")
        except Exception:
            pass
        try:
            self.proc.wait(timeout=10)
        except subprocess.TimeoutExpired:
            self.proc.kill()
            self.proc.wait()
        os.close(self._to_child)
        os.close(self._from_child)

    def _read(self, deadline):
        while b"\0" not in self._buffer:
            left = deadline - time.monotonic()
            if left <= 0 or not select.select([self._from_child], [], [], left)[0]:
                raise TimeoutError("chromium did not answer in time")
            chunk = os.read(self._from_child, 1 << 20)
            if not chunk:
                raise RuntimeError("chromium ended (exit status %s)" % self.proc.poll())
            self._buffer += chunk
        message, self._buffer = self._buffer.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, session=None, timeout=30, **params):
        self._next += 1
        request = {"id": self._next, "method": method, "params": params}
        if session:
            request["sessionId"] = session
        os.write(self._to_child, json.dumps(request).encode() + b"\0")
        deadline = time.monotonic() + timeout
        while True:
            message = self._read(deadline)
            if message.get("id") == self._next:
                if "error" in message:
                    raise RuntimeError("%s: %s" % (method, message["error"]))
                return message.get("result", {})
            self.events.append(message)

    def page(self, method, **params):
        return self.call(method, session=self.session, **params)

    def wait_event(self, method, timeout=30):
        deadline = time.monotonic() + timeout
        while True:
            for i, e in enumerate(self.events):
                if e.get("method") == method:
                    del self.events[i]
                    return e
            self.events.append(self._read(deadline))

    def evaluate(self, expression):
        result = self.page("Runtime.evaluate", expression=expression, returnByValue=True)
        if "exceptionDetails" in result:
            raise RuntimeError("script failed: %s" % result["exceptionDetails"])
        return result["result"].get("value")

    def navigate(self, url):
        self.events.clear()
        self.page("Page.navigate", url=url)
        self.wait_event("Page.loadEventFired")

    def type(self, text):
        for ch in text:
            self.page("Input.dispatchKeyEvent", type="keyDown", text=ch, key=ch)
            self.page("Input.dispatchKeyEvent", type="keyUp", key=ch)

    def click(self, selector):
        box = self.evaluate("(() => { const r = document.querySelector(%s).getBoundingClientRect();"
                            " return [r.x + r.width / 2, r.y + r.height / 2]; })()" % json.dumps(selector))
        for kind in ("mousePressed", "mouseReleased"):
            self.page("Input.dispatchMouseEvent", type=kind, x=box[0], y=box[1], button="left", clickCount=1)

    def screenshot(self, path):
        data = self.page("Page.captureScreenshot", format="png", captureBeyondViewport=True)["data"]
        with open(path, "wb") as f:
            f.write(base64.b64decode(data))
        return path


VISIBLE_ROWS = "Array.from(document.querySelectorAll('#boards tbody tr')).filter(r => !r.hidden)" \
               ".map(r => r.cells[1].textContent)"


CLEAR_SEARCH = "(() => { const s = document.getElementById('search'); s.value = '';" \
               " s.dispatchEvent(new Event('input')); })()"


class BrowserTest(unittest.TestCase):
    def test_search_sort_and_follow_a_link(self):
        shots = os.path.join(ARTEFACTS, "screenshots")
        site = os.path.join(ARTEFACTS, "site")
        shutil.rmtree(ARTEFACTS, ignore_errors=True)
        os.makedirs(shots)
        r = run_site(site, "--repo", ODD_REPO)
        self.assertIn("Wrote 11 board pages", r.stdout, r.stderr)

        profile = tempfile.mkdtemp(prefix="zr_site_chromium_")
        browser = Browser(profile)
        try:
            browser.navigate("file://" + os.path.join(site, "index.html"))
            self.assertEqual(browser.evaluate("document.title"), "Board catalogue")
            everything = browser.evaluate(VISIBLE_ROWS)
            self.assertEqual(len(everything), 11)
            self.assertFalse(browser.evaluate("document.getElementById('searchform').hidden"))

            browser.click("#search")
            browser.type("quil")
            self.assertEqual(sorted(browser.evaluate(VISIBLE_ROWS)),
                             ["korvelhw:quillon:1.0", "korvelhw:quillon:1.1"])
            browser.type("lon 1.1")
            self.assertEqual(browser.evaluate(VISIBLE_ROWS), ["korvelhw:quillon:1.1"])
            self.assertEqual(browser.evaluate("document.getElementById('count').textContent"), "1 of 11 boards")
            browser.screenshot(os.path.join(shots, "index-search.png"))

            # A search matches any cell: the vendor of the odd board, whose name is all markup.
            browser.evaluate(CLEAR_SEARCH)
            browser.click("#search")
            browser.type("oddvend")
            self.assertEqual(browser.evaluate(VISIBLE_ROWS), ["oddvend:odd:1.0"])
            self.assertEqual(browser.evaluate("document.querySelectorAll('script').length"), 1)

            # Sorting by the number of connectors, both ways; numbers, not texts.
            browser.evaluate(CLEAR_SEARCH)
            connectors = "Array.from(document.querySelectorAll('#boards tbody tr')).map(r => Number(r.cells[7].textContent))"
            browser.click("#boards thead th:nth-child(8) button")
            up = browser.evaluate(connectors)
            self.assertEqual(up, sorted(up))
            browser.click("#boards thead th:nth-child(8) button")
            self.assertEqual(browser.evaluate(connectors), sorted(up, reverse=True))
            self.assertEqual(browser.evaluate("document.querySelector('#boards th:nth-child(8)')"
                                              ".getAttribute('aria-sort')"), "descending")

            browser.click("#search")
            browser.type("tarnwick")
            self.assertEqual(browser.evaluate(VISIBLE_ROWS), ["korvelhw:tarnwick:1.2"])
            browser.events.clear()
            browser.click("#boards tbody tr:not([hidden]) a")
            browser.wait_event("Page.loadEventFired")
            self.assertTrue(browser.evaluate("location.href").endswith("/boards/korvelhw_tarnwick_1.2.html"))
            self.assertEqual(browser.evaluate("document.querySelector('h1').textContent"), "Tarnwick K160T Reference Board")
            self.assertGreater(browser.evaluate("document.querySelectorAll('svg.diagram rect').length"), 10)
            self.assertTrue(browser.evaluate("Array.from(document.images).every(i => i.complete && i.naturalWidth > 0)"))
            browser.screenshot(os.path.join(shots, "board-tarnwick.png"))
        finally:
            browser.close()
            shutil.rmtree(profile, ignore_errors=True)
        for name in ("index-search.png", "board-tarnwick.png"):
            with open(os.path.join(shots, name), "rb") as f:
                self.assertEqual(f.read(8), b"\x89PNG\r\n\x1a\n")
        print("screenshots in " + shots)


if __name__ == "__main__":
    unittest.main()

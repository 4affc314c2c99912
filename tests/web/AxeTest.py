"""What axe-core finds on the page: it knows the rules of accessibility.

ZELVATONE_SITE names a folder with the page and an engine, ZELVATONE_AXE the file axe.min.js."""

import os
import sys
import unittest
from pathlib import Path

from Browser import CHROMIUM, startBrowser

SITE = Path(os.environ["ZELVATONE_SITE"])
AXE = Path(os.environ["ZELVATONE_AXE"])
SKIPPED = 77


def setUpModule():
    global browser, server
    browser, server = startBrowser(SITE)


class Axe(unittest.TestCase):
    FINDINGS = """axe.run().then(({ violations, passes }) => ({
        passed: passes.length,
        found: violations.flatMap(({ id, nodes }) => nodes.map(({ html, failureSummary }) =>
            `${id}: ${html.slice(0, 120)}: ${failureSummary}`)),
    }))"""

    def findings(self, before="", **window):
        """Returns what axe-core finds after the page has run `before`, an expression."""
        tab = browser.open(f"{server.address}/index.html#program=7", **window)
        self.addCleanup(tab.close)
        tab.evaluate(AXE.read_text(encoding="utf-8") + ";undefined")
        tab.evaluate(f"{before};undefined")
        result = tab.evaluate(self.FINDINGS)
        self.assertGreater(result["passed"], 10)  # so it has looked
        return result["found"]

    def testFindsNothingInAnyWindow(self):
        for width, height in ((1280, 900), (390, 844)):
            for isDark in (False, True):
                with self.subTest(width=width, isDark=isDark):
                    self.assertEqual(self.findings(width=width, height=height, isDark=isDark), [])

    def testFindsNothingInTheListOfATelephone(self):
        opened = "document.getElementById('browser').open = true"
        self.assertEqual(self.findings(opened, width=390, height=844), [])

    def testFindsNothingInTheHelp(self):
        for width, height in ((1280, 900), (390, 844)):
            with self.subTest(width=width):
                opened = "document.querySelector('.help').click()"
                self.assertEqual(self.findings(opened, width=width, height=height), [])

    def testFindsAButtonWithoutAName(self):
        broken = "document.querySelector('main').append(document.createElement('button'))"
        self.assertEqual(len(self.findings(broken)), 1)


if __name__ == "__main__":
    for needed, isHere in (("chromium", CHROMIUM is not None), ("axe-core", AXE.exists())):
        if not isHere:
            print(f"{needed} is not installed")
            sys.exit(SKIPPED)
    unittest.main()

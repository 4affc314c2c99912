"""README and the documents link to files that are there, each document can be reached from README, and
all keep to plain words."""

import os
import re
import unittest
from pathlib import Path

ROOT = Path(os.environ["ZELVATONE_ROOT"]).resolve()


# Each has a plainer word: "returns", "no other program", "a caller", "temporarily".
AVOIDED = re.compile(r"\b(answers|nobody|whoever|somebody|for the time being)\b", re.IGNORECASE)


def linksOf(page):
    """The files that a page links to or shows, without what is on the web."""
    text = page.read_text(encoding="utf-8")
    targets = re.findall(r"\]\(([^)#]+)[^)]*\)", text) + re.findall(r'src="([^"]+)"', text)
    return [(page.parent / target).resolve() for target in targets if "://" not in target]


class Documents(unittest.TestCase):
    def testLinkToFilesThatAreThere(self):
        for page in [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md")]:
            for link in linksOf(page):
                with self.subTest(page=page.name, link=link.name):
                    self.assertTrue(link.exists())

    def testAreReachedFromTheReadme(self):
        reached, waiting = set(), [ROOT / "README.md"]
        while waiting:
            page = waiting.pop()
            if page not in reached and page.suffix == ".md" and page.exists():
                reached.add(page)
                waiting += linksOf(page)
        self.assertEqual(sorted(set(ROOT.glob("docs/*.md")) - reached), [])

    def testKeepToPlainWords(self):
        for page in [*ROOT.glob("*.md"), *ROOT.glob("*/*.md"), *ROOT.glob("cli/man/*.1")]:
            with self.subTest(page=page.name):
                self.assertIsNone(AVOIDED.search(page.read_text(encoding="utf-8")))


if __name__ == "__main__":
    unittest.main()

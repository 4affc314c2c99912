"""The release notes are one section of the changelog, for people and for software centres."""

import unittest
import xml.etree.ElementTree as xml

import release_notes

CHANGELOG = """# Changelog

## [Unreleased]

- Not yet.

## [1.2.0] - 2027-01-02

Louder.

### Added

- A `knob` for <loud> & quiet
  music.
- Another.

## [1.1.0] - 2026-12-24

- Older.
"""


class ReleaseNotes(unittest.TestCase):
    def testAreTheSectionOfTheVersion(self):
        date, section = release_notes.sectionOf("1.2.0", CHANGELOG)
        self.assertEqual(date, "2027-01-02")
        self.assertTrue(section.startswith("Louder.\n"), section)
        self.assertTrue(section.endswith("- Another.\n"), section)

    def testTheOldestSectionEndsWithTheFile(self):
        self.assertEqual(release_notes.sectionOf("1.1.0", CHANGELOG), ("2026-12-24", "- Older.\n"))

    def testAVersionWithoutADateIsRefused(self):
        for version in ("Unreleased", "1.3.0", "1.2"):
            with self.assertRaisesRegex(ValueError, "no section of version"):
                release_notes.sectionOf(version, CHANGELOG)

    def testBecomeParagraphsAndListsWithoutMarkdown(self):
        section = release_notes.sectionOf("1.2.0", CHANGELOG)[1]
        description = xml.fromstring(release_notes.appstream(section))
        self.assertEqual([(child.tag, (child.text or "").strip()) for child in description],
                         [("p", "Louder."), ("p", "Added"), ("ul", "")])
        self.assertEqual([item.text for item in description.find("ul")],
                         ["A knob for <loud> & quiet music.", "Another."])


if __name__ == "__main__":
    unittest.main()

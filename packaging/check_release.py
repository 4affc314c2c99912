#!/usr/bin/env python3
"""Checks what is in the files of a release, without installing any.

check_release.py FOLDER SOURCES: FOLDER holds the release, SOURCES is the project's top
folder, whose path no file may name. Prints what each file for Linux needs of its system.
"""

import hashlib
import io
import os
import re
import subprocess
import sys
import tarfile
import tempfile
import unittest
import zipfile
from pathlib import Path

import release_notes

RELEASE, SOURCES = Path(sys.argv[1]), Path(sys.argv[2])
VERSION = re.search(r"^project\(zelvatone VERSION ([\d.]+)",
                    (SOURCES / "CMakeLists.txt").read_text(encoding="utf-8"), re.MULTILINE)[1]
TIME = int(os.environ["SOURCE_DATE_EPOCH"])
NAME = f"zelvatone-{VERSION}"
LINUX, WINDOWS = f"{NAME}-linux-x86_64", f"{NAME}-windows-x64"
PACKAGES = ("", "-vst", "-lv2", "-clap", "-doc")

# What a C library of 2022 has, that of Ubuntu 22.04: no file for Linux may ask for more.
NEWEST_GLIBC = (2, 35)
NEWEST_GLIBCXX = (3, 4, 30)  # its C++ library, which the program takes from the system
# All that a desktop has anyway; the editor's libraries are never brought along.
DESKTOP = {"libc.so.6", "libm.so.6", "ld-linux-x86-64.so.2", "libxcb.so.1", "libcairo.so.2",
           "libpango-1.0.so.0", "libpangocairo-1.0.so.0", "libgobject-2.0.so.0",
           "libglib-2.0.so.0"}
PLUGINS = ["clap/zelvatone.clap", "lv2/zelvatone.lv2/zelvatone.so",
           "lv2/zelvatone.lv2/zelvatone_editor.so", "vst/zelvatone.so"]
PROGRAM = "bin/zelvatone"


def debianFile(package):
    architecture = "all" if package == "-doc" else "amd64"
    return RELEASE / f"zelvatone{package}_{VERSION}-1_{architecture}.deb"


def outputOf(*command):
    return subprocess.run(command, check=True, capture_output=True).stdout


def membersOf(archive):
    """{name: member} of a tar archive, names without a leading "./"."""
    return {re.sub(r"^\./", "", member.name): member for member in archive.getmembers()}


def debianContent(package):
    return tarfile.open(fileobj=io.BytesIO(
        outputOf("dpkg-deb", "--fsys-tarfile", debianFile(package))))


def everyContent():
    """(where, content) of every file of every archive, of the two Windows executables, too."""
    archives = [(debianFile(package).name, debianContent(package)) for package in PACKAGES]
    archives.append((LINUX, tarfile.open(RELEASE / f"{LINUX}.tar.gz")))
    for name, archive in archives:
        for member in archive.getmembers():
            if member.isfile():
                yield f"{name}: {member.name}", archive.extractfile(member).read()
    with zipfile.ZipFile(RELEASE / f"{WINDOWS}.zip") as archive:
        for name in archive.namelist():
            yield f"{WINDOWS}.zip: {name}", archive.read(name)
    for file in RELEASE.iterdir():
        yield file.name, file.read_bytes()


class Release(unittest.TestCase):
    def testHasExactlyTheseFiles(self):
        expected = [debianFile(package).name for package in PACKAGES]
        expected += [f"{LINUX}.tar.gz", f"{WINDOWS}.zip", f"{WINDOWS}-installer.exe",
                     "RELEASE-NOTES.md", "SHA256SUMS"]
        self.assertEqual(sorted(file.name for file in RELEASE.iterdir()), sorted(expected))

    def testEverySumFits(self):
        sums = dict(reversed(line.split(maxsplit=1)) for line in
                    (RELEASE / "SHA256SUMS").read_text(encoding="ascii").splitlines())
        made = {file.name: hashlib.sha256(file.read_bytes()).hexdigest()
                for file in RELEASE.iterdir() if file.name != "SHA256SUMS"}
        self.assertEqual(sums, made)

    def testNotesAreTheChangelogsSection(self):
        changelog = (SOURCES / "CHANGELOG.md").read_text(encoding="utf-8")
        self.assertEqual((RELEASE / "RELEASE-NOTES.md").read_text(encoding="utf-8"),
                         release_notes.sectionOf(VERSION, changelog)[1])

    def testNoFileNamesTheFolderThatItWasBuiltIn(self):
        path = str(SOURCES.resolve())
        marks = [path.encode(), path.encode("utf-16-le")]
        naming = [where for where, content in everyContent()
                  if any(mark in content for mark in marks)]
        self.assertEqual(naming, [])

    def testNoProgramOrPlugInNamesAFolderOfTheSources(self):
        # By another path, as a compiler cache may give it, or none.
        named = re.compile(rb"\b(?:cli|dataset|host|live|src|tour|vstgui)/[\w/]+\.(?:cpp|h)\b")
        naming = [(where, named.search(content)[0]) for where, content in everyContent()
                  if content.startswith((b"\x7fELF", b"MZ")) and named.search(content)]
        self.assertEqual(naming, [])


class DebianPackages(unittest.TestCase):
    CONTENT = {
        "": ["usr/bin/zelvatone", "usr/share/man/man1/zelvatone.1.gz",
             "usr/share/bash-completion/completions/zelvatone",
             "usr/share/applications/com.quillfeather.zelvatone.desktop",
             "usr/share/icons/hicolor/scalable/apps/com.quillfeather.zelvatone.svg",
             "usr/share/metainfo/com.quillfeather.zelvatone.metainfo.xml"],
        "-vst": ["usr/lib/vst/zelvatone.so",
                 "usr/share/metainfo/com.quillfeather.zelvatone.vst.metainfo.xml"],
        "-lv2": [f"usr/lib/lv2/zelvatone.lv2/{name}" for name in (
            "manifest.ttl", "zelvatone.ttl", "presets.ttl", "zelvatone.so", "zelvatone_editor.so")]
                + ["usr/share/metainfo/com.quillfeather.zelvatone.lv2.metainfo.xml"],
        "-clap": ["usr/lib/clap/zelvatone.clap",
                  "usr/share/metainfo/com.quillfeather.zelvatone.clap.metainfo.xml"],
        "-doc": ["usr/share/doc/zelvatone/tour/index.html",
                 "usr/share/doc/zelvatone/examples/invention-1.mid"],
    }

    def testHaveTheirFilesAndLicences(self):
        for package, wanted in self.CONTENT.items():
            members = membersOf(debianContent(package))
            documents = [f"usr/share/doc/zelvatone{package}/{name}"
                         for name in ("copyright", "changelog.gz", "changelog.Debian.gz")]
            self.assertEqual(set(wanted + documents) - members.keys(), set(), package)

    def testFilesBelongToRootAndCarryTheReleaseTime(self):
        for package in PACKAGES:
            for member in debianContent(package).getmembers():
                with self.subTest(member.name):
                    self.assertEqual((member.uid, member.gid, member.mtime), (0, 0, TIME))

    def testDependenciesAreThoseOfTheLibrariesThatTheFilesName(self):
        for package, library in [("", "libsndfile1"), ("", "libfftw3-single3"),
                                 ("-vst", "libcairo2"), ("-lv2", "libpango-1.0-0"),
                                 ("-clap", "libxcb1"), ("-clap", "libc6")]:
            depends = outputOf("dpkg-deb", "-f", debianFile(package), "Depends").decode()
            self.assertIn(library, re.split(r"[ ,]+", depends.strip()))


class LinuxArchive(unittest.TestCase):
    def setUp(self):
        self.archive = tarfile.open(RELEASE / f"{LINUX}.tar.gz")
        self.addCleanup(self.archive.close)
        self.members = membersOf(self.archive)

    def content(self, name):
        return self.archive.extractfile(self.members[f"{LINUX}/{name}"]).read()

    def systemOf(self, name):
        """(libraries, {symbol group: highest version}) that a file needs."""
        with tempfile.NamedTemporaryFile() as file:
            file.write(self.content(name))
            file.flush()
            listing = outputOf("objdump", "-p", file.name).decode()
        versions = {}
        for group, version in re.findall(r"\b([A-Z]+)_(\d+(?:\.\d+)+)$", listing, re.MULTILINE):
            number = tuple(map(int, version.split(".")))
            versions[group] = max(number, versions.get(group, number))
        return re.findall(r"NEEDED\s+(\S+)", listing), versions

    def testHasAFolderForEachFormatAndTheScripts(self):
        wanted = [*PLUGINS, PROGRAM, "LICENSE", "COPYRIGHT", "README.txt", "RELEASE-NOTES.md",
                  "folders.sh", "install.sh", "uninstall.sh"]
        self.assertEqual({f"{LINUX}/{name}" for name in wanted} - self.members.keys(), set())
        self.assertEqual({name.split("/")[0] for name in self.members}, {LINUX})

    def testFilesBelongToRootAndCarryTheReleaseTime(self):
        for member in self.members.values():
            with self.subTest(member.name):
                self.assertEqual((member.uname, member.uid, member.gid, member.mtime),
                                 ("root", 0, 0, TIME))

    def testNeedsNoNewerSystemThanThatOf2022(self):
        for name in [*PLUGINS, PROGRAM]:
            libraries, versions = self.systemOf(name)
            print(f"{name}: " + ", ".join(
                f"{group} {'.'.join(map(str, version))}" for group, version in versions.items())
                + "; " + " ".join(libraries))
            self.assertLessEqual(versions["GLIBC"], NEWEST_GLIBC, name)
            self.assertLessEqual(versions.get("GLIBCXX", (0,)), NEWEST_GLIBCXX, name)
            if name != PROGRAM:
                self.assertLessEqual(set(libraries), DESKTOP, name)


class WindowsFiles(unittest.TestCase):
    def testHaveThePlugInsTheProgramAndTheLicences(self):
        with zipfile.ZipFile(RELEASE / f"{WINDOWS}.zip") as archive:
            names = [f"{WINDOWS}/{name}" for name in (
                "COPYRIGHT.txt", "LICENSE.txt", "README.txt", "RELEASE-NOTES.txt",
                "zelvatone.clap", "zelvatone.dll", "zelvatone.exe")]
            self.assertEqual(archive.namelist(), names)

    def testCarryTheVersionInTheirResources(self):
        with zipfile.ZipFile(RELEASE / f"{WINDOWS}.zip") as archive:
            contents = {name: archive.read(f"{WINDOWS}/{name}")
                        for name in ("zelvatone.clap", "zelvatone.dll", "zelvatone.exe")}
        contents["installer"] = (RELEASE / f"{WINDOWS}-installer.exe").read_bytes()
        # The value begins at a multiple of four bytes.
        name, value = (text.encode("utf-16-le") for text in ("FileVersion\0", f"{VERSION}\0"))
        mark = re.compile(re.escape(name) + rb"\0{0,2}" + re.escape(value))
        for file, content in contents.items():
            self.assertTrue(mark.search(content), file)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])

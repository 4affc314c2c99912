"""What the built files promise to their users, read from the files themselves."""

import os
import re
import subprocess
import unittest

MODULE = os.environ["ZELVATONE_MODULE_PATH"]
PROGRAMS = [path for path in os.environ["ZELVATONE_PROGRAM_PATHS"].split(":") if path]
PLUGINS = [MODULE, *os.environ["ZELVATONE_PLUGIN_PATHS"].split(";")]
OBJECTS = [path for path in os.environ["ZELVATONE_OBJECTS"].split(";") if path]
READELF = os.environ["ZELVATONE_READELF"]
OBJDUMP = os.environ["ZELVATONE_OBJDUMP"]
# The folder of the sources, which holds that of the build.
BUILD_PATHS = [os.environ["ZELVATONE_SOURCE_FOLDER"], os.environ["ZELVATONE_BINARY_FOLDER"]]
# That of a Debian 12 and a Ubuntu 22.04 is not older.
NEWEST_GLIBC = (2, 35)

FILES = [*PLUGINS, *PROGRAMS]


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def foreign_symbols(path):
    """The names of the functions that a file takes from libraries, with their versions."""
    return re.findall(r"UND ([\w.]+(?:@[\w.]+)?)", output_of(READELF, "-W", "--dyn-syms", path))


class Hardening(unittest.TestCase):
    def test_the_stack_is_protected(self):
        for path in FILES:
            with self.subTest(path):
                self.assertTrue(any(name.startswith("__stack_chk_fail")
                                    for name in foreign_symbols(path)))

    def test_copies_of_the_c_library_check_sizes(self):
        for path in FILES:
            with self.subTest(path):
                checked = [name for name in foreign_symbols(path)
                           if re.match(r"__\w+_chk(@|$)", name)]
                self.assertNotEqual(checked, [])

    def test_functions_are_resolved_before_the_file_runs(self):
        for path in FILES:
            with self.subTest(path):
                self.assertRegex(output_of(READELF, "-W", "--dynamic", path), r"FLAGS_1.*\bNOW\b")
                self.assertIn("GNU_RELRO", output_of(READELF, "-W", "--segments", path))

    def test_no_stack_is_executable(self):
        for path in FILES:
            with self.subTest(path):
                flags = re.search(r"GNU_STACK +(?:0x\w+ +){5}(\w+)",
                                  output_of(READELF, "-W", "--segments", path)).group(1)
                self.assertEqual(flags, "RW")

    def test_every_object_of_the_plug_in_marks_where_indirect_jumps_may_land(self):
        self.assertGreater(len(OBJECTS), 20)
        for path in OBJECTS:
            with self.subTest(path):
                self.assertRegex(output_of(READELF, "-W", "--notes", path),
                                 r"x86 feature: IBT, SHSTK")

    def test_the_entry_point_is_such_a_place(self):
        code = output_of(OBJDUMP, "--disassemble", "--no-show-raw-insn", MODULE)
        first = re.search(r"<VSTPluginMain>:\n\s*\w+:\s*(\w+)", code) or \
            re.search(r"<main>:\n\s*\w+:\s*(\w+)", code)
        self.assertEqual(first.group(1), "endbr64")

    def test_no_file_names_the_folder_that_it_was_built_in(self):
        for path in FILES:
            with open(path, "rb") as file:
                content = file.read()
            for folder in BUILD_PATHS:
                with self.subTest(path, folder=folder):
                    self.assertNotIn(folder.encode(), content)

    def test_every_plug_in_runs_with_a_c_library_of_2022(self):
        for path in PLUGINS:
            with self.subTest(path):
                versions = re.findall(r"@GLIBC_(\d+)\.(\d+)", "\n".join(foreign_symbols(path)))
                self.assertNotEqual(versions, [])
                self.assertLessEqual(max((int(major), int(minor)) for major, minor in versions),
                                     NEWEST_GLIBC)


if __name__ == "__main__":
    unittest.main()

"""The house has floors: a source reads its own room and rooms below it, never one above.

The table is the drawing in docs/architecture.md, written down. Each row names a room, the paths
that belong to it (a folder, or the beginning of a file's name; the longest one that fits counts),
and the rooms that it may read, which must stand higher up in the table."""

import os
import re
import unittest
from pathlib import Path

ROOT = Path(os.environ.get("ZELVATONE_ROOT", Path(__file__).parents[2]))

LAYERS = [
    # The plug-in. The engine knows no host and no editor; the editor and the shell share the
    # engine's interface, its programs and nothing of how it makes sound.
    ("params", ["src/params"], []),
    ("vst2", ["src/vst2"], []),
    ("voices", ["src/engine"], ["params"]),
    ("fast", ["src/engine/fast"], ["params", "voices"]),
    ("kernel", ["src/engine/fast/kernel"], ["voices", "fast"]),
    ("engine", ["src/engine/SynthEngine.", "src/engine/SynthEvent.",
                "src/engine/ZelvatoneEngine."], ["params", "voices", "fast"]),
    # What pedals and volumes do, in every format and in our own host: knows no engine and no host.
    ("performance", ["src/performance"], []),
    # What both formats in units are made of.
    ("formats", ["src/formats"], ["params", "engine", "performance"]),
    ("shell", ["src/plugin/shell"], ["params", "vst2", "engine"]),
    ("vstgui", ["vstgui"], []),
    # Reads the engine for the texts of the current program, which the shell does not hand out.
    ("editor", ["src/vstguieditor"], ["params", "vst2", "engine", "shell", "vstgui"]),
    ("plugin", ["src/plugin"], ["engine", "shell", "editor"]),
    # Hosts the editor of the VST 2.4 file for formats that speak in units.
    ("editor panel", ["src/editorpanel"], ["params", "vst2", "engine", "plugin"]),
    ("lv2", ["src/lv2"], ["params", "formats", "editor panel"]),
    # CLAP's own records, and the plug-in that speaks them.
    ("clap records", ["src/clap/abi"], []),
    ("clap", ["src/clap"], ["params", "performance", "formats", "editor panel", "clap records"]),

    # The page in a browser: where the editor has its knobs, and no more of it.
    ("web page", ["web/face"], ["editor"]),

    # The host: knows a plug-in by the records of its interface alone.
    ("host", ["host"], []), # the errors that every room throws
    ("threads", ["host/threads"], ["host"]),
    ("text", ["host/text"], ["host"]),
    ("files", ["host/files"], ["host", "text"]),
    ("midi", ["host/midi"], ["performance", "host", "files", "text"]),
    ("audio", ["host/audio"], ["host", "files", "text"]),
    ("picture", ["host/picture"], ["host", "files", "text", "audio"]),
    ("window", ["host/window"], ["host", "threads", "files", "text", "picture"]),
    ("hosted plug-in", ["host/plugin"], ["host", "vst2", "files", "text", "window"]),
    ("preset", ["host/preset"], ["host", "vst2", "files", "text", "midi", "audio",
                                 "hosted plug-in"]),
    ("render", ["host/render"], ["performance", "host", "vst2", "threads", "files", "text", "midi",
                                 "audio", "hosted plug-in"]),
    ("tour", ["tour"], ["performance", "host", "vst2", "threads", "files", "text", "midi", "audio", "picture",
                        "hosted plug-in", "preset", "render"]),
    # Drives the instrument in units, without a plug-in file: a new one for each of millions of sounds.
    ("dataset", ["dataset"], ["params", "performance", "engine", "formats", "host", "threads",
                              "files", "text", "audio", "hosted plug-in"]),
    # The instrument in a browser, without a system: of the host, the bytes of preset files alone.
    ("web engine", ["web/engine"], ["params", "engine", "performance", "formats", "vst2", "preset"]),
    ("live", ["live"], ["performance", "host", "vst2", "threads", "files", "text", "midi", "audio",
                        "hosted plug-in", "render"]),
    ("terminal", ["cli/terminal"], ["host", "files", "text", "hosted plug-in"]),
    ("commands", ["cli/commands"], ["performance", "host", "threads", "files", "text", "midi",
                                    "audio", "window", "hosted plug-in", "preset", "render", "tour",
                                    "dataset", "live", "terminal"]),
    ("cli", ["cli"], ["host", "threads", "files", "text", "audio", "hosted plug-in", "terminal",
                      "commands"]),

    # A test reads what it tests, and no more: one of the engine needs no editor to be built.
    ("tests/params", ["tests/params"], ["params"]),
    ("tests/abi", ["tests/abi"], ["params", "vst2", "voices", "engine"]),
    ("tests/voice", ["tests/voice"], ["params", "voices", "fast"]),
    ("tests/engine", ["tests/engine"], ["params", "voices", "fast", "engine"]),
    ("tests/kernel", ["tests/kernel"], ["params", "voices", "fast", "kernel", "engine",
                                        "tests/engine"]),
    ("tests/programs", ["tests/programs"], ["params", "voices", "engine"]),
    ("tests/performance", ["tests/performance"], ["performance"]),
    ("tests/formats", ["tests/formats"], ["params", "voices", "engine", "performance", "formats",
                                          "tests/engine"]),
    ("tests/plugin", ["tests/plugin"], ["params", "vst2", "engine", "shell", "plugin"]),
    ("tests/vstgui", ["tests/vstgui"], ["vstgui"]),
    # Knows a plug-in by the records of its interface alone.
    ("tests/hostile", ["tests/hostile"], ["vst2", "tests/kernel", "tests/plugin", "tests/vstgui"]),
    ("tests/editor", ["tests/editor"], ["params", "vst2", "engine", "shell", "editor", "plugin",
                                        "tests/vstgui"]),
    ("tests/editorpanel", ["tests/editorpanel"], ["params", "editor panel", "tests/vstgui",
                                                  "tests/editor"]),
    ("tests/clap", ["tests/clap"], ["params", "vst2", "formats", "performance", "clap records",
                                    "clap", "tests/vstgui", "tests/editor"]),
    ("tests/lv2", ["tests/lv2"], ["params", "formats", "lv2", "vst2", "tests/plugin",
                                  "tests/vstgui", "tests/editor", "tests/clap"]),
    ("tests/windows", ["tests/windows"], ["vst2", "engine", "plugin", "clap records",
                                          "tests/plugin", "tests/clap"]),
    ("tests/support", ["tests/support"], ["vst2", "host", "files", "text"]),
    ("tests/host", ["tests/host"], ["performance", "vst2", "host", "threads", "files", "text",
                                    "midi", "audio", "picture", "window", "hosted plug-in",
                                    "preset", "render", "tests/support"]),
    ("tests/live", ["tests/live"], ["performance", "vst2", "host", "threads", "files", "text", "midi",
                                    "audio", "hosted plug-in", "render", "live", "tests/support",
                                    "tests/plugin"]),
    ("tests/tour", ["tests/tour"], ["host", "threads", "files", "text", "midi", "audio", "picture",
                                    "hosted plug-in", "preset", "render", "tour",
                                    "tests/support"]),
    ("tests/web", ["tests/web"], ["params", "voices", "engine", "performance", "formats", "vst2",
                                  "host", "preset", "web engine", "tests/kernel"]),
    ("tests/dataset", ["tests/dataset"], ["params", "host", "files", "text", "midi", "audio",
                                          "hosted plug-in", "render", "dataset", "tests/support"]),
    ("tests/cli", ["tests/cli"], ["host", "threads", "files", "text", "audio", "hosted plug-in",
                                  "preset", "render", "terminal", "commands", "tests/vstgui",
                                  "tests/editor", "tests/support"]),
    ("tests/fuzz", ["tests/fuzz"], ["vst2", "host", "text", "midi", "hosted plug-in", "preset",
                                    "render", "commands"]),
    ("bench", ["bench"], ["params", "vst2", "voices", "fast", "engine", "host", "files", "text",
                          "hosted plug-in", "dataset"]),
]
ALLOWED = {room: set(below) | {room} for room, _, below in LAYERS}
ROOM_OF_PATH = {path: room for room, paths, _ in LAYERS for path in paths}

# From where a header is named: all but src from the top folder, src from itself. Toolkits read the
# interface's headers by the names of the folder tree in which it is published.
TREES = ["src", "host", "tour", "dataset", "live", "cli", "vstgui", "web", "tests", "bench"]
ROOTS = {name: ROOT for name in TREES if name != "src"}
ROOTS |= {folder.name: ROOT / "src" for folder in (ROOT / "src").iterdir() if folder.is_dir()}
ROOTS["public.sdk"] = ROOT / "src/vst2"

# Our room of this name reads the standard's headers, which are in a folder of the same name.
STANDARDS = {"lv2"}

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^">]+)[">]', re.MULTILINE)


def sources():
    for tree in TREES:
        for file in sorted((ROOT / tree).rglob("*")):
            if file.suffix in (".cpp", ".h", ".inc") or file.name.endswith(".cpp.in"):
                yield file.relative_to(ROOT).as_posix()


def includesOf(text):
    """(line, name) of every header of ours: all that are quoted, others by their first folder."""
    for match in INCLUDE.finditer(text):
        bracket, name = match.groups()
        if bracket == '"' or name.split("/")[0] in ROOTS.keys() - STANDARDS:
            yield text.count("\n", 0, match.start(2)) + 1, name


def roomOf(path):
    """The room with the longest path that `path` lies in or begins with; None without any."""
    fitting = [p for p in ROOM_OF_PATH
               if path.startswith(p + "/") or (p.endswith(".") and path.startswith(p))]
    return ROOM_OF_PATH[max(fitting, key=len)] if fitting else None


def fileNamed(name):
    """The path from the top folder of the header that is included as `name`; None without one."""
    first, _, rest = name.partition("/")
    if first not in ROOTS or any(part in ("", ".", "..") for part in rest.split("/")):
        return None
    file = ROOTS[first] / name
    return file.relative_to(ROOT).as_posix() if file.is_file() else None


def objectionTo(source, name):
    """What is wrong with `source` including `name`, or None."""
    target = fileNamed(name)
    if target is None:
        return "names no header from the root of its tree"
    room, below = roomOf(source), roomOf(target)
    if below not in ALLOWED[room]:
        return f"{room} may not read {below}"
    return None


class Layers(unittest.TestCase):
    def testEveryIncludePointsDown(self):
        wrong = []
        for source in sources():
            text = (ROOT / source).read_text(encoding="utf-8")
            for line, name in includesOf(text):
                objection = objectionTo(source, name)
                if objection:
                    wrong.append(f"{source}:{line}: {name}: {objection}")
        self.assertEqual(wrong, [], "\n" + "\n".join(wrong))

    def testEverySourceHasARoom(self):
        homeless = [source for source in sources() if roomOf(source) is None]
        self.assertEqual(homeless, [])
        self.assertGreater(len(list(sources())), 300)  # the search has found the trees

    def testRoomsReadOnlyRoomsFurtherUpInTheTable(self):
        above = set()
        for room, _, below in LAYERS:
            self.assertLessEqual(set(below), above, room)
            above.add(room)

    def testEveryPathOfTheTableExists(self):
        for path in ROOM_OF_PATH:
            beginning = path if path.endswith(".") else path + "/"
            self.assertTrue(any(s.startswith(beginning) for s in sources()), path)


class Objections(unittest.TestCase):
    def testAnArrowUpIsRefused(self):
        for source, name in [
            ("src/params/DisplayText.cpp", "engine/ModeVoice.h"),
            ("src/engine/ModeVoice.cpp", "engine/ZelvatoneEngine.h"),
            ("src/engine/fast/FastRenderer.cpp", "engine/SynthEngine.h"),
            ("src/plugin/shell/VstInterface.cpp", "vstguieditor/vstguieditor.h"),
            ("src/performance/Controllers.cpp", "host/render/Performer.h"),
            ("src/vstguieditor/vstguieditor.cpp", "plugin/VSTGuiVSTInterface.h"),
            ("host/plugin/HostedPlugin.cpp", "params/SynthProgram.h"),
            ("host/text/Numbers.cpp", "cli/terminal/Terminal.h"),
            ("tour/TourStop.cpp", "cli/terminal/Terminal.h"),
            ("vstgui/lib/cframe.cpp", "vst2/aeffectx.h"),
        ]:
            self.assertRegex(objectionTo(source, name) or "", "may not read", source)

    def testAnArrowDownIsAllowed(self):
        for source, name in [
            ("src/engine/ModeVoice.cpp", "params/Truncation.h"),
            ("src/vstguieditor/vstguieditor.cpp", "plugin/shell/VstInterface.h"),
            ("src/vstguieditor/Toolkit.h", "public.sdk/source/vst2.x/aeffeditor.h"),
            ("host/plugin/HostedPlugin.cpp", "vst2/aeffectx.h"),
            ("host/render/Performer.h", "performance/Controllers.h"),
        ]:
            self.assertIsNone(objectionTo(source, name), source)

    def testAHeaderHasOneName(self):
        source = "host/plugin/HostedPlugin.cpp"
        for name in ["HostedPlugin.h", "plugin/HostedPlugin.h", "../Error.h",
                     "host/plugin/../Error.h", "host//Error.h", "src/vst2/aeffect.h",
                     "host/plugin/Missing.h"]:
            self.assertRegex(objectionTo(source, name) or "", "names no header", name)

    def testIncludesAreFoundInEitherBracket(self):
        text = '#include "engine/ADSR.h"\n\n#include <vector>\n  # include <vstgui/vstgui.h>\n'
        self.assertEqual(list(includesOf(text)), [(1, "engine/ADSR.h"), (4, "vstgui/vstgui.h")])

    def testAStandardsHeadersAreNotThoseOfTheRoomThatIsNamedForIt(self):
        text = '#include "lv2/Identity.h"\n#include <lv2/core/lv2.h>\n'
        self.assertEqual(list(includesOf(text)), [(1, "lv2/Identity.h")])


if __name__ == "__main__":
    unittest.main()

"""The editor's pictures, each as one filled-in SVG file ready to be rendered."""

import base64
import json
from pathlib import Path

import artwork
import diagrams
import knob
import layout
import template
from pen import Pen

STYLE = json.loads((Path(__file__).resolve().parent / "style.json").read_text(encoding="utf-8"))

# File name, its template, and its size in the editor's pixels.
PICTURES = {
    "ANIMKNOB.PNG": ("knobstrip", (layout.KNOB, layout.KNOB * layout.KNOB_PICTURES)),
    "BACKGROUND.PNG": ("background", layout.FACE),
    "HELPOVERLAY.PNG": ("helpoverlay", layout.FACE),
    **{f"HELP{page}.PNG": (f"help{page}", layout.FACE) for page in range(1, 6)},
}


# Of the knob's thirty: three quarters up, so that the arc shows well at small sizes.
ICON_PICTURE = 22


def drawAll():
    """{file name: SVG text} of the eight pictures."""
    fragments = {
        **artwork.fragments(Pen(STYLE["colours"])),
        **diagrams.fragments(Pen(STYLE["colours"])),
        "frames": knob.frames(STYLE),
        "page": template.part("page", {}, STYLE),
    }
    face = template.part("background", fragments, STYLE)
    fragments["faceArt"] = template.inner(face)
    return {
        name: template.fill(source, fragments, STYLE) for name, (source, _) in PICTURES.items()
    }


def drawMock(folder):
    """SVG text of the editor as it opens, made from the rendered pictures in a folder."""
    strip = dataUri(folder / "ANIMKNOB.PNG")
    fragments = {
        "backgroundPicture": dataUri(folder / "BACKGROUND.PNG"),
        "knobs": "".join(mockKnob(control, strip) for control in layout.KNOBS),
    }
    return template.fill("mock", fragments, STYLE)


def drawIcon():
    """SVG text of the program's icon: the knob, turned up."""
    return template.part("icon", {"knob": knob.frame(ICON_PICTURE, 0, STYLE)}, STYLE)


def mockKnob(control, strip):
    """A knob with its name above and its value below, as the editor draws them."""
    size = layout.KNOB
    middle, below = control.left + size / 2, control.top + size + 20
    shown = layout.knobPicture(control.normalised) * size
    # The editor centres the capitals, 9 px high, in a rectangle of 20: its base line is 5 px up.
    return (
        f'<svg x="{control.left}" y="{control.top}" width="{size}" height="{size}"'
        f' viewBox="0 {shown} {size} {size}">'
        f'<image width="{size}" height="{size * layout.KNOB_PICTURES}" href="{strip}"/></svg>'
        f'<text class="label" x="{middle}" y="{control.top - 5}"'
        f' text-anchor="middle">{control.name}</text>'
        f'<text class="label" x="{middle}" y="{below - 5}"'
        f' text-anchor="middle">{control.display}</text>'
    )


def dataUri(path):
    return "data:image/png;base64," + base64.b64encode(path.read_bytes()).decode("ascii")

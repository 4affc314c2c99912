"""The film strip of the knob: thirty pictures from one template, value 0 on top."""

import math

import layout
import template

ARC_RADIUS = 19.5


def frames(style):
    return "".join(
        frame(picture, picture * layout.KNOB, style) for picture in range(layout.KNOB_PICTURES)
    )


def frame(picture, top, style):
    """One picture of the knob, `top` units down."""
    return template.part(
        "knob",
        {
            "top": str(top),
            "angle": f"{layout.knobAngle(picture):.4f}",
            "track": arc(layout.knobAngle(0), layout.knobAngle(layout.KNOB_PICTURES - 1)),
            "arc": arc(layout.knobAngle(0), layout.knobAngle(picture)),
        },
        style,
    )


def arc(start, end):
    """A clockwise arc between two angles in degrees from straight up; nothing when they meet."""
    if end <= start:
        return ""
    ends = (point(math.radians(angle)) for angle in (start, end))
    large = 1 if end - start > 180 else 0
    return "M{} A{r},{r} 0 {} 1 {}".format(next(ends), large, next(ends), r=ARC_RADIUS)


def point(angle):
    centre = layout.KNOB / 2
    x, y = centre + ARC_RADIUS * math.sin(angle), centre - ARC_RADIUS * math.cos(angle)
    return f"{x:.3f},{y:.3f}"

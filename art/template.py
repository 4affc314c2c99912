"""Fills the SVG templates: fragments and colours by $name, type by class, one line per line."""

import re
from pathlib import Path
from string import Template

FOLDER = Path(__file__).resolve().parent / "svg"


def fill(name, fragments, style):
    """The template svg/NAME.svg as a whole SVG file with the style sheet inside."""
    svg = breakLines(part(name, fragments, style), style["type"])
    return re.sub(r"(<svg[^>]*>)", rf"\1<style>{styleSheet(style)}</style>", svg, count=1)


def part(name, fragments, style):
    """The template svg/NAME.svg with names replaced; a name that is not defined is an error."""
    text = (FOLDER / f"{name}.svg").read_text(encoding="utf-8")
    try:
        return Template(text).substitute(style["colours"] | fragments)
    except KeyError as missing:
        raise ValueError(f"{name}.svg: nothing is called {missing}") from missing


def inner(svg):
    """What stands between the outermost <svg> tags, to be placed inside another picture."""
    return re.sub(r"^\s*<svg[^>]*>|</svg>\s*$", "", svg)


def styleSheet(style):
    rules = []
    for name, kind in style["type"].items():
        family = style["fonts"][kind.get("font", "face")]
        rules.append(
            f".{name}{{font-family:'{family}';font-size:{kind['size']}px;"
            f"font-weight:{kind['weight']};letter-spacing:{kind['spacing']}px;"
            f"fill:{style['colours'][kind['colour']]}}}"
        )
    return "".join(rules)


def breakLines(svg, types):
    """Sets each line of a text element on its own line, as far apart as its kind says."""

    def place(match):
        attributes, words = match.groups()
        rows = [row.strip() for row in words.strip().splitlines()]
        if len(rows) == 1:
            return f"<text{attributes}>{rows[0]}</text>"
        step = types[re.search(r'class="(\w+)"', attributes)[1]]["line"]
        left = re.search(r' x="([^"]+)"', attributes)[1]
        spans = (
            f'<tspan x="{left}" dy="{step if row else 0}">{text}</tspan>'
            for row, text in enumerate(rows)
        )
        return f"<text{attributes}>{''.join(spans)}</text>"

    return re.sub(r"<text([^>]*)>(.*?)</text>", place, svg, flags=re.DOTALL)

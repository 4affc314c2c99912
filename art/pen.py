"""Writes SVG elements in the colours of the palette."""


class Pen:
    def __init__(self, colours):
        self.colours = colours

    def line(self, points, colour, width=1.5, opacity=1.0, dash=None):
        dashes = f' stroke-dasharray="{dash}"' if dash else ""
        return (
            f'<path d="{_path(points)}" fill="none" stroke="{self.colours[colour]}"'
            f' stroke-width="{width}" stroke-linecap="round" stroke-linejoin="round"'
            f' opacity="{opacity:.3g}"{dashes}/>'
        )

    def shape(self, points, colour, opacity=1.0):
        paint = self.colours[colour]
        return f'<path d="{_path(points)} Z" fill="{paint}" opacity="{opacity:.3g}"/>'

    def dot(self, x, y, radius, colour, opacity=1.0, hollow=False):
        paint = self.colours[colour]
        look = f'fill="none" stroke="{paint}" stroke-width="1.5"' if hollow else f'fill="{paint}"'
        return f'<circle cx="{x:.2f}" cy="{y:.2f}" r="{radius}" {look} opacity="{opacity:.3g}"/>'

    def partial(self, x, base, top, colour, hollow=False, radius=3):
        """A stem from the base line with a head at its amplitude; hollow heads tell kinds apart."""
        foot = min(base, top + radius if hollow else top)
        head = self.dot(x, top, radius, colour, 1, hollow)
        return self.line([(x, base), (x, foot)], colour, 2) + head

    def text(self, x, y, kind, words, anchor="middle"):
        return f'<text class="{kind}" x="{x:.2f}" y="{y:.2f}" text-anchor="{anchor}">{words}</text>'

    def tag(self, colour, words):
        """Part of a text in a colour of its own: the setting that a curve of that colour shows."""
        return f'<tspan fill="{self.colours[colour]}">{words}</tspan>'


def _path(points):
    return "M" + " L".join(f"{x:.2f},{y:.2f}" for x, y in points)

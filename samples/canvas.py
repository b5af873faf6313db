"""A page of simple shapes that can be written as ImageMagick drawing, as SVG or as PDF content."""
import math
from xml.sax.saxutils import escape, quoteattr

ANCHORS = {"start": 0, "middle": 0.5, "end": 1}


def rgb(colour):
    """The three parts, 0 to 1, of a colour written "#rrggbb"."""
    return tuple(int(colour[i:i + 2], 16) / 255 for i in (1, 3, 5))


def tint(colour, amount):
    """The colour mixed with white; 0 keeps it, 1 is white."""
    return "#" + "".join(f"{round(255 * (c + (1 - c) * amount)):02x}" for c in rgb(colour))


def number(value):
    return f"{value:.2f}".rstrip("0").rstrip(".")


class Canvas:
    def __init__(self, width, height, background="#ffffff"):
        self.width, self.height, self.background = width, height, background
        self.shapes = []

    def rect(self, x, y, width, height, colour, radius=0):
        self.shapes.append(("rect", x, y, width, height, colour, radius))

    def frame(self, x, y, width, height, colour, line=0.6):
        for edge in ((x, y, width, line), (x, y + height - line, width, line),
                     (x, y, line, height), (x + width - line, y, line, height)):
            self.rect(*edge, colour)

    def circle(self, x, y, radius, colour):
        self.shapes.append(("circle", x, y, radius, colour))

    def polygon(self, points, colour):
        self.shapes.append(("polygon", tuple(points), colour))

    def star(self, x, y, radius, colour, rays=5, inner=0.4):
        self.polygon([(x + radius * (inner if i % 2 else 1) * math.sin(math.pi * i / rays),
                       y - radius * (inner if i % 2 else 1) * math.cos(math.pi * i / rays))
                      for i in range(2 * rays)], colour)

    def text(self, x, y, size, text, colour="#26323f", bold=False, anchor="start"):
        """One line of text; y is the base line."""
        self.shapes.append(("text", x, y, size, text, colour, bold, anchor))

    def mvg(self, fonts, scale):
        """Drawing commands for ImageMagick. The background is left to the caller."""
        out = [f"scale {number(scale)},{number(scale)}"]
        for kind, *shape in self.shapes:
            if kind == "rect":
                x, y, w, h, colour, radius = shape
                corners = f"{number(x)},{number(y)} {number(x + w)},{number(y + h)}"
                if radius:
                    out.append(f"fill {colour} roundrectangle {corners} {radius},{radius}")
                else:
                    # A polygon ends exactly at its corners; a rectangle would be a pixel larger.
                    out.append(f"fill {colour} polygon {number(x)},{number(y)} {number(x + w)},{number(y)} "
                               f"{number(x + w)},{number(y + h)} {number(x)},{number(y + h)}")
            elif kind == "circle":
                x, y, radius, colour = shape
                out.append(f"fill {colour} circle {number(x)},{number(y)} {number(x + radius)},{number(y)}")
            elif kind == "polygon":
                points, colour = shape
                out.append(f"fill {colour} polygon " + " ".join(f"{number(x)},{number(y)}" for x, y in points))
            else:
                x, y, size, text, colour, bold, anchor = shape
                x -= fonts.width(text, size, bold) * ANCHORS[anchor]
                path = (fonts.bold if bold else fonts.regular).path
                quoted = text.replace("\\", "\\\\").replace("'", "\\'")
                out.append(f"font '{path}' font-size {number(size)} fill {colour} "
                           f"text {number(x)},{number(y)} '{quoted}'")
        return "\n".join(out)

    def svg(self):
        out = ['<?xml version="1.0" encoding="UTF-8"?>',
               f'<svg xmlns="http://www.w3.org/2000/svg" width="{number(self.width)}pt" '
               f'height="{number(self.height)}pt" viewBox="0 0 {number(self.width)} {number(self.height)}" '
               f'font-family="DejaVu Sans, Verdana, sans-serif">',
               f'<rect width="100%" height="100%" fill="{self.background}"/>']
        for kind, *shape in self.shapes:
            if kind == "rect":
                x, y, w, h, colour, radius = shape
                out.append(f'<rect x="{number(x)}" y="{number(y)}" width="{number(w)}" height="{number(h)}" '
                           f'rx="{number(radius)}" fill="{colour}"/>')
            elif kind == "circle":
                x, y, radius, colour = shape
                out.append(f'<circle cx="{number(x)}" cy="{number(y)}" r="{number(radius)}" fill="{colour}"/>')
            elif kind == "polygon":
                points, colour = shape
                joined = " ".join(f"{number(x)},{number(y)}" for x, y in points)
                out.append(f'<polygon points="{joined}" fill="{colour}"/>')
            else:
                x, y, size, text, colour, bold, anchor = shape
                weight = ' font-weight="bold"' if bold else ""
                out.append(f'<text x="{number(x)}" y="{number(y)}" font-size="{number(size)}" '
                           f'fill={quoteattr(colour)} text-anchor="{anchor}"{weight}>{escape(text)}</text>')
        return "\n".join(out + ["</svg>", ""])

    def pdf(self, metrics):
        """The page's content stream; PDF counts y upwards."""
        out = []
        for kind, *shape in self.shapes:
            colour = shape[-3] if kind == "text" else shape[-2] if kind == "rect" else shape[-1]
            out.append(" ".join(f"{part:.3f}" for part in rgb(colour)) + " rg")
            if kind == "rect":
                x, y, w, h = shape[:4]
                out.append(f"{number(x)} {number(self.height - y - h)} {number(w)} {number(h)} re f")
            elif kind == "circle":
                x, y, radius = shape[:3]
                points = [(x + radius * math.cos(math.pi * i / 16), y + radius * math.sin(math.pi * i / 16))
                          for i in range(32)]
                out.append(self._pdf_path(points))
            elif kind == "polygon":
                out.append(self._pdf_path(shape[0]))
            else:
                x, y, size, text, _, bold, anchor = shape
                x -= metrics.width(text, size, bold) * ANCHORS[anchor]
                quoted = text.replace("\\", "\\\\").replace("(", "\\(").replace(")", "\\)")
                out.append(f"BT /{'B' if bold else 'R'} {number(size)} Tf "
                           f"{number(x)} {number(self.height - y)} Td ({quoted}) Tj ET")
        return "\n".join(out).encode("cp1252")

    def _pdf_path(self, points):
        steps = [f"{number(x)} {number(self.height - y)} {'l' if i else 'm'}" for i, (x, y) in enumerate(points)]
        return " ".join(steps) + " h f"

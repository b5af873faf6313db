"""Sets the blocks of a template on pages."""
import re

from canvas import Canvas, tint

INK = "#26323f"
SOFT = "#66788a"
RIGHT_TO_LEFT = re.compile("[\u0590-\u07ff]")


def wrap(text, width, measure):
    lines, line = [], ""
    for word in text.split():
        longer = f"{line} {word}".strip()
        if line and measure(longer) > width:
            lines.append(line)
            line = word
        else:
            line = longer
    return lines + [line] if line else lines or [""]


def visual(text):
    """A line in the order in which its characters stand on paper, from the left. Enough for plain
    right-to-left sentences: words are reversed in order, and letters inside right-to-left words."""
    if not RIGHT_TO_LEFT.search(text):
        return text
    mirror = str.maketrans("()[]", ")(][")
    return " ".join(word[::-1].translate(mirror) if RIGHT_TO_LEFT.search(word) else word
                    for word in reversed(text.split(" ")))


class Setter:
    """Puts one block after the other on pages of one size. Lengths are points."""

    def __init__(self, metrics, width, height, margin, colour, body=10, chapters=False, rightToLeft=False):
        self.metrics, self.margin, self.colour, self.body = metrics, margin, colour, body
        self.size = (width, height)
        self.left, self.right, self.bottom = margin, width - margin, height - margin
        self.chapters, self.rightToLeft = chapters, rightToLeft
        self.pages = []
        self.headerRow = True
        self.break_page()

    def break_page(self):
        self.page = Canvas(*self.size)
        self.pages.append(self.page)
        self.y = self.margin

    def need(self, height):
        if self.y + height > self.bottom:
            self.break_page()

    def lines(self, text, size, colour=INK, bold=False, anchor="start", indent=0):
        if self.rightToLeft:
            anchor = {"start": "end", "end": "start", "middle": "middle"}[anchor]
        for line in wrap(text, self.right - self.left - indent, lambda t: self.metrics.width(t, size, bold)):
            self.need(size * 1.35)
            self.y += size * 1.35
            x = {"start": self.left + indent, "middle": (self.left + self.right) / 2,
                 "end": self.right - (indent if self.rightToLeft else 0)}[anchor]
            self.page.text(x, self.y - size * 0.3, size, visual(line), colour, bold, anchor)

    def row(self, cells):
        columns = len(cells)
        # Tables of two columns are a label and its value and have no head.
        head = self.headerRow and columns > 2
        width = (self.right - self.left) / columns
        size, pad = self.body * 0.9, self.body * 0.35
        wrapped = [wrap(cell, width - 2 * pad, lambda t: self.metrics.width(t, size, True)) for cell in cells]
        height = max(len(lines) for lines in wrapped) * size * 1.3 + 2 * pad
        self.need(height)
        if head:
            self.page.rect(self.left, self.y, self.right - self.left, height, self.colour)
        for column, lines in enumerate(wrapped):
            x = self.left + column * width
            self.page.frame(x, self.y, width, height, tint(self.colour, 0.5))
            for i, line in enumerate(lines):
                self.page.text(x + pad, self.y + pad + size * (1.3 * i + 1), size, line,
                               "#ffffff" if head else INK, head or (columns == 2 and column == 0))
        self.y += height

    def add(self, kind, content):
        body = self.body
        if kind == "row":
            self.row(content)
            self.headerRow = False
            return
        self.headerRow = True
        if kind == "title":
            if self.chapters and self.y > self.margin:
                self.break_page()
            self.lines(content, body * 2, self.colour, bold=True)
            self.page.rect(self.left, self.y + body * 0.1, self.right - self.left, body * 0.15, self.colour)
            self.y += body
        elif kind == "company":
            self.page.rect(self.left, self.y, body * 1.7, body * 1.7, self.colour, 2)
            self.page.star(self.left + body * 0.85, self.y + body * 0.85, body * 0.6, "#ffffff")
            self.page.text(self.left + body * 2.3, self.y + body * 1.35, body * 1.4, content, self.colour, True)
            self.y += body * 2
        elif kind == "heading":
            self.y += body * 0.5
            self.lines(content, body * 1.25, self.colour, bold=True)
            self.y += body * 0.15
        elif kind == "small":
            self.lines(content, body * 0.8, SOFT)
        elif kind == "right":
            self.lines(content, body, anchor="end")
        elif kind == "centre":
            self.lines(content, body * 1.1, anchor="middle")
        elif kind == "bullet":
            self.need(body * 1.35)
            x = self.right - body * 0.5 if self.rightToLeft else self.left + body * 0.5
            self.page.circle(x, self.y + body * 0.75, body * 0.2, self.colour)
            self.lines(content, body, indent=body * 1.3)
            self.y += body * 0.15
        elif kind == "tick":
            self.need(body * 1.5)
            self.page.frame(self.left, self.y + body * 0.25, body * 0.9, body * 0.9, INK)
            self.lines(content, body, indent=body * 1.5)
            self.y += body * 0.2
        elif kind == "blank":
            self.need(body * 2)
            self.y += body * 2
            self.page.text(self.left, self.y - body * 0.3, body, content)
            start = self.left + self.metrics.width(content, body) + body * 0.5
            self.page.rect(start, self.y - body * 0.3, max(self.right - start, body), 0.6, SOFT)
        elif kind == "rule":
            self.y += body * 0.4
            self.page.rect(self.left, self.y, self.right - self.left, 0.8, tint(self.colour, 0.4))
            self.y += body * 0.4
        elif kind == "space":
            self.y += body * 0.7
        else:
            self.lines(content, body)
            self.y += body * 0.25


def is_right_to_left(blocks):
    return any(isinstance(content, str) and RIGHT_TO_LEFT.search(content) for _, content in blocks)


def set_pages(blocks, metrics, width, height, margin, colour, body=10, chapters=False):
    """The finished pages. With chapters every title begins a page."""
    setter = Setter(metrics, width, height, margin, colour, body, chapters, is_right_to_left(blocks))
    for kind, content in blocks:
        setter.add(kind, content)
    return setter.pages

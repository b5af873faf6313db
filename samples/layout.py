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


def column_shares(rows):
    """The part of a table's width that each column gets, by its longest cell."""
    longest = [max(len(row[i]) if i < len(row) else 0 for row in rows) for i in range(max(map(len, rows)))]
    weights = [min(max(length, 7), 28) for length in longest]
    return [weight / sum(weights) for weight in weights]


def with_tables(blocks):
    """The blocks with each run of rows as one block ("table", rows)."""
    result = []
    for kind, content in blocks:
        if kind != "row":
            result.append((kind, content))
        elif result and result[-1][0] == "table":
            result[-1][1].append(content)
        else:
            result.append(("table", [content]))
    return result


def has_head(rows):
    """Tables of two columns are labels and values and have no head."""
    return len(rows[0]) > 2


class Setter:
    """Puts one block after the other on pages of one size. Lengths are points."""

    def __init__(self, metrics, width, height, margin, colour, body=10, chapters=False, rightToLeft=False):
        self.metrics, self.margin, self.colour, self.body = metrics, margin, colour, body
        self.size = (width, height)
        self.left, self.right, self.bottom = margin, width - margin, height - margin
        self.chapters, self.rightToLeft = chapters, rightToLeft
        self.pages = []
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

    def table(self, rows):
        size, pad = self.body * 0.9, self.body * 0.35
        shares = column_shares(rows)
        widths = [(self.right - self.left) * share for share in shares]
        for rowNumber, cells in enumerate(rows):
            head = rowNumber == 0 and has_head(rows)
            wrapped = [wrap(cell, width - 2 * pad, lambda t: self.metrics.width(t, size, True))
                       for cell, width in zip(cells, widths)]
            height = max(len(lines) for lines in wrapped) * size * 1.3 + 2 * pad
            self.need(height)
            x = self.left
            for column, (lines, width) in enumerate(zip(wrapped, widths)):
                if head:
                    self.page.rect(x, self.y, width, height, self.colour)
                self.page.frame(x, self.y, width, height, tint(self.colour, 0.5))
                bold = head or (column == 0 and not has_head(rows))
                for i, line in enumerate(lines):
                    self.page.text(x + pad, self.y + pad + size * (1.3 * i + 1), size, line,
                                   "#ffffff" if head else INK, bold)
                x += width
            self.y += height
        self.y += self.body * 0.5

    def add(self, kind, content):
        body = self.body
        if kind == "table":
            self.table(content)
        elif kind == "title":
            if self.y > self.margin:
                if self.chapters:
                    self.break_page()
                else:
                    self.y += body * 0.8
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
            self.need(body * 2.5)
            self.y += body * 1.9
            self.page.text(self.left, self.y - body * 0.3, body, content)
            start = self.left + self.metrics.width(content, body) + body * 0.5
            self.page.rect(start, self.y - body * 0.3, max(self.right - start, body), 0.6, SOFT)
            self.y += body * 0.3
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
    for kind, content in with_tables(blocks):
        setter.add(kind, content)
    return setter.pages

"""Reads the text sources of the sample library.

A source holds folders ("== Folder\\Sub, icon glyph #colour") and below each its templates
("=== Name.ext, 2024-03-11 10:30, #colour[, no preview]"). The lines below a template are its content:

    # title          ## heading        - bullet          plain line: paragraph
    > right          ^ centred         ---  rule         empty line: space
    | a | b          table row         ___ label  line to fill in      [ ] label  box to tick
    @letterhead, @sender, @date, @sign   the usual parts of a letter
    ! command        drawing command (pictures only)
"""
import re
from dataclasses import dataclass, field
from datetime import datetime, timezone

SNIPPETS = {
    "@letterhead": [("company", "[Your Company]"),
                    ("small", "[Street Address]  ·  [Postal Code and City]  ·  [Phone]  ·  [E-mail]"),
                    ("rule", ""), ("space", "")],
    "@sender": [("right", "[Your Name]"), ("right", "[Street Address]"), ("right", "[Postal Code and City]"),
                ("right", "[Phone]"), ("space", "")],
    "@date": [("right", "[Date]"), ("space", "")],
    "@sign": [("space", ""), ("paragraph", "Yours sincerely,"), ("space", ""), ("space", ""),
              ("paragraph", "[Your Name]"), ("paragraph", "[Job Title]")],
}
MARKS = {"# ": "title", "## ": "heading", "- ": "bullet", "> ": "right", "^ ": "centre", "___ ": "blank",
         "[ ] ": "tick", "! ": "draw"}


class SourceError(Exception):
    """A line of a source that cannot be understood; says where."""


@dataclass
class Template:
    folder: str
    name: str
    time: float
    colour: str
    preview: bool
    blocks: list = field(default_factory=list)

    @property
    def stem(self):
        return self.name[:-4]

    @property
    def kind(self):
        return self.name[-4:]


@dataclass
class Icon:
    folder: str
    glyph: str
    colour: str


def block(line):
    """Kind and content of one content line, as a list, because a snippet is several blocks."""
    if not line.strip():
        return [("space", "")]
    if line in SNIPPETS:
        return SNIPPETS[line]
    if line == "---":
        return [("rule", "")]
    if line.startswith("|"):
        return [("row", [cell.strip() for cell in line.strip("|").split("|")])]
    for mark, kind in MARKS.items():
        if line.startswith(mark):
            return [(kind, line[len(mark):].strip())]
    if line.startswith("@"):
        raise SourceError(f"unknown part {line}")
    return [("paragraph", line)]


def read_source(path):
    """The templates and the folder icons of one source file."""
    templates, icons, folder, current = [], [], None, None
    for lineNumber, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        try:
            if line.startswith("=== "):
                name, time, colour, *flags = [part.strip() for part in line[4:].split(",")]
                if folder is None or not re.search(r"\.(swt|ccw|prt|pdf|mst)$", name) or flags not in ([], ["no preview"]):
                    raise SourceError("a template needs a folder, a known ending and no unknown flag")
                moment = datetime.strptime(time, "%Y-%m-%d %H:%M").replace(tzinfo=timezone.utc)
                current = Template(folder, name, moment.timestamp(), colour, not flags)
                templates.append(current)
            elif line.startswith("== "):
                folder, *icon = [part.strip() for part in line[3:].split(",")]
                current = None
                if icon:
                    _, glyph, colour = icon[0].split()
                    icons.append(Icon(folder, glyph, colour))
            elif current is not None:
                current.blocks += block(line)
            elif line.strip():
                raise SourceError("text outside of a template")
        except (SourceError, ValueError) as problem:
            raise SourceError(f"{path.name}:{lineNumber}: {problem}") from None
    for template in templates:
        while template.blocks and template.blocks[-1][0] == "space":
            template.blocks.pop()
        if not template.blocks:
            raise SourceError(f"{path.name}: {template.name} is empty")
    return templates, icons

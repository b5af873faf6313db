"""Text widths, so that lines break in the drawn pages where they fit."""
import struct
import subprocess
from pathlib import Path


class FontError(Exception):
    """A font that the pictures need is missing or cannot be read."""


def find_font(style):
    """Path of the DejaVu Sans file of a style ("Book", "Bold")."""
    answer = subprocess.run(["fc-match", "-f", "%{family}|%{file}", f"DejaVu Sans:style={style}"],
                            capture_output=True, text=True, check=True).stdout
    family, _, path = answer.partition("|")
    if "DejaVu Sans" not in family:
        raise FontError("the font DejaVu Sans is missing (Debian package fonts-dejavu-core)")
    return path


class TrueTypeFont:
    """Advance widths of a TrueType file."""

    def __init__(self, path):
        self.path = path
        self.data = Path(path).read_bytes()
        count = struct.unpack_from(">H", self.data, 4)[0]
        self.tables = {}
        for i in range(count):
            tag, _, offset, _ = struct.unpack_from(">4sLLL", self.data, 12 + 16 * i)
            self.tables[tag] = offset
        self.units = struct.unpack_from(">H", self.data, self.tables[b"head"] + 18)[0]
        self.metricCount = struct.unpack_from(">H", self.data, self.tables[b"hhea"] + 34)[0]
        self.glyphs = self._read_character_map()

    def _read_character_map(self):
        start = self.tables[b"cmap"]
        for i in range(struct.unpack_from(">H", self.data, start + 2)[0]):
            _, _, offset = struct.unpack_from(">HHL", self.data, start + 4 + 8 * i)
            if struct.unpack_from(">H", self.data, start + offset)[0] == 12:
                groups = struct.unpack_from(">L", self.data, start + offset + 12)[0]
                glyphs = {}
                for g in range(groups):
                    first, last, glyph = struct.unpack_from(">LLL", self.data, start + offset + 16 + 12 * g)
                    glyphs.update((c, glyph + c - first) for c in range(first, last + 1))
                return glyphs
        raise FontError(f"{self.path} has no full character map")

    def width(self, text, size):
        metrics = self.tables[b"hmtx"]
        total = 0
        for character in text:
            glyph = min(self.glyphs.get(ord(character), 0), self.metricCount - 1)
            total += struct.unpack_from(">H", self.data, metrics + 4 * glyph)[0]
        return total * size / self.units


class DejaVu:
    """The font that pictures are drawn with."""

    def __init__(self):
        self.regular = TrueTypeFont(find_font("Book"))
        self.bold = TrueTypeFont(find_font("Bold"))

    def width(self, text, size, bold=False):
        return (self.bold if bold else self.regular).width(text, size)


class Helvetica:
    """The built-in font of PDF readers. Widths of the characters 32 to 126 in thousandths of the
    size, from the font's published metrics; the bold face is wider by at most a tenth."""

    WIDTHS = [278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278] + [556] * 10 + [
        278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,
        667, 778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556,
        278, 556, 556, 222, 222, 500, 222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334,
        260, 334, 584]

    def width(self, text, size, bold=False):
        total = sum(self.WIDTHS[ord(c) - 32] if 32 <= ord(c) < 127 else 556 for c in text)
        return total * size / 1000 * (1.1 if bold else 1)

"""Writes a template's document in the format of its ending."""
import csv
import html
import io
import re
import zlib
from datetime import datetime, timezone

from canvas import Canvas, rgb
from fonts import Helvetica
from layout import column_shares, has_head, is_right_to_left, set_pages, with_tables
from source import SourceError


def rtf_text(text):
    out = []
    for character in text:
        if character in "\\{}":
            out.append("\\" + character)
        elif ord(character) < 128:
            out.append(character)
        else:
            # RTF counts in signed 16-bit units; the question mark is for readers without Unicode.
            units = character.encode("utf-16-le")
            out += [f"\\u{int.from_bytes(units[i:i + 2], 'little', signed=True)}?" for i in range(0, len(units), 2)]
    return "".join(out)


def rtf_run(style, text):
    # The blank ends a control word; without one before it, it would be text.
    return "{" + (style + " " if style else "") + rtf_text(text) + "}"


def facts(template):
    """What a document says of itself, for the formats that can hold it."""
    folders = template.folder.split("\\")
    words = re.findall(r"\w{3,}", " ".join([template.stem, *folders]).lower())
    plain = [text for kind, text in template.blocks if kind == "paragraph" and len(text) > 40 and "[" not in text]
    return {"title": template.stem, "subject": folders[-1], "author": "Tessaly", "company": "Tessaly",
            "category": folders[0], "keywords": ", ".join(dict.fromkeys(words)), "comments": (plain or [""])[0],
            "created": datetime.fromtimestamp(template.time, timezone.utc)}


def rtf_info(template):
    told = facts(template)
    texts = "".join(f"{{\\{word} {rtf_text(told[key])}}}" for word, key in (
        ("title", "title"), ("subject", "subject"), ("author", "author"), ("company", "company"),
        ("category", "category"), ("keywords", "keywords"), ("doccomm", "comments")) if told[key])
    time = told["created"]
    return (f"{{\\info{texts}{{\\creatim\\yr{time.year}\\mo{time.month}\\dy{time.day}"
            f"\\hr{time.hour}\\min{time.minute}}}}}")


def rtf(template):
    """A word-processor document. Sizes are half points, distances twips."""
    red, green, blue = (round(255 * part) for part in rgb(template.colour))
    direction = "\\rtlpar" if is_right_to_left(template.blocks) else ""
    start, end = ("\\qr", "\\ql") if direction else ("\\ql", "\\qr")
    out = ["{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1{\\fonttbl{\\f0\\fswiss Arial;}{\\f1\\froman Times New Roman;}}",
           f"{{\\colortbl;\\red{red}\\green{green}\\blue{blue};\\red102\\green120\\blue138;}}",
           rtf_info(template),
           "\\paperw12240\\paperh15840\\margl1440\\margr1440\\margt1200\\margb1200\\f0\\fs22"]

    def paragraph(text, layout="", style="", space=120):
        out.append(f"\\pard{direction}{layout or start}\\sa{space}{rtf_run(style, text)}\\par")

    for kind, content in with_tables(template.blocks):
        if kind == "table":
            # Some readers give every row the distances of the paragraph before the table.
            out.append("{\\pard\\sa0\\fs8\\par}")
            edges = [round(9360 * sum(column_shares(content)[:i + 1])) for i in range(len(content[0]))]
            for rowNumber, cells in enumerate(content):
                out.append("\\trowd\\trgaph90" + "".join(
                    "".join(f"\\clbrdr{side}\\brdrs\\brdrw10" for side in "tlbr") + f"\\cellx{edge}" for edge in edges))
                for i, cell in enumerate(cells):
                    bold = (rowNumber == 0) if has_head(content) else (i == 0)
                    out.append("\\pard\\intbl" + rtf_run("\\b" if bold else "", cell) + "\\cell")
                out.append("\\row")
            out.append("\\pard\\sa0\\par")
        elif kind == "title":
            paragraph(content, style="\\b\\fs40\\cf1", space=240)
        elif kind == "company":
            paragraph(content, style="\\b\\fs32\\cf1", space=40)
        elif kind == "heading":
            paragraph(content, layout=f"{start}\\sb120", style="\\b\\fs26\\cf1", space=80)
        elif kind == "small":
            paragraph(content, style="\\fs18\\cf2")
        elif kind == "right":
            paragraph(content, layout=end, space=20)
        elif kind == "centre":
            paragraph(content, layout="\\qc")
        elif kind == "bullet":
            out.append(f"{{\\pard{direction}{start}\\fi-300\\li400\\sa80 \\bullet\\tab {rtf_text(content)}\\par}}")
        elif kind == "tick":
            paragraph("[   ]  " + content, space=80)
        elif kind == "blank":
            paragraph(content + " " + "_" * max(60 - len(content), 10), space=160)
        elif kind == "rule":
            paragraph("_" * 82, style="\\fs18\\cf2")
        elif kind == "space":
            out.append("\\pard\\sa0\\par")
        else:
            paragraph(content)
    return ("\r\n".join(out) + "}\r\n").encode("ascii")


def sheet_rows(template):
    rows = [content for kind, content in template.blocks if kind == "row"]
    if not rows:
        raise SourceError(f"{template.name}: a sheet needs rows")
    return rows


def sheet(template):
    """Comma separated values with formulas. The first row is the title, the second is empty or holds
    parameters, the third is the table's head. The mark at the start tells readers that it is UTF-8."""
    text = io.StringIO()
    csv.writer(text, lineterminator="\r\n").writerows(sheet_rows(template))
    return text.getvalue().encode("utf-8-sig")


def is_number(text):
    return re.fullmatch(r"-?[0-9]+(\.[0-9]+)?", text) is not None


class SheetValues:
    """What the cells of a sheet show: formulas of cell names, + - * / ( ), SUM and AVERAGE."""

    def __init__(self, rows):
        self.rows = rows

    def value(self, column, row):
        text = self.rows[row][column] if row < len(self.rows) and column < len(self.rows[row]) else ""
        if text.startswith("="):
            return self._formula(text[1:])
        return float(text) if is_number(text) else 0.0

    def shown(self, text):
        if text.startswith("="):
            value = self._formula(text[1:])
        elif is_number(text):
            value = float(text)
        else:
            return text
        return f"{value:,.0f}" if value == round(value) else f"{value:,.2f}"

    def _cell(self, name):
        return self.value(ord(name[0]) - ord("A"), int(name[1:]) - 1)

    def _range(self, match):
        columns = range(ord(match[2]) - ord("A"), ord(match[4]) - ord("A") + 1)
        values = [self.value(c, r - 1) for c in columns for r in range(int(match[3]), int(match[5]) + 1)]
        return repr(sum(values) / (len(values) if match[1] == "AVERAGE" else 1))

    def _formula(self, text):
        flat = re.sub(r"(SUM|AVERAGE)\(([A-Z])(\d+):([A-Z])(\d+)\)", self._range, text)
        flat = re.sub(r"\b[A-Z]\d+\b", lambda m: repr(self._cell(m[0])), flat)
        if not re.fullmatch(r"[-+*/() 0-9.e]+", flat):
            raise SourceError(f"cannot work out ={text}")
        return float(eval(flat, {"__builtins__": {}}))


def slides(template):
    """The titles of a presentation with the lines below each."""
    result = []
    for kind, content in template.blocks:
        if kind == "title":
            result.append((content, []))
        elif kind in ("bullet", "heading", "paragraph"):
            if not result:
                raise SourceError(f"{template.name}: a presentation begins with a title")
            result[-1][1].append((kind, content))
    return result


def presentation(template):
    """A page of slides that a browser shows and prints, one slide a sheet."""
    colour = template.colour
    out = ["<!DOCTYPE html>", '<html><head><meta charset="utf-8">', f"<title>{html.escape(template.stem)}</title>",
           "<style>", "body { margin: 0; background: #dfe6ee; font: 26px Verdana, sans-serif; color: #26323f; }",
           "section { width: 880px; min-height: 560px; margin: 24px auto; padding: 40px; background: #fff;"
           " page-break-after: always; }",
           f"h1 {{ color: {colour}; border-bottom: 6px solid {colour}; padding-bottom: 12px; font-size: 44px; }}",
           f"section.cover {{ background: {colour}; color: #fff; }}",
           ".cover h1 { color: #fff; border-color: #fff; margin-top: 120px; font-size: 56px; }",
           "li { margin: 14px 0; } h2 { font-size: 30px; }", "</style></head><body>"]
    for i, (title, lines) in enumerate(slides(template)):
        out.append(f'<section{"" if i else " class=" + chr(34) + "cover" + chr(34)}><h1>{html.escape(title)}</h1>')
        inList = False
        for kind, text in lines:
            if (kind == "bullet") != inList:
                inList = not inList
                out.append("<ul>" if inList else "</ul>")
            tag = {"bullet": "li", "heading": "h2", "paragraph": "p"}[kind]
            out.append(f"<{tag}>{html.escape(text)}</{tag}>")
        out.append("</ul></section>" if inList else "</section>")
    return ("\r\n".join(out) + "\r\n</body></html>\r\n").encode("utf-8")


def pdf_pages(template):
    """Pages of US Letter size. A template with several titles is a book: a cover, then the chapters."""
    metrics = Helvetica()
    titles = sum(kind == "title" for kind, _ in template.blocks)
    if titles < 2:
        return set_pages(template.blocks, metrics, 612, 792, 64, template.colour, 11.5)
    pages = [book_cover(template, 612, 792)]
    pages += set_pages(template.blocks, metrics, 612, 792, 84, template.colour, 12.5, chapters=True)
    for pageNumber, page in enumerate(pages[1:], 1):
        page.text(306, 750, 9, f"{template.stem}  ·  {pageNumber}", "#66788a", anchor="middle")
    return pages


def book_cover(template, width, height):
    page = Canvas(width, height, template.colour)
    page.rect(0, 0, width, height, template.colour)
    page.rect(0, 0, width * 0.06, height, "#26323f")
    page.rect(width * 0.16, height * 0.16, width * 0.72, height * 0.36, "#ffffff")
    lines, size = [""], width / 13
    for word in template.stem.split():
        if lines[-1] and len(lines[-1]) + len(word) > 13:
            lines.append("")
        lines[-1] = f"{lines[-1]} {word}".strip()
    y = height * 0.34 - (len(lines) - 1) * size * 0.65 + size * 0.35
    for i, line in enumerate(lines):
        page.text(width * 0.52, y + i * size * 1.3, size, line, template.colour, True, "middle")
    page.star(width * 0.52, height * 0.68, width * 0.09, "#ffffff")
    page.text(width * 0.52, height * 0.88, width / 26, "Tessaly Reading Room", "#ffffff", anchor="middle")
    return page


def pdf(template):
    pages = pdf_pages(template)
    fonts = "<< /R 3 0 R /B 4 0 R >>"
    objects = {1: b"<< /Type /Catalog /Pages 2 0 R >>"}
    for key, name in ((3, "Helvetica"), (4, "Helvetica-Bold")):
        objects[key] = f"<< /Type /Font /Subtype /Type1 /BaseFont /{name} /Encoding /WinAnsiEncoding >>".encode()
    told = facts(template)
    # Texts in UTF-16 with its mark, as hexadecimal numbers.
    texts = " ".join(f"/{key} <feff{told[fact].encode('utf-16-be').hex()}>" for key, fact in (
        ("Title", "title"), ("Subject", "subject"), ("Author", "author"), ("Keywords", "keywords"),
        ("Company", "company"), ("Category", "category"), ("Comments", "comments")))
    objects[5] = f"<< {texts} /CreationDate (D:{told['created']:%Y%m%d%H%M%S}Z) >>".encode()
    kids = []
    for i, page in enumerate(pages):
        key = 6 + 2 * i
        kids.append(f"{key} 0 R")
        objects[key] = (f"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 {page.width} {page.height}] "
                        f"/Resources << /Font {fonts} >> /Contents {key + 1} 0 R >>").encode()
        packed = zlib.compress(page.pdf(Helvetica()), 9)
        objects[key + 1] = (f"<< /Length {len(packed)} /Filter /FlateDecode >>\nstream\n".encode()
                            + packed + b"\nendstream")
    objects[2] = f"<< /Type /Pages /Kids [{' '.join(kids)}] /Count {len(kids)} >>".encode()

    out, places = b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n", []
    for key in sorted(objects):
        places.append(len(out))
        out += f"{key} 0 obj\n".encode() + objects[key] + b"\nendobj\n"
    table = "".join(f"{place:010} 00000 n \n" for place in places)
    return out + (f"xref\n0 {len(places) + 1}\n0000000000 65535 f \n{table}trailer\n"
                  f"<< /Size {len(places) + 1} /Root 1 0 R /Info 5 0 R >>\nstartxref\n{len(out)}\n%%EOF\n").encode()


def drawing(template):
    """The canvas that a picture's commands describe; its first command gives the size in points."""
    canvas = None
    for kind, content in template.blocks:
        if kind != "draw":
            continue
        command, *arguments = content.split(None, 6 if content.startswith("text") else -1)
        try:
            if command == "page":
                canvas = Canvas(float(arguments[0]), float(arguments[1]), arguments[2])
                canvas.rect(0, 0, canvas.width, canvas.height, arguments[2])
            elif command == "text":
                x, y, size, colour, style, text = arguments
                weight, _, anchor = style.partition("-")
                canvas.text(float(x), float(y), float(size), text, colour, weight == "bold", anchor or "start")
            elif command in ("rect", "circle", "star"):
                colour, *values = arguments
                x, y, *rest = (float(value) for value in values)
                if command == "rect":
                    canvas.rect(x, y, rest[0], rest[1], colour, *rest[2:])
                elif command == "circle":
                    canvas.circle(x, y, rest[0], colour)
                else:
                    canvas.star(x, y, rest[0], colour, *[int(rays) for rays in rest[1:2]])
            elif command == "polygon":
                colour, *values = arguments
                numbers = [float(value) for value in values]
                canvas.polygon(list(zip(numbers[::2], numbers[1::2])), colour)
            else:
                raise ValueError("unknown command")
        except (ValueError, IndexError, AttributeError) as problem:
            raise SourceError(f"{template.name}: {content}: {problem}") from None
    if canvas is None:
        raise SourceError(f"{template.name}: a picture needs a page")
    return canvas


def picture(template):
    return drawing(template).svg().encode("utf-8")


WRITERS = {".swt": rtf, ".ccw": sheet, ".prt": presentation, ".pdf": pdf, ".mst": picture}


def document(template):
    """The bytes of the template's file."""
    return WRITERS[template.kind](template)

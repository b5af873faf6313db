"""Draws the previews, the folder icons and the pictures of the library's root and of the support folder."""
import subprocess
from concurrent.futures import ThreadPoolExecutor

from canvas import Canvas, tint
from documents import SheetValues, book_cover, drawing, is_number, sheet_rows, slides
from layout import INK, SOFT, set_pages

BATCH = 6


def preview(template, fonts):
    """The canvas of a template's preview: 300 x 390 for a page, 360 wide for what is wider than high."""
    if template.kind == ".ccw":
        return sheet_preview(template, fonts)
    if template.kind == ".prt":
        return slide_preview(template, fonts)
    if template.kind == ".mst":
        return framed(drawing(template))
    if sum(kind == "title" for kind, _ in template.blocks) > 1 and template.kind == ".pdf":
        return book_cover(template, 300, 390)
    page = set_pages(template.blocks, fonts, 300, 390, 24, template.colour, 7.5)[0]
    page.frame(0, 0, 300, 390, "#c3ccd6", 1)
    return page


def framed(canvas):
    """The drawing scaled to the size of a preview, with an edge so that it stands out on white."""
    factor = min(360 / canvas.width, 390 / canvas.height)
    result = Canvas(round(canvas.width * factor), round(canvas.height * factor))
    for kind, *shape in canvas.shapes:
        if kind == "polygon":
            result.polygon([(x * factor, y * factor) for x, y in shape[0]], shape[1])
        elif kind == "text":
            result.text(*(value * factor for value in shape[:3]), *shape[3:])
        else:
            result.shapes.append((kind, *(value if isinstance(value, str) else value * factor for value in shape)))
    result.frame(0, 0, result.width, result.height, "#c3ccd6", 1)
    return result


def sheet_preview(template, fonts):
    rows = sheet_rows(template)
    values = SheetValues(rows)
    columns = max(len(row) for row in rows)
    page = Canvas(360, 280)
    rowHeight, head, number = 15, 14, 18
    # The first column holds the labels and gets the room that they need.
    label = min(150, max(60, max(fonts.width(row[0], 7.5) for row in rows if len(row) > 1) + 10))
    width = max(52, (360 - number - label) / max(columns - 1, 1))
    page.rect(0, 0, 360, head, "#e6ebf0")
    page.rect(0, 0, number, 280, "#e6ebf0")
    edges = [number, number + label]
    while edges[-1] < 360:
        edges.append(edges[-1] + width)
    for i in range(len(edges) - 1):
        page.text((edges[i] + edges[i + 1]) / 2, 10, 7, chr(ord("A") + i), SOFT, anchor="middle")
    for i in range(int((280 - head) / rowHeight) + 1):
        page.text(number / 2, head + i * rowHeight + 10.5, 7, str(i + 1), SOFT, anchor="middle")
        page.rect(0, head + i * rowHeight, 360, 0.6, "#cfd7df")
    for edge in edges:
        page.rect(edge, 0, 0.6, 280, "#cfd7df")
    tableHead = 2
    for i, row in enumerate(rows):
        y = head + i * rowHeight
        if i == tableHead:
            page.rect(number, y, edges[min(len(row), len(edges) - 1)] - number, rowHeight, template.colour)
        total = any(cell.startswith("=SUM(") for cell in row[1:]) and i == len(rows) - 1
        if total:
            page.rect(number, y, edges[min(len(row), len(edges) - 1)] - number, rowHeight, tint(template.colour, 0.8))
        for column, cell in enumerate(row[:len(edges) - 1]):
            text, bold = values.shown(cell), i in (0, tableHead) or total
            colour = "#ffffff" if i == tableHead else template.colour if i == 0 else INK
            below = rows[i + 1][column] if i == tableHead and column < len(rows[i + 1]) else cell
            toTheRight = column and (below.startswith("=") or is_number(below))
            room = edges[column + 1] - edges[column] - 6 if len(row) > column + 1 or column else 330
            while len(text) > 1 and fonts.width(text, 7.5, bold) > room:
                text = text[:-1]
            if toTheRight:
                page.text(edges[column + 1] - 4, y + 10.5, 7.5, text, colour, bold, "end")
            else:
                page.text(edges[column] + 4, y + 10.5, 9 if i == 0 and len(row) == 1 else 7.5, text, colour, bold)
    page.frame(0, 0, 360, 280, "#c3ccd6", 1)
    return page


def slide_preview(template, fonts):
    """The cover slide, and below it the next three."""
    page = Canvas(360, 320, "#dfe6ee")
    page.rect(0, 0, 360, 320, "#dfe6ee")
    deck = slides(template)
    title, lines = deck[0]
    page.rect(10, 10, 340, 208, template.colour)
    page.circle(306, 54, 36, tint(template.colour, 0.15))
    page.circle(326, 96, 14, tint(template.colour, 0.25))
    page.rect(10, 218, 340, 6, INK)
    cover = set_pages([("paragraph", title)], fonts, 270, 120, 0, "#ffffff", 21)[0]
    for _, x, y, size, text, *_ in cover.shapes:
        page.text(30 + x, 62 + y, size, text, "#ffffff", True)
    below = 62 + max(shape[2] for shape in cover.shapes)
    page.rect(30, below + 12, 90, 3, "#ffffff")
    for i, (_, text) in enumerate(lines[:3]):
        page.text(30, below + 34 + 16 * i, 10, text, "#ffffff")
    for i, (title, lines) in enumerate(deck[1:4]):
        x = 10 + i * 116
        page.rect(x, 234, 108, 78, "#ffffff")
        page.rect(x + 6, 249, 96, 1.2, template.colour)
        size = 7 if fonts.width(title, 7, True) <= 96 else 7 * 96 / fonts.width(title, 7, True)
        page.text(x + 6, 246, size, title, template.colour, True)
        small = set_pages(lines[:4], fonts, 96, 200, 0, template.colour, 5.2)[0]
        for shape in small.shapes:
            if shape[2] < 58:
                page.shapes.append((shape[0], shape[1] + x + 6, shape[2] + 252, *shape[3:]))
    return page


GLYPHS = {
    "lines": [("rect", 4, 7, 8, 1), ("rect", 4, 9, 8, 1), ("rect", 4, 11, 5, 1)],
    "chart": [("rect", 4, 10, 2, 3), ("rect", 7, 8, 2, 5), ("rect", 10, 7, 2, 6)],
    "star": [("star", 8, 10, 3.2)],
    "flower": [("circle", 8, 7.7, 1.4), ("circle", 6.2, 9, 1.4), ("circle", 9.8, 9, 1.4), ("circle", 6.9, 11.1, 1.4),
               ("circle", 9.1, 11.1, 1.4)],
    "person": [("circle", 8, 8.6, 1.6), ("rect", 5, 10.6, 6, 2.4)],
    "screen": [("rect", 4, 7, 8, 4.4), ("rect", 7.4, 11, 1.2, 2)],
    "book": [("rect", 4, 7, 3.6, 5.4), ("rect", 8.4, 7, 3.6, 5.4)],
    "flag": [("rect", 4, 7, 2.4, 5.4), ("rect", 7, 7, 2.2, 5.4), ("rect", 9.8, 7, 2.2, 5.4)],
}


def folder_icon(icon):
    """A folder on a grid of 16 with a white sign on its front."""
    canvas = Canvas(16, 16)
    canvas.polygon([(0, 2.5), (0.5, 2), (6, 2), (8, 4), (15.5, 4), (16, 4.5), (16, 8), (0, 8)], "#26323f")
    canvas.polygon([(0, 5.5), (16, 5.5), (16, 13.5), (15.5, 14), (0.5, 14), (0, 13.5)], icon.colour)
    for shape, *place in GLYPHS[icon.glyph]:
        getattr(canvas, shape)(*place, "#ffffff")
    return canvas


def no_preview():
    page = Canvas(300, 390, "#f4f6f9")
    page.rect(0, 0, 300, 390, "#f4f6f9")
    page.rect(85, 80, 130, 170, "#dfe6ee", 6)
    page.polygon([(80, 75), (175, 75), (210, 110), (210, 245), (80, 245)], "#ffffff")
    page.polygon([(175, 75), (210, 110), (175, 110)], "#c3ccd6")
    for y, width in ((105, 70), (122, 90), (139, 100)):
        page.rect(96, y, width, 5, "#dfe6ee")
    page.circle(150, 192, 36, "#1d9aa5")
    page.circle(150, 192, 28, "#ffffff")
    page.polygon([(172, 222), (180, 214), (204, 238), (196, 246)], "#1d9aa5")
    for x in (139, 161):
        page.circle(x, 186, 4, INK)
    page.rect(140, 201, 20, 3.5, INK, 1.5)
    page.text(150, 295, 17, "No preview yet", INK, True, "middle")
    page.text(150, 320, 10.5, "This template has no picture.", SOFT, anchor="middle")
    page.text(150, 336, 10.5, "Open it to see what it looks like.", SOFT, anchor="middle")
    return page


def thumbnail_frame():
    page = Canvas(130, 150)
    page.rect(4, 4, 124, 144, "#dfe3e8", 4)
    page.rect(2, 2, 124, 144, "#b5c0cb", 4)
    page.rect(3, 3, 122, 142, "#ffffff", 3)
    return page


def tessellation(page, x, y, side, columns, rows, colours):
    """Triangles edge to edge, the sign of the house."""
    for row in range(rows):
        for column in range(columns):
            left, top = x + column * side / 2, y + row * side * 0.866
            up = (row + column) % 2 == 0
            points = [(left, top + side * 0.866), (left + side, top + side * 0.866), (left + side / 2, top)] if up else [
                (left, top), (left + side, top), (left + side / 2, top + side * 0.866)]
            page.polygon(points, colours[(column * 7 + row * 3 + column // 3) % len(colours)])


def banner():
    page = Canvas(500, 60, "#16324a")
    page.rect(0, 0, 500, 60, "#16324a")
    tessellation(page, -17, 0, 34.65, 11, 2, ["#1d9aa5", "#2b74d8", "#f4b63f", "#1c4a68", "#17808a"])
    page.rect(196, 0, 304, 60, "#16324a")
    page.text(214, 29, 20, "Tessaly", "#ffffff", True)
    page.text(214, 47, 10.5, "Good documents start half written.", "#c9dbe8")
    page.rect(404, 18, 80, 24, "#f4b63f", 4)
    page.text(444, 34, 10.5, "New packs", "#16324a", True, "middle")
    return page


def splash():
    page = Canvas(420, 200, "#16324a")
    page.rect(0, 0, 420, 200, "#16324a")
    tessellation(page, 205, -8, 60, 8, 4, ["#1d9aa5", "#1c4a68", "#17808a", "#2b74d8", "#1c4a68"])
    for x, y, colour in ((304, 44, "#c9dbe8"), (290, 54, "#e6eef4")):
        page.rect(x, y, 84, 108, colour, 3)
    page.polygon([(276, 64), (340, 64), (360, 84), (360, 172), (276, 172)], "#ffffff")
    page.polygon([(340, 64), (360, 84), (340, 84)], "#c9dbe8")
    page.rect(286, 80, 40, 6, "#1d9aa5")
    for i, width in enumerate((64, 58, 64, 50, 64, 36)):
        page.rect(286, 98 + 11 * i, width, 4, "#c3ccd6")
    page.star(352, 160, 20, "#f4b63f")
    page.text(28, 92, 32, "Tessaly", "#ffffff", True)
    page.text(28, 128, 32, "Desk", "#f4b63f", True)
    page.text(29, 152, 10.5, "Templates, close at hand", "#c9dbe8")
    page.rect(0, 194, 420, 6, "#f4b63f")
    return page


def drawn(canvas, fonts, size, background):
    """ImageMagick arguments for one picture: drawn at twice the size and reduced, for smooth small text."""
    width, height = size
    return ["(", "-size", f"{2 * width}x{2 * height}", f"xc:{background}", "-draw",
            canvas.mvg(fonts, 2 * width / canvas.width), "-filter", "Lanczos", "-resize", f"{width}x{height}!", "-strip"]


def to_file(canvas, fonts, path):
    size = (round(canvas.width), round(canvas.height))
    kind = {".jpg": ["-quality", "86"], ".bmp": ["-type", "TrueColor"]}[path.suffix]
    target = f"BMP3:{path}" if path.suffix == ".bmp" else str(path)
    return drawn(canvas, fonts, size, canvas.background) + kind + ["-write", target, "+delete", ")"]


def icon_to_file(canvas, fonts, path):
    """Three sizes in one icon file; each drawn for itself, so that the edges meet the pixels."""
    command = ["("]
    for size in (16, 24, 32):
        command += drawn(canvas, fonts, (size, size), "none") + [")"]
    return command + ["-type", "TrueColorAlpha", "-write", f"ICO:{path}", "-delete", "0--1", ")"]


def draw_all(jobs):
    """Runs the given ImageMagick arguments, several pictures a process, two processes at a time."""
    def run(batch):
        # Small pictures gain nothing from more threads, and two processes fill the machine.
        command = ["convert", "-limit", "thread", "1"] + [part for job in batch for part in job]
        # The pictures are written and gone by now, but the program insists on an output and on one for it.
        subprocess.run(command + ["xc:none", "null:"], check=True)

    batches = [jobs[i:i + BATCH] for i in range(0, len(jobs), BATCH)]
    with ThreadPoolExecutor(2) as pool:
        list(pool.map(run, batches))

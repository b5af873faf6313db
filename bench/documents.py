#!/usr/bin/python3
"""Compares what the documents library reads out of documents with what exiftool does, pdfinfo too for PDF, and olefile
for compound files.

    bench/documents.py [FILE...]     without files: documents of every kind that LibreOffice writes, and PDF documents of
                                     the other programs here that write some

Needs build/native-release/bench/document_facts and Debian's packages libimage-exiftool-perl, poppler-utils and
python3-olefile (and libreoffice, librsvg2-bin, groff, ghostscript, qpdf, img2pdf, chromium, python3-reportlab and
texlive-latex-recommended where it makes the files). Prints each field in which two differ, and how many are equal.
"""
import json
import re
import shlex
import subprocess
import sys
import tempfile
from datetime import datetime, timedelta
from pathlib import Path

import olefile

ROOT = Path(__file__).resolve().parent.parent
READER = ROOT / "build/native-release/bench/document_facts"
# What exiftool calls each, the first that is there; and where its short names mean something else in PDF.
NAMES = {
    "title": ["Title"], "subject": ["Subject"], "author": ["Author", "Initial-creator", "Creator"],
    "keywords": ["Keywords", "Keyword"], "comments": ["Comments", "Comment", "Description"],
    "company": ["Company"], "manager": ["Manager"], "category": ["Category"],
    "created": ["CreateDate", "Creation-date"], "saved": ["ModifyDate", "Date"],
    "pages": ["Pages", "PageCount", "Slides", "Document-statisticPage-count"],
}
PDF_NAMES = NAMES | {
    "subject": ["PDF:Subject", "XMP:Description"], "author": ["PDF:Author", "XMP:Creator"],
    "keywords": ["PDF:Keywords", "XMP:Keywords", "XMP:Subject"], "comments": ["PDF:Comments"],
}
PDFINFO_NAMES = {"Title": "title", "Subject": "subject", "Author": "author", "Keywords": "keywords",
                 "CreationDate": "created", "ModDate": "saved", "Pages": "pages"}
OLEFILE_NAMES = {"title": "title", "subject": "subject", "author": "author", "keywords": "keywords",
                 "comments": "comments", "company": "company", "manager": "manager", "category": "category",
                 "create_time": "created", "last_saved_time": "saved"}
KINDS = {
    "text": ["odt", "ott", "fodt", "docx", "dotx", "doc", "dot", "rtf", "pdf"],
    "spreadsheet": ["ods", "xlsx", "xltx", "xls", "xlt", "pdf"],
    "presentation": ["odp", "pptx", "potx", "ppt", "pot", "pdf"],
}
BODY = {"text": "<text:p>Text</text:p>", "spreadsheet": '<table:table table:name="A"/>',
        "presentation": '<draw:page draw:name="A" draw:master-page-name="Default"/>'}
FLAT = """<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:meta="urn:oasis:names:tc:opendocument:xmlns:meta:1.0" xmlns:dc="http://purl.org/dc/elements/1.1/"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0" office:version="1.2"
 office:mimetype="application/vnd.oasis.opendocument.{kind}">
<office:meta><dc:title>Größe – Änderung &amp; 日本</dc:title><dc:subject>A subject</dc:subject>
<dc:description>Some remarks</dc:description><meta:keyword>one</meta:keyword><meta:keyword>two</meta:keyword>
<meta:initial-creator>Ann Müller</meta:initial-creator><dc:creator>Bob</dc:creator>
<meta:creation-date>2021-03-04T05:06:07</meta:creation-date><dc:date>2022-07-08T09:10:11</dc:date></office:meta>
<office:body><office:{kind}>{body}</office:{kind}></office:body></office:document>
"""
# PDF documents of other programs: name, what stands in a file of which ending, command ({} is the folder).
PDF_MAKERS = [
    ("cairo", "svg", '<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><title>Größe</title></svg>',
     "rsvg-convert -f pdf -o {}/cairo.pdf {}/cairo.svg"),
    ("groff", "ms", ".pdfinfo /Title A title\n.pdfinfo /Author Ann\n.pdfinfo /Keywords k1, k2\nText\n.bp\nMore\n",
     "sh -c 'groff -Tpdf {}/groff.ms >{}/groff.pdf'"),
    ("ghostscript", "ps", "[/Title <FEFF0047007200F600DF0065> /Author (Ann \\(A\\)) /Subject (S) /Keywords (k1, k2)"
     " /DOCINFO pdfmark showpage showpage", "ps2pdf {}/ghostscript.ps {}/ghostscript.pdf"),
    ("img2pdf", "pgm", "P2 9 9 1" + " 1" * 81, "img2pdf {}/img2pdf.pgm --title 'Größe 日本' --author 'Ann Müller'"
     " --subject S --keywords k1 -o {}/img2pdf.pdf"),
    ("chromium", "html", "<meta charset=utf-8><html lang=de><title>Größe – 日本</title><p>Text",
     "chromium --headless --no-sandbox --disable-gpu --print-to-pdf={}/chromium.pdf {}/chromium.html"),
    ("reportlab", "txt", "from reportlab.pdfgen.canvas import Canvas\nimport sys\nc = Canvas(sys.argv[1])\n"
     "c.setTitle('Größe 日本')\nc.setAuthor('Ann')\nc.setSubject('S')\nc.setKeywords(['k1', 'k2'])\nc.showPage()\n"
     "c.save()\n", "/usr/bin/python3 {}/reportlab.txt {}/reportlab.pdf"),
    ("pdftex", "tex", r"\documentclass{article}\usepackage[pdfusetitle,unicode,pdfkeywords={k1, k2},pdfsubject={S}]"
     r"{hyperref}\title{Größe — Änderung}\author{Ann Müller}\begin{document}\maketitle A\newpage B\end{document}",
     "pdflatex -interaction=batchmode -output-directory={} {}/pdftex.tex"),
    # The same again, written anew: objects in packed streams, for the web, changed at the end, encrypted against changes.
    ("qpdf", None, None, "qpdf --object-streams=generate {}/ghostscript.pdf {}/qpdf.pdf"),
    ("linear", None, None, "qpdf --linearize --object-streams=generate {}/reportlab.pdf {}/linear.pdf"),
    ("pre-1.5", None, None, "qpdf --object-streams=disable {}/pdftex.pdf {}/pre-1.5.pdf"),
    ("changed", None, None, "exiftool -q -Title=Other -Author=Bob -o {}/changed.pdf {}/ghostscript.pdf"),
    ("protected", None, None, "qpdf --encrypt '' owner 256 -- {}/ghostscript.pdf {}/protected.pdf"),
]
SUFFIX = {"text": "fodt", "spreadsheet": "fods", "presentation": "fodp"}


def made_by_libreoffice(folder):
    for kind, endings in KINDS.items():
        source = folder / f"{kind}.{SUFFIX[kind]}"
        source.write_text(FLAT.format(kind=kind, body=BODY[kind]), "utf-8")
        for ending in endings:
            target = folder / kind
            subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to",
                            ending, "--outdir", target, source], check=True, stdout=subprocess.DEVNULL)
        yield from sorted(target.iterdir())


def pdf_of_others(folder):
    for name, ending, contents, command in PDF_MAKERS:
        if contents:
            (folder / f"{name}.{ending}").write_text(contents, "utf-8")
        try:
            subprocess.run(shlex.split(command.replace("{}", str(folder))), check=True, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
            yield folder / f"{name}.pdf"
        except (OSError, subprocess.CalledProcessError) as error:
            print(f"no document of {name}: {error}")


def told_by_exiftool(files):
    told = json.loads(subprocess.run(["exiftool", "-j", "-G0", *files], capture_output=True, text=True).stdout)
    for entry in told:
        entry |= {key.partition(":")[2]: value for key, value in entry.items() if ":" in key}
        file = entry["SourceFile"]
        for field, names in (PDF_NAMES if file.endswith(".pdf") else NAMES).items():
            yield file, field, next((entry[name] for name in names if name in entry), "")


def told_by_pdfinfo(files):
    for file in files:
        if not file.endswith(".pdf"):
            continue
        done = subprocess.run(["pdfinfo", "-isodates", "-enc", "UTF-8", file], capture_output=True, text=True)
        told = dict(re.findall(r"^([A-Za-z]+): *(.*)$", done.stdout, re.M))
        for name, field in PDFINFO_NAMES.items():
            value = told.get(name, "")
            if field in ("created", "saved"):
                value = re.sub(r"^(\d+)-(\d+)-(\d+)T([\d:]+)(.*)$", r"\1:\2:\3 \4\5", value)
            yield file, field, value


def told_by_olefile(files):
    for file in files:
        if not olefile.isOleFile(file):
            continue
        with olefile.OleFileIO(file) as compound:
            told = compound.get_metadata()
        encoding = {65001: "utf-8"}.get(told.codepage & 0xFFFF, f"cp{told.codepage & 0xFFFF}")
        for name, field in OLEFILE_NAMES.items():
            value = getattr(told, name) or ""
            if isinstance(value, bytes):
                value = value.decode(encoding)
            yield file, field, value if isinstance(value, str) else f"{value:%Y:%m:%d %H:%M:%S}"


def comparable(field, value):
    """Dates as UTC where they have a zone; texts with single blanks; several keywords as one text."""
    if isinstance(value, list):
        value = ", ".join(map(str, value))
    value = re.sub(r"\s+", " ", str(value)).strip()
    if field in ("created", "saved"):
        date = re.match(r"(\d{4}):(\d\d):(\d\d) (\d\d):(\d\d):(\d\d)(?:\.\d+)?(Z|[+-]\d\d:\d\d)?$", value)
        if date:
            moment = datetime(*map(int, date.groups()[:6]))
            zone = date[7] or ""
            if ":" in zone:
                moment -= timedelta(hours=int(zone[:3]), minutes=int(zone[0] + zone[4:]))
            return f"{moment:%Y:%m:%d %H:%M:%S}" + ("Z" if zone else "")
    return value


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        files = [str(f) for f in sys.argv[1:] or [*made_by_libreoffice(folder), *pdf_of_others(folder)]]
        lines = subprocess.run([READER, *files], check=True, capture_output=True, text=True).stdout.splitlines()
        ours = {tuple(line.split("\t")[:2]): line.split("\t")[2] for line in lines}
        told = {witness.__name__[8:]: list(witness(files))
                for witness in (told_by_exiftool, told_by_pdfinfo, told_by_olefile)}
    for witness, entries in told.items():
        equal = 0
        for file, field, other in entries:
            mine, other = comparable(field, ours[file, field]), comparable(field, other)
            # A moment that only one of them gives a zone is the same moment.
            if mine.rstrip("Z") == other.rstrip("Z") if field in ("created", "saved") else mine == other:
                equal += 1
            else:
                print(f"{Path(file).name} {field}: {mine!r}, {witness}: {other!r}")
        documents = len({file for file, _, _ in entries})
        print(f"{witness}: {documents} documents, {equal} of {len(entries)} fields equal")


if __name__ == "__main__":
    main()

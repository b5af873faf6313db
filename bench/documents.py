#!/usr/bin/env python3
"""Compares what the documents library reads out of documents with what exiftool does.

    bench/documents.py [FILE...]     without files: documents of every kind that LibreOffice writes

Needs exiftool (and LibreOffice where it makes the files), and build/native-release/bench/document_facts. Prints each
field in which the two differ, and the number of those that are equal.
"""
import json
import re
import subprocess
import sys
import tempfile
from datetime import datetime, timedelta
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
READER = ROOT / "build/native-release/bench/document_facts"
# What exiftool calls each, the first that is there.
NAMES = {
    "title": ["Title"], "subject": ["Subject"], "author": ["Author", "Initial-creator", "Creator"],
    "keywords": ["Keywords", "Keyword"], "comments": ["Comments", "Comment", "Description"],
    "company": ["Company"], "manager": ["Manager"], "category": ["Category"],
    "created": ["CreateDate", "Creation-date"], "saved": ["ModifyDate", "Date"],
    "pages": ["Pages", "PageCount", "Slides", "Document-statisticPage-count"],
}
KINDS = {
    "text": ["odt", "ott", "fodt", "docx", "doc", "rtf", "pdf"],
    "spreadsheet": ["ods", "xlsx", "xls", "pdf"],
    "presentation": ["odp", "pptx", "ppt", "pdf"],
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
    with tempfile.TemporaryDirectory() as folder:
        files = [str(f) for f in sys.argv[1:] or made_by_libreoffice(Path(folder))]
        lines = subprocess.run([READER, *files], check=True, capture_output=True, text=True).stdout.splitlines()
        ours = {tuple(line.split("\t")[:2]): line.split("\t")[2] for line in lines}
        told = json.loads(subprocess.run(["exiftool", "-j", *files], capture_output=True, text=True).stdout)
    theirs = {entry["SourceFile"]: entry for entry in told}
    equal = 0
    for (file, field), value in ours.items():
        entry = theirs.get(file, {})
        other = next((entry[name] for name in NAMES[field] if name in entry), "")
        mine, other = comparable(field, value), comparable(field, other)
        # A moment that only one of them gives a zone is the same moment.
        if mine.rstrip("Z") == other.rstrip("Z") if field in ("created", "saved") else mine == other:
            equal += 1
        else:
            print(f"{Path(file).name} {field}: {mine!r}, exiftool: {other!r}")
    print(f"{len(files)} documents, {equal} of {len(ours)} fields equal")


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Writes the sample template library.

    make_samples.py OUTDIR           the library, unless OUTDIR already holds just that
    make_samples.py --pack OUTDIR    the templates of the sample solution pack, in the same way
    make_samples.py --support DIR    the pictures of the support folder (committed; run after changing them)

Needs ImageMagick and the font DejaVu Sans; nothing is fetched. The same sources give the same files
on every run.
"""
import argparse
import hashlib
import os
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
sys.dont_write_bytecode = True

import pictures  # noqa: E402
from documents import document  # noqa: E402
from fonts import DejaVu, FontError  # noqa: E402
from source import SourceError, read_source  # noqa: E402

BANNER_PAGE = """<html>
<head><title>Tessaly</title></head>
<style type="text/css"><!-- BODY {overflow : hidden;} --></style>
<body leftmargin="0" topmargin="0" bgcolor="white">
<table width="100%" cellpadding="0" cellspacing="0"><tr><td align="center" valign="middle">
<img src="Banner1Picture.jpg" width="500" height="60" border="0" alt="Tessaly: good documents start half written.">
</td></tr></table>
</body>
</html>
"""


def source_mark(sources):
    """Changes when anything does that the templates of this folder of sources are made from."""
    digest = hashlib.sha256()
    programs = [path for path in HERE.glob("*.py") if not path.name.startswith("test_")]
    for path in sorted([*programs, *HERE.glob(f"{sources}/*.txt")]):
        digest.update(path.name.encode() + b"\0" + path.read_bytes())
    return digest.hexdigest()


def listing(root):
    """Every file below root with its size. What the browser does to a library shows up here."""
    return sorted(f"{path.stat().st_size} {path.relative_to(root).as_posix()}"
                  for path in root.rglob("*") if path.is_file())


def read_sources(sources):
    templates, icons = [], []
    for path in sorted(HERE.glob(f"{sources}/*.txt")):
        moreTemplates, moreIcons = read_source(path)
        templates += moreTemplates
        icons += moreIcons
    seen = set()
    for template in templates:
        # Two templates that differ in their ending only would share one preview picture.
        key = (template.folder.lower(), template.stem.lower())
        if key in seen:
            raise SourceError(f"{template.folder}\\{template.name} is there twice")
        seen.add(key)
    return templates, icons


def write_templates(root, fonts, sources):
    templates, icons = read_sources(sources)
    jobs = []
    times = {}
    for template in templates:
        folder = root.joinpath(*template.folder.split("\\"))
        folder.mkdir(parents=True, exist_ok=True)
        path = folder / template.name
        path.write_bytes(document(template))
        times[path] = template.time
        if template.preview:
            (folder / "Previews").mkdir(exist_ok=True)
            picture = folder / "Previews" / f"{template.stem}.jpg"
            jobs.append(pictures.to_file(pictures.preview(template, fonts), fonts, picture))
            times[picture] = template.time
    for icon in icons:
        jobs.append(pictures.icon_to_file(pictures.folder_icon(icon), fonts, root / icon.folder / f"folder_{icon.glyph}.ico"))
    if sources == "library":
        for canvas, name in ((pictures.no_preview(), "NF.jpg"), (pictures.thumbnail_frame(), "background.bmp"),
                             (pictures.banner(), "Banner1Picture.jpg")):
            jobs.append(pictures.to_file(canvas, fonts, root / name))
        (root / "Banner1.htm").write_text(BANNER_PAGE, encoding="ascii", newline="\r\n")
    pictures.draw_all(jobs)

    oldest = min(times.values())
    for path in sorted(root.rglob("*"), reverse=True):
        os.utime(path, (times.get(path, oldest),) * 2)
    return len(templates)


def make_library(root, sources):
    # Beside the library, not in it: the library holds what a user's library would.
    stamp = root.with_name(root.name + ".stamp")
    mark = source_mark(sources)
    present = listing(root)
    oldMark, *written = stamp.read_text("utf-8").splitlines() if stamp.is_file() else [""]
    if oldMark == mark and set(written) <= set(present):
        return f"{root} is up to date"
    if present and not oldMark:
        raise SourceError(f"{root} holds files that were not made here; name an empty folder")
    # A run that is cut short leaves a stamp that no source has, so that the next one starts over.
    stamp.parent.mkdir(parents=True, exist_ok=True)
    stamp.write_text("\n".join(["unfinished", *written]) + "\n", "utf-8")
    for line in set(written) & set(present):
        (root / line.split(" ", 1)[1]).unlink()
    kept = set(listing(root))
    root.mkdir(exist_ok=True)
    count = write_templates(root, DejaVu(), sources)
    stamp.write_text("\n".join([mark, *(line for line in listing(root) if line not in kept)]) + "\n", "utf-8")
    return f"{count} templates in {root}"


def make_support(folder):
    folder.mkdir(parents=True, exist_ok=True)
    pictures.draw_all([pictures.to_file(pictures.splash(), DejaVu(), folder / "Splash.jpg")])
    icon = HERE.parent / "art" / "icons" / "app.ico"
    for size in (16, 32):
        frames = subprocess.run(["identify", "-format", "%s %w\n", str(icon)], capture_output=True, text=True, check=True)
        frame = next(line.split()[0] for line in frames.stdout.splitlines() if line.split()[1] == str(size))
        subprocess.run(["convert", f"{icon}[{frame}]", "-type", "TrueColorAlpha", f"ICO:{folder / f'Desk{size}.ico'}"],
                       check=True)
    (folder / "Support.ini").write_text("[Tessaly Desk]\nIcon_16x16=Desk16.ico\nIcon_32x32=Desk32.ico\n"
                                        "Splash_IMG=Splash.jpg\n", encoding="ascii", newline="\r\n")
    return f"support folder in {folder}"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("outdir", type=Path, nargs="?")
    parser.add_argument("--support", type=Path, metavar="DIR")
    parser.add_argument("--pack", action="store_true")
    arguments = parser.parse_args()
    if (arguments.outdir is None) == (arguments.support is None):
        parser.error("give either OUTDIR or --support DIR")
    try:
        print(make_support(arguments.support) if arguments.support
              else make_library(arguments.outdir.absolute(), "pack" if arguments.pack else "library"))
    except (SourceError, FontError) as problem:
        sys.exit(f"make_samples.py: {problem}")
    except FileNotFoundError as problem:
        sys.exit(f"make_samples.py: {problem.filename} is missing")
    except subprocess.CalledProcessError as problem:
        sys.exit(f"make_samples.py: {problem.cmd[0]} failed: {problem.returncode}")


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Runs clang-tidy over the portable sources of the product, as .clang-tidy says; any finding fails.

    tests/check_tidy.py [BUILD]        BUILD: a built tree with compile_commands.json (default: build/native)

A file is looked at again only when it, a header of the project that it includes, or the rules have changed: as with the
compiler's cache, what passed is remembered for all checkouts of this user, by a digest of all that the outcome depends on.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import subprocess
import sys

TIDY = "clang-tidy-19"
NOT_PRODUCT = ("tests", "bench", "build")
# GCC judges the warnings: clang does not know them all, and finds fault with the standard library's headers.
# The analyser takes twice the time of all other checks together; run it by hand.
CHECKS = "-clang-analyzer-*"


def digest(source, entry, rules):
    """Of all that the outcome depends on; the build has noted which headers that is."""
    command = entry["command"].split()
    note = pathlib.Path(entry["directory"], command[command.index("-o") + 1] + ".d").read_text().replace("\\\n", " ")
    parts = [rules, entry["command"].replace(str(source), "").encode()]
    for name in sorted(set(note.split(":", 1)[1].split())):
        path = pathlib.Path(entry["directory"], name).resolve()
        if path.is_relative_to(source):
            parts += [str(path.relative_to(source)).encode(), path.read_bytes()]
    return hashlib.sha256(b"\0".join(parts)).hexdigest()


def tidy(build, name):
    run = subprocess.run([TIDY, "--quiet", "--warnings-as-errors=*", "--checks=" + CHECKS,
                          "--extra-arg=-Wno-unknown-warning-option", "--extra-arg=-Wno-deprecated-declarations",
                          "-p", build, name],
                         capture_output=True, text=True, check=False)
    return run.returncode, run.stdout + (run.stderr if run.returncode else "")


def main():
    source = pathlib.Path(__file__).resolve().parent.parent
    build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else source / "build/native").resolve()
    version = subprocess.run([TIDY, "--version"], capture_output=True, check=True).stdout
    rules = (source / ".clang-tidy").read_bytes() + version + CHECKS.encode()
    stamps = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache"), "template-browser", "tidy")
    stamps.mkdir(parents=True, exist_ok=True)
    waiting = {}
    known = 0
    for entry in json.loads((build / "compile_commands.json").read_text()):
        file = pathlib.Path(entry["file"])
        if not file.is_relative_to(source) or file.relative_to(source).parts[0] in NOT_PRODUCT:
            continue
        known += 1
        stamp = stamps / digest(source, entry, rules)
        if not stamp.exists():
            waiting[str(file)] = stamp
    if known == 0:
        sys.exit("no source of the product in " + str(build))

    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = {pool.submit(tidy, str(build), name): stamp for name, stamp in waiting.items()}
        for run in concurrent.futures.as_completed(runs):
            code, text = run.result()
            if code == 0:
                runs[run].touch()
            else:
                failed += 1
                print(text, flush=True)
    print(f"{known} files, {len(waiting)} looked at, {failed} with findings")
    return failed > 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Runs clang-tidy over the portable sources of the product, as .clang-tidy says; any finding fails.

    tests/check_tidy.py [BUILD]        BUILD: a built tree with compile_commands.json (default: build/native)

A file is looked at again only when it, a header of the project that it includes, or the rules have changed: as with the
compiler's cache, what passed is remembered for all checkouts of this user, by a digest of all that the outcome depends on.

Most of the time goes to the standard library's headers, so some files are looked at together, as one text. Where that
does not compile, or something is found, each is looked at alone.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

TIDY = "clang-tidy-19"
NOT_PRODUCT = ("tests", "bench", "fuzz", "build")
# The analyser takes twice the time of all other checks together; run it by hand.
CHECKS = "-clang-analyzer-*"
TOGETHER = 8
SOURCE = pathlib.Path(__file__).resolve().parent.parent
# Headers of all that is looked at, and sources in a group, which are headers to clang-tidy.
FILTER = "^" + str(SOURCE) + "/"


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


def tidy(arguments, name, flags=()):
    run = subprocess.run([TIDY, "--quiet", "--warnings-as-errors=*", "--header-filter=" + FILTER, *arguments, name, *flags],
                         capture_output=True, text=True, check=False)
    return run.returncode, run.stdout + (run.stderr if run.returncode else "")


def in_groups(waiting):
    """Groups of files without a name of their own in common, as far as a glance at the starts of lines tells."""
    groups = []
    for name, entry in sorted(waiting.items()):
        text = pathlib.Path(name).read_text()
        own = set(re.findall(r"^(?:struct|class|enum class) (\w+)|^\w[\w:<>,&* ]* [&*]?(\w+)(?:\[|\{| =|\()", text, re.M))
        place = next((group for group in groups if len(group["files"]) < TOGETHER and not own & group["names"]), None)
        if not place:
            place = {"files": {}, "names": set()}
            groups.append(place)
        place["files"][name] = entry
        place["names"] |= own
    return [group["files"] for group in groups]


def tidy_group(source, build, number, group):
    """The findings in a group of files: text by file, "" for one that passed."""
    if len(group) > 1:
        together = build / "tidy" / f"{number}.cpp"
        together.parent.mkdir(exist_ok=True)
        together.write_text("".join(f'#include "{name}"\n' for name in group))
        flags = dict.fromkeys(word for entry in group.values() for word in entry["command"].split()
                              if word.startswith(("-I", "-D", "-W", "-std", "-f")))
        code, _ = tidy(["--checks=" + CHECKS + ",-bugprone-suspicious-include",
                        "--config-file=" + str(source / ".clang-tidy")], str(together), ["--", *flags])
        if code == 0:
            return dict.fromkeys(group, "")
    findings = {}
    for name in group:
        code, text = tidy(["--checks=" + CHECKS, "-p", str(build)], name)
        findings[name] = text or "failed" if code else ""
    return findings


def main():
    source = SOURCE
    build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else source / "build/native").resolve()
    version = subprocess.run([TIDY, "--version"], capture_output=True, check=True).stdout
    rules = (source / ".clang-tidy").read_bytes() + version + CHECKS.encode() + FILTER.removeprefix("^" + str(source)).encode()
    stamps = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache"), "template-browser", "tidy")
    stamps.mkdir(parents=True, exist_ok=True)
    waiting, stamp_of = {}, {}
    known = 0
    for entry in json.loads((build / "compile_commands.json").read_text()):
        file = pathlib.Path(entry["file"])
        if not file.is_relative_to(source) or file.relative_to(source).parts[0] in NOT_PRODUCT:
            continue
        known += 1
        stamp = stamps / digest(source, entry, rules)
        if not stamp.exists():
            waiting[str(file)] = entry
            stamp_of[str(file)] = stamp
    if known == 0:
        sys.exit("no source of the product in " + str(build))

    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = [pool.submit(tidy_group, source, build, number, group) for number, group in enumerate(in_groups(waiting))]
        for run in concurrent.futures.as_completed(runs):
            for name, text in run.result().items():
                if text:
                    failed += 1
                    print(text, flush=True)
                else:
                    stamp_of[name].touch()
    print(f"{known} files, {len(waiting)} looked at, {failed} with findings")
    return failed > 0


if __name__ == "__main__":
    sys.exit(main())

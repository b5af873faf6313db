#!/usr/bin/env python3
"""Installs, starts, upgrades and removes the program under Wine, and looks at registry and disk before and after.

    test_setup.py BUILD    the build folder with TSBrowser-Setup.exe, TSBrowser-Portable.zip and setup/stage

Expects a display and WINEPREFIX. What was installed there is removed first.
"""
import getpass
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
import zipfile
from pathlib import Path

BUILD = Path(sys.argv.pop(1)).resolve()
SETUP = BUILD / "TSBrowser-Setup.exe"
DRIVE = Path(os.environ["WINEPREFIX"]) / "drive_c"
SETTINGS = r"HKEY_CURRENT_USER\Software\VB and VBA Program Settings\Tessaly GWX 1.0"
OWN = r"HKEY_CURRENT_USER\Software\Zelmor Software\Tessaly Desk"
# The product's names, and how the class, its library and its interface, and what is run for each user, are numbered.
OURS = re.compile(r"Zelmor|Tessaly|TSBrowser|VB and VBA|6B0C3F5E|dd58dd5c|fb27f600|80c3d1cb", re.IGNORECASE)
RUNNING, BAD_SWITCH, NEWER = 10, 12, 15
# Letters of other scripts, and blanks.
FOLDER = "Büro Ελλάδα/Tessaly Desk"

os.environ["LC_ALL"] = "C.UTF-8"
os.environ["PYTHONDONTWRITEBYTECODE"] = "1"


def wine(*arguments):
    """(exit code, output). Each argument that holds a blank arrives in quotes."""
    with tempfile.TemporaryFile("w+", encoding="utf-8", errors="replace") as output:  # a pipe would stay open for a server
        code = subprocess.run(["wine", *map(str, arguments)], stdout=output, timeout=120).returncode
        output.seek(0)
        return code, output.read().strip()


def setup(*switches, folder=None):
    at = f"/D={folder if isinstance(folder, str) else windows(folder)}".split(" ") if folder else []  # never in quotes
    return wine(SETUP, "/S", *switches, *at)[0]


def uninstall(folder, started_as=None):
    """True when the folder's program is gone: the uninstaller works from a copy of itself, and returns at once."""
    wine((started_as or windows(folder)) + "\\Uninstall.exe", "/S")
    return await_(lambda: not (folder / "Uninstall.exe").exists())


def windows(path):
    return "C:\\" + str(path.relative_to(DRIVE)).replace("/", "\\")


def add(key, name, text):
    assert wine("reg", "add", key, "/v", name, "/d", text, "/f")[0] == 0


def registry(machine=False):
    """(key, value name) -> data as the registry editor writes it, of everything that could be ours; keys with ""."""
    hklm = "HKEY_LOCAL_MACHINE\\Software\\"
    places = [hklm + r"Microsoft\Windows\CurrentVersion\Uninstall", hklm + r"Microsoft\Active Setup",
              hklm + "Zelmor Software", hklm + r"Classes\TSBrowser.clsBrowser"] if machine else []
    exported = [DRIVE / f"exported{number}.reg" for number in range(1 + len(places))]
    lines = [f'@reg export "{place}" {windows(file)} /y >nul 2>nul'
             for place, file in zip(["HKEY_CURRENT_USER\\Software", *places], exported)]
    (DRIVE / "exported.bat").write_text("\r\n".join(lines) + "\r\n")
    wine("cmd", "/c", "C:\\exported.bat")
    found = {}
    for file in filter(Path.exists, exported):
        text = file.read_text(encoding="utf-16")
        file.unlink()
        key = ""
        for line in text.splitlines():
            if line.startswith("["):
                key = line[1:-1]
                if OURS.search(key):
                    found[key, ""] = ""
            elif match := re.match(r'(@|"(?:[^"\\]|\\.)*")=(.*)', line):
                name = match[1].strip('"').replace("\\\\", "\\")
                if OURS.search(key) or OURS.search(line):
                    data = match[2][1:-1] if match[2].startswith('"') else match[2]
                    found[key, name] = data.replace('\\"', '"').replace("\\\\", "\\")
    return found


def each_user_version(keys):
    return [int(part) for (key, name), data in keys.items() if "Active Setup" in key and name == "Version"
            for part in data.split(",")]


def files(below=DRIVE):
    """Every file with its bytes' number, where setup or the browser could have put one."""
    ignored = ("windows/", "exported", ".log")
    return {path.relative_to(below).as_posix(): path.stat().st_size for path in below.rglob("*")
            if path.is_file() and not any(word in path.relative_to(below).as_posix() for word in ignored)
            and "/Temp/" not in path.as_posix()}


def await_(condition):
    for _ in range(300):
        if condition():
            return True
        time.sleep(0.2)
    return False


class SetupTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = DRIVE / FOLDER
        shutil.rmtree(self.folder.parent, ignore_errors=True)
        self.keys = registry(machine=True)
        # What an earlier run left, or a program of another test.
        left = [key for key, name in self.keys if not name and (key.rpartition("\\")[0], "") not in self.keys]
        for key in left:
            wine("reg", "delete", key, "/f")
        if left:
            self.keys = registry(machine=True)
        self.files = files()

    def added(self):
        """What is in the registry and on the disk now and was not before."""
        return ({place: data for place, data in registry(machine=True).items() if self.keys.get(place) != data},
                {name for name, size in files().items() if self.files.get(name) != size})

    def test_one_user_keeps_what_is_his(self):
        self.assertEqual(0, setup("/LANGUAGE=de", r"/PICTURES=C:\Pictures\%USERNAME%", "/UPDATES=http://127.0.0.1:9/",
                                  folder=self.folder))
        keys, _ = self.added()
        templates = self.folder / "Templates"
        for section, name, data in (
                ("Options", "MSOVersion", "XP"), ("Options", "Installed Path", windows(self.folder)),
                ("Options", "Profile Images Path", "C:\\Pictures\\" + getpass.getuser()),
                ("Options", "WebHostPath", "http://127.0.0.1:9/"), ("Browser", "Access HDD_Templates", "True"),
                ("Browser", "HDD Templates Path", windows(templates)), ("Help", "General HTML", r"Help\de\index.html")):
            self.assertEqual(data, keys.get((SETTINGS + "\\" + section, name)), name)
        self.assertRegex(keys[SETTINGS + r"\Options", "OS Version"], r"^\d+\.\d+\.\d+$")
        command = [data for (key, name), data in keys.items() if name and key.endswith("LocalServer32")]
        self.assertEqual([f'"{windows(self.folder)}\\TSBrowser.exe"'], command)
        self.assertTrue(all(key.startswith("HKEY_CURRENT_USER") for key, _ in keys), "nothing for the machine")
        self.assertEqual(files(BUILD / "setup/stage/Templates"), files(templates))
        self.assertIn("Größe".encode("utf-16-le"), (self.folder / "TS_RES.dll").read_bytes())

        for (key, name), document in keys.items():
            if name and key == SETTINGS + r"\Help":
                self.assertTrue((self.folder / document.replace("\\", "/")).is_file(), name)
        for page in (self.folder / "Help").rglob("*.html"):
            for link in re.findall(r'(?:href|src)="([^"]+)"', page.read_text(encoding="utf-8")):
                self.assertTrue((page.parent / link).is_file(), f"{page.name}: {link}")

        # The user works, and another version comes.
        changed, deleted = templates / "Русские шаблоны/Смета.ccw", templates / "Marketing/Press release.swt"
        changed.write_bytes(changed.read_bytes() + b"more")
        deleted.unlink()
        (templates / "Mine").mkdir()
        (templates / "Mine/Own.swt").write_bytes(b"own")
        add(SETTINGS + r"\Browser\Favorites", "1", "Mine\\Own.swt")
        add(SETTINGS + r"\Browser", "MainWidth", "12000")
        add(OWN, "Version", "2.1.0")
        self.assertEqual(0, setup("/LANGUAGE=en"))
        keys, _ = self.added()
        self.assertEqual("2.2.0", keys[OWN, "Version"])
        self.assertEqual("12000", keys[SETTINGS + r"\Browser", "MainWidth"])
        self.assertEqual(r"Help\en\index.html", keys[SETTINGS + r"\Help", "General HTML"])
        self.assertTrue(changed.read_bytes().endswith(b"more"))
        self.assertFalse(deleted.exists())
        self.assertFalse((self.folder / "TS_RES.dll").exists())

        # Into another folder, by a short name: the program moves, the library stays.
        moved = self.folder.with_name("Moved here")
        self.assertEqual(0, setup(folder=wine("winepath", "-s", windows(moved.parent))[1] + "\\Moved here"))
        self.assertEqual(windows(moved), registry()[OWN, "Installed Path"])
        self.assertEqual(["Templates"], [path.name for path in self.folder.iterdir()])
        self.assertEqual(windows(templates), registry()[SETTINGS + r"\Browser", "HDD Templates Path"])

        (moved / "Report a Bug.htm").write_text("of the browser")
        short = wine("winepath", "-s", windows(moved))[1]
        self.assertIn("~", short)
        self.assertTrue(uninstall(moved, short))
        keys, left = self.added()
        self.assertEqual({(SETTINGS + r"\Browser\Favorites", "1"), (SETTINGS + r"\Browser", "MainWidth")},
                         {place for place in keys if place[1]})
        self.assertEqual({f"{FOLDER}/Templates/{name}" for name in ("Mine/Own.swt", "Русские шаблоны/Смета.ccw")}, left)

    def test_all_users_with_a_library_of_their_own(self):
        share = DRIVE / "share/Our templates"
        (share / "Letters").mkdir(parents=True, exist_ok=True)
        (share / "Letters/Letter.swt").write_bytes(b"letter")
        self.addCleanup(shutil.rmtree, share.parent)
        self.files = files()
        self.assertEqual(0, setup("/ALLUSERS", "/LANGUAGE=en", f"/TEMPLATES={windows(share)}", folder=self.folder))
        keys, _ = self.added()
        self.assertFalse((self.folder / "Templates").exists())
        self.assertEqual(windows(share), keys[SETTINGS + r"\Browser", "HDD Templates Path"])

        number = each_user_version(keys)

        # Another user logs on.
        wine("reg", "delete", SETTINGS, "/f")
        wine("reg", "delete", OWN, "/f")
        stub = [data for (_, name), data in keys.items() if name == "StubPath"]
        self.assertEqual([f'"{windows(self.folder)}\\UserSettings.exe" /S'], stub)
        self.assertEqual(0, wine(self.folder / "UserSettings.exe", "/S")[0])
        self.assertEqual(windows(share), registry()[SETTINGS + r"\Browser", "HDD Templates Path"])

        # A script host starts the browser; while it runs, neither an upgrade nor a removal touches it.
        add(SETTINGS + r"\Profiles", "FirstRun", "0")
        script = "Z:" + str(Path(__file__).resolve().parents[2] / "samples/hosts/start.vbs").replace("/", "\\")
        self.assertEqual("The browser is open.", wine("cscript", "//nologo", script, "Our Office")[1])
        program = (self.folder / "TSBrowser.exe").stat()
        self.assertEqual(RUNNING, setup("/WAIT=1"))
        self.assertEqual(program, (self.folder / "TSBrowser.exe").stat())
        wine("taskkill", "/im", "TSBrowser.exe")
        self.assertTrue(await_(lambda: "TSBrowser.exe" not in wine("tasklist")[1]))
        self.assertEqual("Our Office", registry()[SETTINGS + r"\Customization", "ApplicationName"])

        self.assertTrue(uninstall(self.folder))
        keys, left = self.added()
        self.assertEqual(set(), left)
        # What the browser itself noted stays, and nothing of setup.
        self.assertEqual(set(), {place for place in keys if place[1] and not place[0].startswith(SETTINGS)})
        self.assertEqual(set(), {place for place in keys if place[1] and place[0].endswith(("Options", "Help"))}
                         - {(SETTINGS + r"\Options", "NotifyCount"), (SETTINGS + r"\Options", "NotifyDisabled")})

        # Every user gets the settings of the next setup, too.
        self.assertEqual(0, setup("/ALLUSERS", folder=self.folder))
        self.assertGreater(each_user_version(self.added()[0]), number)
        self.assertTrue(uninstall(self.folder))

    def test_refuses_and_changes_nothing(self):
        for code, switch in ((BAD_SWITCH, "/LANGUAGE=xx"), (BAD_SWITCH, "/TEMPLATES=Templates")):
            self.assertEqual(code, setup(switch, folder=self.folder), switch)
        self.assertEqual(({}, set()), self.added())
        add(OWN, "Version", "9.0.0")
        self.keys = registry(machine=True)
        self.assertEqual(NEWER, setup(folder=self.folder))
        self.assertEqual(({}, set()), self.added())

    def test_the_zip_serves_from_where_it_is_unpacked(self):
        with zipfile.ZipFile(BUILD / "TSBrowser-Portable.zip") as portable:
            portable.extractall(self.folder)
        self.assertEqual(0, wine(self.folder / "UserSettings.exe", "/S")[0])
        keys, _ = self.added()
        self.assertEqual(windows(self.folder), keys[SETTINGS + r"\Options", "Installed Path"])
        self.assertEqual(windows(self.folder / "Templates"), keys[SETTINGS + r"\Browser", "HDD Templates Path"])
        self.assertTrue(any(key.endswith("LocalServer32") for key, _ in keys))
        self.assertEqual(0, wine(self.folder / "UserSettings.exe", "/REMOVE", "/S")[0])
        self.assertEqual({}, self.added()[0])


if __name__ == "__main__":
    unittest.main(verbosity=2)

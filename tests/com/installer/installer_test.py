"""The installer registers what the servers register, and leaves nothing when it is removed.

CTest sets KXJOB_RUNNER, KXJOB_PREFIX (where nothing is registered), KXJOB_INSTALLER (the .msi), KXJOB_STAGE (what it
was made from), KXJOB_WIXL (the tool that made it), KXJOB_SERVERS (the folder of the DLLs) and KXJOB_PROGRAM (a program
that uses the component).
"""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

import registry_export
from wine import CLASSES, Wine, windows_path

INSTALLER = os.environ["KXJOB_INSTALLER"]
STAGE = pathlib.Path(os.environ["KXJOB_STAGE"])
SERVERS = pathlib.Path(os.environ["KXJOB_SERVERS"])
PREFIX = pathlib.Path(os.environ["KXJOB_PREFIX"])
DLLS = ["kxJob.dll", "kxSiblings.dll"]
FILES = [*DLLS, "LICENSE", "README.md", "kxJob.Automation.manifest", "kxSiblings.Automation.manifest"]
FOLDER = r"C:\kxJob of a test"
LATER = "8.3.1203"
SOFTWARE = r"HKEY_LOCAL_MACHINE\Software"

# Keys of nobody's own: those that Wine's installer engine keeps once anything was installed, and the parent of the
# 32-bit interfaces, which only a new prefix has empty.
SHARED_KEYS = re.compile(r".*\\Software\\((Classes|Microsoft\\Windows\\CurrentVersion)\\Installer(\\.*)?"
                         r"|(Classes\\Wow6432Node|Wow6432Node\\Classes)\\Interface)", re.IGNORECASE)


def without_shared(values):
    """Without the shared keys themselves; a value in one of them would count."""
    return {entry: text for entry, text in values.items()
            if not (SHARED_KEYS.fullmatch(entry[0]) and entry[1] is None)}


class Installer(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.wine = Wine(os.environ["KXJOB_RUNNER"], PREFIX)
        self.clean()

    def tearDown(self):
        self.clean()

    def clean(self):
        """Takes out what a test, or an interrupted one, has left."""
        self.wine.run("msiexec", "/x", windows_path(INSTALLER), "/qn")
        for dll in DLLS:
            self.wine.unregister(SERVERS / dll)
        shutil.rmtree(self.unix_path(FOLDER), ignore_errors=True)

    def unix_path(self, path):
        return PREFIX / "drive_c" / path.removeprefix("C:\\").replace("\\", "/")

    def install(self):
        self.wine.run_well("msiexec", "/i", windows_path(INSTALLER), "/qn", "INSTALLDIR=" + FOLDER)

    def remove(self, installer=INSTALLER):
        self.wine.run_well("msiexec", "/x", windows_path(installer), "/qn")

    def test_it_installs_these_files_and_removes_them_with_their_folder(self):
        self.install()
        self.assertEqual(sorted(FILES), sorted(os.listdir(self.unix_path(FOLDER))))
        for dll in DLLS:
            self.assertEqual((SERVERS / dll).read_bytes(), (self.unix_path(FOLDER) / dll).read_bytes())
        self.remove()
        self.assertFalse(self.unix_path(FOLDER).exists())

    def test_it_registers_what_the_servers_register_themselves(self):
        before = without_shared(self.wine.values())
        self.install()
        installed = registry_export.added(before, without_shared(self.wine.values()))
        self.remove()
        for dll in DLLS:
            self.wine.register(SERVERS / dll)
        registered = registry_export.added(before, without_shared(self.wine.values()))
        self.assertNotEqual({}, registered)

        def lines(values, folder):
            # The installer writes a folder with a backslash at its end.
            return [line.replace(folder, "@FOLDER@").removesuffix("\\") for line in registry_export.as_lines(values)
                    if "\\Installer\\" not in line]

        self.assertEqual(lines(registered, windows_path(SERVERS)), lines(installed, FOLDER))

    def test_a_client_uses_what_is_installed_and_not_what_is_removed(self):
        program = windows_path(os.environ["KXJOB_PROGRAM"])
        self.install()
        ended = self.wine.run(program)
        self.assertIn("Version 8.3.1202.0\n", ended.stdout)
        self.assertEqual(0, ended.returncode)
        self.remove()
        self.assertIn("0x800401F3", self.wine.run(program).stdout)

    def test_removing_it_leaves_the_registry_as_it_was(self):
        before = without_shared(self.wine.values(SOFTWARE))
        self.install()
        self.assertNotEqual(before, without_shared(self.wine.values(SOFTWARE)))
        self.remove()
        self.assertEqual({}, registry_export.added(before, without_shared(self.wine.values(SOFTWARE))))

    def test_a_later_version_takes_its_place_in_its_folder(self):
        later = self.later_version()
        self.addCleanup(self.remove, later)
        self.install()
        self.wine.run_well("msiexec", "/i", windows_path(later), "/qn")
        values = self.wine.values(SOFTWARE)
        versions = {text for (key, name), text in values.items()
                    if name == "DisplayVersion" and values.get((key, "DisplayName")) == "kxJob"}
        self.assertEqual({LATER}, versions)
        self.assertEqual(sorted(FILES), sorted(os.listdir(self.unix_path(FOLDER))))
        servers = {text.rpartition("\\")[0] for (key, name), text in values.items()
                   if key.startswith(CLASSES) and name == "" and text.endswith(tuple(DLLS))}
        self.assertEqual({FOLDER}, servers)

    def later_version(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        description, installer = (pathlib.Path(folder.name) / name for name in ("later.wxs", "later.msi"))
        text = (STAGE / "kxJob.wxs").read_text(encoding="utf-8")
        description.write_text(re.sub(r' Version="[^"]*"', f' Version="{LATER}"', text, count=1), encoding="utf-8")
        subprocess.run([os.environ["KXJOB_WIXL"], "--arch", "x64", "--output", installer, description], cwd=STAGE,
                       check=True)
        return installer


if __name__ == "__main__":
    unittest.main()

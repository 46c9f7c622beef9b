"""A test's view of the registry before and after its DLLs are registered.

CTest sets KXJOB_RUNNER, KXJOB_SERVERS (the folder of the DLLs), KXJOB_ARCHITECTURE (amd64 or x86) and KXJOB_PREFIX
(where nothing is registered).
"""

import difflib
import os
import pathlib
import re
import unittest

import registry_export
from wine import CLASSES, Wine, windows_path

SERVERS = pathlib.Path(os.environ["KXJOB_SERVERS"])
DLLS = ["kxJob.dll", "kxSiblings.dll"]


def expected_values():
    lines = pathlib.Path(__file__).with_name("registered_values.txt").read_text(encoding="utf-8").splitlines()
    if os.environ["KXJOB_ARCHITECTURE"] == "amd64":
        return lines
    # 32-bit Windows has one view of the registry.
    return [line.replace(r"\win64 |", r"\win32 |") for line in lines if not line.startswith("Wow6432Node")]


EXPECTED = expected_values()


class RegistryTestCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.wine = Wine(os.environ["KXJOB_RUNNER"], os.environ["KXJOB_PREFIX"])
        cls.unregister_all()  # what an interrupted run has left
        cls.before = cls.wine.export()

    def tearDown(self):
        self.unregister_all()

    def assert_unchanged(self, before, key=CLASSES):
        after = self.wine.export(key)
        if before != after:
            self.assert_lines(*(export.decode("utf-16").splitlines() for export in (before, after)))
            self.fail("the lines are equal, their bytes are not")

    def assert_lines(self, expected, found):
        if expected != found:
            self.fail("\n".join(difflib.unified_diff(expected, found, "expected", "found", n=1, lineterm="")))

    @classmethod
    def register_all(cls, folder=SERVERS):
        for dll in DLLS:
            cls.wine.register(folder / dll)

    @classmethod
    def unregister_all(cls):
        for dll in DLLS:
            cls.wine.unregister(SERVERS / dll)

    def added(self, before, key=CLASSES, folder=windows_path(SERVERS)):
        """What was added, one line a value as in the expected text: below the classes, the DLLs in @FOLDER@."""
        values = registry_export.added(registry_export.parse(before.decode("utf-16")), self.wine.values(key))
        return [re.sub(r"^HKEY_\w+\\Software\\Classes\\", "", line).replace(folder, "@FOLDER@")
                for line in registry_export.as_lines(values)]

"""The servers are used from a folder, with their manifests beside them, where nothing is registered.

CTest sets KXJOB_RUNNER, KXJOB_PREFIX (where nothing is registered), KXJOB_STAGE (DLLs and manifests) and KXJOB_PROGRAM.
"""

import os
import pathlib
import shutil
import tempfile
import unittest

from wine import Wine

STAGE = pathlib.Path(os.environ["KXJOB_STAGE"])
PROGRAM = pathlib.Path(os.environ["KXJOB_PROGRAM"])
SERVERS = ["kxJob.dll", "kxSiblings.dll"]
MANIFESTS = ["kxJob.Automation.manifest", "kxSiblings.Automation.manifest"]
ANSWERS = "Version 8.3.1202.0\nIsJobComplete(COMPLETE) -1\nIsJobComplete(RUNNING) 0\n"
COULD_NOT_BE_OPENED = "GetJobType 0x800402C0\n"


class RegistrationFree(unittest.TestCase):
    def setUp(self):
        self.wine = Wine(os.environ["KXJOB_RUNNER"], os.environ["KXJOB_PREFIX"])
        for dll in SERVERS:  # what an interrupted run of another test has left
            self.wine.unregister(STAGE / dll)

    def run_beside(self, files, *arguments):
        with tempfile.TemporaryDirectory() as folder:
            for file in (*(STAGE / name for name in files), PROGRAM):
                shutil.copy(file, folder)
            return self.wine.run(str(pathlib.Path(folder) / PROGRAM.name), *arguments)

    def test_the_classes_answer_early_bound_and_by_name_and_find_their_siblings(self):
        before = self.wine.export()
        ended = self.run_beside(SERVERS + MANIFESTS)
        self.assertEqual(ANSWERS + COULD_NOT_BE_OPENED, ended.stdout)
        self.assertEqual(0, ended.returncode)
        self.assertEqual(before, self.wine.export())

    def test_calls_into_another_apartment_find_their_way_by_the_manifest(self):
        ended = self.run_beside(SERVERS + MANIFESTS, "elsewhere")
        self.assertEqual(ANSWERS + COULD_NOT_BE_OPENED, ended.stdout)

    def test_without_the_siblings_only_what_needs_them_fails(self):
        ended = self.run_beside([SERVERS[0], *MANIFESTS])
        self.assertTrue(ended.stdout.startswith(ANSWERS + "GetJobType 0x8"), ended.stdout)
        self.assertNotIn(COULD_NOT_BE_OPENED, ended.stdout)

    def test_without_the_manifests_the_classes_are_unknown(self):
        ended = self.run_beside(SERVERS)
        self.assertNotEqual(0, ended.returncode)
        self.assertNotIn("Version", ended.stdout)


if __name__ == "__main__":
    unittest.main()

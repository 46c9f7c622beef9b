"""Registering the servers for everybody on the machine. KXJOB_REFUSED is the program refused_registration."""

import contextlib
import os
import pathlib
import shutil
import tempfile
import unittest

from registry_test_case import DLLS, EXPECTED, SERVERS, RegistryTestCase
from wine import windows_path

BAD_LIBRARY = 3  # what regsvr32 ends with when it cannot load a DLL


def without_help_folder(lines):
    """The registry keeps the first folder for help files, and there are none."""
    return [line for line in lines if "HELPDIR" not in line]


class MachineRegistration(RegistryTestCase):
    @contextlib.contextmanager
    def registered_elsewhere(self):
        """Copies of the servers, registered, in a folder that vanishes."""
        with tempfile.TemporaryDirectory() as folder:
            for dll in DLLS:
                shutil.copy(SERVERS / dll, folder)
            self.register_all(pathlib.Path(folder))
            yield folder

    def test_exactly_these_values_are_written(self):
        self.register_all()
        self.assert_lines(EXPECTED, self.added(self.before))

    def test_unregistering_leaves_the_registry_byte_for_byte_as_it_was(self):
        self.register_all()
        self.assertNotEqual(self.before, self.wine.export())
        self.unregister_all()
        self.assert_unchanged(self.before)

    def test_unregistering_what_is_not_registered_is_no_error_and_changes_nothing(self):
        self.unregister_all()
        self.assert_unchanged(self.before)

    def test_registering_again_from_another_folder_moves_every_path(self):
        with self.registered_elsewhere() as other:
            self.assert_lines(EXPECTED, self.added(self.before, folder=windows_path(other)))
            self.register_all()
            self.assert_lines(without_help_folder(EXPECTED), without_help_folder(self.added(self.before)))

    def test_what_was_registered_from_a_folder_that_is_gone_is_taken_out(self):
        with self.registered_elsewhere():
            pass
        self.unregister_all()
        self.assert_unchanged(self.before)

    def test_what_is_no_server_is_an_error_and_changes_nothing(self):
        with tempfile.TemporaryDirectory() as folder:
            text = pathlib.Path(folder) / "kxJob.dll"
            text.write_text("no library", encoding="utf-8")
            for path in (text, pathlib.Path(folder) / "missing.dll"):
                self.assertEqual(BAD_LIBRARY, self.wine.run("regsvr32", "/s", windows_path(path)).returncode)
        self.assert_unchanged(self.before)

    def test_a_refusal_of_the_registry_is_reported_and_nothing_stays_half_registered(self):
        for dll, key in (("kxJob.dll", "Job_83.Enums"), ("kxSiblings.dll", "DebugTools_83.Helper")):
            with self.subTest(dll):
                said = self.wine.run_well(os.environ["KXJOB_REFUSED"], windows_path(SERVERS / dll), key)
                self.assertEqual("DllRegisterServer 0x800703FD\nregsvr32 5\n", said)
                self.assert_unchanged(self.before)


if __name__ == "__main__":
    unittest.main()

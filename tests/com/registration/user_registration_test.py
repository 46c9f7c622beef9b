"""Registering the servers for the current user alone: regsvr32 /n /i:user."""

import unittest

from registry_test_case import DLLS, EXPECTED, SERVERS, RegistryTestCase
from wine import USER, windows_path

# Where Wine keeps a type library that is registered for one user; Windows keeps it with the user's classes.
WITH_THE_MACHINE = ("Interface\\", "Typelib\\", "Wow6432Node\\")


class UserRegistration(RegistryTestCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # Windows always has this key, a new prefix has not.
        cls.wine.run_well("reg", "add", r"HKCU\Software\Classes\CLSID", "/f")
        cls.install("/u")
        cls.before_user = cls.wine.export(USER)

    def tearDown(self):
        self.install("/u")
        super().tearDown()

    @classmethod
    def install(cls, *options):
        for dll in DLLS:
            cls.wine.run_well("regsvr32", "/s", "/n", *options, "/i:user", windows_path(SERVERS / dll))

    def test_the_classes_are_written_for_the_user_and_not_for_the_machine(self):
        self.install()
        self.assert_lines([line for line in EXPECTED if not line.startswith(WITH_THE_MACHINE)],
                          self.added(self.before_user, USER))
        self.assert_lines([line for line in EXPECTED if line.startswith(WITH_THE_MACHINE)], self.added(self.before))

    def test_unregistering_leaves_the_registry_byte_for_byte_as_it_was(self):
        self.install()
        self.assertNotEqual(self.before_user, self.wine.export(USER))
        self.install("/u")
        self.assert_unchanged(self.before_user, USER)
        self.assert_unchanged(self.before)


if __name__ == "__main__":
    unittest.main()

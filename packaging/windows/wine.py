"""Runs Windows programs in a Wine prefix of one's own, where nothing else is registered."""

import os
import pathlib
import subprocess
import tempfile

import registry_export

CLASSES = r"HKEY_LOCAL_MACHINE\Software\Classes"
USER = r"HKEY_CURRENT_USER\Software"


def windows_path(path):
    """Wine shows the whole file system as drive Z."""
    return "Z:" + str(pathlib.Path(path).resolve()).replace("/", "\\")


class Wine:
    """`runner` starts a program in the prefix that the variable KXJOB_WINEPREFIX names."""

    def __init__(self, runner, prefix):
        self.runner = str(pathlib.Path(runner).resolve())
        self.environment = dict(os.environ, KXJOB_WINEPREFIX=str(pathlib.Path(prefix).resolve()))

    def run(self, *arguments, folder=None):
        """The ended process; its status is the caller's to look at."""
        return subprocess.run([self.runner, *map(str, arguments)], cwd=folder, env=self.environment,
                              capture_output=True, text=True, check=False)

    def run_well(self, *arguments, folder=None):
        """What the program wrote; raises when it fails."""
        ended = self.run(*arguments, folder=folder)
        if ended.returncode != 0:
            raise RuntimeError(f"{arguments} ended with {ended.returncode}: {ended.stdout}{ended.stderr}")
        return ended.stdout

    def export(self, key=CLASSES):
        """All below a registry key, as bytes that are equal when the registry is."""
        with tempfile.TemporaryDirectory() as folder:
            self.run_well("regedit", "/E", "export.reg", key, folder=folder)
            return (pathlib.Path(folder) / "export.reg").read_bytes()

    def values(self, key=CLASSES):
        return registry_export.parse(self.export(key).decode("utf-16"))

    def register(self, dll):
        self.run_well("regsvr32", "/s", windows_path(dll))

    def unregister(self, dll):
        self.run_well("regsvr32", "/s", "/u", windows_path(dll))

"""Builds the library's tests once, then with one alteration at a time, and says what became of each."""

import concurrent.futures
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import tempfile

BUILD = pathlib.Path("build/mutants")
SECONDS = 60  # the tests take a few: what takes longer hangs, which is noticed


def configure_and_build():
    """As the preset `release` does, so that a compiler cache has most of it."""
    subprocess.run(["cmake", "--preset", "release", "-B", str(BUILD)], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", str(BUILD), "--parallel", str(os.cpu_count()), "--target", "ring_tests", "--",
                    "--quiet"], check=True)  # fmt: skip


def ninja_commands():
    done = subprocess.run(["ninja", "-C", str(BUILD), "-t", "commands", "ring_tests"], check=True, capture_output=True,
                          text=True)  # fmt: skip
    return done.stdout.splitlines()


class Trial:
    """How the altered library is compiled, linked and tested; many threads may use one at a time each.

    The build compiles the library's sources together; here each has an object of its own, without optimisation, so that one
    alteration costs one short compilation."""

    def __init__(self, sources):
        commands = ninja_commands()
        compiling = shlex.split(next(line for line in commands if "/kxjob_ring.dir/" in line and " -c " in line))
        dropped = {"-c", "-o", "-MD", "-MT", "-MF", "-O3", "-DNDEBUG"}
        self.compiling = ["g++", "-w"]
        for word, before in zip(compiling[1:], compiling):
            if word in dropped or before in ("-c", "-o", "-MT", "-MF") or word.endswith(("ccache", "/c++", "/g++")):
                continue
            self.compiling.append(word)
        link = next(line for line in commands if " -o bin/ring_tests" in line)
        words = shlex.split(re.sub(r"^: && (.*?) && .*$", r"\1", link))
        self.linking = [word for word in words if "/kxjob_ring.dir/" not in word]
        if shutil.which("mold"):
            self.linking.append("-fuse-ld=mold")
        self.objects = {}
        (BUILD / "ring").mkdir(exist_ok=True)
        for source in sources:
            if source.endswith(".cpp"):
                self.objects[source] = str((BUILD / "ring" / source.replace("/", "_")).resolve()) + ".o"
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            for source, compiles in zip(self.objects, pool.map(lambda one: self.compile(one, self.objects[one]), self.objects)):
                if not compiles:
                    raise RuntimeError(f"{source} does not compile")
        if not self.link(self.objects, BUILD / "ring_tests"):
            raise RuntimeError("the tests are not linked")

    def compile(self, source, output, first=None):
        """Headers of the folder `first` are found before the library's own."""
        command = list(self.compiling)
        if first:
            command.insert(1, f"-I{first}")
        source = str(pathlib.Path(source).resolve())
        return subprocess.run([*command, "-c", source, "-o", output], cwd=BUILD, capture_output=True, check=False).returncode == 0

    def link(self, objects, program):
        command = [*self.linking, *objects.values()]
        command[command.index("-o") + 1] = str(pathlib.Path(program).resolve())
        return subprocess.run(command, cwd=BUILD, capture_output=True, check=False).returncode == 0

    def verdict_on(self, path, altered):
        """'does not compile', 'noticed' or 'SURVIVED', for the library with another text in one file."""
        with tempfile.TemporaryDirectory(prefix="kxjob-mutant-") as scratch:
            folder = pathlib.Path(scratch)
            file = folder / path.removeprefix("src/")
            file.parent.mkdir(parents=True)
            file.write_text(altered, encoding="utf-8")
            objects = dict(self.objects)
            for source in [path] if path in objects else objects:  # any of them may include an altered header
                objects[source] = str(folder / source.replace("/", "_")) + ".o"
                if not self.compile(file if source == path else source, objects[source], first=folder):
                    return "does not compile"
            program = folder / "ring_tests"
            if not self.link(objects, program):
                return "does not compile"
            near = near_tests(path)
            for tests in [near, f"-{near}"] if near else ["*"]:
                if not passes(program, tests):
                    return "noticed"
            return "SURVIVED"


def near_tests(path):
    """The tests of the same folder: they are asked first."""
    folder = pathlib.Path("tests") / pathlib.Path(path).parts[1]
    suites = {
        suite
        for test in folder.glob("*_test.cpp")
        for suite in re.findall(r"^TEST(?:_F|_P)?\((\w+),", test.read_text(encoding="utf-8"), re.MULTILINE)
    }
    return ":".join(pattern for suite in sorted(suites) for pattern in (f"{suite}.*", f"*/{suite}.*"))


def passes(program, tests):
    command = [str(program), f"--gtest_filter={tests}", "--gtest_fail_fast", "--gtest_brief=1"]
    try:
        return subprocess.run(command, capture_output=True, timeout=SECONDS, check=False).returncode == 0
    except subprocess.TimeoutExpired:
        return False

"""Builds the library's tests once, then with one alteration at a time, and says what became of each."""

import concurrent.futures
import functools
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import tempfile

import switches

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

    The build compiles the library's sources together; here each has an object of its own, without optimisation."""

    def __init__(self, sources):
        commands = ninja_commands()
        compiling = shlex.split(next(line for line in commands if "/kxjob_ring.dir/" in line and " -c " in line))
        self.compiling = ["g++", "-w"]
        for word, before in zip(compiling[1:], compiling):
            named = before in ("-c", "-o", "-MT", "-MF") or word.endswith(("ccache", "/c++", "/g++"))
            if not named and word not in ("-c", "-o", "-MD", "-MT", "-MF", "-O3", "-DNDEBUG"):
                self.compiling.append(word)
        link = next(line for line in commands if " -o bin/ring_tests" in line)
        words = shlex.split(re.sub(r"^: && (.*?) && .*$", r"\1", link))
        self.linking = [word for word in words if "/kxjob_ring.dir/" not in word]
        if shutil.which("mold"):
            self.linking.append("-fuse-ld=mold")
        self.sources = [source for source in sources if source.endswith(".cpp")]
        self.program = BUILD / "ring_tests"
        self.objects = self.compile_all(BUILD / "ring")
        if not all(self.objects.values()) or not self.link(self.objects, self.program):
            raise RuntimeError("the library does not compile")

    def compile(self, source, output, *options):
        """Whether it compiles; what the compiler said otherwise is in the second place."""
        command = [self.compiling[0], *options, *self.compiling[1:], "-c", str(pathlib.Path(source).resolve()), "-o", output]
        done = subprocess.run(command, cwd=BUILD, capture_output=True, text=True, check=False)
        return done.returncode == 0, done.stderr

    def compile_all(self, folder):
        """{source: its object}"""
        folder.mkdir(exist_ok=True)
        objects = {source: str(folder.resolve() / source.replace("/", "_")) + ".o" for source in self.sources}
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            for source, (compiles, said) in zip(objects, pool.map(lambda one: self.compile(one, objects[one]), objects)):
                if not compiles:
                    raise RuntimeError(f"{source} does not compile:\n{said}")
        return objects

    def link(self, objects, program, *others):
        # The library's own come first: of an inline function in a header the first is taken.
        command = [self.linking[0], *objects.values(), *others, *self.linking[1:]]
        command[command.index("-o") + 1] = str(pathlib.Path(program).resolve())
        return subprocess.run(command, cwd=BUILD, capture_output=True, check=False).returncode == 0

    def build_switched(self, files):
        """Builds one program for the alterations of `files` ({file: (text, [(number, alteration)])}) that can be switched, and
        gives the numbers of these."""
        folder = BUILD / "switched"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        (folder / "switches.h").write_text(switches.DECLARATION, encoding="utf-8")
        (folder / "switches.cpp").write_text(switches.DEFINITION, encoding="utf-8")
        kept = {file: [one for one in numbered if switches.switch_of(one[1], one[0], text)]
                for file, (text, numbered) in files.items()}  # fmt: skip

        def write(file):
            place = folder / "src" / file.removeprefix("src/")
            place.parent.mkdir(parents=True, exist_ok=True)
            place.write_text(switches.switched(files[file][0], kept[file]), encoding="utf-8")
            return place

        for file in files:
            write(file)
        objects = dict(self.objects)

        def compile_switched(source):
            """Until it compiles: what stands in a line that the compiler refuses is not switched."""
            output = str((folder / source.replace("/", "_")).resolve()) + ".o"
            while True:
                place = write(source) if source in files else source
                compiles, said = self.compile(place, output, f"-I{(folder / 'src').resolve()}", "-include",
                                              str((folder / "switches.h").resolve()))  # fmt: skip
                if compiles:
                    return output
                refused = set(re.findall(r"([\w/.]+\.(?:cpp|h)):(\d+)(?::\d+)?: (?:error|note)", said))
                dropped = False
                for file in list(kept):
                    lines = {int(line) for name, line in refused if name.endswith(file.removeprefix("src/"))}
                    text = files[file][0]
                    staying = [one for one in kept[file] if not lines & set(lines_of(one[1], text))]
                    dropped = dropped or len(staying) < len(kept[file])
                    kept[file] = staying
                    if file.endswith(".h"):
                        write(file)
                if not dropped and not kept.get(source):
                    raise RuntimeError(said)
                if not dropped:
                    kept[source] = []

        headers = [file for file in files if file.endswith(".h")]
        wanted = self.sources if headers else [source for source in self.sources if source in files]
        for source in wanted:  # one after the other: what one drops of a header the others see
            objects[source] = compile_switched(source)
        for source in wanted if headers else []:
            objects[source] = compile_switched(source)
        chooser = str((folder / "chooser.o").resolve())
        self.compile(folder / "switches.cpp", chooser)
        if not self.link(objects, folder / "ring_tests", chooser):
            raise RuntimeError("the switched library is not linked")
        self.switched_program = folder / "ring_tests"
        return {number for numbered in kept.values() for number, _ in numbered}

    def verdict_on_switched(self, path, number):
        return verdict(self.switched_program, path, {**os.environ, "KXJOB_ALTERATION": str(number)})

    def verdict_on(self, path, altered):
        """The same for the library with another text in one file, compiled for it."""
        with tempfile.TemporaryDirectory(prefix="kxjob-mutant-") as scratch:
            folder = pathlib.Path(scratch)
            file = folder / path.removeprefix("src/")
            file.parent.mkdir(parents=True)
            file.write_text(altered, encoding="utf-8")
            objects = dict(self.objects)
            for source in [path] if path in objects else objects:  # any of them may include an altered header
                objects[source] = str(folder / source.replace("/", "_")) + ".o"
                if not self.compile(file if source == path else source, objects[source], f"-I{folder}")[0]:
                    return "does not compile"
            if not self.link(objects, folder / "ring_tests"):
                return "does not compile"
            return verdict(folder / "ring_tests", path, None)


def lines_of(alteration, text):
    first = alteration.line_in(text)
    return range(first, first + text.count("\n", alteration.start, alteration.end) + 1)


def verdict(program, path, environment):
    """'noticed' or 'SURVIVED'"""
    near = near_tests(path)
    for tests in [near, f"-{near}"] if near else ["*"]:
        if not passes(program, tests, environment):
            return "noticed"
    return "SURVIVED"


@functools.lru_cache
def near_tests(path):
    """The tests of the same folder: they are asked first."""
    folder = pathlib.Path("tests") / pathlib.Path(path).parts[1]
    suites = {
        suite
        for test in folder.glob("*_test.cpp")
        for suite in re.findall(r"^TEST(?:_F|_P)?\((\w+),", test.read_text(encoding="utf-8"), re.MULTILINE)
    }
    return ":".join(pattern for suite in sorted(suites) for pattern in (f"{suite}.*", f"*/{suite}.*"))


def passes(program, tests, environment=None):
    command = [str(program), f"--gtest_filter={tests}", "--gtest_fail_fast", "--gtest_brief=1"]
    try:
        return subprocess.run(command, capture_output=True, timeout=SECONDS, check=False, env=environment).returncode == 0
    except subprocess.TimeoutExpired:
        return False

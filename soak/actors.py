"""Those who use the store in a soak run. Each is a thread that does its part again and again until it is told to end."""

import contextlib
import json
import random
import signal
import subprocess
import threading
import time
import uuid

from store import is_lost_connection

ITEMS = 60
FAILING = 3  # of each job's items
JOB_SECONDS = 120  # in which a job must be done, outages included


class Gate:
    """Jobs are made by many at a time, or one sweeps: a sweep lists the jobs, and then removes the items of all others, so
    items of a job that is made in between would go."""

    def __init__(self):
        self.changed, self.makers, self.is_swept = threading.Condition(), 0, False

    @contextlib.contextmanager
    def making(self):
        with self.changed:
            self.changed.wait_for(lambda: not self.is_swept)
            self.makers += 1
        try:
            yield
        finally:
            with self.changed:
                self.makers -= 1
                self.changed.notify_all()

    @contextlib.contextmanager
    def sweeping(self):
        with self.changed:
            self.changed.wait_for(lambda: not self.is_swept)
            self.is_swept = True
            self.changed.wait_for(lambda: self.makers == 0)
        try:
            yield
        finally:
            with self.changed:
                self.is_swept = False
                self.changed.notify_all()


GATE = Gate()


class Actor(threading.Thread):
    def __init__(self, store, faults):
        super().__init__(daemon=True)
        self.store, self.faults, self.done = store, faults, 0
        self.told = threading.Event()

    def run(self):
        while not self.told.is_set():
            try:
                self.act()
                self.done += 1
            except Exception as error:  # a fault of the run, told at its end: the others go on
                self.faults.append(f"{type(self).__name__}: {error}")
                return

    def patient(self, *arguments, text=None):
        """Calls the command until the server is there; anything else that fails is a fault."""
        while True:
            done = self.store.run(*arguments, text=text)
            if done.returncode == 0:
                return done.stdout
            if not is_lost_connection(done.stderr):
                raise RuntimeError(f"kxjob {' '.join(arguments)}: {done.stderr}{done.stdout}")
            time.sleep(0.2)


class Creator(Actor):
    """Has one job at a time made and done; the next job of its type takes the place of the one before."""

    def __init__(self, store, faults, name):
        super().__init__(store, faults)
        self.type = f"SOAK_{name}"
        self.patient("type", "add", self.type, "--component", "Work_83.Worker")
        self.jobs = []

    def act(self):
        # A call whose connection is lost may have been done: each try has a job of its own.
        items = "".join(
            json.dumps({"identifier": f"item {number}", "data": "fail" if number < FAILING else "well done"}) + "\n"
            for number in range(ITEMS)
        )
        with GATE.making():
            job = self.patient("create", "--type", self.type, "--items", "-", "--format", "jsonl", text=items).strip()
        deadline = time.monotonic() + JOB_SECONDS
        while True:
            shown = json.loads(self.patient("show", job, "--json"))
            if shown["state"] == "COMPLETE":
                break
            if time.monotonic() > deadline:
                raise RuntimeError(f"{job} is not done after {JOB_SECONDS} seconds: {shown}\n{self.store.picture(job)}")
            time.sleep(0.1)
        self.jobs.append((job, ITEMS, FAILING))


class Stranger(Actor):
    """Makes jobs of application states that are neither of production nor of development: for the sweeper."""

    def __init__(self, store, faults):
        super().__init__(store, faults)
        self.patient("type", "add", "SOAK_STRANGE", "--component", "Work_83.Worker")

    def act(self):
        with GATE.making():
            self.patient("create", "--type", "SOAK_STRANGE", "--state", "{" + str(uuid.uuid4()).upper() + "}", *"abcdefgh")
        self.told.wait(0.3)


class Sweeper(Actor):
    def act(self):
        with GATE.sweeping():
            self.patient("sweep", "--yes")
        self.told.wait(1)


class Reader(Actor):
    """Looks at everything that there is to see."""

    def act(self):
        jobs = json.loads(self.patient("list", "--json"))["jobs"]
        self.patient("tasks", "--json")
        self.patient("history", "--json")
        if jobs:  # it may have been removed by the time that it is looked at
            job = random.choice(jobs)["job"]
            for look in ("show", "why", "stats", "items"):
                done = self.store.run(look, job, "--json")
                if done.returncode != 0 and not is_lost_connection(done.stderr) and self.store_has(job):
                    raise RuntimeError(f"kxjob {look} {job}: {done.stderr}{done.stdout}")
        self.told.wait(0.2)

    def store_has(self, job):
        return any(one["job"] == job for one in json.loads(self.patient("list", "--json"))["jobs"])


class Host:
    """One `kxjob work`, started again whenever it was killed."""

    def __init__(self, store, folder, name):
        self.store, self.log = store, folder / f"host-{name}.log"
        self.process = None
        self.start()

    def start(self):
        """A host that meets no server at its start ends with that error; it is started until it is at work."""
        while True:
            with open(self.log, "a", encoding="utf-8") as log:
                begin = log.tell()
                self.process = subprocess.Popen(
                    [self.store.command, "work", "--threads", "2", "--lease", "3", "--poll", "0.2", "--lot-limit", "20"],
                    env=self.store.environment, stdout=log, stderr=log)  # fmt: skip
            while self.process.poll() is None:
                if "Working with" in self.said_since(begin):
                    return
                time.sleep(0.05)
            if not is_lost_connection(self.said_since(begin)):
                raise RuntimeError(f"a host does not start: {self.said_since(begin)}")
            time.sleep(0.2)

    def said_since(self, place):
        with open(self.log, "rb") as log:
            log.seek(place)
            return log.read().decode("utf-8", "replace")

    def must_be_alive(self):
        if self.process.poll() is not None:
            raise RuntimeError(f"a host ended by itself with status {self.process.returncode}: {self.said_since(0)[-1000:]}")

    def kill_and_start(self):
        self.process.kill()
        self.process.wait()
        self.start()

    def end(self):
        self.process.send_signal(signal.SIGTERM)
        return self.process.wait(timeout=60)


class Killer(Actor):
    """Kills a host now and then; the first one is left alone: its memory is watched."""

    def __init__(self, store, faults, hosts, seconds):
        super().__init__(store, faults)
        self.hosts, self.seconds = hosts, seconds

    def act(self):
        if not self.told.wait(self.seconds * random.uniform(0.5, 1.5)):
            for host in self.hosts:
                host.must_be_alive()
            random.choice(self.hosts[1:]).kill_and_start()


class ServerKiller(Actor):
    """Kills the server, which is started again."""

    def __init__(self, store, faults, stores_script, seconds):
        super().__init__(store, faults)
        self.script, self.seconds = stores_script, seconds

    def act(self):
        if not self.told.wait(self.seconds):
            subprocess.run([self.script, "crash", "postgresql"], check=True, capture_output=True)

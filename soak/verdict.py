"""What must be true of a soak run, during it and after it."""

import pathlib
import statistics
import threading

from store import QUALIFIER


class Watch(threading.Thread):
    """Memory, handles and threads of a process that lives through the whole run, twice a second."""

    def __init__(self, pid):
        super().__init__(daemon=True)
        self.pid, self.seen, self.told = pid, [], threading.Event()
        self.growth = {}

    def run(self):
        while not self.told.wait(0.5):
            try:
                status = pathlib.Path(f"/proc/{self.pid}/status").read_text(encoding="ascii")
                handles = len(list(pathlib.Path(f"/proc/{self.pid}/fd").iterdir()))
            except OSError:
                return
            values = dict(line.split(":", 1) for line in status.splitlines())
            self.seen.append((int(values["VmRSS"].split()[0]), handles, int(values["Threads"])))

    def faults(self):
        """Growth from the second quarter, when all has been used once, to the last."""
        quarter = len(self.seen) // 4
        if quarter < 10:
            return [f"the host was seen {len(self.seen)} times only"]
        found = []
        for name, unit, allowed, place in (("memory", "KiB", 2048, 0), ("handles", "", 2, 1), ("threads", "", 1, 2)):
            early, late = (statistics.median(one[place] for one in part)
                           for part in (self.seen[quarter : 2 * quarter], self.seen[-quarter:]))  # fmt: skip
            self.growth[name] = f"{early:.0f} to {late:.0f} {unit}".strip()
            if late > early * 1.05 + allowed:
                found.append(f"{name} of a host grew from {early} to {late} {unit}")
        return found


def of_jobs(store, creators):
    """Every job that a creator saw done was done: each of its items ended once, as it had to."""
    found = []
    ends = {}
    for job, item, state in store.sql("SELECT jobguid, jobitemguid, stateid FROM soak_ends"):
        ends.setdefault(job, []).append((item, state))
    for job, items, failing in (job for creator in creators for job in creator.jobs):
        of_job = ends.get(job, [])
        if len(of_job) != items or len({item for item, _ in of_job}) != items:
            found.append(f"{job}: {len(of_job)} ends of {len({item for item, _ in of_job})} items, there are {items}")
        if sum(state == "FAILED" for _, state in of_job) != failing:
            found.append(f"{job}: {sum(state == 'FAILED' for _, state in of_job)} failed, {failing} had to")
    twice = sum(len(of_job) - len({item for item, _ in of_job}) for of_job in ends.values())
    if twice:
        found.append(f"{twice} items of all jobs ended twice")
    return found


# Each gives the rows that must not be there.
NOT_ALLOWED = {
    "a job's counters differ from its items": f"""
        SELECT j.jobguid, j.totalitemcount, j.succeededitemcount, j.faileditemcount, count(i.jobitemguid)
        FROM {QUALIFIER}job j JOIN {QUALIFIER}JobItem i ON i.jobguid = j.jobguid WHERE j.jobstateid = 'COMPLETE'
        GROUP BY j.jobguid
        HAVING count(*) <> j.totalitemcount
            OR count(*) FILTER (WHERE i.jobitemstateid = 'COMPLETE') <> j.succeededitemcount
            OR count(*) FILTER (WHERE i.jobitemstateid = 'FAILED') <> j.faileditemcount""",
    "an item is in no job": f"""
        SELECT jobitemguid FROM {QUALIFIER}JobItem i
        WHERE NOT EXISTS (SELECT 1 FROM {QUALIFIER}job j WHERE j.jobguid = i.jobguid)""",
    "a job of a strange state was left": f"""
        SELECT jobguid FROM {QUALIFIER}job WHERE jobtypeid = 'SOAK_STRANGE'""",
}


def of_rows(store):
    return [f"{what}: {row}" for what, sql in NOT_ALLOWED.items() for row in store.sql(sql)]

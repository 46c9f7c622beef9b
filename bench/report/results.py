"""What the benchmark program measured: one row a benchmark, read from its JSON."""

import json


class Row:
    """A benchmark: its name's parts, and its counters by name."""

    def __init__(self, result):
        parts = result["name"].removesuffix("/manual_time").split("/")
        self.parts = [part for part in parts if not part.startswith("iterations:")]
        self.kind, self.engine, self.subject = self.parts[0], self.parts[1], "/".join(self.parts[2:])
        self.counters = {
            name: value for name, value in result.items() if isinstance(value, (int, float)) and name not in OWN_FIGURES
        }
        self.error = result.get("error_message", "")

    def get(self, counter):
        return self.counters.get(counter)

    def wishes(self):
        """What is wanted of this row: (text, whether it is so)."""
        found = []
        for counter, limit, sign in WISHES:
            value, wanted = self.get(counter), self.get(limit)
            if value is not None and wanted is not None:
                what = "" if counter == "ratio" else counter + " "
                found.append((f"{what}{sign} {wanted:g}", value <= wanted if sign == "<=" else value >= wanted))
        return found


WISHES = [("ratio", "at_most", "<="), ("ratio", "at_least", ">="), ("bytes_per_row", "bytes_at_most", "<=")]

# Google Benchmark's own.
OWN_FIGURES = {
    "cpu_time", "family_index", "iterations", "per_family_instance_index", "real_time",
    "repetition_index", "repetitions", "threads",
}


def read(path):
    """All rows, and what is known about the run."""
    with open(path, encoding="utf-8") as file:
        document = json.load(file)
    runs = [result for result in document["benchmarks"] if result["run_type"] == "iteration"]
    return [Row(result) for result in runs], document["context"]

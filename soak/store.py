"""The store of a soak run: how the command is called on it, and what only its own SQL can tell."""

import os
import re
import subprocess

QUALIFIER = "soak_"
# Notes each end of an item by itself, whatever the command's counters say.
WITNESS = f"""
CREATE TABLE soak_ends (jobguid text, jobitemguid text, stateid text, noted timestamptz DEFAULT clock_timestamp());
CREATE FUNCTION soak_note_end() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
    INSERT INTO soak_ends (jobguid, jobitemguid, stateid) VALUES (NEW.jobguid, NEW.jobitemguid, NEW.jobitemstateid);
    RETURN NULL;
END $$;
CREATE TRIGGER soak_note_end AFTER UPDATE OF jobitemstateid ON {QUALIFIER}JobItem FOR EACH ROW
    WHEN (OLD.jobitemstateid IS DISTINCT FROM NEW.jobitemstateid AND NEW.jobitemstateid IN ('COMPLETE', 'FAILED'))
    EXECUTE FUNCTION soak_note_end();
"""


class Store:
    def __init__(self, command, component, folder):
        self.command = command
        self.connection = os.environ["KXJOB_POSTGRESQL"]
        keys = dict(part.split("=", 1) for part in self.connection.strip(";").split(";"))
        self.psql = ["psql", "-X", "-q", "-A", "-t", "-v", "ON_ERROR_STOP=1", "-h", keys["Server"], "-p", keys["Port"],
                     "-U", keys["UID"], "-d", keys["Database"]]  # fmt: skip
        configuration = folder / "kxjob.conf"
        configuration.write_text(
            f"ADOConnectionString = {self.connection}\nProvider = 3\nNameSpaceQualifier = {QUALIFIER}\n"
            f"component.Work_83.Worker.library = {component}\nlog.file = {folder / 'kxjob.log'}\nlog.level = 1\n",
            encoding="utf-8",
        )
        self.environment = {**os.environ, "PGPASSWORD": keys["PWD"], "KXJOB_CONFIG": str(configuration)}

    def make(self):
        self.must("init")
        self.sql(WITNESS)

    def run(self, *arguments, text=None):
        return subprocess.run([self.command, *arguments], env=self.environment, input=text, text=True,
                              capture_output=True, check=False)  # fmt: skip

    def must(self, *arguments):
        done = self.run(*arguments)
        if done.returncode != 0:
            raise RuntimeError(f"kxjob {' '.join(arguments)}: {done.stderr}")
        return done.stdout

    def sql(self, statements):
        """The rows of the last statement, each a list of texts."""
        done = subprocess.run(self.psql, env=self.environment, input=statements, text=True, capture_output=True,
                              check=True)  # fmt: skip
        return [line.split("|") for line in done.stdout.splitlines()]

    def picture(self, job):
        """What the store says of a job now, and who is at work on the server, as lines of JSON: to look into a fault."""
        rows = [f"SELECT to_json(j) FROM {QUALIFIER}job j WHERE jobguid = '{job}'",
                f"SELECT to_json(t) FROM {QUALIFIER}jobtask t",
                f"SELECT to_json(s) FROM (SELECT jobitemstateid, jobtaskguid, count(*) FROM {QUALIFIER}JobItem"
                f" WHERE jobguid = '{job}' GROUP BY 1, 2) s",
                "SELECT to_json(a) FROM (SELECT now(), pid, state, wait_event, xact_start, left(query, 200) AS query"
                " FROM pg_stat_activity WHERE datname = current_database()) a"]  # fmt: skip
        return "\n".join("|".join(row) for sql in rows for row in self.sql(sql))


def is_lost_connection(message):
    """Whether a message of the command tells that the server was not there: SQLSTATE class 08, or a server that goes or comes."""
    return re.search(r"\[(08\w{3}|57P0\d|HYT00)\]|could not be opened", message) is not None

"""Databases of their own for a measurement: a SQLite file and a PostgreSQL cluster."""

import contextlib
import os
import pathlib
import pwd
import shutil
import signal
import subprocess
import tempfile
import time

PROGRAMS = pathlib.Path("/usr/lib/postgresql")
SERVER_USERS = ("postgres", "nobody")
START_SECONDS = 60


class Sqlite:
    name = "SQLite"

    def __init__(self, folder):
        self.file = folder / "load.db"
        self.target = f"sqlite:{self.file}"

    def query(self, sql):
        return run("sqlite3", "-bail", self.file, sql)

    def empty(self, tables):
        self.file.unlink(missing_ok=True)
        self.query("; ".join(tables.values()))

    def own_load(self, file, tables):
        imports = [f".import '{file}' {table}" for table in tables]
        return ["sqlite3", "-bail", self.file, "PRAGMA foreign_keys = ON", ".mode csv", *imports]


class Postgresql:
    name = "PostgreSQL"

    def __init__(self, folder):
        self.connection = f"host={folder} user=korvex dbname=postgres"
        self.target = f"postgresql:{self.connection}"

    def query(self, sql):
        return run("psql", "-XAtq", "-v", "ON_ERROR_STOP=1", self.connection, "-c", sql)

    def empty(self, tables):
        drop = ", ".join(tables)
        self.query(f"DROP TABLE IF EXISTS {drop} CASCADE; {'; '.join(tables.values())}; CHECKPOINT")

    def own_load(self, file, tables):
        copies = [f"\\copy {table} FROM '{file}' (FORMAT csv)" for table in tables]
        return ["psql", "-Xq", self.connection, *(word for copy in copies for word in ("-c", copy))]


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()


def server_programs():
    """The newest version's folder of programs, or None."""
    folders = [path.parent for path in PROGRAMS.glob("*/bin/initdb")]
    return max(folders, key=lambda folder: int(folder.parent.name)) if folders else None


def server_user():
    """Whom the server may run as: it refuses root."""
    if os.geteuid() != 0:
        return None
    names = [user.pw_name for user in pwd.getpwall()]
    return next(name for name in SERVER_USERS if name in names)


@contextlib.contextmanager
def postgresql():
    """A cluster at a socket in a folder of its own, or None where there are no programs."""
    programs = server_programs()
    if programs is None:
        yield None
        return
    user = server_user()
    options = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, "cwd": "/"}
    if user:
        options |= {"user": user, "group": pwd.getpwnam(user).pw_gid, "extra_groups": []}
    with tempfile.TemporaryDirectory(prefix="korvex-bench-") as folder:
        if user:
            shutil.chown(folder, user)
        data = f"{folder}/data"
        subprocess.run(
            [programs / "initdb", "-D", data, "-U", "korvex", "-A", "trust", "-E", "UTF8"],
            check=True,
            **options,
        )
        server = subprocess.Popen(
            [programs / "postgres", "-D", data, "-k", folder, "-c", "listen_addresses="], **options
        )
        try:
            database = Postgresql(folder)
            wait_until_ready(database)
            yield database
        finally:
            server.send_signal(signal.SIGINT)
            server.wait()


def wait_until_ready(database):
    end = time.monotonic() + START_SECONDS
    while True:
        try:
            database.query("SELECT 1")
            return
        except subprocess.CalledProcessError:
            if time.monotonic() > end:
                raise
            time.sleep(0.05)

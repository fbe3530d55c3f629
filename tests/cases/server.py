"""Databases that stories work on, asked through their own command lines."""

import glob
import os
import pwd
import shutil
import signal
import subprocess
import tempfile
import time

START_SECONDS = 60


def ask(words, sql):
    """The rows, with "|" between fields; RuntimeError with what the database says of wrong SQL."""
    done = subprocess.run(words, input=sql, capture_output=True, check=False)
    if done.returncode != 0 or done.stderr.startswith(b"ERROR"):
        raise RuntimeError(done.stderr.decode(errors="replace"))
    return done.stdout


class SqliteFile:
    def __init__(self, path):
        self.target = "sqlite:" + path
        self.session = ["sqlite3", "-bail", path]

    def query(self, sql):
        return ask(self.session, sql)


class PostgresqlDatabase:
    def __init__(self, folder, name):
        self.target = f"postgresql:host={folder} user=korvex dbname={name}"
        self.session = [os.path.join(find_programs(), "psql"), "-XAtq", "-v", "ON_ERROR_STOP=1", "-h", folder, "-U",
                        "korvex", "-d", name]

    def query(self, sql):
        return ask(self.session, sql)


def find_programs():
    """Debian keeps the programs of each version in a folder of its own, outside of the path."""
    return next((os.path.dirname(path) for path in sorted(glob.glob("/usr/lib/postgresql/*/bin/postgres"))), None)


class Server:
    """A cluster in a folder of its own, reached through a socket in it and not through the network."""

    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="korvex-server-")
        user = {}
        if os.geteuid() == 0:  # the server refuses to run as root
            owner = pwd.getpwnam("postgres")
            user = {"user": owner.pw_uid, "group": owner.pw_gid, "extra_groups": []}
            os.chown(self.folder, owner.pw_uid, owner.pw_gid)
        programs, data = find_programs(), os.path.join(self.folder, "data")
        with open(os.path.join(self.folder, "log"), "wb") as log:
            streams = {"stdin": subprocess.DEVNULL, "stdout": log, "stderr": log, "cwd": self.folder}
            subprocess.run([programs + "/initdb", "-D", data, "-U", "korvex", "-A", "trust", "-E", "UTF8",
                            "--locale=C", "--no-sync"], check=True, **streams, **user)
            self.process = subprocess.Popen([programs + "/postgres", "-D", data, "-k", self.folder, "-c",
                                             "listen_addresses=", "-c", "fsync=off"], **streams, **user)
        self.wait_until_ready()

    def wait_until_ready(self):
        end = time.monotonic() + START_SECONDS
        while True:
            try:
                PostgresqlDatabase(self.folder, "postgres").query(b"SELECT 1")
                return
            except RuntimeError:
                if time.monotonic() > end or self.process.poll() is not None:
                    self.stop()
                    raise
                time.sleep(0.05)

    def new_database(self, name):
        return new_database(self.folder, name)

    def stop(self):
        self.process.send_signal(signal.SIGINT)  # a fast shutdown
        self.process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)


class RunningServer:
    def __init__(self, folder):
        self.folder = folder

    def new_database(self, name):
        return new_database(self.folder, name)

    def stop(self):
        """Others need it still."""


def new_database(folder, name):
    PostgresqlDatabase(folder, "postgres").query(f"CREATE DATABASE {name} TEMPLATE template0".encode())
    return PostgresqlDatabase(folder, name)


def running(place):
    """The server that start_for_others has started, if it runs."""
    try:
        with open(place, encoding="utf-8") as file:
            return RunningServer(file.read())
    except (OSError, TypeError):
        return None


def start_for_others(place):
    """Starts a server that goes on until stop_for_others, or the end of the process that called this one."""
    if not find_programs():
        return 0
    caller = os.getppid()
    if os.path.exists(place):
        os.remove(place)
    if os.fork() == 0:
        os.setsid()
        null = os.open(os.devnull, os.O_RDWR)
        for stream in range(3):
            os.dup2(null, stream)
        try:
            server = Server()
            with open(place + ".new", "w", encoding="utf-8") as file:
                file.write(server.folder)
            os.rename(place + ".new", place)
            while os.path.exists(place) and os.path.exists(f"/proc/{caller}"):
                time.sleep(0.2)
            server.stop()
        finally:
            os._exit(0)
    end = time.monotonic() + START_SECONDS
    while not os.path.exists(place):
        if time.monotonic() > end:
            print("the PostgreSQL server does not start")
            return 1
        time.sleep(0.05)
    return 0


def stop_for_others(place):
    if os.path.exists(place):
        os.remove(place)
    return 0

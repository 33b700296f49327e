#!/usr/bin/env python3
"""Programs as hosts of the component, under Wine: scripts that call it by name and a program in C++ that calls it by
slot. Each carries the demo account set into 2006, and every table of its databases has to hold the rows that the program
for Linux writes.

A host ends with a line of its own, since the script host may keep silent about an error.
"""
import argparse
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
DATABASES = ["TqSystem", "TqData_001_2005", "TqData_001_2006"]
# What each script has to say, in this order.
EXPECTED = {
    "transfer.js": ["returned true", "reached its end true", "services' year 2006", "refused true"],
    "transfer.vbs": ["returned True", "message came back True", "parameters came back True", "reached its end True",
                     "nothing was reported True", "an amount is a currency True"],
    "services.js": ["returned true", "reached its end true", "same object true", "asked for codes true",
                    "one transaction true", "statements true", "asked for texts true", "asked for customers true", "failure arrives true"],
    "services.vbs": ["returned True", "reached its end True", "marked 205 GL 2005 True;", "asked True"],
}
MESSAGES = json.loads((HERE / "../../data/messages/zh-CN.json").read_text(encoding="utf-8"))
SUCCESS, NO_SERVICES = MESSAGES["Orvo.GL.TqGLJZ.00310"], MESSAGES["Orvo.GL.TqGLJZ.00001"]
DRIVER_EXPECTED = {
    "transfer": ["Transfer returned true", f"message {SUCCESS}", "parameters came back", "getTransferMsg returned true",
                 "it says "],
    "transgl": ["TransGL returned true", f"message {SUCCESS}", "getTransferMsg returned true", "it says "],
    # A process that has run nothing has no services that know a text: the component's own table serves.
    "fresh": ["getTransferMsg returned false", "it says ",
              "StartJz returned false", "getTransferMsg returned false", "it says ",
              "Transfer returned false", "message ", "no parameters", "getTransferMsg returned false",
              f"it says {NO_SERVICES}",
              "StartJz returned false",
              "StartJz failed with 0x800A005B", "source TqGLJZ", "description Object not set: connection of the closing year",
              "getTransferMsg returned false", f"it says {NO_SERVICES}"],
    # The run state lives as long as the process.
    "unloading": ["a class factory is held: it stays", "nothing is held: it may go", "a reference host lives: it stays",
                  "nothing lives: it may go", "a clsGLJZ has lived: it stays"],
}


def windows(path):
    """The path as a program under Wine sees it."""
    return "Z:" + str(path).replace("/", "\\")


def slashes(path):
    """The same for a server's address."""
    return "Z:" + str(path)


class Checks:
    def __init__(self, arguments):
        self.arguments = arguments
        self.failures = 0

    def fail(self, text):
        self.failures += 1
        print("FAILED: " + text)

    def run_wine(self, *command):
        return subprocess.run([self.arguments.wine, *command], capture_output=True, encoding="utf-8",
                              errors="replace", timeout=300, check=False)

    def register(self, *options):
        done = self.run_wine("regsvr32.exe", "/s", *options, windows(self.arguments.component))
        if done.returncode != 0:
            self.fail(f"regsvr32 {' '.join(options)} answers {done.returncode}")

    def run_host(self, name, expected, *command):
        done = self.run_wine(*command)
        # Blanks belong to a text, line ends do not.
        lines = done.stdout.replace("\r", "").splitlines()
        if done.returncode != 0 or lines != expected + [f"end of {name}"]:
            self.fail(f"{name} ends in {done.returncode} and says\n  " + "\n  ".join(lines) + "\n" + done.stderr +
                      "instead of\n  " + "\n  ".join(expected))

    def run_script(self, name, folder, expected):
        self.run_host(name, expected, "cscript.exe", "//nologo", windows(HERE / "scripts" / name), slashes(folder))

    def run_driver(self, entry, folder):
        self.run_host(entry, DRIVER_EXPECTED[entry], windows(self.arguments.driver), entry, slashes(folder))

    def carry_on_linux(self, command, folder, *options):
        """The rows that the program for Linux leaves."""
        done = subprocess.run([self.arguments.program, command, "--server", f"embedded:{folder}", "--account", "001",
                               "--from", "2005", "--to", "2006", *options, "--today", "2006-01-15", "--format", "json"],
                              capture_output=True, text=True, stdin=subprocess.DEVNULL, check=False)
        if done.returncode not in (0, 4):
            self.fail(f"{command} for Linux ends in {done.returncode}: {done.stderr}")
        return self.rows(folder)

    def query(self, folder, database, sql):
        """The result sets of a batch, each a list of rows."""
        done = subprocess.run([self.arguments.program, "sql", "--server", f"embedded:{folder}", "--database", database,
                               "--format", "json", "-q", sql], capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise RuntimeError(f"{database}: {sql}\n{done.stderr}")
        decoder, text, at, sets = json.JSONDecoder(), done.stdout, 0, []
        while text[at:].strip():
            at += len(text[at:]) - len(text[at:].lstrip())
            found, at = decoder.raw_decode(text, at)
            sets.append(found)
        return sets

    def rows(self, folder):
        """Every row of every table of the server."""
        all_rows = {}
        for database in DATABASES:
            names = [row["name"] for row in
                     self.query(folder, database, "select name from sysobjects where xtype='U' order by name")[0]]
            sets = self.query(folder, database, "\n".join(f"select * from [{name}]" for name in names))
            if len(sets) != len(names):
                raise RuntimeError(f"{database}: {len(names)} tables, {len(sets)} answers")
            for name, found in zip(names, sets):
                all_rows[f"{database}..{name}"] = sorted(json.dumps(row, ensure_ascii=False) for row in found)
        return all_rows

    def compare(self, name, linux, other):
        if linux.keys() != other.keys():
            self.fail(f"{name}: other tables: {sorted(linux.keys() ^ other.keys())}")
        for table, rows in linux.items():
            found = other.get(table, [])
            if rows == found:
                continue
            missing = [row for row in rows if row not in found]
            more = [row for row in found if row not in rows]
            self.fail(f"{name}: {table} differs: {len(missing)} rows are missing, {len(more)} are new\n"
                      f"  Linux: {missing[:2]}\n  here:  {more[:2]}")

    def run(self, work):
        demo = work / "demo"

        def copy(name):
            folder = work / name
            shutil.copytree(demo, folder)
            return folder

        self.register()
        self.run_script("make_demo.js", demo, [])
        before = self.rows(demo)
        transfer = self.carry_on_linux("transfer", copy("linux-transfer"))
        transgl = self.carry_on_linux("transgl", copy("linux-transgl"), "--from-db", "TqData_001_2005", "--to-db",
                                      "TqData_001_2006")
        if before in (transfer, transgl):
            self.fail("a carry-forward for Linux has changed nothing: there is nothing to compare")
        for name, lines in EXPECTED.items():
            folder = copy(name)
            self.run_script(name, folder, lines)
            self.compare(name, transfer, self.rows(folder))
        for entry, expected in (("transfer", transfer), ("transgl", transgl), ("fresh", before), ("unloading", before)):
            folder = copy(f"driver-{entry}")
            self.run_driver(entry, folder)
            self.compare(f"driver {entry}", expected, self.rows(folder))
        self.register("/u")
        if self.run_wine("reg.exe", "query", "HKCR\\TqGLJZ.clsGLJZ").returncode == 0:
            self.fail("the program id is still there after unregistering")
        rows = sum(len(table) for table in transfer.values())
        print(f"{len(EXPECTED)} scripts, {len(DRIVER_EXPECTED)} runs of the driver, {len(transfer)} tables, {rows} rows")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--wine", required=True)
    parser.add_argument("--component", required=True, type=pathlib.Path)
    parser.add_argument("--driver", required=True, type=pathlib.Path)
    parser.add_argument("--program", required=True, help="gljz for this machine")
    arguments = parser.parse_args()
    if not os.access(arguments.program, os.X_OK):
        sys.exit(f"{arguments.program} is not there: ./run test or ./run test-windows builds it")
    checks = Checks(arguments)
    with tempfile.TemporaryDirectory(prefix="gljz-scripts-") as work:
        checks.run(pathlib.Path(work))
    sys.exit(1 if checks.failures else 0)


if __name__ == "__main__":
    main()

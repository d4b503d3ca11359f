#!/usr/bin/env python3
"""Puts single faults into the library, one at a time, and tells which of them the tests notice.

    tests/mutate/mutate.py [--list FILE] [--only TEXT] [--filter GTEST_FILTER] [--from N]

FILE (faults.txt beside this script) has lines `file | text | text that takes its place`, parts
between " | ", a bar in code as \\|; the text stands in the file exactly once, and (nothing) takes
its place when it only goes. Lines that start with # name areas, empty ones mean nothing. Files are
put back as they were, also after an interruption. The build folder is build/mutate. Faults in what
draws are for draw_test.py to notice, all others for the tests in C++.

Prints a line for each fault, and a table of the areas: killed and all. Exits with 1 when a text
isn't found or a fault doesn't compile.
"""
import argparse
import collections
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "build" / "mutate"
DRAWING = "tools/draw/"  # in the tool alone, and tried by tests/draw_test.py
# Thousands of damaged and random documents take longer than all other tests together.
FILTER = "-*Damage*:RandomTemplates.*:RandomOlder*:LargeCharts.*:Model.KeepsIds*"


def faults(path):
    area = ""
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("#"):
            area = line[1:].strip()
        elif line.strip():
            file, old, new = (part.replace("\\|", "|") for part in line.split(" | "))
            yield area, file, old, "" if new == "(nothing)" else new


def run(*command, timeout=None):
    try:
        return subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True, errors="replace", timeout=timeout)
    except subprocess.TimeoutExpired:
        return None


def build(file=""):
    target = "chartxml_tool" if file.startswith(DRAWING) else "chartxml_tests"
    return run("cmake", "--build", str(BUILD), "--target", target).returncode == 0


def verdict(test_filter, file=""):
    if file.startswith(DRAWING):
        tests = run(sys.executable, str(ROOT / "tests/draw_test.py"), str(BUILD / "bin" / "chartxml"))
        failed = re.search(r"^(?:FAIL|ERROR): (\w+)", tests.stdout, re.MULTILINE)
        return f"killed by draw_test.py {failed.group(1)}" if failed else "SURVIVED"
    tests = run(str(BUILD / "bin" / "chartxml_tests"), "--gtest_brief=1", "--gtest_fail_fast",
                "--gtest_filter=" + test_filter, timeout=600)
    if tests is None:
        return "killed by its time"
    if tests.returncode == 0:
        return "SURVIVED"
    failed = re.search(r"\[  FAILED  \] ([^\s,]+)", tests.stdout)
    return "killed by " + (failed.group(1) if failed else "a crash")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--list", type=pathlib.Path,
                        default=pathlib.Path(__file__).with_name("faults.txt"))
    parser.add_argument("--only", default="", help="faults whose line holds this text")
    parser.add_argument("--filter", default=FILTER)
    parser.add_argument("--from", type=int, default=1, dest="first")
    arguments = parser.parse_args()
    configured = run("cmake", "-S", ".", "-B", str(BUILD), "-G", "Ninja",
                     "-DCMAKE_BUILD_TYPE=Release", "-DCHARTXML_WERROR=OFF")
    if configured.returncode or not build():
        sys.exit("the library doesn't build")
    if verdict(arguments.filter) != "SURVIVED":
        sys.exit("tests fail without any fault")
    table = collections.OrderedDict()
    broken = 0
    for number, (area, file, old, new) in enumerate(faults(arguments.list), 1):
        if number < arguments.first or arguments.only not in f"{file} | {old} | {new}":
            continue
        path = ROOT / file
        text = path.read_text(encoding="utf-8")
        if text.count(old) != 1:
            result = f"found {text.count(old)} times"
        else:
            try:
                path.write_text(text.replace(old, new), encoding="utf-8")
                result = verdict(arguments.filter, file) if build(file) else "doesn't compile"
            finally:
                path.write_text(text, encoding="utf-8")
        killed = result.startswith("killed")
        broken += not killed and result != "SURVIVED"
        counts = table.setdefault(area, [0, 0])
        counts[0] += killed
        counts[1] += 1
        print(f"{number}: {result}: {file}: {old} -> {new}", flush=True)
    build()
    if (BUILD / "bin" / "chartxml").exists():
        build(DRAWING)
    print()
    for area, (killed, count) in table.items():
        print(f"| {area} | {killed} | {count} |")
    print(f"| all | {sum(k for k, _ in table.values())} | {sum(n for _, n in table.values())} |")
    sys.exit(1 if broken else 0)


if __name__ == "__main__":
    main()

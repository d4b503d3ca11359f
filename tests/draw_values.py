"""draw_values.py FOLDER SCHEMA: holds the plots in a folder against Vega-Lite's schema, and
what Vega computed (values.txt) against what the examples' data say.

Needs python3-jsonschema; without it the schema isn't looked at, which is told.
"""
import collections
import glob
import json
import math
import os
import sys
import xml.etree.ElementTree as ET

folder, schema = sys.argv[1:]
EXAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "examples")
problems = []


def shortened(node):
    """Rows are all alike, and there are many."""
    if isinstance(node, dict):
        return {key: shortened(value) for key, value in node.items()}
    if isinstance(node, list):
        isRows = len(node) > 2 and all(isinstance(row, dict) and "mark" not in row for row in node[:3])
        keep = node[:2] if isRows and not any(
            key in row for row in node for key in ("layer", "vconcat", "hconcat", "aggregate", "op",
                                                   "calculate", "filter", "title")) else node
        return [shortened(value) for value in keep]
    return node


def check_schema():
    try:
        import jsonschema
    except ImportError:
        print("python3-jsonschema is missing: the plots aren't held against the schema")
        return
    with open(schema, encoding="utf-8") as file:
        rules = json.load(file)
    validator = jsonschema.validators.validator_for(rules)(rules)
    for name in sorted(glob.glob(folder + "/*.json")):
        with open(name, encoding="utf-8") as file:
            spec = json.load(file)
        spec["datasets"] = {key: rows[:2] for key, rows in spec["datasets"].items()}
        error = next(validator.iter_errors(shortened(spec)), None)
        if error:
            error = jsonschema.exceptions.best_match([error])
            problems.append(f"{name}: {list(error.absolute_path)}: {error.message[:200]}")


def rows_of(example):
    root = ET.parse(os.path.join(EXAMPLES, example + ".xml")).getroot()
    space = {"v": "http://xml.tavo.example/visualization"}
    source = root.find("v:embeddedSource", space)
    names = source.find("v:names", space).text.split(";")
    labels = {(variable.get("id"), rule.get("from")): rule.get("to")
              for variable in root.iterfind("v:sourceVariable", space)
              for rule in variable.iterfind("v:format/v:relabel", space)}
    return [dict(zip(names, row.text.split(";"))) for row in source.iterfind("v:row", space)], labels


def mean(values):
    return sum(values) / len(values)


def expected():
    groups = collections.defaultdict(list)
    rows, labels = rows_of("clustered-bars")
    for row in rows:
        if row["minutes"]:
            key = (labels["cityVar", row["city"]], labels["modeVar", row["mode"]])
            groups[("none.clustered-bars.json", *key)].append(float(row["minutes"]))
    rows, labels = rows_of("dose-response")
    for row in rows:
        if row["mort"]:
            groups["none.dose-response.json", row["dose"]].append(float(row["mort"]))
    result = {key: mean(values) for key, values in groups.items()}
    rows, labels = rows_of("histogram")
    counts = collections.Counter()
    for row in rows:
        if row["рост"] and row["пол"]:
            low = 140 + 2.5 * math.floor((float(row["рост"]) - 140) / 2.5)
            counts["none.histogram.json", f"{low:g}", labels["пол", row["пол"]]] += float(row["$WEIGHT"] or 0)
    return {**result, **counts}


def check_values():
    found = {}
    with open(folder + "/values.txt", encoding="utf-8") as file:
        for line in file:
            *key, value = line.rstrip("\n").split("\t")
            if value not in ("", "null", "undefined", "NaN") and len(key) > 1 and "" not in key:
                found[tuple(key)] = float(value)
    wanted = expected()
    for key in sorted(set(wanted) | set(found)):
        a, b = wanted.get(key), found.get(key)
        if a is None or b is None or not math.isclose(a, b, rel_tol=1e-9):
            problems.append(f"{key}: Vega has {b}, the data {a}")
    print(f"{len(wanted)} values compared")


check_schema()
check_values()
print("\n".join(problems[:20]))
sys.exit(1 if problems else 0)

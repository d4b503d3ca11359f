#!/usr/bin/env python3
"""maketree.py: writes the example models beside it, PMML 2.1 trees grown by CART on simulated data.

A node is split where that lowers the impurity most: Gini's for a category, the sum of squares for a
number. Splits are of the form "at most" for numbers and "one of" for categories. Growing ends at a
smallest node, and where a split gains too little of the whole tree's impurity. The same seeds give
the same files.
"""
import math
import pathlib
import random
from xml.sax.saxutils import escape, quoteattr

NAMESPACE = "http://www.dmg.org/PMML-2_1"


class Field:
    def __init__(self, name, label, values=None):
        self.name, self.label, self.values = name, label, values  # values of categories only


class Gini:
    """Counts of each class; the impurity is the count times Gini's index."""

    def __init__(self):
        self.count, self.counts, self.squares = 0, {}, 0

    def add(self, value, sign=1):
        before = self.counts.get(value, 0)
        self.counts[value] = before + sign
        self.squares += sign * 2 * before + 1
        self.count += sign

    def impurity(self):
        return self.count - self.squares / self.count if self.count else 0

    def score(self):
        return max(sorted(self.counts), key=self.counts.get)

    def order(self, first):
        """Where a category stands among others: by its share of the first class."""
        return self.counts.get(first, 0) / self.count


class Squares:
    """Sums of a number; the impurity is the sum of squares around the mean."""

    def __init__(self):
        self.count, self.total, self.squares = 0, 0.0, 0.0

    def add(self, value, sign=1):
        self.count += sign
        self.total += sign * value
        self.squares += sign * value * value

    def impurity(self):
        return self.squares - self.total * self.total / self.count if self.count else 0

    def score(self):
        return self.total / self.count

    def order(self, _):
        return self.total / self.count


class Tree:
    def __init__(self, fields, target, rows, least, gain):
        self.fields, self.target, self.least = fields, target, least
        self.measure = Gini if target.values else Squares
        whole = self.measured(rows)
        self.needed = gain * whole.impurity()
        self.nodes = 0
        self.root = self.grow(rows, None)

    def measured(self, rows):
        result = self.measure()
        for row in rows:
            result.add(row[self.target.name])
        return result

    def keys(self, rows, field):
        """What a field's values are ordered by: numbers by themselves, categories by the target."""
        if not field.values:
            return {row[field.name]: row[field.name] for row in rows}
        by_value = {}
        for row in rows:
            by_value.setdefault(row[field.name], self.measure()).add(row[self.target.name])
        first = self.target.values[0] if self.target.values else None
        return {value: (measure.order(first), value) for value, measure in by_value.items()}

    def best_split(self, rows, whole):
        best = (self.needed, None, None)
        for field in self.fields:
            keys = self.keys(rows, field)
            ordered = sorted(rows, key=lambda row: keys[row[field.name]])
            left, right = self.measure(), self.measured(rows)
            for i, row in enumerate(ordered[:-1]):
                left.add(row[self.target.name])
                right.add(row[self.target.name], -1)
                here, following = row[field.name], ordered[i + 1][field.name]
                if here == following or min(left.count, right.count) < self.least:
                    continue
                gain = whole.impurity() - left.impurity() - right.impurity()
                if gain > best[0]:
                    limit = keys[here] if field.values else (here + following) / 2
                    chosen = {v for v in keys if keys[v] <= limit} if field.values else limit
                    best = (gain, field, chosen)
        return best[1], best[2]

    def grow(self, rows, predicate):
        self.nodes += 1
        node = {"id": str(self.nodes - 1), "measure": self.measured(rows), "predicate": predicate,
                "children": []}
        field, chosen = self.best_split(rows, node["measure"])
        if field:
            for side in (True, False):
                part = [row for row in rows if holds(row, field, chosen) == side]
                node["children"].append(self.grow(part, (field, chosen, side)))
        return node


def holds(row, field, chosen):
    return row[field.name] in chosen if field.values else row[field.name] <= chosen


def number(value):
    return repr(round(value, 4)).removesuffix(".0")


def predicate_lines(predicate):
    if not predicate:
        return ["<True/>"]
    field, chosen, side = predicate
    name = quoteattr(field.name)
    if not field.values:
        operator = "lessOrEqual" if side else "greaterThan"
        return [f'<SimplePredicate field={name} operator="{operator}" value="{number(chosen)}"/>']
    values = [value for value in field.values if (value in chosen) == side]
    if len(values) == 1:
        return [f"<SimplePredicate field={name} operator=\"equal\" value={quoteattr(values[0])}/>"]
    text = escape(" ".join(f'"{value}"' if " " in value else value for value in values))
    return [f'<SimpleSetPredicate field={name} booleanOperator="isIn">',
            f'  <Array n="{len(values)}" type="string">{text}</Array>',
            "</SimpleSetPredicate>"]


def node_lines(tree, node):
    measure = node["measure"]
    score = measure.score()
    score = score if tree.target.values else number(score)
    lines = [f'<Node id="{node["id"]}" score={quoteattr(score)} recordCount="{measure.count}">']
    inner = predicate_lines(node["predicate"])
    if tree.target.values:
        for value in tree.target.values:
            count = measure.counts.get(value, 0)
            inner.append(f"<ScoreDistribution value={quoteattr(value)} recordCount=\"{count}\"/>")
    for child in node["children"]:
        inner += node_lines(tree, child)
    return lines + ["  " + line for line in inner] + ["</Node>"]


def field_lines(field):
    name, label = quoteattr(field.name), quoteattr(field.label)
    if not field.values:
        return [f'<DataField name={name} displayName={label} optype="continuous"/>']
    lines = [f'<DataField name={name} displayName={label} optype="categorical">']
    lines += [f"  <Value value={quoteattr(value)}/>" for value in field.values]
    return lines + ["</DataField>"]


def write(file, tree, name, description):
    fields = tree.fields + [tree.target]
    lines = ['<?xml version="1.0" encoding="UTF-8"?>',
             f'<PMML version="2.1" xmlns="{NAMESPACE}"',
             '      xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"',
             f'      xsi:schemaLocation="{NAMESPACE} http://www.dmg.org/v2-1/pmml-2-1.xsd">',
             f'  <Header copyright="ChartXML" description={quoteattr(description)}>',
             '    <Application name="maketree.py"/>',
             "  </Header>",
             f'  <DataDictionary numberOfFields="{len(fields)}">']
    for field in fields:
        lines += ["    " + line for line in field_lines(field)]
    function = "classification" if tree.target.values else "regression"
    lines += ["  </DataDictionary>",
              f'  <TreeModel modelName="{name}" functionName="{function}" algorithmName="CART"',
              '             splitCharacteristic="binarySplit">',
              "    <MiningSchema>"]
    lines += [f"      <MiningField name={quoteattr(field.name)}/>" for field in tree.fields]
    lines += [f'      <MiningField name={quoteattr(tree.target.name)} usageType="predicted"/>',
              "    </MiningSchema>"]
    lines += ["    " + line for line in node_lines(tree, tree.root)]
    lines += ["  </TreeModel>", "</PMML>", ""]
    pathlib.Path(__file__).with_name(file).write_text("\n".join(lines), encoding="utf-8")
    print(f"{file}: {tree.nodes} nodes")


def customers():
    """Whether customers of a telephone company stay: contracts and complaints decide, with noise."""
    rng = random.Random(14)
    fields = [Field("age", "Age"), Field("months", "Months as customer"),
              Field("bill", "Monthly bill"), Field("calls", "Calls to the hotline"),
              Field("contract", "Contract", ["monthly", "one year", "two years"]),
              Field("region", "Region", ["North", "East", "South", "West", "Abroad"])]
    target = Field("stays", "Stays", ["no", "yes"])
    rows = []
    for _ in range(6000):
        row = {"age": rng.randint(18, 85), "months": int(rng.expovariate(1 / 30)),
               "bill": round(rng.gauss(45, 15), 1), "calls": int(rng.expovariate(0.6)),
               "contract": rng.choices(fields[4].values, [5, 3, 2])[0],
               "region": rng.choice(fields[5].values)}
        leaning = (-0.4 + 0.03 * row["months"] - 0.02 * (row["bill"] - 45) - 0.55 * row["calls"]
                   + {"monthly": 0, "one year": 1.1, "two years": 2}[row["contract"]]
                   + (0.8 if row["age"] > 55 and row["region"] != "Abroad" else 0))
        row["stays"] = "yes" if rng.random() < 1 / (1 + math.exp(-leaning)) else "no"
        rows.append(row)
    write("customers.xml", Tree(fields, target, rows, 8, 0.0003), "customers",
          "Which customers stay, of 6000 simulated ones")


def rents():
    """Rents of flats by size, age, storey and quarter."""
    rng = random.Random(21)
    quarters = ["Altstadt", "Hafen", "Südpark", "Am Berg", "Neuland", "Ostend"]
    fields = [Field("area", "Area in m²"), Field("built", "Year of building"),
              Field("floor", "Storey"), Field("quarter", "Quarter", quarters),
              Field("lift", "Lift", ["no", "yes"])]
    target = Field("rent", "Rent in euros")
    rows = []
    for _ in range(3000):
        row = {"area": round(rng.lognormvariate(4.2, 0.35)), "built": rng.randint(1890, 2023),
               "floor": rng.randint(0, 8), "quarter": rng.choice(quarters),
               "lift": rng.choice(["no", "yes"])}
        price = (8 + 2.2 * quarters.index(row["quarter"]) % 7 + abs(row["built"] - 1960) / 25
                 + (0.2 if row["lift"] == "yes" else -0.25) * row["floor"])
        row["rent"] = round(row["area"] * price * rng.lognormvariate(0, 0.08))
        rows.append(row)
    write("rents.xml", Tree(fields, target, rows, 10, 0.0002), "rents",
          "The rent of a flat, of 3000 simulated ones")


if __name__ == "__main__":
    customers()
    rents()

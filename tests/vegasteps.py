"""What Vega makes of the expressions and transforms that `chartxml draw` writes: enough of both to
hold a plot's values against its chart's rows where there is no Vega. What isn't known here raises.
"""
import datetime
import math
import re
import statistics

TOKEN = re.compile(r'\s*(?:("(?:[^"\\]|\\.)*")|(\d+(?:\.\d+)?(?:e[+-]?\d+)?)|(\w+)|(\|\||&&|[=!<>]=|[-+*/%<>?:()\[\],.!]))')
LEVELS = [["||"], ["&&"], ["==", "!="], ["<", ">", "<=", ">="], ["+", "-"], ["*", "/", "%"]]


def js(value):
    return 0 if value is None else value


def is_valid(value):
    return value is not None and not (isinstance(value, float) and math.isnan(value))


def text_of(value):
    if isinstance(value, float) and value.is_integer():
        value = int(value)
    return value if isinstance(value, str) else "null" if value is None else str(value)


def d3_format(value, pattern):
    sign, comma, digits, trim, kind = re.fullmatch(r"(\(?)(,?)(?:\.(\d+))?(~?)([feg])", pattern).groups()
    text = f"{abs(value):{comma}.{6 if digits is None else digits}{kind}}"
    if trim or kind == "g":
        text = re.sub(r"(\.\d*?)0+(?=e|$)", r"\1", text)
        text = re.sub(r"\.(?=e|$)", "", text)
    isNegative = value < 0 and re.search("[1-9]", text)
    return text if not isNegative else f"({text})" if sign else "−" + text


def utc_format(value, pattern):
    date = datetime.datetime(1970, 1, 1) + datetime.timedelta(milliseconds=value)
    parts = {"%q": str((date.month + 2) // 3), "%L": f"{date.microsecond // 1000:03d}"}
    return re.sub("%-?[a-zA-Z]", lambda m: parts.get(m[0]) or date.strftime(m[0]), pattern)


def replace(text, pattern, by):
    by = by.replace("$$", "$")
    if isinstance(pattern, str):
        return text_of(text).replace(pattern, by, 1)
    return pattern[0].sub(lambda _: by, text_of(text), count=0 if "g" in pattern[1] else 1)


FUNCTIONS = {
    "isValid": is_valid, "format": lambda v, p: d3_format(js(v), p), "utcFormat": utc_format,
    "replace": replace, "regexp": lambda p, flags="": (re.compile(p), flags), "abs": lambda v: abs(js(v)),
    "min": lambda *v: min(map(js, v)), "max": lambda *v: max(map(js, v)),
    "floor": lambda v: math.floor(js(v)), "round": lambda v: math.floor(js(v) + 0.5),
    "indexof": lambda among, v: among.index(v) if v in among else -1,
}


class Expression:
    def __init__(self, text):
        self.tokens, at = [], 0
        while at < len(text.rstrip()):
            match = TOKEN.match(text, at)
            assert match, text[at:]
            self.tokens.append(match.group().strip())
            at = match.end()
        self.tokens.append("")

    def take(self, token=None):
        assert token in (None, self.tokens[0]), (token, self.tokens)
        return self.tokens.pop(0)

    def choice(self):
        test = self.binary(0)
        if self.tokens[0] != "?":
            return test
        self.take()
        first = self.choice()
        self.take(":")
        second = self.choice()
        return lambda d: first(d) if test(d) else second(d)

    def binary(self, level):
        if level == len(LEVELS):
            return self.unary()
        left = self.binary(level + 1)
        while self.tokens[0] in LEVELS[level]:
            left = self.joined(self.take(), left, self.binary(level + 1))
        return left

    @staticmethod
    def joined(sign, a, b):
        def plus(x, y):
            return text_of(x) + text_of(y) if isinstance(x, str) or isinstance(y, str) else js(x) + js(y)
        return {"||": lambda d: a(d) or b(d), "&&": lambda d: a(d) and b(d),
                "==": lambda d: a(d) == b(d), "!=": lambda d: a(d) != b(d),
                "<": lambda d: js(a(d)) < js(b(d)), ">": lambda d: js(a(d)) > js(b(d)),
                "<=": lambda d: js(a(d)) <= js(b(d)), ">=": lambda d: js(a(d)) >= js(b(d)),
                "+": lambda d: plus(a(d), b(d)), "-": lambda d: js(a(d)) - js(b(d)),
                "*": lambda d: js(a(d)) * js(b(d)), "%": lambda d: math.fmod(js(a(d)), b(d)),
                "/": lambda d: js(a(d)) / b(d) if b(d) else math.nan}[sign]

    def unary(self):
        token = self.take()
        if token in "-!" and token:
            inner = self.unary()
            return (lambda d: -inner(d)) if token == "-" else lambda d: not inner(d)
        if token == "(":
            inner = self.choice()
            self.take(")")
            return inner
        if token == "[":
            items = self.items("]")
            return lambda d: [item(d) for item in items]
        if token[0] == '"':
            text = re.sub(r'\\(u....|.)', lambda m: chr(int(m[1][1:], 16)) if len(m[1]) > 1 else
                          {"n": "\n", "t": "\t"}.get(m[1], m[1]), token[1:-1])
            return lambda d: text
        if token[0].isdigit():
            return lambda d: float(token)
        if token == "datum":
            if self.take() == ".":
                name = self.take()
                return lambda d: d[name]
            name = self.choice()
            self.take("]")
            return lambda d: d[name(d)]
        if token in ("null", "true", "false"):
            return lambda d: {"null": None, "true": True, "false": False}[token]
        self.take("(")
        arguments = self.items(")")
        return lambda d: FUNCTIONS[token](*(argument(d) for argument in arguments))

    def items(self, end):
        found = []
        while self.tokens[0] != end:
            found.append(self.choice())
            if self.tokens[0] == ",":
                self.take()
        self.take(end)
        return found


def evaluate(text, datum):
    expression = Expression(text)
    value = expression.choice()
    expression.take("")
    return value(datum)


OPERATIONS = {
    "count": len, "valid": len, "sum": sum, "mean": statistics.fmean, "median": statistics.median,
    "min": min, "max": max, "stdev": lambda v: statistics.stdev(v) if len(v) > 1 else 0,
    "variance": lambda v: statistics.variance(v) if len(v) > 1 else 0,
}


def summarized(rows, operation):
    if operation["op"] == "count":
        return len(rows)
    values = [row[operation["field"]] for row in rows if is_valid(row[operation["field"]])]
    return OPERATIONS[operation["op"]](values) if values or operation["op"] in ("valid", "sum") else None


def grouped(rows, keys):
    groups = {}
    for row in rows:
        groups.setdefault(tuple(row[key] for key in keys), []).append(row)
    return groups


def kept(step, row):
    test = step["filter"]
    if isinstance(test, str):
        return evaluate(test, row)
    return row[test["field"]] in test["oneOf"] if "oneOf" in test else row[test["field"]] == test["equal"]


def window(step, rows):
    for group in grouped(rows, step.get("groupby", ())).values():
        for by in reversed(step.get("sort", ())):
            group.sort(key=lambda row: row[by["field"]])
        for at, row in enumerate(group):
            for operation in step["window"]:
                name = operation["op"]
                until = group[:at + 1] if step.get("frame") == [None, 0] else group
                row[operation["as"]] = (
                    at + 1 if name == "row_number" else
                    (group[at + 1][operation["field"]] if at + 1 < len(group) else None) if name == "lead" else
                    summarized(until, operation))
    return rows


def stack(step, rows):
    first, last = step["as"]
    for group in grouped(rows, step.get("groupby", ())).values():
        for by in reversed(step.get("sort", ())):
            group.sort(key=lambda row: row[by["field"]])
        whole = sum(abs(js(row[step["stack"]])) for row in group) if step["offset"] == "normalize" else 1
        end = 0
        for row in group:
            row[first], end = end / whole if whole else 0, end + abs(js(row[step["stack"]]))
            row[last] = end / whole if whole else 0
    return rows


def transformed(rows, steps):
    rows = [dict(row) for row in rows]
    for step in steps:
        if "filter" in step:
            rows = [row for row in rows if kept(step, row)]
        elif "calculate" in step:
            for row in rows:
                row[step["as"]] = evaluate(step["calculate"], row)
        elif "aggregate" in step:
            keys = step.get("groupby", ())
            rows = [dict(zip(keys, key), **{o["as"]: summarized(group, o) for o in step["aggregate"]})
                    for key, group in grouped(rows, keys).items()]
        elif "joinaggregate" in step:
            for group in grouped(rows, step.get("groupby", ())).values():
                for operation in step["joinaggregate"]:
                    value = summarized(group, operation)
                    for row in group:
                        row[operation["as"]] = value
        elif "bin" in step:
            width, anchor = step["bin"]["step"], step["bin"].get("anchor", 0)
            last = step["bin"].get("extent", (0, math.inf))[1]
            for row in rows:
                number = math.floor((row[step["field"]] - anchor) / width + 1e-12)
                if row[step["field"]] >= last:
                    number = math.ceil((last - anchor) / width - 1e-9) - 1
                row[step["as"][0]], row[step["as"][1]] = (anchor + (number + i) * width for i in (0, 1))
        elif "fold" in step:
            name, value = step["as"]
            rows = [dict(row, **{name: field, value: row[field]}) for row in rows for field in step["fold"]]
        elif "window" in step:
            rows = window(step, rows)
        elif "stack" in step:
            rows = stack(step, rows)
        else:
            raise AssertionError(f"unknown step {step}")
    return rows

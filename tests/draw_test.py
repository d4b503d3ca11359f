#!/usr/bin/env python3
"""draw_test.py TOOL: what `chartxml draw` makes of elements, scales, texts and of damaged charts.

Needs nothing but the tool. That Vega-Lite takes the plots is draw.sh's business.
"""
import json
import os
import random
import subprocess
import sys
import unittest

TOOL = sys.argv.pop(1)
EXAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "examples")
ROWS = "".join(f"<row>{group};{i};{i * i % 17};{i % 5 or ''};2024-01-{i + 1:02d} 00:00:00.000</row>"
               for i, group in enumerate("abcabcabcabc"))


def run(chart, *options):
    done = subprocess.run([TOOL, "draw", *options, "-"], input=chart, capture_output=True)
    assert done.returncode in (0, 1), done
    return done.returncode, done.stdout, done.stderr.decode()


def draw(chart):
    code, out, notes = run(chart.encode())
    return (json.loads(out) if out else None), notes


def chart(elements, dimensions='<dimension id="dx"/><dimension id="dy"/>', more="", transforms=""):
    return f"""<visualization xmlns="http://xml.tavo.example/visualization"
 xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="http://xml.tavo.example/visualization http://xml.tavo.example/visualization/grafo-2.9.xsd">
<embeddedSource id="s"><names>g;u;v;w;d</names><types>string;number;number;number;date</types>{ROWS}</embeddedSource>
<sourceVariable id="g" categorical="true" source="s" sourceName="g"/>
<sourceVariable id="u" source="s" sourceName="u"/><sourceVariable id="v" source="s" sourceName="v"/>
<sourceVariable id="w" source="s" sourceName="w"/><sourceVariable id="d" source="s" sourceName="d"/>
<expressionVariable id="uv" expression="u+v"/>
<graph id="graph"><coordinates id="c">{dimensions}{transforms}</coordinates>{elements}</graph>{more}</visualization>"""


def layers(view):
    for key in ("layer", "vconcat", "hconcat"):
        for inner in view.get(key, ()):
            yield from layers(inner)
    if "spec" in view:
        yield from layers(view["spec"])
    if "mark" in view:
        yield view


def steps(layer):
    """The transforms in short: 'mean v by g', 'bin u 2', 'regression v on u quad'."""
    short = []
    for step in layer.get("transform", ()):
        if "aggregate" in step:
            short.append(" ".join(f"{o['op']} {o.get('field', '')}".strip() for o in step["aggregate"])
                         + " by " + ",".join(step.get("groupby", ())))
        elif "joinaggregate" in step:
            short.append("all " + step["joinaggregate"][0]["field"] + "".join(
                " by " + ",".join(step["groupby"]) if "groupby" in step else ""))
        elif "bin" in step:
            short.append(f"bin {step['field']} {step['bin'].get('step')} {step['bin'].get('anchor')}")
        elif "regression" in step:
            short.append(f"regression {step['regression']} on {step['on']} {step['method']}")
        elif "loess" in step:
            short.append(f"loess {step['loess']} on {step['on']} {step.get('bandwidth')}")
        elif "density" in step:
            short.append(f"density {step['density']} {step.get('bandwidth')}")
        elif "window" in step:
            short.append("window " + " ".join(o["op"] for o in step["window"]))
        elif "fold" in step:
            short.append("fold " + ",".join(step["fold"]))
        elif "stack" in step:
            short.append("stack " + step["stack"])
        elif "calculate" in step:
            short.append("= " + step["as"])
        elif "filter" in step:
            short.append("filter")
    return short


X_G, X_U, X_D = '<x variable="g"/>', '<x variable="u"/>', '<x variable="d"/>'
Y_V, Y_UV = '<y variable="v"/>', '<y variable="uv"/>'


def summary(method):
    return f'<summaryStatistic method="{method}"/>'


def smooth(words):
    return f"<smoothStatistic {words}/>"


# kind, attributes, content, mark, x, y, transforms
TABLE = [
    ("point", "", X_U + Y_V, "point", "u", "v", []),
    ("line", "", X_U + Y_V, "line", "u", "v", []),
    ("path", "", X_U + Y_V, "line", "u", "v", ["window row_number"]),
    ("area", "", X_U + Y_V, "area", "u", "v", []),
    ("interval", "", X_G + Y_V, "bar", "g", "v", []),
    ("polygon", "", X_G + Y_V, "rect", "g", "v", []),
    ("schema", "", X_G + Y_V, "boxplot", "g", "v", []),
    ("interval", "", X_G, "bar", "g", "count", ["count by g"]),
    ("interval", "", X_G + Y_V + summary("mean"), "bar", "g", "mean_v", ["mean v by g"]),
    ("line", "", X_U + Y_V + summary("median"), "line", "u", "median_v", ["median v by u"]),
    ("point", "", X_G + Y_V + summary("minimum"), "point", "g", "min_v", ["min v by g"]),
    ("interval", "", X_G + Y_V + summary("standardDeviation"), "bar", "g", "stdev_v", ["stdev v by g"]),
    ("interval", "", X_G + Y_V + summary("midrange"), "bar", "g", "midrange_v",
     ["min v max v by g", "= midrange_v"]),
    ("interval", "", X_G + Y_V + summary("percent"), "bar", "g", "percent_sum_v",
     ["sum v by g", "all sum_v", "= percent_sum_v"]),
    ("interval", "", X_G + summary("fractionCount"), "bar", "g", "fraction_count",
     ["count by g", "all count", "= fraction_count"]),
    ("line", "", X_G + Y_V + summary("cumulativeSum"), "line", "g", "cumulative_sum_v",
     ["sum v by g", "= rank_g", "window sum"]),
    ("interval", "", X_U + '<binStatistic binWidth="2" binStart="1"/>', "bar", "u_bin", "count",
     ["bin u 2 1", "count by u_bin,u_end"]),
    ("interval", "", X_D + '<binStatistic binWidth="86400"/>', "bar", "d_bin", "count",
     ["bin d 86400000 1704067200000", "count by d_bin,d_end"]),
    ("polygon", "", X_U + Y_V + '<binStatistic gridType="square" binCount="4" method="allDimensions"/>',
     "rect", "u_bin", "v_bin",
     ["bin u 2.75 0", "bin v 4 0", "count by u_bin,u_end,v_bin,v_end"]),
    ("edge", "", X_G + Y_UV + summary("range"), "rule", "g", "range_low",
     ["= lowest", "= highest", "min lowest max highest by g", "filter"]),
    ("edge", "", X_U + Y_V + '<linkStatistic type="spike" x="centroid" y="centroid"/>', "rule", "u",
     "v", ["all u", "all v"]),
    ("point", "", X_U + Y_UV, "point", "u", "y_value", ["fold u,v"]),
    ("line", "", X_U + Y_V + smooth('method="linear"'), "line", "u", "v", ["regression v on u linear"]),
    ("line", "", X_U + Y_V + smooth('method="polynomial" degree="2"'), "line", "u", "v",
     ["regression v on u quad"]),
    ("line", "", X_U + Y_V + smooth('method="polynomial" degree="3"'), "line", "u", "v",
     ["regression v on u poly"]),
    ("line", "", X_U + Y_V + smooth('method="loess" proportion="0.4"'), "line", "u", "v",
     ["loess v on u 0.4"]),
    ("line", "", X_U + '<fixedWindowDensityStatistic bandwidth="3" kernel="gaussian"/>', "line", "u",
     "density", ["density u 3", "= density"]),
    ("interval", 'positionModifier="stack"', X_G + Y_V, "bar", "g", "sum_v", ["sum v by g"]),
    ("line", "", X_U + Y_V + '<color id="k" variable="g" split="false"/>', "rule", "u", "v",
     ["window lead lead", "filter"]),
    ("point", "", X_U + Y_V + '<color id="k2" variable="w"/>' + summary("mean"), "point", "u",
     "mean_v", ["mean v mean w by u"]),
]

SCALES = [
    ("", {"zero": False}),
    ('method="linear" origin="0"', {"zero": True}),
    ('method="log" base="2"', {"type": "log", "base": 2}),
    ('method="power" base="0.5"', {"type": "pow", "exponent": 0.5}),
    ('method="log_safe"', {"type": "symlog"}),
    ('method="power_safe" base="3"', {"type": "pow", "exponent": 3}),
    ('method="linear" invert="true"', {"reverse": True}),
]


class Draw(unittest.TestCase):
    def test_elements(self):
        groups = {}
        for i, row in enumerate(TABLE):  # elements that share a plane have the same kind of x
            groups.setdefault(row[2].split("/>")[0], []).append((i, row))
        for rows in groups.values():
            spec, notes = draw(chart("".join(
                f'<{kind} id="e{i}" {words}>{content}</{kind}>' for i, (kind, words, content, *_) in rows)))
            found = {}
            for layer in layers(spec):
                found.setdefault(layer.get("description"), layer)
            for i, (kind, words, content, mark, x, y, transforms) in rows:
                with self.subTest(kind=kind, content=content):
                    layer = found[f"e{i}"]
                    self.assertEqual(layer["mark"]["type"], mark)
                    self.assertEqual(layer["encoding"]["x"]["field"], x)
                    self.assertEqual(layer["encoding"]["y"]["field"], y)
                    self.assertEqual(steps(layer), transforms)

    def test_scales(self):
        for words, expected in SCALES:
            dimensions = f'<dimension id="dx"/><dimension id="dy"><scale id="sc" {words}/></dimension>'
            spec, notes = draw(chart(f'<point id="p">{X_U}{Y_V}</point>', dimensions))
            scale = next(layers(spec))["encoding"]["y"]["scale"]
            for key, value in expected.items():
                self.assertEqual(scale.get(key), value, words)
            self.assertEqual(notes, "")
        dimensions = '<dimension id="dx"/><dimension id="dy"><scale id="sc" method="logit"/></dimension>'
        self.assertIn("sc: the scale logit is drawn linear",
                      draw(chart(f'<point id="p">{X_U}{Y_V}</point>', dimensions))[1])

    def test_positions(self):
        bars = f'<interval id="e" positionModifier="%s">{X_G}{Y_V}<color variable="g"/>{summary("sum")}</interval>'
        stacked, dodged, plain = (
            next(layers(draw(chart(bars % modifier))[0]))["encoding"] for modifier in
            ("stack", "dodge", "none"))
        self.assertEqual(stacked["y"]["stack"], "zero")
        self.assertEqual(dodged["xOffset"]["field"], "g")
        self.assertIsNone(plain["y"]["stack"])
        cycled = next(layers(draw(chart(
            bars.replace("<color", '<color cycle="k"') % "stack", more='<styleCycle id="k"><cycle><style color="red"/>'
            '<style color="#00ff00"/></cycle></styleCycle>'))[0]))["encoding"]
        self.assertEqual(cycled["fill"]["scale"]["range"], ["red", "#00ff00", "red"])
        turned = next(layers(draw(chart(bars % "dodge", transforms="<transposeTransform/>"))[0]))
        self.assertEqual((turned["encoding"]["y"]["field"], turned["encoding"]["x"]["field"]),
                         ("g", "sum_v"))
        self.assertIn("yOffset", turned["encoding"])
        pie = next(layers(draw(chart(
            f'<interval id="e"><x variable="v"/><color variable="g"/>{summary("sum")}</interval>',
            '<dimension id="dx"/>', transforms='<polarTransform startAngle="90"/>'))[0]))
        self.assertEqual(pie["mark"]["type"], "arc")
        self.assertEqual(steps(pie), ["sum v by g", "= rank_g", "stack sum_v"])
        self.assertEqual(pie["encoding"]["theta"]["scale"]["range"][0], 0)

    def test_order_and_guides(self):
        # Behind the data, the last element, the first, before the data.
        spec, _ = draw(chart(f'<point id="p">{X_U}{Y_V}</point><line id="l">{X_U}{Y_V}</line>'
                             '<lineGuide id="a" y="3" zOrder="1"/><lineGuide id="b" x="2" zOrder="-1"/>'))
        self.assertEqual([layer["description"] for layer in layers(spec)], ["b", "l", "p", "a"])
        self.assertEqual(list(layers(spec))[3]["encoding"]["y"]["datum"], 3)

    def test_guides_and_clusters(self):
        # The axis shows cities, and each cluster the means of transport.
        template = """<template xmlns="http://xml.tavo.example/tavo/visualization"
 xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="http://xml.tavo.example/tavo/visualization http://xml.tavo.example/tavo/visualization/grafo-template-2.10.xsd">
<addReferenceLine x="København" xcategorical="true"/><addReferenceLine x="Bicycle" xcategorical="true"/>
<addReferenceRectangle x1="Zürich" x2="Kraków" xcategorical="true"/>
<setOrder role="x"><categoryValue>İstanbul;Kraków</categoryValue></setOrder></template>"""
        applied = subprocess.run([TOOL, "apply", os.path.join(EXAMPLES, "clustered-bars.xml"), "-"],
                                 input=template.encode(), capture_output=True, check=True)
        places = {}
        for layer in layers(draw(applied.stdout.decode())[0]):
            if "x" in layer["encoding"]:
                places.setdefault(layer["mark"]["type"], []).append(layer["encoding"])
        bars, (band,) = places["bar"][0], places["rect"]
        cities = bars["x"]["scale"]
        self.assertEqual((cities["domain"][:3], len(cities["domain"])), (["İstanbul", "Kraków", "Zürich"], 12))
        self.assertEqual((bars["x"]["field"], bars["xOffset"]["field"], bars["xOffset"]["scale"]["domain"]),
                         ("cityVar", "modeVar", ["Car", "Bus and tram", "Rail", "Bicycle", "On foot"]))
        # No cluster is called Bicycle.
        self.assertEqual([(x["datum"], x["bandPosition"], x["scale"]) for x in (
            rule["x"] for rule in places["rule"] if "datum" in rule["x"])], [("København", 0.5, cities)])
        self.assertEqual((band["x"]["datum"], band["x"]["bandPosition"], band["x"]["scale"], band["x2"]),
                         ("Zürich", 0, cities, {"datum": "Kraków", "bandPosition": 1}))

    def test_clusters(self):
        def clustered(element, by="g", more=""):
            spec, notes = draw(chart(element, f'<dimension id="dx" clusterVariable="{by}"/><dimension/>', more))
            layer = next(layers(spec))
            return (layer["encoding"]["x"]["field"], layer["encoding"].get("xOffset"), steps(layer), notes)
        bars = f'<interval id="e" positionModifier="dodge">%s{Y_V}{summary("mean")}</interval>'
        numbers = {"field": "w", "type": "nominal"}
        self.assertEqual(clustered(bars % '<x variable="w"/>'),
                         ("g", numbers, ["filter", "mean v by w,g"], ""))
        for own in ("", X_G):  # nothing within, and the cluster itself
            self.assertEqual(clustered(bars % own), ("g", None, ["mean v by g"], ""))
        # What isn't shown of a variable isn't drawn within clusters either.
        halves = ('<derivedVariable id="h" value="u &lt; 6 ? 0 : 1" categorical="true" domain="one"/>'
                  '<categoricalDomain id="one"><categories text="1"/></categoricalDomain>')
        self.assertEqual(clustered(bars % '<x variable="h"/>', more=halves)[1:3],
                         ({"field": "h", "type": "nominal", "scale": {"domain": ["1"]}},
                          ["filter", "mean v by h,g"]))
        self.assertIn("dx: a variable of numbers makes no clusters", clustered(bars % X_G, "u")[3])
        other = ('<embeddedSource id="t"><names>k;n</names><types>string;number</types><row>a;1</row>'
                 '</embeddedSource><sourceVariable id="k" categorical="true" source="t" sourceName="k"/>'
                 '<sourceVariable id="n" source="t" sourceName="n"/>')
        found = clustered('<interval id="e"><x variable="k"/><y variable="n"/></interval>', more=other)
        self.assertEqual(found[:2], ("k", None))
        self.assertIn("e: a variable of another source is left out", found[3])

    def test_order_of_categories(self):
        texts = ["10", "Z", "2.5", "-3", "Ä", "2", "a", "Group 10", "-20", "B", "\u22125", "&lt;18", "Group 2",
                 "A"]
        natural = ["<18", "-20", "\u22125", "-3", "2", "2.5", "10", "a", "A", "Ä", "B", "Group 2", "Group 10",
                   "Z"]
        rows = "".join(f"<row>{text};1;1;1;</row>" for text in texts)

        def order(method, labels="", **language):
            domain = f'<categoricalDomain id="o"><simpleSort {method}/></categoricalDomain>'
            text = chart(f'<interval id="e">{X_G}{Y_V}</interval>', more=domain).replace(ROWS, rows).replace(
                'id="g"', 'id="g" domain="o"').replace('sourceName="g"/>', f'sourceName="g">{labels}</sourceVariable>')
            done = subprocess.run([TOOL, "draw", "-"], input=text.encode(), capture_output=True, check=True,
                                  env=language)
            return next(layers(json.loads(done.stdout)))["encoding"]["x"]["scale"]["domain"]

        for language in ({}, {"LC_ALL": "C"}, {"LANG": "C.UTF-8"}, {"LC_COLLATE": "xx_XX@x", "LANG": "sv_SE"}):
            self.assertEqual(order('method="natural"', **language), natural, language)
        self.assertEqual(order('method="natural" descending="true"'), natural[::-1])
        self.assertEqual(order('method="value"'), natural)
        # By what readers see, or by what stands in the data.
        labels = '<format><relabel from="-20" to="Y"/></format>'
        self.assertEqual(order('method="natural"', labels)[-2:], ["Y", "Z"])
        self.assertEqual(order('method="value"', labels)[1], "Y")
        swedish = order('method="natural"', LC_ALL="", LANG="sv_SE.UTF-8")
        self.assertEqual(swedish[-2:], ["Z", "Ä"])

    def test_two_axes(self):
        spec, notes = draw(chart(f'<point id="p">{X_U}{Y_V}</point><point id="q" coordinates="c2">{X_U}'
                                 '<y variable="w"/></point>').replace(
            "</coordinates>", '</coordinates><coordinates id="c2"><dimensionReference ref="dx"/>'
            '<dimension id="dw"><axis><label><text>W</text></label></axis></dimension></coordinates>'))
        self.assertEqual(spec["resolve"]["scale"]["y"], "independent")
        axes = {layer["description"]: layer["encoding"]["y"]["axis"] for layer in layers(spec)}
        self.assertEqual((axes["p"], axes["q"]["title"], axes["q"]["orient"]), (None, "W", "right"))
        self.assertEqual(notes, "")

    def test_legends_labels_and_popups(self):
        more = ('<legend id="key"><label><text>Groups</text></label><legendTarget target="k"/></legend>'
                '<popup target="p" tokenTemplate="V: $[1]$"><tokenMapping valueToken="1" variable="v"/></popup>')
        spec, _ = draw(chart(
            f'<point id="p">{X_U}{Y_V}<color id="k" variable="g"><colorMapping from="b" to="#123456"/>'
            '<colorMapping from="a" to="red"/><colorMapping from="c" to="blue"/></color>'
            '<labeling variable="w"><format suffix=" kg" maximumFractionDigits="1"/></labeling></point>',
            more=more))
        legend, points, labels = layers(spec)
        self.assertEqual(legend["encoding"]["fill"]["legend"]["title"], "Groups")
        self.assertEqual(points["encoding"]["fill"]["scale"],
                         {"domain": ["a", "b", "c"], "range": ["red", "#123456", "blue"]})
        self.assertEqual(points["encoding"]["tooltip"][0]["title"], "V")
        text = next(step["calculate"] for step in labels["transform"] if "label" in step.get("as", ""))
        self.assertIn('format(datum["w"], ".1~f") + " kg"', text)

    def test_panels(self):
        faceted = chart(f'<interval id="e">{X_U}{Y_V}{summary("mean")}<conditionalStyle '
                        'when="facet1!=facet2" style="h"/></interval>', more='<style id="h" visible="false"/>').replace(
            "</coordinates>", '</coordinates><facetLayout method="%s"/><faceting>%s</faceting>')
        wrapped, _ = draw(faceted % ("wrap", '<variableReference ref="g"/>'))
        self.assertEqual((wrapped["facet"]["field"], wrapped["columns"]), ("g", 2))
        self.assertEqual(steps(next(layers(wrapped))), ["mean v by g,u"])
        matrix = chart(f'<point id="e"><x variable="uv"/><y variable="uv"/><conditionalStyle '
                       'when="facet1==facet2" style="h"/></point>', more='<style id="h" visible="false"/>').replace(
            "u+v", "u/v").replace("</coordinates>", '</coordinates><faceting><variableReference ref="uv"/>'
                                  '<variableReference ref="uv"/></faceting>')
        cells = [layer for layer in layers(draw(matrix)[0]) if layer.get("description") == "e"]
        self.assertEqual([(cell["encoding"]["x"]["field"], cell["encoding"]["y"]["field"]) for cell in cells],
                         [("v", "u"), ("u", "v")])

    def test_data(self):
        spec, _ = draw(chart(f'<point id="p">{X_D}<y variable="w"/><color variable="g"/></point>'))
        rows = spec["datasets"]["s"]
        self.assertEqual(rows[0], {"d": 1704067200000, "w": None, "g": "a"})
        self.assertEqual(len(rows), 12)

    def test_nothing_to_draw(self):
        # Its variables have no data.
        code, out, notes = run(chart('<point id="p"><x variable="none"/></point>').encode())
        self.assertEqual((code, out), (1, b""))
        self.assertIn("p: has no data and is left out", notes)

    def test_hostile_texts(self):
        text = "&lt;/script&gt;&lt;!--\\&quot;'\u2028${1}]]"
        source = chart(f'<point id="p">{X_G}{Y_V}<labeling variable="g"/></point>', more=(
            f'<labelFrame id="t"><label><text>{text}</text></label></labelFrame><extension title1="t"/>'))
        source = source.replace("<row>a;", f"<row>{text};").replace(
            'categorical="true"', f'categorical="true" label="{text}"')
        plain = "</script><!--\\\"'\u2028${1}]]"
        spec, _ = draw(source)
        self.assertEqual(spec["title"]["text"], [plain])
        self.assertEqual(spec["datasets"]["s"][0]["g"], plain)
        _, page, _ = run(source.encode(), "--html")
        inner = page.decode().split('id="spec">')[1].split("</script>")[0]
        self.assertEqual(json.loads(inner), spec)
        self.assertNotIn("<", inner)

    def test_svg_without_renderer(self):
        done = subprocess.run([TOOL, "draw", "--svg", os.path.join(EXAMPLES, "pie.xml")],
                              capture_output=True, env={"PATH": "/nowhere"})
        self.assertEqual((done.returncode, done.stdout), (1, b""))
        self.assertIn(b"vl2svg isn't on the path", done.stderr)

    def test_damaged_charts(self):
        # Values that are none, of the right and of the wrong kind, in the place of others.
        chance = random.Random(16)
        names = sorted(name for name in os.listdir(EXAMPLES) if name.endswith(".xml"))
        values = ["", "0", "-1", "1e308", "NaN", "99999999999999999999", "%", "-5%", ";", "\u2028",
                  "true", "c", "x" * 300, "((((", "1/0", "#12", "url(#a)", "2024-99-99"]
        for _ in range(int(os.environ.get("CHARTXML_DAMAGED", "40"))):
            with open(os.path.join(EXAMPLES, chance.choice(names)), encoding="utf-8") as file:
                parts = file.read().split('"')
            head = next(i for i, part in enumerate(parts) if "grafo-2.9.xsd" in part)
            for _ in range(chance.choice((1, 3, 10, 40))):
                place = chance.randrange((head + 2) // 2, len(parts) // 2) * 2 + 1
                parts[place] = chance.choice(values + [chance.choice(parts[1::2])]).replace("<", "")
            damaged = '"'.join(parts).encode()
            code, out, notes = run(damaged)
            if code == 0:
                json.loads(out)


unittest.main(argv=[sys.argv[0], *sys.argv[1:]])

#!/usr/bin/env python3
"""draw_test.py TOOL: what `chartxml draw` makes of elements, scales, texts and of damaged charts.

Needs nothing but the tool. That Vega-Lite takes the plots is draw.sh's business.
"""
import json
import math
import os
import random
import re
import statistics
import subprocess
import sys
import unittest

import vegasteps

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
<expressionVariable id="uv" expression="u+v"/><expressionVariable id="vw" expression="v+w"/>
<graph id="graph"><coordinates id="c">{dimensions}{transforms}</coordinates>{elements}</graph>{more}</visualization>"""


def layers(view):
    for key in ("layer", "vconcat", "hconcat", "concat"):
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
            valid = re.fullmatch(r'isValid\(datum\["(\w+)"\]\)', str(step["filter"]))
            short.append("valid " + valid.group(1) if valid else "filter")
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
     ["= lowest", "= highest", "min lowest max highest by g", "valid range_low"]),
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
     "mean_v", ["mean v mean w by u", "valid mean_w"]),
    # Of w some values are missing: such rows aren't in what w is drawn for.
    ("edge", "", X_G + '<y variable="vw"/>' + summary("range"), "rule", "g", "range_low",
     ["valid w", "= lowest", "= highest", "min lowest max highest by g", "valid range_low"]),
    ("polygon", "", X_U + '<y variable="w"/><binStatistic gridType="square" binCount="4" method="allDimensions"/>',
     "rect", "u_bin", "w_bin",
     ["valid w", "bin u 2.75 0", "bin w 0.75 1", "count by u_bin,u_end,w_bin,w_end"]),
    ("interval", "", '<x variable="w"/><binStatistic binWidth="2"/>', "bar", "w_bin", "count",
     ["valid w", "bin w 2 1", "count by w_bin,w_end"]),
    ("line", "", '<x variable="w"/><fixedWindowDensityStatistic bandwidth="3" kernel="gaussian"/>',
     "line", "w", "density", ["valid w", "density w 3", "= density"]),
    ("point", "", X_U + Y_V + '<size id="k3" variable="w"/>', "point", "u", "v", ["valid w"]),
    ("line", "", X_U + '<y variable="w"/>', "line", "u", "w", []),  # with gaps
    # A line of one dimension has no pieces.
    ("line", "", X_U + '<size id="k4" variable="v"/>', "line", None, "u", []),
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
                    self.assertEqual(layer["encoding"].get("x", {}).get("field"), x)
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

    def test_transposed(self):
        style = '<style id="s1" width="50%%" %s/>'
        label = '<labeling variable="v"><labelLocation horizontal="center" vertical="%s"/></labeling>'
        for element, words, expected in [
            (f'<interval id="e" style="s1">{X_G}{Y_V}</interval>', "",
             {"type": "bar", "orient": "horizontal", "height": {"band": 0.5}}),
            (f'<area id="e">{X_U}{Y_V}</area>', "", {"type": "area", "orient": "horizontal"}),
            (f'<line id="e">{X_U}{Y_V}' + smooth('method="linear"') + '</line>', "",
             {"type": "line", "orient": "horizontal"}),
            (f'<line id="e">{X_U}{Y_V}' + smooth('method="stepLeft"') + '</line>', "",
             {"interpolate": "step-before"}),
            (f'<line id="e">{X_U}{Y_V}' + smooth('method="stepRight"') + '</line>', "",
             {"interpolate": "step-after"}),
        ]:
            spec, _ = draw(chart(element, transforms="<transposeTransform/>", more=style % words))
            mark = next(layers(spec))["mark"]
            self.assertEqual({key: mark.get(key) for key in expected}, expected, element)
        for where, expected in [("positive", ("left", 4, "middle")), ("negative", ("right", -4, "middle"))]:
            spec, _ = draw(chart(f'<interval id="e">{X_G}{Y_V}{label % where}</interval>',
                                 transforms="<transposeTransform/>"))
            mark = list(layers(spec))[1]["mark"]
            self.assertEqual((mark["align"], mark["dx"], mark["baseline"]), expected)

    def test_told(self):
        color = '<color id="k" variable="g"><colorMapping from="%s" to="red"/></color>'
        for element, note in [
            (f'<point id="p">{X_U}<y variable="none"/></point>', "p: y: there is no variable 'none'"),
            (f'<point id="p">{X_U}{Y_V}<size variable="none"/></point>', "p: size: there is no variable 'none'"),
            (f'<point id="p">{X_U}{Y_V}{color % "z"}</point>', "k: colorMapping: there is no 'z' to look so"),
            (f'<line id="l">{X_U}<size variable="v"/></line>', "l: a line of one dimension"),
        ]:
            self.assertIn(note, draw(chart(element))[1])
        self.assertEqual(draw(chart(f'<point id="p">{X_U}{Y_V}{color % "a"}</point>'))[1], "")

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
                         ("g", numbers, ["valid w", "mean v by w,g"], ""))
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

    def test_visibility(self):
        # Each of several holds, on elements and on labels.
        both = '<visibility variable="v" domain="few"/><visibility variable="w" domain="small"/>'
        spec, _ = draw(chart(
            f'<point id="p">{X_U}{Y_V}{both}<labeling variable="v">{both}</labeling></point>', more=(
                '<intervalDomain id="few"><range max="9"/></intervalDomain>'
                '<intervalDomain id="small"><range min="2"/></intervalDomain>')))
        points, labels = layers(spec)
        filters = ['datum["v"] <= 9', 'datum["w"] >= 2']
        self.assertEqual([step["filter"] for step in points["transform"]], filters)
        self.assertEqual([step["filter"] for step in labels["transform"][2:4]], filters)

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


def label_of(value, words, kind="v"):
    """The text of a data label whose format has these attributes."""
    spec, _ = draw(chart(f'<point id="p">{X_U}<y variable="{kind}"/><labeling variable="{kind}"><format {words}</labeling></point>'))
    step = [step for step in list(layers(spec))[1]["transform"] if step.get("as") == "label_" + kind][0]
    return vegasteps.evaluate(step["calculate"], {kind: value})


NUMBERS = [
    ('maximumFractionDigits="2"/>', 1358.456, "1358.46"),
    ('useGrouping="true" maximumFractionDigits="2" separatorChars=",.  "/>', 1358.456, "1.358,46"),
    ('useGrouping="true" maximumFractionDigits="0" separatorChars=". /:"/>', 1234567, "1 234 567"),
    ('minimumFractionDigits="1" maximumFractionDigits="3" suffix=" min"/>', 80, "80.0 min"),
    ('minimumFractionDigits="1" maximumFractionDigits="3"/>', 80.1234, "80.123"),
    ('minimumFractionDigits="2" maximumFractionDigits="4" separatorChars=",.  "/>', 0.5, "0,50"),
    ('maximumFractionDigits="3" minimumFractionDigits="0"/>', 2.5, "2.5"),
    ('minimumFractionDigits="2"/>', 3, "3.00"),
    ('prefix="$" maximumFractionDigits="1" negativesOutside="true"/>', -2.25, "−$2.2"),
    ('maximumFractionDigits="0" negativesInParentheses="true"/>', -7, "(7)"),
    ('hideNegatives="true" maximumFractionDigits="0"/>', -7, "7"),
    ('scalingFactor="1000" suffix="k"/>', 2500, "2.5k"),
    ('suffix=" m"><unitRule from="1000" scalingFactor="1000" suffix=" km"/></format>', 1500, "1.5 km"),
    ('suffix=" m"><unitRule from="1000" scalingFactor="1000" suffix=" km"/></format>', 999, "999 m"),
]
DATE = 1709564645000  # 4 March 2024, 15:04:05
DATES = [
    ('showDay="true" showMonth="true" showYear="true" monthFormat="number" mdyOrder="dmy" '
     'separatorChars=",..:"/>', "4.3.2024"),
    ('showDay="true" showMonth="true" showYear="true" monthFormat="twoDigits" mdyOrder="mdy"/>', "03/4/2024"),
    ('showMonth="true" showYear="true" yearAbbreviation="true"/>', "Mar 24"),
    ('showQuarter="true" showYear="true" quarterPrefix="Q"/>', "2024 Q1"),
    ('showHour="true" showMinute="true" showSecond="true"/>', "15:04:05"),
    ('showHour="true" showMinute="true" hourFormat="amPm"/>', "3:04 PM"),
]

CASES = [dict(g="abc"[i % 3], u=i, v=i * i % 17, w=i % 5 or None) for i in range(12)]


def of(name, group=None):
    return [case[name] for case in CASES if case[name] is not None and group in (None, case["g"])]


def shares(values, factor):
    return {group: factor * value / sum(values.values()) for group, value in values.items()}


SUMS = {group: sum(of("v", group)) for group in "abc"}
# element, method, value by category
VALUES = [
    (X_G + Y_V, "sum", SUMS),
    (X_G + Y_V, "percent", shares(SUMS, 100)),
    (X_G + Y_V, "fraction", shares(SUMS, 1)),
    (X_G, "percentCount", dict.fromkeys("abc", 100 / 3)),
    (X_G + Y_V, "standardDeviation", {group: statistics.stdev(of("v", group)) for group in "abc"}),
    (X_G + Y_V, "variance", {group: statistics.variance(of("v", group)) for group in "abc"}),
    (X_G + Y_V, "median", {group: statistics.median(of("v", group)) for group in "abc"}),
    (X_G + Y_V, "midrange", {g: (min(of("v", g)) + max(of("v", g))) / 2 for g in "abc"}),
    (X_G + '<y variable="w"/>', "mean", {group: statistics.fmean(of("w", group)) for group in "abc"}),
    (X_G + '<y variable="w"/>', "validCount", {group: len(of("w", group)) for group in "abc"}),
    (X_G + Y_V, "cumulativeSum", {"a": SUMS["a"], "b": SUMS["a"] + SUMS["b"], "c": sum(SUMS.values())}),
    (X_G + Y_V, "cumulativePercent", {"a": 100 * SUMS["a"] / sum(SUMS.values()), "c": 100}),
    (X_G, "cumulativeCount", {"a": 4, "b": 8, "c": 12}),
]


def values_of(spec, x="g", number=0):
    layer = list(layers(spec))[number]
    found = vegasteps.transformed(spec["datasets"]["s"], layer["transform"])
    return {row[x]: row[layer["encoding"]["y"]["field"]] for row in found}


class Values(unittest.TestCase):
    def near(self, found, expected, what=None):
        for key, value in expected.items():
            self.assertAlmostEqual(found[key], value, msg=(what, key, found))

    def test_numbers_and_dates(self):
        for words, value, text in NUMBERS:
            self.assertEqual(label_of(value, words), text, words)
        for words, text in DATES:
            self.assertEqual(label_of(DATE, 'baseFormat="date" ' + words, "d"), text, words)
        # Seconds of a time of day.
        self.assertEqual(label_of(3725, 'baseFormat="time" showHour="true" showMinute="true"/>'), "01:02")

    def test_signs_of_axes(self):
        # Those of the chart's first format, where an axis has no format of its own.
        spec, _ = draw(chart(f'<point id="p">{X_U}{Y_V}</point>',
                             '<dimension id="dx"><axis><majorTicks/></axis></dimension><dimension id="dy"/>').replace(
            'sourceName="w"/>', 'sourceName="w"><format separatorChars=",.  "/></sourceVariable>'))
        text = next(layers(spec))["encoding"]["x"]["axis"]["labelExpr"]
        self.assertEqual(vegasteps.evaluate(text, {"label": "1,234.5"}), "1.234,5")
        self.assertNotIn("config", spec)

    def test_summaries(self):
        for content, method, expected in VALUES:
            found = values_of(draw(chart(f'<interval id="e">{content}{summary(method)}</interval>'))[0])
            self.near(found, expected, method)
        weighted = chart(f'<interval id="e">{X_G}{summary("count")}</interval>').replace(
            "g;u;v;w;d", "g;u;v;$WEIGHT;d").replace('sourceName="w"', 'sourceName="$WEIGHT"')
        self.near(values_of(draw(weighted)[0]), {group: sum(of("w", group)) for group in "abc"})
        binned = draw(chart(f'<interval id="e">{X_U}<binStatistic binWidth="5" binStart="0"/></interval>'))[0]
        self.near(values_of(binned, "u_bin"), {0: 5, 5: 5, 10: 2})
        last = draw(chart(f'<interval id="e">{X_U}<binStatistic binCount="2"/></interval>'))[0]
        self.near(values_of(last, "u_bin"), {0: 6, 5.5: 6})

    def test_ranges(self):
        spec, _ = draw(chart(f'<edge id="e">{X_G}<y variable="vw"/>{summary("range")}</edge>'))
        layer = next(layers(spec))
        rows = vegasteps.transformed(spec["datasets"]["s"], layer["transform"])
        for row in rows:
            whole = [case for case in CASES if case["g"] == row["g"] and case["w"] is not None]
            self.assertEqual(row["range_low"], min(min(c["v"], c["w"]) for c in whole))
            self.assertEqual(row["range_high"], max(max(c["v"], c["w"]) for c in whole))

    def test_slices(self):
        pie = (f'<interval id="e"><x variable="v"/><color variable="g"/>{summary("sum")}</interval>',
               '<dimension id="dx"/>')
        for words, start, turn in [("", math.pi / 2, 1), ('startAngle="90"', 0, 1),
                                   ('startAngle="90" counterClockwise="true"', 0, -1)]:
            spec, _ = draw(chart(*pie, transforms=f"<polarTransform {words}/>"))
            layer = next(layers(spec))
            low, high = layer["encoding"]["theta"]["scale"]["range"]
            self.assertAlmostEqual(low, start, msg=words)
            self.assertAlmostEqual(high - low, turn * 2 * math.pi, msg=words)
            rows = {row["g"]: row for row in vegasteps.transformed(spec["datasets"]["s"], layer["transform"])}
            self.assertAlmostEqual(rows["b"]["slice_start"], SUMS["a"] / sum(SUMS.values()))
            self.assertAlmostEqual(rows["b"]["slice_end"], 1 - SUMS["c"] / sum(SUMS.values()))
        rose, _ = draw(chart(f'<interval id="e">{X_G}{Y_V}{summary("sum")}</interval>',
                             transforms='<polarTransform startAngle="90"/>'))
        layer = next(layers(rose))
        rows = {row["g"]: row for row in vegasteps.transformed(rose["datasets"]["s"], layer["transform"])}
        self.assertAlmostEqual(rows["c"]["slice_start"], 2 / 3)
        self.assertEqual(layer["encoding"]["radius"]["field"], "sum_v")

    def test_categories(self):
        domain = '<categoricalDomain id="cd">%s</categoricalDomain>'
        g = 'categorical="true" source="s" sourceName="g"/>'
        for words, inner, expected in [
            ('domain="cd"', "<categories>c;a</categories>", ["a", "c"]),
            ('domain="cd"', '<categories remove="true">c</categories>', ["a", "b"]),
            ('domain="cd"', '<simpleSort method="natural" descending="true"/>', ["c", "b", "a"]),
            ('domain="cd"', '<simpleSort method="explicit"><categoryOrder>b;c</categoryOrder></simpleSort>', ["b", "c", "a"]),
            ('domain="cd"', '<simpleSort method="natural"><sortMove category="a" first="false"/></simpleSort>', ["b", "c", "a"]),
            ('domain="cd"', '<statisticSort statVariable="v" method="mean"/>', sorted("abc", key=lambda k: SUMS[k])),
            ("", '', ["a", "b", "c"]),
        ]:
            text = chart(f'<interval id="e">{X_G}{Y_V}</interval>', more=domain % inner).replace(
                g, words + " " + g)
            layer = next(layers(draw(text)[0]))
            self.assertEqual(layer["encoding"]["x"]["scale"]["domain"], expected, inner)
            shown = vegasteps.transformed([{"g": key, "v": 1} for key in "abc"], layer.get("transform", ()))
            self.assertEqual({row["g"] for row in shown}, set(expected))
        relabelled = chart(f'<interval id="e">{X_G}{Y_V}</interval>').replace(
            g, g[:-2] + '><format><relabel from="a" to="Alpha"/></format></sourceVariable>')
        spec, _ = draw(relabelled)
        self.assertEqual(next(layers(spec))["encoding"]["x"]["scale"]["domain"], ["Alpha", "b", "c"])
        self.assertEqual(spec["datasets"]["s"][0]["g"], "Alpha")
        merged = chart(f'<interval id="e">{X_G}{Y_V}</interval>').replace(
            g, g[:-2] + f'><aggregation category="Rest" variable="v" minFraction="{(SUMS["b"] + 0.5) / sum(SUMS.values())}"/></sourceVariable>')
        kept = [key if SUMS[key] > SUMS["b"] else "Rest" for key in "abc"]
        self.assertEqual(next(layers(draw(merged)[0]))["encoding"]["x"]["scale"]["domain"],
                         list(dict.fromkeys(kept)))

    def test_derived_variables(self):
        names = "".join(f'<derivedVariable id="e{i}" value="{text}"/>' for i, text in enumerate(
            ["u/v", "v/u", "pow(u,2)-v", "u &gt; 4 ? 1 : 0", "max(u,v)", "log10(u+1)", "-u^2", "w*2"]))
        expected = [lambda u, v, w: u / v if v else None, lambda u, v, w: v / u if u else None,
                    lambda u, v, w: u * u - v, lambda u, v, w: float(u > 4), lambda u, v, w: max(u, v),
                    lambda u, v, w: math.log10(u + 1), lambda u, v, w: u * u, lambda u, v, w: w and 2 * w]
        points = "".join(f'<point id="p{i}">{X_U}<y variable="e{i}"/></point>' for i in range(len(expected)))
        rows = draw(chart(points, more=names))[0]["datasets"]["s"]
        for case, row in zip(CASES, rows):
            for i, compute in enumerate(expected):
                value = compute(case["u"], case["v"], case["w"])
                if value is None:
                    self.assertIsNone(row[f"e{i}"])
                else:
                    self.assertAlmostEqual(row[f"e{i}"], value, msg=i)

    def test_looks(self):
        blue = "#4c78a8"
        for words, expected in [
            ("", {"fill": blue, "stroke": "transparent", "opacity": 1}),
            ('color="#ff0000" size="6px"', {"fill": "#ff0000", "stroke": "transparent", "opacity": 1, "size": 36}),
            ('color="transparent" color2="#00ff00"', {"fill": "transparent", "stroke": "#00ff00", "strokeWidth": 1}),
            ('color="red" opacity="0.5" fill-opacity="0.25"', {"opacity": 0.5, "fillOpacity": 0.25}),
            ('color="red" color2="black" stroke-width="3pt"', {"strokeWidth": 4, "stroke": "black"}),
            ('color="red" symbol="cross"', {"stroke": "red"}),
        ]:
            spec, _ = draw(chart(f'<point id="p" style="st">{X_U}{Y_V}</point>', more=f'<style id="st" {words}/>'))
            mark = next(layers(spec))["mark"]
            self.assertEqual({key: mark.get(key) for key in expected}, expected, words)
        spec, _ = draw(chart(
            f'<edge id="e" style="st">{X_G}<y variable="uv"/>{summary("range")}<color id="k" variable="g"/></edge>',
            more='<style id="st" symbol="ibeam" stroke-width="2px" opacity="0.5"/>'))
        rule, *caps = layers(spec)
        for cap in caps:
            self.assertEqual(cap["encoding"]["fill"], rule["encoding"]["stroke"])
            self.assertEqual((cap["mark"]["opacity"], cap["mark"]["thickness"]), (0.5, 2))
        self.assertEqual(len(caps), 2)
        # Symbols of a legend of sizes are those of the marks; so is their opacity.
        spec, _ = draw(chart(f'<point id="p" style="st">{X_U}{Y_V}<size id="k" variable="w" low="3px" high="9px"/></point>',
                             more='<style id="st" color="#ff0000" opacity="0.3"/><legend id="l"><legendTarget target="k"/></legend>'))
        legend, points = layers(spec)
        self.assertEqual([legend["mark"][key] for key in ("fill", "opacity")], ["#ff0000", 0.3])
        self.assertEqual(points["encoding"]["size"]["scale"]["range"], [9, 81])
        clear = draw(chart(f'<point id="p">{X_U}{Y_V}<transparency variable="w" low="0.1" high="0.7"/></point>'))[0]
        found = next(layers(clear))["encoding"]["opacity"]["scale"]["range"]
        self.assertAlmostEqual(found[0], 0.9)
        self.assertAlmostEqual(found[1], 0.3)
        hue = draw(chart(f'<point id="p" style="st">{X_U}{Y_V}<colorComponent variable="u" type="hue" low="0.25" high="0.5"/></point>',
                         more='<style id="st" color="#ff0000"/>'))[0]
        self.assertEqual(next(layers(hue))["encoding"]["fill"]["scale"]["range"], ["#80ff00", "#00ffff"])

    def test_missing_colours(self):
        hole = "<row>;12;3;1;2024-01-20 00:00:00.000</row></embeddedSource>"
        for words, isLeftOut in [("", True), ('missing="#777777"', False)]:
            spec, _ = draw(chart(f'<point id="p">{X_U}{Y_V}<color variable="g" {words}/></point>').replace(
                "</embeddedSource>", hole))
            layer = next(layers(spec))
            shown = vegasteps.transformed(spec["datasets"]["s"], layer.get("transform", ()))
            self.assertEqual(len(shown), 12 if isLeftOut else 13)
            self.assertEqual("condition" in layer["encoding"]["fill"], not isLeftOut)

    def test_domains(self):
        domain = '<intervalDomain id="few"><range min="3"/><range max="9"/></intervalDomain>'
        for words, expected in [('domain="few"', [3, 9]),
                                ('domain="few" unionDomain="true"', {"unionWith": [3, 9]})]:
            spec, _ = draw(chart(f'<interval id="e">{X_G}{Y_V}{summary("sum")}</interval>',
                                 f'<dimension id="dx"/><dimension id="dy" {words}/>', more=domain))
            layer = next(layers(spec))
            self.assertEqual(layer["encoding"]["y"]["scale"]["domain"], expected)
            self.assertEqual("clip" in layer["mark"], isinstance(expected, list))
        log = '<dimension id="dx"/><dimension id="dy"><scale method="log"/></dimension>'
        for content, base in [(X_G, 0.1), (X_G + Y_V, 0.1), (X_G + Y_V + summary("fraction"), 0.01)]:
            spec, _ = draw(chart(f'<interval id="e">{content}</interval>', log))
            encoding = next(layers(spec))["encoding"]
            self.assertAlmostEqual(encoding["y"]["scale"]["domainMin"], base)
            self.assertAlmostEqual(encoding["y2"]["datum"], base)
        ticks = ('<dimension id="dx"/><dimension id="dy"><scale method="log"/><axis><majorTicks>'
                 '<format maximumFractionDigits="0"/></majorTicks></axis></dimension>')
        axis = next(layers(draw(chart(f'<interval id="e">{X_G}</interval>', ticks))[0]))["encoding"]["y"]["axis"]
        self.assertEqual(axis["values"], [1, 2, 5])

    def test_derived_axes(self):
        axis = ('<dimension id="dx"/><dimension id="dy"><axis id="a1"><majorTicks/></axis><axis id="a2" transform="%s">'
                '<majorTicks delta="%s"/>%s</axis></dimension>')
        parameter = '<axisTransformParameter parameterName="%s" parameterValue="%s"/>'
        for kind, delta, numbers, first, last in [
            ("ratio", 10, {"base-ratio": 5, "derived-ratio": 9, "base-match": 0, "derived-match": 32}, 30, 60),
            ("ratio", 1, {"base-ratio": 1, "derived-ratio": 1, "base-match": 273, "derived-match": 0}, -273, -257),
            ("percent", 25, {"base-ratio": sum(SUMS.values()), "derived-ratio": 100}, 0, 25),
        ]:
            parameters = "".join(parameter % item for item in numbers.items())
            method = summary("sum") if kind == "percent" else ""
            spec, _ = draw(chart(f'<point id="p">{X_G}{Y_V}{method}</point>', axis % (kind, delta, parameters)))
            found = [layer["encoding"]["y"]["axis"] for layer in layers(spec)
                     if (layer["encoding"]["y"].get("axis") or {}).get("orient") == "right"]
            texts = [vegasteps.evaluate(found[0]["labelExpr"], {"value": value}) for value in found[0]["values"]]
            self.assertEqual([float(text.replace("−", "-")) % delta for text in texts], [0] * len(texts))
            self.assertIn(str(first).replace("-", "−"), texts)
            self.assertIn(str(last).replace("-", "−"), texts)

    def test_hidden_and_sides(self):
        hidden = '<style id="h" visible="false"/>'
        spec, _ = draw(chart(
            f'<point id="p">{X_U}{Y_V}<color id="k" variable="g"/></point><lineGuide id="a" y="3" style="h"/>',
            more=hidden + '<legend id="l" style="h"><legendTarget target="k"/></legend>'
            '<labelFrame id="t" style="h"><label><text>Gone</text></label></labelFrame>'))
        self.assertEqual([layer.get("description") for layer in layers(spec)], ["p"])
        self.assertNotIn("Gone", json.dumps(spec))
        for angle, expected in [(30, -30), (-45, 45), (90, -90)]:
            ticks = f'<dimension id="dx"><axis><majorTicks labelAngle="{angle}"/></axis></dimension><dimension id="dy"/>'
            spec, _ = draw(chart(f'<point id="p">{X_G}{Y_V}</point>', ticks))
            self.assertEqual(next(layers(spec))["encoding"]["x"]["axis"]["labelAngle"], expected)
        # Labels that don't fit their bands slant.
        for text, expected in [("b", 0), ("b" * 60, -45)]:
            spec, _ = draw(chart(f'<point id="p">{X_G}{Y_V}</point>', ticks.replace('labelAngle="90"', "")).replace(
                "<row>b;", f"<row>{text};"))
            self.assertEqual(next(layers(spec))["encoding"]["x"]["axis"]["labelAngle"], expected)

    def test_lines_and_legends(self):
        spec, _ = draw(chart(f'<line id="e">{X_U}{Y_V}<split variable="g"/></line>'))
        self.assertEqual(next(layers(spec))["encoding"]["detail"], [{"field": "g", "type": "nominal"}])
        spec, _ = draw(chart(f'<line id="e">{X_U}{Y_V}<color id="k" variable="g"/><dash id="k2" variable="g"/></line>', more=(
            '<legend id="l"><legendTarget target="k"/><legendTarget target="k2"/></legend>')))
        legend, line = layers(spec)
        self.assertEqual(set(legend["encoding"]), {"stroke", "strokeDash"})
        self.assertEqual(*(json["legend"] for json in legend["encoding"].values()))
        spec, _ = draw(chart(f'<schema id="e">{X_G}{Y_V}<tukeyStatistic fence="2.5"/></schema>'))
        self.assertEqual(next(layers(spec))["mark"]["extent"], 2.5)


unittest.main(argv=[sys.argv[0], *sys.argv[1:]])

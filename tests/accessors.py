"""accessors.py OUTPUT HEADER...: writes the model's accessors as a C++ table for the tests.

Accessors are told by their signatures alone: what one is about comes from its name, so that a body
that names another attribute is caught. A public member of no known form that isn't in HAND_WRITTEN
ends the build.
"""
import re
import sys

# By class, the members that model_test.cpp has cases of its own for.
HAND_WRITTEN = {
    "CTAesthetic": "getSourceVariable",
    "CTCoordinate": "[gs]etVariable|get(Source|Expression)Variable",
    "CTVariableType": "getCategoricalDomain|setDomain",
    "PlXBaseElement": "getImplementation|getVisualization|[GS]etAttribute|importAttributes"
                      "|getElementById|doesIdExist|getStyleById|objectOf",
    "PlXDocument": "getRoot",
    "PlXExtension": "[gs]etAttribute",
    "PlXExtensionVis": "[gs]et(Title|Footnote|Text|Key|StatisticsSummary|Legend)",
    "PlXGraph": "getCoordinates|removeLocation|removeElement",
    "PlXStyle": "([gs]et|is)(Width|FontSize|Size)(Present)?|getPreferredMinMax",
    "PlXVisualization": "AsUTF8|reparentContainerChildren|store",
}
# What properties that aren't stated read as, where that isn't empty, 0 or false.
ABSENT = {
    "PlXAxis::transform": "spell(PlXAxis::transform_none)",
    "PlXDelimitedFileSource::namesinfirstline": 'u"1"',
    "PlXDistributionStatistic::distribution": "spell(PlXDistributionStatistic::distribution_normal)",
    "PlXScale::method": "spell(PlXScale::method_linear)",
    "PlXStyle::visible": 'u"1"',
}
# What adders are given, by the type of the parameter.
ARGUMENTS = {
    "const XMLCh*": 'u"argument"',
    "double": "0.5",
    "CTAesthetic*": "nullptr",
    "CTVariableType&": "*chart.addSourceVariable(nullptr)",
    "PlXBaseElement&": "chart",
    "PlXDescription::ENUM_name": "PlXDescription::name_mean",
    "PlXLocation::ENUM_part": "PlXLocation::part_top",
    "PlXScale::ENUM_method": "PlXScale::method_log",
    "PlXStyle&": "*chart.addStyle()",
}
# Types of values: the dialect's for them, and values. Flags are told by 0 and 1.
WHOLE = ("Integer", "0", "7", "2147483647")
VALUE_TYPES = {
    "const XMLCh*": ("Text", "", "plain", r''' <b>&\"it's\"</b>\n\t\r ]]> \U0001F4C8\u00E9 '''),
    "bool": ("Flag", "1", "0"),
    "double": ("Number", "0.1", "-1e-300", "1.7976931348623157e+308", "5e-324", "0", "1e+21"),
    "int": (*WHOLE, "-2147483648"),
    "unsigned": (*WHOLE, "4294967295"),
    "long": (*WHOLE, "9223372036854775807", "-9223372036854775808"),
    "unsigned long": (*WHOLE, "9223372036854775807"),
}
# What accessors do, and their forms: result, name, parameters. V is the type of a value.
FORMS = {
    "getter": (r"V", r"get(\w+)", r""),
    "one": (r"\w+\*", r"get(\w+)", r""),
    "all": (r"std::vector<\w+\*>", r"get(\w+)s", r""),
    "setter": (r"void", r"set(\w+)", r"V|\w+&"),
    "present": (r"V", r"is(\w+)Present", r""),
    "adder": (r"\w+\*", r"add(\w+)", r".*"),
    "remover": (r"void", r"remove(\w+)", r""),
    "removerAt": (r"void", r"remove(\w+)", r"V"),
    # Not in the table: model_test.cpp has cases of its own.
    "removerOf": (r"void", r"remove(\w+)", r"\w+&"),
}
MEMBER = re.compile(r"(?:(public|protected|private):(?!:)"
                    r"|(?:enum|using) (ENUM_\w+) (?:: int \{([^}]*)\}|= (\w+::\w+));"
                    r"|(?:template <[^<>]*> |explicit |static |virtual )*([^;{}(]*?) ?(~?\w+|operator=)"
                    r"\(([^()]*)\)[^;{}]*(?:;|\{[^{}]*\})"
                    r"|[^;{}]*;) ?")


class Class:
    def __init__(self, name, base):
        self.name, self.base, self.enums = name, base, {}
        # By what they do and what they are about: name, result, types of parameters, takes an id.
        self.accessors = {does: {} for does in FORMS}


def fail(text):
    sys.exit("accessors.py: " + text)


def enum_of(classes, scope, type_name):
    """The enumerators, with the class that declares them; null for another type."""
    scope, type_name = type_name.split("::") if "::" in type_name else (scope, type_name)
    while scope in classes and type_name not in classes[scope].enums:
        scope = classes[scope].base
    return classes[scope].enums[type_name] if scope in classes else None


def file_accessor(classes, cls, result, name, parameters):
    types = [re.sub(r" \w+$", "", p.strip()) for p in parameters.split(",") if p]
    form = lambda t: "V" if t in VALUE_TYPES or enum_of(classes, cls.name, t) else t
    for does, (results, names, parameter) in FORMS.items():
        about = re.fullmatch(names, name)
        if (about and re.fullmatch(results, form(result))
                and re.fullmatch(parameter, ",".join(map(form, types)))
                and (does != "adder" or set(types) <= set(ARGUMENTS))):
            # isBorderLeftPresent() is about the same as getBorder_left().
            key = about[1].replace("_", "").lower()
            takes_id = parameters.startswith("const XMLCh* id")
            return cls.accessors[does].setdefault(key, []).append((name, result, types, takes_id))
    fail(f"unknown form of accessor: {result} {cls.name}::{name}({parameters})")


def read(classes, path):
    with open(path, encoding="utf-8") as file:
        text = " ".join(re.sub(r"(//|#)[^\n]*", "", file.read()).split())
    for head in re.finditer(r"class CHARTXML_API (\w+)(?: : public (\w+))? \{ ", text):
        cls = classes[head[1]] = Class(head[1], head[2])
        access, at = "private", head.end()
        while not text.startswith("};", at):
            member = MEMBER.match(text, at) or fail(f"can't read {cls.name}: {text[at:at + 60]}")
            at = member.end()
            label, enum, enumerators, alias, result, name, parameters = member.groups()
            access = label or access
            if enum:
                cls.enums[enum] = (enum_of(classes, cls.name, alias) if alias else
                                   [f"{cls.name}::{e}" for e in re.findall(r"(\w+) =", enumerators)])
            elif access == "public" and not name and "(" in member[0]:
                fail(f"can't read {cls.name}: {member[0]}")
            elif (access == "public" and name and name.lstrip("~") not in (cls.name, "operator=")
                  and not re.fullmatch(HAND_WRITTEN.get(cls.name, ""), name)):
                file_accessor(classes, cls, result, name, parameters)


def row(cls, key, **members):
    """Members that the class doesn't have stay null."""
    text = "".join(f",\n    .{m} = {code}" for m, code in members.items() if code)
    return f'  rows.push_back({{.className = "{cls.name}", .name = "{key}"{text}}});\n'


def function(cls, does, key, body, parameters="", arguments=""):
    """A lambda over the first accessor that does that; {} in its body is the call."""
    for name, *_ in cls.accessors[does].get(key, [])[:1]:
        call = f"as<{cls.name}>(o).{name}({arguments})"
        return f"[](PlXBaseElement& o{parameters}) {body.format(call)}"


def property_row(classes, cls, key, result, target=None):
    enumerators = enum_of(classes, cls.name, result)
    value = f"{cls.name}::{result}" if enumerators and "::" not in result else result
    absent = f"spell<{value}>({{}})" if value != "const XMLCh*" else 'u""'
    kind, *samples = VALUE_TYPES.get(value, ("Link" if target else "Word",))
    samples = [f"spell({e})" for e in enumerators or []] or [f'u"{text}"' for text in samples]
    return row(
        cls, key, type="dialect::Type::" + kind, samples="{" + ", ".join(samples) + "}", absent=ABSENT.get(f"{cls.name}::{key}", absent),
        get=function(cls, "one" if target else "getter", key, "{{ return spell({}); }}"),
        set=None if target else
        function(cls, "setter", key, "{{ {}; }}", ", const XMLCh* v", f"take<{value}>(v)"),
        link=target and
        function(cls, "setter", key, "{{ {}; }}", ", PlXBaseElement& v", f"as<{target}>(v)"),
        isPresent=function(cls, "present", key, "{{ return {}; }}"),
        remove=function(cls, "remover", key, "{{ {}; }}"),
        accepts=target and f"&is<{target}>", gives=target and f"&is<{result[:-1]}>")


def children_row(cls, key):
    add = {}
    for name, _, types, takes_id in cls.accessors["adder"].get(key, []):
        arguments = ", ".join(["id"] * takes_id + [ARGUMENTS[t] for t in types[takes_id:]])
        add[takes_id] = ("[]([[maybe_unused]] PlXVisualization& chart, PlXBaseElement& o, "
                         "[[maybe_unused]] const XMLCh* id) -> PlXBaseElement* "
                         f"{{ return as<{cls.name}>(o).{name}({arguments}); }}")
    return row(
        cls, key, one=function(cls, "one", key, "-> PlXBaseElement* {{ return {}; }}"),
        all=function(cls, "all", key, "{{ return listOf({}); }}"),
        add=add.get(False), addWithId=add.get(True),
        removeAll=function(cls, "remover", key + "s", "{{ {}; }}"),
        removeAt=function(cls, "removerAt", key, "{{ {}; }}", ", unsigned index", "index"))


def rows_of(classes, cls):
    """The rows of properties and those of children."""
    properties, children, used, accessors = "", "", set(), cls.accessors
    for key, [(_, result, *_)] in (accessors["getter"] | accessors["one"]).items():
        types = [types[0] for *_, types, _ in accessors["setter"].get(key, [])]
        if key in accessors["getter"]:
            if types != [result]:
                fail(f"{cls.name}: the getter and setter of {key} differ in type")
            properties += property_row(classes, cls, key, result)
        elif types or not (key in accessors["adder"] or key in accessors["all"]):
            properties += "".join(property_row(classes, cls, key, result, target[:-1])
                                  for target in types or [result])
            del accessors["one"][key]
        else:
            continue
        used.add(key)
    for key in dict.fromkeys([*accessors["one"], *accessors["all"], *accessors["adder"]]):
        children += children_row(cls, key)
        used |= {key, key + "s"}
    left = {key for does in accessors.values() for key in does} - used
    if left:
        fail(f"{cls.name} neither reads nor adds what some accessors are about: {left}")
    return properties, children


classes = {}
for header in sys.argv[2:]:
    read(classes, header)
properties, children = map("".join, zip(*(rows_of(classes, cls) for cls in classes.values())))
bases = "".join(f'  {{"{cls.name}", "{cls.base or ""}"}},\n' for cls in classes.values())
with open(sys.argv[1], "w", encoding="utf-8") as out:
    out.write(f"""#include "accessorwalk.h"
#include "modelclasses.h"

const std::map<std::string_view, std::string_view> baseClasses = {{
{bases}}};

std::vector<Property> makeProperties() {{
  std::vector<Property> rows;
{properties}  return rows;
}}

std::vector<Children> makeChildren() {{
  std::vector<Children> rows;
{children}  return rows;
}}
""")

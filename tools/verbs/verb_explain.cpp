#include <algorithm>
#include <iomanip>
#include <sstream>

#include "chartschema.h"
#include "commandline.h"
#include "commandschema.h"
#include "files.h"
#include "schemadocument.h"
#include "templates.h"

const char explainHelp[] =
    "usage: chartxml explain [--quiet] TEMPLATE...\n"
    "\n"
    "Writes what each command of a template asks for, with what the schema tells of its parts and\n"
    "attributes, and behind that a line FILE:LINE:COLUMN: MESSAGE for everything that is passed "
    "over\n"
    "in silence when the template is applied: elements that are no commands, elements and "
    "attributes\n"
    "that a command doesn't read, and values that don't mean anything. Of attributes that are "
    "written\n"
    "as they stand, those are told that charts don't have there. For a misspelt word the right one "
    "is\n"
    "suggested. Places are where tags start.\n"
    "\n"
    "  -q, --quiet  write only what is passed over\n"
    "  -h, --help   show this\n"
    "\n"
    "Examples:\n"
    "  chartxml explain house.xml | less\n"
    "  chartxml explain --quiet templates/*.xml && echo fine\n"
    "  vim -q <(chartxml explain --quiet house.xml)\n";

namespace {

// "a; b" in quotes, as `info` writes values.
std::string quoted(const std::string& text) {
  return '"' + escaped(text, "\"\\") + '"';
}

// Goes through one template. Each node is told before what lies in it.
class Explanation {
 public:
  Explanation(const CommandSchema& schema, const ChartElements& charts, const Template& source)
      : schema_(schema), charts_(charts), file_(source.file) {
    listing_.exceptions(std::ios::badbit);  // for lack of memory
    for (const DocumentNode& node : source.root.children) {
      if (node.isText()) {
        const std::size_t start = node.text.find_first_not_of(" \n\t");
        const std::size_t end = node.text.find_last_not_of(" \n\t") + 1;
        addLine(node, 0, quoted(node.text.substr(start, end - start)), passedOver);
        addProblem(node, "text between commands means nothing");
      } else {
        addCommand(node);
      }
    }
  }

  std::string listing() const { return listing_.str(); }
  const std::string& problems() const { return problems_; }
  std::size_t count() const { return count_; }

 private:
  static constexpr const char* passedOver = "passed over";
  static constexpr const char* blanks = " \t\r\n";

  void addLine(const DocumentNode& node, std::size_t depth, const std::string& what,
               const std::string& meaning) {
    listing_ << std::setw(5) << node.line << std::string(2 + 2 * depth, ' ') << what;
    if (!meaning.empty()) listing_ << ": " << meaning;
    listing_ << '\n';
  }

  void addProblem(const DocumentNode& node, const std::string& message) {
    problems_ += placed(node, file_, message) + '\n';
    ++count_;
  }

  void addCommand(const DocumentNode& node) {
    const std::string problem = schema_.problemOfCommand(node.name);
    if (!problem.empty()) addProblem(node, problem);
    const SchemaElement* element = schema_.find(node.name);
    if (!element || !element->isCommand) {
      addLine(node, 0, node.name, passedOver);
      return;
    }
    const std::string sentence = problem.empty() ? sentenceOf(node.name) : element->documentation;
    addLine(node, 0, node.name, (problem.empty() ? "" : "passed over. ") + sentence);
    addContent(node, *element, {}, 1);
  }

  // What makes an element as a whole do nothing.
  void addNeeds(const DocumentNode& node, const SchemaElement& element) {
    const std::string doesNothing = '\'' + node.name + "' does nothing ";
    for (const std::vector<std::string>& need : element.needs) {
      if (std::any_of(need.begin(), need.end(),
                      [&](const auto& name) { return has(node, name); })) {
        continue;
      }
      std::string names;
      for (const std::string& name : need) names += (names.empty() ? "'" : " or '") + name + '\'';
      addProblem(node, doesNothing + "without " + names);
    }
    if (node.name != "setTickLabelFormat") return;
    if (node.hasOtherNodes) addProblem(node, doesNothing + "with a comment in it");
    const auto categorical = std::pair<std::string, std::string>("categorical", "true");
    if (std::count(node.attributes.begin(), node.attributes.end(), categorical) &&
        !has(node, "stringFormat")) {
      addProblem(node, doesNothing + "for categorical axes without 'stringFormat'");
    }
  }

  // An attribute that isn't empty, or a child.
  static bool has(const DocumentNode& node, const std::string& name) {
    return std::any_of(
               node.attributes.begin(), node.attributes.end(),
               [&](const auto& each) { return each.first == name && !each.second.empty(); }) ||
           std::any_of(node.children.begin(), node.children.end(),
                       [&](const DocumentNode& child) { return child.name == name; });
  }

  // `names` are those of a parameter.
  void addContent(const DocumentNode& node, const SchemaElement& element, const ValueRule& names,
                  std::size_t depth) {
    addNeeds(node, element);
    for (const auto& [name, value] : node.attributes) {
      addAttribute(node, element, names, depth, name, value);
    }
    if (element.readsAllAttributes) addWritten(node, element, depth);
    for (const DocumentNode& child : node.children) {
      if (child.isText()) {
        addLine(child, depth, quoted(child.text), {});
      } else {
        addChild(node, child, element, depth);
      }
    }
  }

  void addChild(const DocumentNode& parent, const DocumentNode& node, const SchemaElement& element,
                std::size_t depth) {
    const auto found = element.children.find(node.name);
    const SchemaElement* definition = schema_.find(node.name);
    if (found == element.children.end() || !definition) {
      addLine(node, depth, node.name, passedOver);
      addProblem(node, "element '" + node.name + "' is not read in '" + parent.name + "'" +
                           misspelling::suggestion(node.name, namesOf(element.children)));
      return;
    }
    const SchemaChild& child = found->second;
    const bool isTaken = child.taken.empty() || &node == oneOf(parent, node.name, child.taken);
    if (!isTaken) {
      addProblem(node, "of several '" + node.name + "' in '" + parent.name + "' only the " +
                           child.taken + " one is read");
    }
    addLine(node, depth, node.name, (isTaken ? "" : "passed over. ") + child.documentation);
    addContent(node, *definition, child.names, depth + 1);
    // A cut is one value.
    if (node.name == "categoryValue" && parent.name != "setProjectionLine") addBlanks(node);
  }

  // Lists are taken as they stand.
  void addBlanks(const DocumentNode& list) {
    std::string text;
    for (const DocumentNode& child : list.children) text += child.text;
    for (const std::string& value : schemadocument::split(text, ';')) {
      const std::size_t start = std::min(value.find_first_not_of(blanks), value.size());
      const std::string bare = value.substr(start, value.find_last_not_of(blanks) + 1 - start);
      if (bare == value) continue;
      addProblem(list,
                 "the blanks around '" + bare + "' in '" + list.name + "' belong to the value");
    }
  }

  // The first or the last child of a name.
  static const DocumentNode* oneOf(const DocumentNode& parent, const std::string& name,
                                   const std::string& place) {
    const DocumentNode* result = nullptr;
    for (const DocumentNode& child : parent.children) {
      if (child.name == name && !(result && place == "first")) result = &child;
    }
    return result;
  }

  void addAttribute(const DocumentNode& node, const SchemaElement& element, const ValueRule& names,
                    std::size_t depth, const std::string& name, const std::string& value) {
    const std::string pair = name + '=' + quoted(value);
    const auto found = element.attributes.find(name);
    if (found == element.attributes.end()) {
      if (element.readsAllAttributes) return;
      addLine(node, depth, pair, passedOver);
      addProblem(node, "attribute '" + name + "' is not read in '" + node.name + "'" +
                           misspelling::suggestion(name, namesOf(element.attributes)));
      return;
    }
    const SchemaAttribute& attribute = found->second;
    const bool isParameterName = names.kind != ValueRule::Kind::any && name == "name";
    const auto problems = (isParameterName ? names : attribute.rule).problemsOf(value);
    addLine(node, depth, pair, (problems.empty() ? "" : "passed over. ") + attribute.documentation);
    for (const std::string& problem : problems) {
      addProblem(node, "attribute '" + name + "' of '" + node.name + "': " + problem);
    }
  }

  // The attributes that a command writes as they stand, on the nodes of the tag elementName or on
  // the styles that they link to by styleName.
  void addWritten(const DocumentNode& node, const SchemaElement& element, std::size_t depth) {
    const std::string tag = valueOf(node, "elementName");
    const std::string link = valueOf(node, "styleName");
    const auto charts = charts_.find(tag);
    const DialectElement* written = charts == charts_.end() ? nullptr : &charts->second;
    if (!tag.empty() && !written) {
      addProblem(node, "charts have no element '" + tag + '\'' +
                           misspelling::suggestion(tag, namesOf(charts_)));
    }
    if (written && !link.empty()) {
      const auto found = written->attributes.find(link);
      if (found == written->attributes.end() || !found->second.isLink) {
        addProblem(node, '\'' + tag + "' has no link '" + link + "' in charts" +
                             misspelling::suggestion(link, namesOf(written->attributes)));
      }
      written = &charts_.at("style");
    }
    for (const auto& [name, value] : node.attributes) {
      if (element.attributes.contains(name)) continue;
      const std::string pair = name + '=' + quoted(value);
      if (name.find(':') != name.npos) {
        addLine(node, depth, pair, passedOver);
        addProblem(node, "attribute '" + name + "' has a prefix, and is not written");
        continue;
      }
      if (!written || (name == "text" && link.empty() && written->holdsText)) {
        addLine(node, depth, pair, "");
        continue;
      }
      const auto found = written->attributes.find(name);
      const bool isKnown = found != written->attributes.end();
      addLine(node, depth, pair, isKnown ? found->second.documentation : "");
      if (isKnown || written->isFree) continue;
      std::vector<std::string> names = namesOf(written->attributes);
      for (const std::string& own : namesOf(element.attributes)) names.push_back(own);
      addProblem(node, '\'' + (link.empty() ? tag : "style") + "' has no attribute '" + name +
                           "' in charts" + misspelling::suggestion(name, names));
    }
  }

  static std::string valueOf(const DocumentNode& node, const std::string& attribute) {
    for (const auto& [name, value] : node.attributes) {
      if (name == attribute) return value;
    }
    return {};
  }

  const CommandSchema& schema_;
  const ChartElements& charts_;
  const std::string& file_;
  std::ostringstream listing_;
  std::string problems_;
  std::size_t count_ = 0;
};

}  // namespace

int runExplain(int argc, char** argv) {
  bool isQuiet = false;
  const auto files = readOptions(argc, argv, {{{"quiet", 'q', &isQuiet, nullptr}}});
  const CommandSchema schema;
  const ChartElements charts = readChartElements();
  std::size_t count = 0;
  const int result = forEachFile(files, [&](const std::string& name) {
    const Template source = readTemplate(name);
    const Explanation explanation(schema, charts, source);
    if (!isQuiet) writeOutput("template " + escaped(name) + '\n' + explanation.listing());
    writeOutput(explanation.problems());
    count += explanation.count();
  });
  if (count == 0) return result;
  complain(std::to_string(count) + (count == 1 ? " problem" : " problems"));
  return exitProblems;
}

#include "explanation.h"

#include <algorithm>
#include <iomanip>

#include <chartxml/misspelling.h>

#include "schemadocument.h"
#include "writtentexts.h"

using schemadocument::attribute;

namespace {

constexpr const char* passedOverText = "passed over";
constexpr const char* blanks = " \t\r\n";

// Calls `visit(node)` for the elements below one, in document order.
template <class Visit>
void forElementsBelow(const DocumentNode& top, bool deep, Visit visit) {
  for (const DocumentNode& child : top.children) {
    if (child.isText()) continue;
    visit(child);
    if (deep) forElementsBelow(child, deep, visit);
  }
}

// An element at any depth.
bool holds(const DocumentNode& node, const std::string& name) {
  return holdsElement(node, name, true);
}

// Whether it is the one that counts of the elements of its name below another.
bool isTaken(const DocumentNode& node, const SchemaElement& definition, const DocumentNode& top,
             const SchemaChild& child) {
  if (child.taken.empty()) return true;
  const DocumentNode* taken = nullptr;
  forElementsBelow(top, child.isDeep, [&](const DocumentNode& each) {
    const Condition with{child.takenWith, {}};
    const bool isOne =
        each.name == node.name &&
        (with.name.empty() || with.holds(each, definition) || holds(each, with.name));
    if (isOne && !(taken && child.taken == "first")) taken = &each;
  });
  return !taken || taken == &node;
}

}  // namespace

Explanation::Explanation(const CommandSchema& schema, const ChartElements& charts,
                         const DocumentNode& root)
    : schema_(schema), charts_(charts) {
  listing_.exceptions(std::ios::badbit);  // for lack of memory
  for (const DocumentNode& node : root.children) {
    if (node.isText()) {
      addTextOfRoot(node);
    } else {
      addCommand(node);
    }
  }
}

void Explanation::addLine(const DocumentNode& node, std::size_t depth, const std::string& what,
                          const std::string& effect, const std::string& meaning) {
  listing_ << std::setw(5) << node.line << std::string(2 + 2 * depth, ' ') << what;
  if (!effect.empty() || !meaning.empty()) listing_ << ": ";
  listing_ << effect << (effect.empty() || meaning.empty() ? "" : ". ") << meaning << '\n';
}

void Explanation::addFinding(const DocumentNode& node, const std::string& message,
                             PassedOver passedOver, const std::string& attribute) {
  findings_.push_back({&node, message, passedOver, attribute});
}

void Explanation::addTextOfRoot(const DocumentNode& node) {
  const std::size_t start = node.text.find_first_not_of(" \n\t");
  const std::size_t end = node.text.find_last_not_of(" \n\t") + 1;
  addLine(node, 0, ::quoted(node.text.substr(start, end - start)), passedOverText);
  addFinding(node, "text between commands means nothing", PassedOver::node);
}

void Explanation::addCommand(const DocumentNode& node) {
  const std::string problem = schema_.problemOfCommand(node.name);
  if (!problem.empty()) addFinding(node, problem, PassedOver::node);
  const SchemaElement* element = schema_.find(node.name);
  if (!element || !element->isCommand) {
    addLine(node, 0, node.name, passedOverText);
    return;
  }
  const bool isKnown = problem.empty();
  addLine(node, 0, node.name, isKnown ? "" : passedOverText,
          isKnown ? sentenceOf(node.name) : element->documentation);
  path_.push_back({&node, element});
  addContent(node, *element, nullptr, 1);
  path_.pop_back();
}

// `child` is what the parent says of the node; null for a command.
void Explanation::addContent(const DocumentNode& node, const SchemaElement& element,
                             const SchemaChild* child, std::size_t depth) {
  addNeeds(node, element);
  for (const auto& [name, value] : node.attributes) {
    addAttribute(node, element, child, depth, name, value);
  }
  if (element.readsAllAttributes) addWritten(node, element, depth);
  for (const DocumentNode& inner : node.children) {
    if (inner.isText()) {
      addLine(inner, depth, ::quoted(inner.text), {});
    } else {
      addChild(node, inner, element, depth);
    }
  }
}

// What makes an element as a whole do nothing. One that isn't a command may still stand in the way
// of another.
void Explanation::addNeeds(const DocumentNode& node, const SchemaElement& element) {
  const std::string doesNothing = '\'' + node.name + "' does nothing ";
  const PassedOver passedOver = path_.size() == 1 ? PassedOver::node : PassedOver::nothing;
  for (const Need& need : element.needs) {
    if (!need.where.name.empty() && !need.where.holds(node, element)) continue;
    std::string names;
    bool isThere = false;
    for (const std::string& name : need.names) {
      // A bad value is told as such.
      const bool isStated = need.isWithout && !attribute(node, name).empty();
      isThere = isThere || isStated || Condition{name, {}}.holds(node, element);
      names += (names.empty() ? "'" : " or '") + name + '\'';
    }
    if (isThere == need.isWithout) continue;
    addFinding(node,
               doesNothing + (need.isWithout ? "without " : "with ") + names +
                   (need.where.name.empty() ? "" : " beside " + need.where.text()),
               passedOver);
  }
  if (node.name != "setTickLabelFormat") return;
  if (node.hasOtherNodes) addFinding(node, doesNothing + "with a comment in it", passedOver);
  if (attribute(node, "categorical") == "true" && !holds(node, "stringFormat")) {
    addFinding(node, doesNothing + "for categorical axes without 'stringFormat'", passedOver);
  }
}

// The elements around a node that read it: its parent, and those that look for it at any depth.
std::vector<Explanation::Reader> Explanation::readersOf(const std::string& name) const {
  std::vector<Reader> readers;
  for (auto each = path_.rbegin(); each != path_.rend(); ++each) {
    const auto found = each->element->children.find(name);
    if (found == each->element->children.end()) continue;
    if (each == path_.rbegin() || found->second.isDeep) {
      readers.push_back({each->node, each->element, &found->second});
    }
  }
  return readers;
}

// Whether something in a node is read by those around it.
bool Explanation::holdsRead(const DocumentNode& node) const {
  bool isHeld = false;
  forElementsBelow(node, true, [&](const DocumentNode& inner) {
    for (const Place& place : path_) {
      const auto found = place.element->children.find(inner.name);
      isHeld = isHeld || (found != place.element->children.end() && found->second.isDeep);
    }
  });
  return isHeld;
}

// Why a child isn't read; empty when it is.
std::string Explanation::problemOf(const DocumentNode& node, const Reader& reader) const {
  const SchemaChild& child = *reader.child;
  const std::string whose = "element '" + node.name + "' in '" + reader.node->name + "' ";
  const std::string unread = child.reading.problemIn(*reader.node, *reader.element);
  const bool isSaved = std::ranges::any_of(
      child.reading.readWith, [&](const std::string& name) { return holds(node, name); });
  if (!unread.empty() && !isSaved) return whose + unread;
  const auto stated = child.standsFor.find(attribute(node, "name"));
  if (stated != child.standsFor.end()) {
    const Condition beside{stated->second, {}};
    if (beside.holds(*reader.node, *reader.element)) {
      return "parameter '" + stated->first + "' in '" + reader.node->name +
             "' is not read beside " + beside.text();
    }
  }
  if (isTaken(node, *schema_.find(node.name), *reader.node, child)) return {};
  return "of several '" + node.name + "' in '" + reader.node->name + "' only the " + child.taken +
         " one " + (child.takenWith.empty() ? "" : "with '" + child.takenWith + "' ") + "is read";
}

void Explanation::addChild(const DocumentNode& parent, const DocumentNode& node,
                           const SchemaElement& element, std::size_t depth) {
  const std::vector<Reader> readers = readersOf(node.name);
  const SchemaElement* definition = schema_.find(node.name);
  // The text of an element counts with that of a list around it.
  const bool isWhole = !holdsRead(node) && parent.name != "categoryValue";
  const PassedOver wholly = isWhole ? PassedOver::node : PassedOver::nothing;
  if (readers.empty() && parent.name == "setTickLabelFormat") {
    addLine(node, depth, node.name, "not read");
    addFinding(parent, "'" + parent.name + "' does nothing with '" + node.name + "' in it",
               PassedOver::node);
    return;
  }
  if (readers.empty() || !definition) {
    addLine(node, depth, node.name, wholly == PassedOver::node ? passedOverText : "not read");
    addFinding(node,
               "element '" + node.name + "' is not read in '" + parent.name + "'" +
                   misspelling::suggestion(node.name, namesOf(element.children)) +
                   (isWhole ? "" : "; what lies in it is"),
               wholly);
    return;
  }
  const Reader& reader = readers.front();
  const SchemaChild& child = *reader.child;
  const std::string problem = problemOf(node, reader);
  // Beside a parameter a cycle is read if the parameter holds no length.
  const bool isSure = node.name != "cycle" || !holdsElement(*reader.node, "parameter", false);
  const bool isLost = !problem.empty() && readers.size() == 1 && isWhole && isSure;
  if (!problem.empty()) {
    addFinding(node, problem, isLost ? PassedOver::node : PassedOver::nothing);
  }
  addLine(node, depth, node.name, isLost ? passedOverText : "", child.documentation);
  path_.push_back({&node, definition});
  addContent(node, *definition, &child, depth + 1);
  path_.pop_back();
  // A cut is one value.
  if (node.name == "categoryValue" && reader.node->name != "setProjectionLine") addBlanks(node);
}

// Lists are taken as they stand.
void Explanation::addBlanks(const DocumentNode& list) {
  std::string text;
  for (const DocumentNode& child : list.children) text += child.text;
  for (const std::string& value : schemadocument::split(text, ';')) {
    const std::size_t start = std::min(value.find_first_not_of(blanks), value.size());
    const std::string bare = value.substr(start, value.find_last_not_of(blanks) + 1 - start);
    if (bare == value) continue;
    addFinding(list, "the blanks around '" + bare + "' in '" + list.name + "' belong to the value",
               PassedOver::nothing);
  }
}

void Explanation::addAttribute(const DocumentNode& node, const SchemaElement& element,
                               const SchemaChild* child, std::size_t depth, const std::string& name,
                               const std::string& value) {
  const std::string pair = name + '=' + ::quoted(value);
  const auto found = element.attributes.find(name);
  if (found == element.attributes.end()) {
    if (element.readsAllAttributes) return;
    addLine(node, depth, pair, passedOverText);
    addFinding(node,
               "attribute '" + name + "' is not read in '" + node.name + "'" +
                   misspelling::suggestion(name, namesOf(element.attributes)),
               PassedOver::attribute, name);
    return;
  }
  const SchemaAttribute& attribute = found->second;
  const std::string whose = "attribute '" + name + "' of '" + node.name + "'";
  const std::string unread = attribute.reading.problemIn(node, element);
  if (!unread.empty()) {
    addLine(node, depth, pair, passedOverText, attribute.documentation);
    addFinding(node, whose + ' ' + unread, PassedOver::attribute, name);
    return;
  }
  const bool isParameterName = child && child->names.kind != ValueRule::Kind::any && name == "name";
  const auto problems = (isParameterName ? child->names : attribute.rule).problemsOf(value);
  // Of pairs some may be read.
  const bool isInPart = attribute.rule.kind == ValueRule::Kind::keys;
  const std::string effect = isInPart                      ? "passed over in part"
                             : attribute.otherwise.empty() ? passedOverText
                                                           : attribute.otherwise;
  addLine(node, depth, pair, problems.empty() ? "" : effect, attribute.documentation);
  for (const std::string& problem : problems) {
    const bool isLost = effect == passedOverText;
    const char* joint = problem.ends_with('?') ? " " : "; ";
    addFinding(node, whose + ": " + problem + (isLost || isInPart ? "" : joint + effect),
               isLost ? PassedOver::attribute : PassedOver::nothing, name);
  }
}

// The attributes that a command writes as they stand, on the nodes of the tag elementName or on
// the styles that they link to by styleName.
void Explanation::addWritten(const DocumentNode& node, const SchemaElement& element,
                             std::size_t depth) {
  const std::string tag = attribute(node, "elementName");
  const std::string parent = attribute(node, "parentName");
  const std::string link = attribute(node, "styleName");
  for (const std::string& name : {tag, parent}) {
    if (name.empty() || charts_.contains(name)) continue;
    addFinding(
        node,
        "charts have no element '" + name + '\'' + misspelling::suggestion(name, namesOf(charts_)),
        PassedOver::node);
  }
  const auto chart = charts_.find(tag);
  const DialectElement* written = chart == charts_.end() ? nullptr : &chart->second;
  if (written && !link.empty()) {
    const auto found = written->attributes.find(link);
    if (found == written->attributes.end() || !found->second.isLink) {
      addFinding(node,
                 '\'' + tag + "' has no link '" + link + "' in charts" +
                     misspelling::suggestion(link, namesOf(written->attributes)),
                 PassedOver::node);
    }
    written = &charts_.at("style");
  }
  for (const auto& [name, value] : node.attributes) {
    if (element.attributes.contains(name)) continue;
    const std::string pair = name + '=' + ::quoted(value);
    if (name.find(':') != name.npos) {
      addLine(node, depth, pair, passedOverText);
      addFinding(node, "attribute '" + name + "' has a prefix, and is not written",
                 PassedOver::attribute, name);
      continue;
    }
    if (!written || (name == "text" && link.empty() && written->holdsText)) {
      addLine(node, depth, pair, "");
      continue;
    }
    const auto found = written->attributes.find(name);
    const bool isKnown = found != written->attributes.end();
    const bool isTold = !isKnown && !written->isFree;
    addLine(node, depth, pair, isTold ? "written as it stands" : "",
            isKnown ? found->second.documentation : "");
    if (!isTold) continue;
    std::vector<std::string> names = namesOf(written->attributes);
    for (const std::string& own : namesOf(element.attributes)) names.push_back(own);
    addFinding(node,
               '\'' + (link.empty() ? tag : "style") + "' has no attribute '" + name +
                   "' in charts, but it is written as it stands" +
                   misspelling::suggestion(name, names),
               PassedOver::nothing);
  }
}

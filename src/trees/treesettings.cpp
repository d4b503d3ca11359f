// The settings of display documents: one table of those that users name, and the operations.
#include <algorithm>
#include <charconv>
#include <climits>
#include <iterator>
#include <string_view>

#include <xercesc/dom/DOM.hpp>

#include "dialect.h"
#include "domwalk.h"
#include "report.h"
#include "treetransformer.h"

using namespace xercesc;

namespace {

constexpr const char* sourceName = "TreeTransformer";

const XMLCh rootName[] = u"displaySettings";
const XMLCh chartColours[] = u"chartColors";
const XMLCh swatchColours[] = u"swatchColors";
const XMLCh colourItem[] = u"colorItem";
const XMLCh dateFormat[] = u"dateFormat";
const XMLCh variableName[] = u"varName";
const XMLCh precisionName[] = u"precision";

// What a setting takes, in the words that users are told.
struct Values {
  enum Kind { Word, Number, Text, Colours } kind;
  const char* shown;
  long least = 0;
  long most = 0;
};

constexpr Values flag = {Values::Word, "true|false"};
constexpr Values text = {Values::Text, "TEXT"};
constexpr Values colours = {Values::Colours, "#AARRGGBB,..."};

constexpr long leastZoom = 2;
constexpr long mostZoom = 500;
constexpr Values zoom = {Values::Number, "2..500", leastZoom, mostZoom};

struct Setting {
  const char* name;
  const XMLCh* element;
  const XMLCh* attribute;  // of colours, that of each item
  Values values;
  const char* sentence;
};

const Setting settings[] = {
    {"zoom", u"treeZoom", u"factor", zoom, "The size of the tree, in percent."},
    {"orientation",
     u"treeOrientation",
     u"orientation",
     {Values::Word, "top-down|left-to-right|right-to-left"},
     "Where the tree grows, from its root on."},
    {"contents",
     u"nodeContents",
     u"contents",
     {Values::Word, "table|graph|both"},
     "What a node shows."},
    {"branchStatistics", u"branchStatistics", u"show", flag, "Whether splits show statistics."},
    {"nodeDefs", u"predictorRanges", u"show", flag, "Whether nodes show the ranges that they are."},
    {"font", u"fontData", u"family", text, "The family of the font."},
    {"background", u"colorData", u"bkndFill", text, "The colour behind the tree, #AARRGGBB."},
    {"nodeFill", u"colorData", u"nodeFill", text, "The colour of nodes."},
    {"stroke", u"colorData", u"stroke", text, "The colour of lines and texts."},
    {"chartColors", chartColours, u"value", colours, "The first colours of the nodes' graphs."},
    {"swatchColors", swatchColours, u"value", colours, "The first colours to choose from."},
    {"locale", rootName, u"locale", text, "The way of writing values, such as en-US."},
    {"language", rootName, u"olang", text, "The language of texts, in the same form."},
};

// Those whose value has several parts. Numbers have been checked when `apply` gets them.
struct Format {
  const char* name;
  const char* shown;  // the parts in small letters are numbers
  const char* sentence;
  void (*apply)(TreeTransformer& tree, const std::vector<std::string>& parts);
};

long numberOf(const std::string& part) {
  long number = 0;
  std::from_chars(part.data(), part.data() + part.size(), number);
  return number;
}

const Format formats[] = {
    {"targetDate", "NAME,width,precision", "The date format of the target.",
     [](TreeTransformer& tree, const std::vector<std::string>& parts) {
       tree.addTargetDateFormat(parts[0], numberOf(parts[1]), numberOf(parts[2]));
     }},
    {"predictorDate", "VARIABLE,NAME,width,precision", "The date format of one more predictor.",
     [](TreeTransformer& tree, const std::vector<std::string>& parts) {
       tree.addPredictorDate(parts[0], parts[1], numberOf(parts[2]), numberOf(parts[3]));
     }},
    {"predictorPrecision", "VARIABLE,precision", "The decimals of one more predictor.",
     [](TreeTransformer& tree, const std::vector<std::string>& parts) {
       tree.addPredictorPrecision(parts[0], numberOf(parts[1]));
     }},
};

// The row of a table with that name, or null.
template <class Table>
auto rowOf(const Table& table, std::string_view name) -> decltype(&table[0]) {
  const auto* row = std::find_if(std::begin(table), std::end(table),
                                 [&](const auto& each) { return name == each.name; });
  return row == std::end(table) ? nullptr : row;
}

std::vector<std::string> split(std::string_view list, char separator) {
  std::vector<std::string> items;
  for (;;) {
    const std::size_t end = list.find(separator);
    items.emplace_back(list.substr(0, end));
    if (end == list.npos) return items;
    list.remove_prefix(end + 1);
  }
}

bool isNumber(const std::string& value, long least, long most) {
  long number = 0;
  const char* end = value.data() + value.size();
  const auto [stop, error] = std::from_chars(value.data(), end, number);
  return error == std::errc() && stop == end && number >= least && number <= most;
}

bool contains(const std::vector<std::string>& items, const std::string& item) {
  return std::find(items.begin(), items.end(), item) != items.end();
}

bool accepts(const Values& values, const std::string& value) {
  switch (values.kind) {
    case Values::Word:
      return contains(split(values.shown, '|'), value);
    case Values::Number:
      return isNumber(value, values.least, values.most);
    case Values::Colours:
      return !contains(split(value, ','), "");
    default:
      return true;
  }
}

// The parts of a value, none when it doesn't fit. The first is the rest: names may hold commas.
std::vector<std::string> partsOf(const Format& format, std::string_view value) {
  const std::vector<std::string> names = split(format.shown, ',');
  std::vector<std::string> parts(names.size());
  for (std::size_t i = names.size() - 1; i > 0; --i) {
    const std::size_t comma = value.rfind(',');
    if (comma == value.npos) return {};
    parts[i] = value.substr(comma + 1);
    value = value.substr(0, comma);
    const bool isNumeric = names[i][0] >= 'a';
    if (isNumeric && !isNumber(parts[i], 0, LONG_MAX)) return {};
  }
  parts[0] = value;
  return contains(parts, "") ? std::vector<std::string>() : parts;
}

// A text in the process's multibyte encoding.
ChartString wide(const std::string& bytes) {
  ChartString result;
  return result.assignTAVOMBGeneric(bytes);
}

ChartString decimal(long number) {
  ChartString result;
  return result.assignInteger(number);
}

void setDateFormat(DOMElement* element, const std::string& name, long width, long precision) {
  element->setAttribute(u"name", wide(name).xc_str());
  element->setAttribute(u"width", decimal(width).xc_str());
  element->setAttribute(precisionName, decimal(precision).xc_str());
}

std::string placeText(const std::string& language, const std::string& country) {
  return country.empty() ? language : language + '-' + country;
}

}  // namespace

std::string TreeTransformer::SetupDisplayData() {
  constexpr const char* place = CHARTXML_HOST "/tavo/treeview";
  return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<displaySettings xmlns=\"") +
         place +
         "\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:schemaLocation=\"" +
         place + ' ' + place +
         "/treeview-1.0.xsd\">\n"
         "<treeZoom/>\n"
         "<treeOrientation/>\n"
         "<nodeContents/>\n"
         "<nodeState/>\n"
         "<predictorRanges/>\n"
         "<branchStatistics/>\n"
         "<fontData/>\n"
         "<colorData bkndFill=\"#FFFFFFFF\" nodeFill=\"#FFFFFFFF\" stroke=\"#FF000000\">\n"
         "<chartColors/>\n"
         "<swatchColors/>\n"
         "</colorData>\n"
         "</displaySettings>\n";
}

// ---- elements

// Of the root's namespace, so that a document with a prefix stays one of its schema.
DOMElement* TreeTransformer::addElement(DOMElement* parent, const XMLCh* name) {
  const DOMElement* root = display_->getDocumentElement();
  ChartString tag(root->getPrefix());
  if (!tag.empty()) tag.append(u":");
  tag.append(name);
  DOMElement* element = display_->createElementNS(root->getNamespaceURI(), tag.xc_str());
  parent->appendChild(element);
  return element;
}

DOMElement* TreeTransformer::findElement(const XMLCh* name) {
  if (!display_) return nullptr;
  return static_cast<DOMElement*>(display_->getElementsByTagNameNS(u"*", name)->item(0));
}

DOMElement* TreeTransformer::obtainElement(const XMLCh* name) {
  DOMElement* found = findElement(name);
  if (found || !display_) return found;
  return addElement(display_->getDocumentElement(), name);
}

DOMElement* TreeTransformer::GetStatFormatElement() {
  return obtainElement(u"statFormats");
}

DOMElement* TreeTransformer::GetNewPredictorItem() {
  if (!display_) return nullptr;
  DOMElement* predictors = findElement(u"predictorFormats");
  if (!predictors) predictors = addElement(GetStatFormatElement(), u"predictorFormats");
  return addElement(predictors, u"predictorItem");
}

// ---- settings

std::vector<TreeTransformer::SettingInfo> TreeTransformer::getSettings() {
  std::vector<SettingInfo> result;
  for (const Setting& row : settings) result.push_back({row.name, row.values.shown, row.sentence});
  for (const Format& row : formats) result.push_back({row.name, row.shown, row.sentence});
  return result;
}

bool TreeTransformer::setSetting(const std::string& name, const std::string& value) {
  if (!display_) return false;
  if (const Setting* setting = rowOf(settings, name)) {
    if (!accepts(setting->values, value)) return false;
    if (setting->values.kind == Values::Colours) {
      setColours(setting->element, split(value, ','));
    } else {
      obtainElement(setting->element)->setAttribute(setting->attribute, wide(value).xc_str());
    }
    return true;
  }
  const Format* format = rowOf(formats, name);
  const std::vector<std::string> parts =
      format ? partsOf(*format, value) : std::vector<std::string>();
  if (parts.empty()) return false;
  format->apply(*this, parts);
  return true;
}

// The element is made for any index, the attribute only for one that has a word.
void TreeTransformer::setWord(const char* name, int index) {
  const Setting& setting = *rowOf(settings, name);
  DOMElement* element = obtainElement(setting.element);
  const std::vector<std::string> words = split(setting.values.shown, '|');
  if (!element || index < 0 || static_cast<std::size_t>(index) >= words.size()) return;
  element->setAttribute(setting.attribute, wide(words[index]).xc_str());
}

void TreeTransformer::setColours(const XMLCh* name, const std::vector<std::string>& colours) {
  DOMElement* list = obtainElement(name);
  DOMElement* item = firstElement(list);
  for (const std::string& colour : colours) {
    while (item && !XMLString::equals(dialect::localName(item), colourItem)) {
      item = nextElement(item);
    }
    DOMElement* changed = item ? item : addElement(list, colourItem);
    changed->setAttribute(u"value", wide(colour).xc_str());
    if (item) item = nextElement(item);
  }
}

void TreeTransformer::SetZoomFactor(int factor) {
  setSetting("zoom", std::to_string(factor));
}

void TreeTransformer::SetOrientation(TreeOrientation orientation) {
  setWord("orientation", orientation);
}

void TreeTransformer::SetTreeDisplayOption(TreeDisplayOption option) {
  setWord("contents", option);
}

void TreeTransformer::ShowBranchStatistics(bool isShown) {
  setWord("branchStatistics", isShown ? 0 : 1);
}

void TreeTransformer::ShowNodeDefs(bool isShown) {
  setWord("nodeDefs", isShown ? 0 : 1);
}

void TreeTransformer::applyFont(const std::string& family) {
  setSetting("font", family);
}

void TreeTransformer::applyColors(ColorIds id, const std::vector<std::string>& colours) {
  const bool isKnown = id == ChartColors || id == SwatchColors;
  if (!display_ || !isKnown || colours.empty()) return;
  setColours(id == ChartColors ? chartColours : swatchColours, colours);
}

void TreeTransformer::SetOutputLocale(const std::string& language, const std::string& country) {
  if (!setSetting("locale", placeText(language, country))) {
    report("SetOutputLocale fatal error", sourceName, __LINE__);
  }
}

void TreeTransformer::SetOutputLanguage(const std::string& language, const std::string& country) {
  if (!setSetting("language", placeText(language, country))) {
    report("SetOutputLanguage fatal error", sourceName, __LINE__);
  }
}

// ---- formats

void TreeTransformer::addTargetDateFormat(const std::string& name, long width, long precision) {
  DOMElement* parent = GetStatFormatElement();
  if (!parent) return;
  DOMElement* element = firstElement(parent);
  while (element && XMLString::compareIString(dialect::localName(element), dateFormat) != 0) {
    element = nextElement(element);
  }
  setDateFormat(element ? element : addElement(parent, dateFormat), name, width, precision);
}

void TreeTransformer::addPredictorDate(const std::string& variable, const std::string& name,
                                       long width, long precision) {
  DOMElement* item = GetNewPredictorItem();
  if (!item) return;
  item->setAttribute(variableName, wide(variable).xc_str());
  setDateFormat(addElement(item, dateFormat), name, width, precision);
}

void TreeTransformer::addPredictorPrecision(const std::string& variable, long precision) {
  DOMElement* item = GetNewPredictorItem();
  if (!item) return;
  item->setAttribute(variableName, wide(variable).xc_str());
  item->setAttribute(precisionName, decimal(precision).xc_str());
}

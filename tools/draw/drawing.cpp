#include "drawing.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <sstream>

namespace draw {

using namespace xercesc;

Json numberJson(double value) {
  constexpr double exactlyWhole = 9007199254740992;  // 2^53
  if (!std::isfinite(value)) return nullptr;
  if (std::trunc(value) == value && std::abs(value) < exactlyWhole) {
    return static_cast<std::int64_t>(value);
  }
  return value;
}

std::string literal(const std::string& text) {
  std::string quoted = Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
  // Ends of lines for JavaScript, though not for JSON.
  for (const char* end : {"\u2028", "\u2029"}) {
    for (std::size_t at = 0; (at = quoted.find(end, at)) != quoted.npos;) {
      quoted.replace(at, 3, end[2] == '\xA8' ? "\\u2028" : "\\u2029");
    }
  }
  return quoted;
}

std::string literal(double value) {
  return std::isfinite(value) ? numberJson(value).dump() : "null";
}

std::string datum(const std::string& field) {
  return "datum[" + literal(field) + ']';
}

std::string attribute(const PlXBaseElement& object, const XMLCh* name) {
  return utf8(object.GetAttribute(name));
}

bool states(const PlXBaseElement& object, const XMLCh* name) {
  return object.getImplementation()->getAttributeNode(name);
}

std::string tagOf(const PlXBaseElement& object) {
  return utf8(object.getImplementation()->getLocalName());
}

void DrawNotes::tell(const PlXBaseElement& object, const std::string& what) {
  std::string name = tagOf(object);
  const DOMNode* node = object.getImplementation();
  for (; node && node->getNodeType() == DOMNode::ELEMENT_NODE; node = node->getParentNode()) {
    const XMLCh* id = static_cast<const DOMElement*>(node)->getAttribute(PlXUni::_id);
    if (!*id) continue;
    const std::string holder = utf8(id);
    name = node == object.getImplementation() ? holder : holder + ": " + name;
    break;
  }
  const std::string text = name + ": " + what;
  if (told_.insert(text).second) texts_.push_back(text);
}

double dateOf(const std::string& text) {
  int year = 0;
  unsigned month = 0, day = 0, hour = 0, minute = 0, second = 0, milli = 0;
  const int found = std::sscanf(text.c_str(), "%4d-%2u-%2u %2u:%2u:%2u.%3u", &year, &month, &day,
                                &hour, &minute, &second, &milli);
  if (found != 3 && found < 5) return std::nan("");
  namespace chrono = std::chrono;
  const chrono::year_month_day date{chrono::year(year), chrono::month(month), chrono::day(day)};
  if (!date.ok()) return std::nan("");
  const double days = static_cast<double>(chrono::sys_days(date).time_since_epoch().count());
  return 1000 * (60 * (60 * (24 * days + hour) + minute) + second) + milli;
}

std::vector<std::string> listItems(const std::string& text) {
  std::vector<std::string> items;
  std::istringstream in(text);
  for (std::string item; std::getline(in, item, ';');) {
    const std::size_t first = item.find_first_not_of(" \t\r\n");
    if (first == item.npos) continue;
    items.push_back(item.substr(first, item.find_last_not_of(" \t\r\n") - first + 1));
  }
  return items;
}

}  // namespace draw

// BaseTemplate's import of format elements: numberFormat, stringFormat, elapsedTimeFormat,
// dateTimeFormat and the generic format.
#include <optional>
#include <utility>
#include <vector>

#include "basetemplate.h"
#include "dialect.h"
#include "formatimport.h"
#include "plxformat.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

// Copies the attributes that the dialect has, with values that it knows: with any other the chart
// couldn't be opened again.
void importKnownAttributes(const BaseTemplate& base, PlXBaseElement& object,
                           const DOMElement& element) {
  object.importAttributes(&element);
  const dialect::Element* row = dialect::find(object.getImplementation());
  const DOMNamedNodeMap* attributes = element.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const XMLCh* name = attributes->item(i)->getNodeName();
    const dialect::Attribute* known = dialect::attributeOf(*row, name);
    const ChartString value(attributes->item(i)->getNodeValue());
    const bool isKept = known && (value.empty() ? dialect::isValue(*known, value.view())
                                                : !stated::checked(base, *known, value).empty());
    if (!isKept) object.SetAttribute(name, nullptr);
  }
}

// Sets a flag for "true" and "false"; another text leaves it alone.
void setStated(const DOMElement& element, const XMLCh* name, PlXFormat& format,
               void (PlXFormat::*set)(bool), bool whenTrue = true) {
  const XMLCh* text = element.getAttribute(name);
  if (is(text, PlXUni::_true)) (format.*set)(whenTrue);
  if (is(text, PlXUni::_false)) (format.*set)(!whenTrue);
}

template <class Number>
void setDigits(const BaseTemplate& base, const DOMElement& element, const XMLCh* name,
               PlXFormat& format, void (PlXFormat::*set)(Number)) {
  const std::optional<long> stated = stated::integer(base, &element, name);
  const std::optional<unsigned> digits = stated ? countOf(*stated) : std::nullopt;
  if (digits) (format.*set)(static_cast<Number>(*digits));
}

void importAffixes(PlXFormat& format, const DOMElement& element) {
  const XMLCh* prefix = element.getAttribute(PlXUni::_prefix);
  *prefix ? format.setPrefix(prefix) : format.removePrefix();
  const XMLCh* suffix = element.getAttribute(PlXUni::_suffix);
  *suffix ? format.setSuffix(suffix) : format.removeSuffix();
}

void importDays(PlXFormat& format, const DOMElement* date) {
  if (const DOMElement* part = firstDescendant(date, PlXUni::_dayOfWeek)) {
    format.setShowDayOfWeek(true);
    setStated(*part, PlXUni::_long, format, &PlXFormat::setDayOfWeekAbbreviation, false);
  }
  if (const DOMElement* part = firstDescendant(date, PlXUni::_dayOfMonth)) {
    format.setShowDay(true);
    format.setDayType(PlXFormat::dayType_dayOfMonth);
    setStated(*part, PlXUni::_fill, format, &PlXFormat::setDayPadding);
  }
  if (const DOMElement* part = firstDescendant(date, PlXUni::_dayOfYear)) {
    format.setShowDay(true);
    format.setDayType(PlXFormat::dayType_dayOfYear);
    setStated(*part, PlXUni::_fill, format, &PlXFormat::setDayPadding);
  }
  if (const DOMElement* part = firstDescendant(date, PlXUni::_week)) {
    format.setShowWeek(true);
    setStated(*part, PlXUni::_fill, format, &PlXFormat::setWeekPadding);
  }
}

void importMonths(PlXFormat& format, const DOMElement* date) {
  if (const DOMElement* part = firstDescendant(date, PlXUni::_month)) {
    format.setShowMonth(true);
    const XMLCh* fill = part->getAttribute(PlXUni::_fill);
    if (is(fill, PlXUni::_true)) format.setMonthFormat(PlXFormat::monthFormat_twoDigits);
    if (is(fill, PlXUni::_false)) format.setMonthFormat(PlXFormat::monthFormat_number);
  }
  if (const DOMElement* part = firstDescendant(date, PlXUni::_monthName)) {
    format.setShowMonth(true);
    const XMLCh* isLong = part->getAttribute(PlXUni::_long);
    if (is(isLong, PlXUni::_true)) format.setMonthFormat(PlXFormat::monthFormat_long);
    if (is(isLong, PlXUni::_false)) format.setMonthFormat(PlXFormat::monthFormat_short);
  }
}

void importDate(PlXFormat& format, const DOMElement* date) {
  importDays(format, date);
  importMonths(format, date);
  if (const DOMElement* part = firstDescendant(date, PlXUni::_quarter)) {
    format.setShowQuarter(true);
    const XMLCh* prefix = part->getAttribute(PlXUni::_prefix);
    if (*prefix) format.setQuarterPrefix(prefix);
    const XMLCh* suffix = part->getAttribute(PlXUni::_suffix);
    if (*suffix) format.setQuarterSuffix(suffix);
  }
  if (const DOMElement* part = firstDescendant(date, PlXUni::_year)) {
    format.setShowYear(true);
    setStated(*part, PlXUni::_showCentury, format, &PlXFormat::setYearAbbreviation, false);
  }
  if (firstDescendant(date, PlXUni::_era)) format.setShowEra(true);
}

void importTime(PlXFormat& format, const DOMElement* time) {
  if (const DOMElement* part = firstDescendant(time, PlXUni::_hour)) {
    format.setShowHour(true);
    const XMLCh* twentyFour = part->getAttribute(PlXUni::_twentyFour);
    if (is(twentyFour, PlXUni::_true)) format.setHourFormat(PlXFormat::hourFormat_twentyFour);
    if (is(twentyFour, PlXUni::_false)) format.setHourFormat(PlXFormat::hourFormat_twelve);
    if (isTrue(*part, PlXUni::_showAMPM)) format.setHourFormat(PlXFormat::hourFormat_amPm);
    setStated(*part, PlXUni::_fill, format, &PlXFormat::setHourPadding);
  }
  if (const DOMElement* part = firstDescendant(time, PlXUni::_minute)) {
    format.setShowMinute(true);
    setStated(*part, PlXUni::_fill, format, &PlXFormat::setMinutePadding);
  }
  if (const DOMElement* part = firstDescendant(time, PlXUni::_second)) {
    format.setShowSecond(true);
    setStated(*part, PlXUni::_fill, format, &PlXFormat::setSecondPadding);
    setStated(*part, PlXUni::_milliseconds, format, &PlXFormat::setShowMillis);
  }
}

}  // namespace

void BaseTemplate::importNumberFormat(PlXFormat& format, const DOMElement* element) {
  if (!element) return;
  const XMLCh* scientific = element->getAttribute(PlXUni::_scientific);
  if (is(scientific, PlXUni::_always) || is(scientific, PlXUni::_true)) {
    format.setScientific(PlXFormat::scientific_true);
  } else if (is(scientific, PlXUni::_never) || is(scientific, PlXUni::_false)) {
    format.setScientific(PlXFormat::scientific_false);
  }
  const auto setCount = [&](const XMLCh* name, auto set) {
    setDigits(*this, *element, name, format, set);
  };
  setCount(PlXUni::_minimumFractionDigits, &PlXFormat::setMinimumFractionDigits);
  setCount(PlXUni::_maximumFractionDigits, &PlXFormat::setMaximumFractionDigits);
  setCount(PlXUni::_minimumIntegerDigits, &PlXFormat::setMinimumIntegerDigits);
  setCount(PlXUni::_maximumIntegerDigits, &PlXFormat::setMaximumIntegerDigits);
  // These three are set for every text, none included; hidden negatives only when stated.
  format.setUseGrouping(isTrue(*element, PlXUni::_useGrouping));
  format.setNegativesOutside(isTrue(*element, PlXUni::_negativesOutside));
  format.setNegativesInParentheses(isTrue(*element, PlXUni::_negativesInParentheses));
  if (*element->getAttribute(PlXUni::_hideNegatives)) {
    format.setHideNegatives(isTrue(*element, PlXUni::_hideNegatives));
  }
  if (const auto factor = stated::number(*this, element, PlXUni::_scalingFactor)) {
    format.setScalingFactor(*factor);
  }
  importAffixes(format, *element);
}

void BaseTemplate::importDateTimeFormat(PlXFormat& format, const DOMElement* element) {
  if (!element) return;
  const DOMElement* date = firstDescendant(element, PlXUni::_dateFormat);
  const DOMElement* time = firstDescendant(element, PlXUni::_timeFormat);
  if (date && time) {
    format.setBaseFormat(PlXFormat::baseFormat_dateTime);
  } else if (date || time) {
    format.setBaseFormat(date ? PlXFormat::baseFormat_date : PlXFormat::baseFormat_time);
  }
  importDate(format, date);
  importTime(format, time);
  importAffixes(format, *element);
}

void BaseTemplate::importElapsedTimeFormat(PlXFormat& format, const DOMElement* element) {
  if (element) importAffixes(format, *element);
}

void BaseTemplate::importStringFormat(PlXFormat& format, const DOMElement* element) {
  if (element) importAffixes(format, *element);
}

void BaseTemplate::importFormat(PlXFormat& format, const DOMElement* element) {
  PlXVisualization* chart = format.getVisualization();
  if (chart) BaseTemplate(nullptr, *chart).replaceFormat(format, element);
}

void BaseTemplate::replaceFormat(PlXFormat& format, const DOMElement* element) {
  if (!element) return;
  // By name: what a document type gives by default is there again when it has been removed.
  const DOMNamedNodeMap* attributes = format.getImplementation()->getAttributes();
  std::vector<ChartString> names;
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    names.emplace_back(attributes->item(i)->getNodeName());
  }
  for (const ChartString& name : names) format.SetAttribute(name.xc_str(), nullptr);
  importKnownAttributes(*this, format, *element);
  format.removeUnitRules();
  if (const DOMElement* rule = firstDescendant(element, PlXUnitRule::_UTF_unitRule)) {
    importKnownAttributes(*this, *format.addUnitRule(), *rule);
  }
}

FormatImport formatImportOf(const XMLCh* name) {
  static constexpr std::pair<const XMLCh*, FormatImport> imports[] = {
      {u"format", &BaseTemplate::replaceFormat},
      {u"numberFormat", &BaseTemplate::importNumberFormat},
      {u"stringFormat", &BaseTemplate::importStringFormat},
      {u"dateTimeFormat", &BaseTemplate::importDateTimeFormat},
      {u"elapsedTimeFormat", &BaseTemplate::importElapsedTimeFormat},
      // As converted templates write them
      {u"numberformat", &BaseTemplate::importNumberFormat},
      {u"stringformat", &BaseTemplate::importStringFormat},
      {u"datetimeformat", &BaseTemplate::importDateTimeFormat},
  };
  for (const auto& [element, import] : imports) {
    if (is(name, element)) return import;
  }
  return nullptr;
}

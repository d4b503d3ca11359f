#include "placeholders.h"

#include "charttranscoder.h"
#include "facstdictionary.h"

namespace {

struct Filling {
  const std::tm& moment;
  FacSTDictionary* dictionary;
  const std::string& codePage;
};

// With at least `width` digits.
std::string digits(int number, std::size_t width) {
  const std::string text = std::to_string(number);
  return std::string(width > text.size() ? width - text.size() : 0, '0') + text;
}

std::string twoDigits(int number) {
  return digits(number, 2);
}

int year(const Filling& f) {
  return 1900 + f.moment.tm_year;
}

int month(const Filling& f) {
  return 1 + f.moment.tm_mon;
}

int hour12(const Filling& f) {
  const int hour = f.moment.tm_hour % 12;
  return hour == 0 ? 12 : hour;
}

std::string date(const Filling& f, const char* separator) {
  return digits(year(f), 4) + separator + twoDigits(month(f)) + separator +
         twoDigits(f.moment.tm_mday);
}

std::string minutesAndSeconds(const Filling& f) {
  return ":" + twoDigits(f.moment.tm_min) + ":" + twoDigits(f.moment.tm_sec);
}

ChartString word(const Filling& f, const char* english) {
  if (!f.dictionary) return english;
  return ChartTranscoder(f.codePage).transcode(f.dictionary->LookUp(english));
}

ChartString halfOfDay(const Filling& f) {
  return word(f, f.moment.tm_hour < 12 ? "a.m." : "p.m.");
}

ChartString monthName(const Filling& f) {
  constexpr const char* names[12] = {"January",   "February", "March",    "April",
                                     "May",       "June",     "July",     "August",
                                     "September", "October",  "November", "December"};
  return word(f, names[f.moment.tm_mon]);
}

ChartString dayName(const Filling& f) {
  constexpr const char* names[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                    "Thursday", "Friday", "Saturday"};
  return word(f, names[f.moment.tm_wday]);
}

struct Placeholder {
  const XMLCh* name;
  ChartString (*value)(const Filling&);
  const XMLCh* unless = nullptr;  // stays where the text held this one
};

ChartString plain(const std::string& text) {
  return ChartString(text.c_str());
}

// In the order in which they are replaced.
const Placeholder table[] = {
    {u"@@current_date@@", [](const Filling& f) { return plain(date(f, "-")); }},
    {u")DATE", [](const Filling& f) { return plain(date(f, "/")); }},
    {u"@@current_time@@",
     [](const Filling& f) { return plain(twoDigits(hour12(f)) + minutesAndSeconds(f)); }},
    {u")TIME",
     [](const Filling& f) {
       return plain(std::to_string(f.moment.tm_hour) + minutesAndSeconds(f) + " ")
           .append(halfOfDay(f));
     }},
    {u"@@current_YYYY@@", [](const Filling& f) { return plain(std::to_string(year(f))); }},
    {u"@@current_YY@@", [](const Filling& f) { return plain(twoDigits(year(f) - 2000)); }},
    {u"@@current_month@@", [](const Filling& f) { return plain(twoDigits(month(f))); }},
    {u"@@current_day@@", [](const Filling& f) { return plain(twoDigits(f.moment.tm_mday)); }},
    {u"@@current_hour24@@", [](const Filling& f) { return plain(twoDigits(f.moment.tm_hour)); }},
    {u"@@current_hour@@", [](const Filling& f) { return plain(twoDigits(hour12(f))); },
     u"@@current_hour24@@"},
    {u"@@current_min@@", [](const Filling& f) { return plain(twoDigits(f.moment.tm_min)); }},
    {u"@@current_sec@@", [](const Filling& f) { return plain(twoDigits(f.moment.tm_sec)); }},
    {u"@@current_monthname@@", monthName},
    {u"@@current_ampm@@", halfOfDay},
    {u"@@current_weekday@@", dayName},
};

}  // namespace

void placeholders::fill(ChartString& text, const std::tm& moment, FacSTDictionary* dictionary,
                        const std::string& codePage) {
  const Filling filling{moment, dictionary, codePage};
  const ChartString before = text;
  for (const Placeholder& placeholder : table) {
    if (!text.ContainsString(placeholder.name)) continue;
    if (placeholder.unless && before.ContainsString(placeholder.unless)) continue;
    text.replaceSubstring(placeholder.name, placeholder.value(filling).xc_str());
  }
}

// The local time in the form of the log: "Tue Nov 24 23:15:30 2026" and milliseconds.
#ifndef CHARTXML_CLOCKTEXT_H
#define CHARTXML_CLOCKTEXT_H

#include <string>
#include <string_view>

// One moment, taken when the object is made.
class ClockText {
 public:
  ClockText();

  // "Tue Nov 24 23:15:30"
  std::string_view untilSeconds() const { return slice(0, 19); }
  // "Nov"
  std::string_view month() const { return slice(4, 3); }
  // "24", or " 4" for a day of one digit.
  std::string_view day() const { return slice(8, 2); }
  // "23:15:30"
  std::string_view timeOfDay() const { return slice(11, 8); }
  // " 2026", with its blank.
  std::string_view year() const { return slice(19, 5); }
  // Three digits.
  std::string milliseconds() const;
  long long millisecondsSinceEpoch() const { return milliseconds_; }

 private:
  std::string_view slice(std::size_t start, std::size_t count) const;

  long long milliseconds_;
  char text_[26];  // as ctime writes it
};

#endif

#include "chartdump.h"

#include <cstdlib>
#include <fstream>
#include <string_view>

#include "clocktext.h"

namespace {

// `text` behind as many `fill` as make it that wide.
std::string padded(const std::string& text, std::size_t width, char fill) {
  return text.size() < width ? std::string(width - text.size(), fill) + text : text;
}

std::string secondsText(long long milliseconds) {
  return padded(std::to_string(milliseconds / 1000), 3, ' ') + '.' +
         padded(std::to_string(milliseconds % 1000), 3, '0');
}

// Lives from the first timing line to the end of the process.
struct Timer {
  long long first;
  long long last;
  std::string file;
};

}  // namespace

bool chartdump::isOn(ChartBase::PRINTTYPE type) {
  const char* options = std::getenv("DumpChartXMLOptions");
  if (!std::getenv("DumpChartXMLPath") || !options) return false;
  const std::string_view switches(options);
  return type >= 0 && type <= ChartBase::PRINT_PARSE_ERROR &&
         switches.size() > static_cast<std::size_t>(type) && switches[type] != '0';
}

void chartdump::write(const std::string& text, const std::string& prefix, const std::string& suffix,
                      unsigned long counter) {
  const char* folder = std::getenv("DumpChartXMLPath");
  if (!folder) return;
  const std::string number = padded(std::to_string(counter), 2, '0');
  std::ofstream dump(std::string(folder) + '\\' + prefix + number + suffix, std::ios::binary);
  dump << text;
}

void chartdump::writeTiming(const std::string& message) {
  const char* folder = std::getenv("DumpChartTimePath");
  if (!folder) return;
  const ClockText now;
  const long long time = now.millisecondsSinceEpoch();
  static Timer timer{time, time,
                     std::string(folder) + "/chartxmldebug_" + std::string(now.month()) +
                         std::string(now.day()) + ".txt"};
  std::ofstream file(timer.file, std::ios::app);
  file << " time = " << now.timeOfDay() << '.' << now.milliseconds()
       << " elapsed seconds = " << secondsText(time - timer.last)
       << " total elapsed seconds = " << secondsText(time - timer.first) << ' ' << message << '\n';
  timer.last = time;
}

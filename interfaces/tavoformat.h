// Display formats of variables, and the settings of the suite that bear on them.
#ifndef CHARTXML_TAVOFORMAT_H
#define CHARTXML_TAVOFORMAT_H

#include <cstdint>
#include <string>

#include "export.h"

// The display format of a variable.
struct TAVO_Format {
  std::uint16_t width = 0;  // characters
  std::uint8_t type = 0;    // the code of the format's type: 1 is text, 5 plain numbers, 20 dates
  std::uint8_t decimals = 0;
};

// Settings for all numbers of the process.
struct CmnSysSettings {
  std::int32_t minimumIntegerDigits = 1;  // 1 writes a zero in front of the point
  std::uint32_t flags = 0;                // the lowest bit: digits are grouped
};

// Never null; a program that embeds the library writes to the settings, or points to its own.
extern CHARTXML_API CmnSysSettings* CmnSys;

// Numbers of the general notation below this, 0.0001 at first, are written with powers of ten.
extern "C" CHARTXML_API double getgformatsmall_();
CHARTXML_API void setGFormatSmall(double number);

// The custom currency formats of the suite, numbered from 0 to 4.
class CHARTXML_API currencyFormat {
 public:
  // Texts in UTF-8.
  struct CCX {
    std::string prefix;
    std::string suffix;
    std::string negativePrefix = "-";
    std::string negativeSuffix;
    std::string decimal = ".";  // or ","
  };

  // A number that is none has the format of the first values above.
  static const CCX& GetCCX(int number);
  // Nothing happens for a number that is none.
  static void SetCCX(int number, const CCX& format);
};

#endif

#include "tavoformat.h"

#include <iterator>

namespace {

CmnSysSettings settings;
double gFormatSmall = 0.0001;

// The last answers for numbers that are none.
currencyFormat::CCX currencies[6];
constexpr int currencyCount = std::size(currencies) - 1;

bool isCurrency(int number) {
  return number >= 0 && number < currencyCount;
}

}  // namespace

CmnSysSettings* CmnSys = &settings;

double getgformatsmall_() {
  return gFormatSmall;
}

void setGFormatSmall(double number) {
  gFormatSmall = number;
}

const currencyFormat::CCX& currencyFormat::GetCCX(int number) {
  return currencies[isCurrency(number) ? number : currencyCount];
}

void currencyFormat::SetCCX(int number, const CCX& format) {
  if (isCurrency(number)) currencies[number] = format;
}

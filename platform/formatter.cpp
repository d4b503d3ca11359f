#include "formatter.h"

#include <algorithm>

#include "numbertext.h"

std::string formatter::AsString(double value, int digits) {
  if (digits >= 16) return numbertext::shortest(value);
  return numbertext::significant(value, static_cast<unsigned>(std::max(digits, 1)));
}

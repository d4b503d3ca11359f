#include "columns.h"

#include <cmath>
#include <string>

namespace {

bool isText(Kind kind, int column) {
  return kind == Kind::Texts && column % 8 == 3;
}

}  // namespace

double cellOf(Kind kind, int column, unsigned row, std::mt19937_64& random) {
  std::uniform_real_distribution<double> real(0, 1000);
  if (kind == Kind::Doubles) return std::exp(real(random) / 20) * real(random);
  if (isText(kind, column) || random() % 100 == 0) return VarDataProcessor::systemMissing;
  switch (column % 5) {
    case 0:
      return 100'000.0 + row;
    case 1:
      return static_cast<double>(random() % 9);
    case 2:
      return std::floor(real(random) * 100) / 100;
    case 3:
      return real(random);
    default:
      return 13e9 + std::floor(86'400'000 * real(random));
  }
}

Store storeOf(Kind kind, unsigned rows, int columns, int sources) {
  static const char* const regions[] = {"north", "east", "south", "west"};
  auto store = std::make_shared<VarDataProcessor>();
  std::mt19937_64 random(1);
  for (int source = 0; source < sources; ++source) {
    const std::string name = "source" + std::to_string(source);
    store->AddDataSource(name, rows);
    for (int column = 0; column < columns; ++column) {
      _varinfo info;
      store->AddVariable(name, "variable" + std::to_string(column), &info);
      for (unsigned row = 0; row < rows; ++row) {
        store->SetVariableValue(&info, row, cellOf(kind, column, row, random));
        if (isText(kind, column)) {
          store->SetStringVariableValue(&info, row, regions[random() % 4]);
        }
      }
    }
  }
  return store;
}

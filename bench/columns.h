// The stores of data that are measured.
#ifndef CHARTXML_BENCH_COLUMNS_H
#define CHARTXML_BENCH_COLUMNS_H

#include <memory>
#include <random>

#include "vardataprocessor.h"

using Store = std::shared_ptr<VarDataProcessor>;

enum class Kind {
  Mixed,    // serial numbers, codes, prices, measured values and seconds; one cell in a hundred is
            // missing
  Doubles,  // values of many magnitudes with all their digits
  Texts,    // as Mixed, but that every eighth column has one of four texts in each row
};

// Of the column of texts, the system-missing value.
double cellOf(Kind kind, int column, unsigned row, std::mt19937_64& random);

// The same on every call.
Store storeOf(Kind kind, unsigned rows, int columns, int sources = 1);

#endif

// ChartKey: a short list of numbers that orders and finds things.
#ifndef CHARTXML_CHARTKEY_H
#define CHARTXML_CHARTKEY_H

#include <compare>
#include <vector>

#include "export.h"

// A value type: copies are independent. Keys are ordered by size first and then by their values
// from the first on; the mark takes no part in it.
class CHARTXML_API ChartKey {
 public:
  // The odd primes from 3 to 229, factors for hashing the values.
  static const int PRIME_FACTOR[49];
  static const int ADD_LOWER_BOUND;

  ChartKey() : ChartKey(1) {}
  // All values are 0; a size below 0 makes an empty key.
  explicit ChartKey(int size) : values_(size > 0 ? size : 0) {}

  int size() const { return static_cast<int>(values_.size()); }
  // 0-based and unchecked.
  int& operator[](int index) { return values_[index]; }
  int operator[](int index) const { return values_[index]; }

  // A number of the caller's, 0 at first, copied with the key.
  int mark() const { return mark_; }
  void setMark(int mark) { mark_ = mark; }

  // Does nothing.
  void display() const {}

  friend bool operator==(const ChartKey& a, const ChartKey& b) { return a.values_ == b.values_; }
  friend std::strong_ordering operator<=>(const ChartKey& a, const ChartKey& b) {
    const auto bySize = a.values_.size() <=> b.values_.size();
    return std::is_neq(bySize) ? bySize : a.values_ <=> b.values_;
  }

 private:
  std::vector<int> values_;
  int mark_ = 0;
};

#endif

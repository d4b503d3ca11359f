#include "textindex.h"

#include <algorithm>

void VarDataProcessor::TextIndex::Lowest::add(unsigned index) {
  if (index >= isHeld_.size()) isHeld_.resize(index + std::size_t(1));
  if (isHeld_[index]) return;
  isHeld_[index] = true;
  heap_.push_back(index);
  std::push_heap(heap_.begin(), heap_.end(), std::greater());
}

template <class Fits>
std::optional<unsigned> VarDataProcessor::TextIndex::Lowest::find(Fits fits) {
  while (!heap_.empty()) {
    const unsigned lowest = heap_.front();
    if (fits(lowest)) return lowest;
    std::pop_heap(heap_.begin(), heap_.end(), std::greater());
    heap_.pop_back();
    isHeld_[lowest] = false;
  }
  return std::nullopt;
}

VarDataProcessor::TextIndex::TextIndex(std::vector<_tableentry>& table)
    : table_(table), firsts_(table.size(), Hash{table}, Equal{table}) {
  for (unsigned index = 0; index < table.size(); ++index) {
    const auto& [text, refCount] = table[index];
    if (refCount == 0) free_.add(index);
    if (text.empty()) {
      empty_.add(index);
    } else if (!firsts_.insert(index).second) {
      later_[text].push_back(index);
    }
  }
  for (auto& [text, indices] : later_) std::reverse(indices.begin(), indices.end());
}

std::optional<unsigned> VarDataProcessor::TextIndex::find(const std::string& text) {
  if (text.empty()) return empty_.find([this](unsigned i) { return table_[i].text.empty(); });
  const auto first = firsts_.find(std::string_view(text));
  if (first == firsts_.end()) return std::nullopt;
  return *first;
}

// To be called before the entry's text, which isn't empty, goes.
void VarDataProcessor::TextIndex::forget(unsigned index) {
  const auto first = firsts_.find(index);
  // One of the later entries is passed over when its turn comes.
  if (first == firsts_.end() || *first != index) return;
  firsts_.erase(first);
  const auto later = later_.find(table_[index].text);
  if (later == later_.end()) return;
  auto& [text, indices] = *later;
  while (!indices.empty()) {
    const unsigned next = indices.back();
    indices.pop_back();
    if (table_[next].text != text) continue;
    firsts_.insert(next);
    return;
  }
  later_.erase(later);
}

unsigned VarDataProcessor::TextIndex::add(const std::string& text) {
  if (const auto match = find(text)) {
    unsigned& refCount = table_[*match].refCount;
    // A count that was read may be full.
    if (refCount < std::numeric_limits<unsigned>::max()) ++refCount;
    return *match;
  }
  const auto isFree = [this](unsigned i) { return table_[i].refCount == 0; };
  const auto slot = free_.find(isFree);
  const unsigned index = slot.value_or(static_cast<unsigned>(table_.size()));
  if (slot) {
    if (!table_[index].text.empty()) forget(index);
    table_[index] = {text, 1};
  } else {
    table_.push_back({text, 1});
  }
  if (text.empty()) {
    empty_.add(index);
  } else {
    firsts_.insert(index);
  }
  return index;
}

void VarDataProcessor::TextIndex::remove(unsigned index) {
  _tableentry& entry = table_[index];
  if (entry.refCount == 0) return;
  if (--entry.refCount > 0) return;
  if (!entry.text.empty()) forget(index);
  entry.text = std::string();
  free_.add(index);
  empty_.add(index);
}

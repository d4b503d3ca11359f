#include "textindex.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace {

constexpr std::size_t leastSlots = 64;

}  // namespace

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

VarDataProcessor::TextIndex::Firsts::Firsts(const std::vector<_tableentry>& table)
    : table_(table), slots_(std::bit_ceil(2 * table.size() + leastSlots)) {}

std::size_t VarDataProcessor::TextIndex::Firsts::slotOf(std::string_view text,
                                                        unsigned hash) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
    const Slot& slot = slots_[at];
    if (slot.index == none) return at;
    if (slot.hash == hash && table_[slot.index].text == text) return at;
  }
}

void VarDataProcessor::TextIndex::Firsts::insert(unsigned index) {
  if (2 * (count_ + 1) > slots_.size()) resize(2 * slots_.size());
  const std::string& text = table_[index].text;
  const unsigned hash = hashOf(text);
  slots_[slotOf(text, hash)] = {hash, index};
  ++count_;
}

void VarDataProcessor::TextIndex::Firsts::erase(std::string_view text) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t hole = slotOf(text, hashOf(text));
  if (slots_[hole].index == none) return;
  --count_;
  // What stands behind moves up, unless that is before where its hash leads.
  for (std::size_t at = (hole + 1) & mask; slots_[at].index != none; at = (at + 1) & mask) {
    const std::size_t home = slots_[at].hash & mask;
    if (((at - home) & mask) < ((at - hole) & mask)) continue;
    slots_[hole] = slots_[at];
    hole = at;
  }
  slots_[hole].index = none;
}

void VarDataProcessor::TextIndex::Firsts::resize(std::size_t size) {
  const std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(size));
  for (const Slot& slot : old) {
    if (slot.index == none) continue;
    std::size_t at = slot.hash & (size - 1);
    while (slots_[at].index != none) at = (at + 1) & (size - 1);
    slots_[at] = slot;
  }
}

VarDataProcessor::TextIndex::TextIndex(std::vector<_tableentry>& table)
    : table_(table), firsts_(table) {
  for (unsigned index = 0; index < table.size(); ++index) {
    const auto& [text, refCount] = table[index];
    if (refCount == 0) free_.add(index);
    if (text.empty()) {
      empty_.add(index);
    } else if (firsts_.find(text) == Firsts::none) {
      firsts_.insert(index);
    } else {
      later_[text].push_back(index);
    }
  }
  for (auto& [text, indices] : later_) std::reverse(indices.begin(), indices.end());
}

std::optional<unsigned> VarDataProcessor::TextIndex::find(const std::string& text) {
  if (text.empty()) return empty_.find([this](unsigned i) { return table_[i].text.empty(); });
  const unsigned first = firsts_.find(text);
  if (first == Firsts::none) return std::nullopt;
  return first;
}

// To be called before the entry's text, which isn't empty, goes.
void VarDataProcessor::TextIndex::forget(unsigned index) {
  const std::string& text = table_[index].text;
  // One of the later entries is passed over when its turn comes.
  if (firsts_.find(text) != index) return;
  firsts_.erase(text);
  if (later_.empty()) return;
  const auto later = later_.find(text);
  if (later == later_.end()) return;
  std::vector<unsigned>& indices = later->second;
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

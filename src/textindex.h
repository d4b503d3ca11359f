// The index beside the text pool of a column store.
#ifndef CHARTXML_TEXTINDEX_H
#define CHARTXML_TEXTINDEX_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "vardataprocessor.h"

// Answers what a walk of the pool from its first entry on would find, without the walk. It holds
// numbers of entries only, so that each text is kept once.
class VarDataProcessor::TextIndex {
 public:
  // Takes the table as it is: a stream may bring equal texts, and texts in free entries.
  explicit TextIndex(std::vector<_tableentry>& table);

  unsigned add(const std::string& text);
  void remove(unsigned index);

 private:
  // Numbers of entries from the lowest on. One that has changed is dropped when it is come upon.
  class Lowest {
   public:
    void add(unsigned index);
    // The lowest that fits; those below are dropped.
    template <class Fits>
    std::optional<unsigned> find(Fits fits);

   private:
    std::vector<unsigned> heap_;
    std::vector<bool> isHeld_;
  };

  // An entry stands for its text.
  struct Hash {
    using is_transparent = void;
    const std::vector<_tableentry>& table;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>()(text);
    }
    std::size_t operator()(unsigned index) const { return (*this)(table[index].text); }
  };
  struct Equal {
    using is_transparent = void;
    const std::vector<_tableentry>& table;
    bool operator()(unsigned a, unsigned b) const { return table[a].text == table[b].text; }
    bool operator()(unsigned index, std::string_view text) const {
      return table[index].text == text;
    }
    bool operator()(std::string_view text, unsigned index) const {
      return table[index].text == text;
    }
  };

  std::optional<unsigned> find(const std::string& text);
  void forget(unsigned index);

  std::vector<_tableentry>& table_;
  Lowest free_;   // no use is counted
  Lowest empty_;  // the text is empty: all the free entries of this pool, and maybe one in use
  // The first entry of each other text.
  std::unordered_set<unsigned, Hash, Equal> firsts_;
  // Of texts that were read more than once, the entries behind the first, from the last on.
  std::unordered_map<std::string, std::vector<unsigned>> later_;
};

#endif

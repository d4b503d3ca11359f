// The index beside the text pool of a column store.
#ifndef CHARTXML_TEXTINDEX_H
#define CHARTXML_TEXTINDEX_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
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

  // The first entries of texts, in a table of slots that a text's hash leads to. It touches the
  // pool for texts that are equal only, whatever its size.
  class Firsts {
   public:
    explicit Firsts(const std::vector<_tableentry>& table);
    // The entry with this text; none if there is none.
    unsigned find(std::string_view text) const { return slots_[slotOf(text, hashOf(text))].index; }
    // The entry's text must be new.
    void insert(unsigned index);
    void erase(std::string_view text);

    static constexpr unsigned none = 0xFFFFFFFF;

   private:
    struct Slot {
      unsigned hash = 0;
      unsigned index = none;
    };

    static unsigned hashOf(std::string_view text) {
      return static_cast<unsigned>(std::hash<std::string_view>()(text));
    }
    // Where the text is, or else the free slot in which it would be.
    std::size_t slotOf(std::string_view text, unsigned hash) const;
    void resize(std::size_t size);

    const std::vector<_tableentry>& table_;
    std::vector<Slot> slots_;  // as many as a power of two, half of them free
    std::size_t count_ = 0;
  };

  std::optional<unsigned> find(const std::string& text);
  void forget(unsigned index);

  std::vector<_tableentry>& table_;
  Lowest free_;    // no use is counted
  Lowest empty_;   // the text is empty: all the free entries of this pool, and maybe one in use
  Firsts firsts_;  // of the other texts
  // Of texts that were read more than once, the entries behind the first, from the last on.
  std::unordered_map<std::string, std::vector<unsigned>> later_;
};

#endif

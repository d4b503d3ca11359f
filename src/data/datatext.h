// DataText: the data document of a chart as text, its rows apart from the rest.
#ifndef CHARTXML_DATATEXT_H
#define CHARTXML_DATATEXT_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

class TextBuffer;

// Written from its start to its end. Rows are copied only into what somebody asks for.
class DataText {
 public:
  // With the rows that put() is to bring in; null for none.
  explicit DataText(std::unique_ptr<char[]> rows) : rows_(std::move(rows)) {}

  void append(std::string_view text) { printed_.append(text); }
  // Brings in the rows from one byte to another.
  void put(std::size_t start, std::size_t end);
  // The source of that id reaches from here to the next or to the end of sources.
  void startSource(std::u16string_view id);
  void endSources() { marks_.push_back({printed_.size(), inserted_.size()}); }

  std::size_t size() const { return printed_.size() + rowBytes_; }
  std::string whole() const;
  // The compressed text, made of the parts as they lie. Throws std::bad_alloc for lack of memory.
  std::string packed() const;

  // False for a text without marks.
  bool hasSources() const { return !marks_.empty(); }
  // Appends the source of that id, the first of several; nothing when there is none. Its rows are
  // borrowed.
  void writeSource(std::u16string_view id, TextBuffer& out) const;

 private:
  struct Rows {
    std::size_t place;  // in printed_
    std::size_t start;
    std::size_t end;
  };
  struct Mark {
    std::size_t place;     // in printed_
    std::size_t rowCount;  // that many of inserted_ are in front
  };

  template <class Out>
  void write(const Mark& from, const Mark& to, Out& out) const;

  std::string printed_;
  std::unique_ptr<char[]> rows_;
  std::size_t rowBytes_ = 0;  // of those that were put
  std::vector<Rows> inserted_;
  std::vector<Mark> marks_;
  std::unordered_map<std::u16string, std::size_t> numbers_;  // of marks by id
};

#endif

// TextBuffer: a text that grows piece by piece.
#ifndef CHARTXML_TEXTBUFFER_H
#define CHARTXML_TEXTBUFFER_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Growing copies nothing and takes no more than the text needs, however long it gets. A long text
// that stays where it is for as long needn't be copied at all.
class TextBuffer {
 public:
  // Room for that many bytes behind the text; commit() makes the first of them part of it.
  char* room(std::size_t size) {
    if (left() < size) addBlock(size);
    return next_;
  }
  // The bytes that room() gives without taking more memory.
  std::size_t left() const { return static_cast<std::size_t>(end_ - next_); }
  void commit(std::size_t size) { next_ += size; }

  void append(std::string_view text) {
    std::copy(text.begin(), text.end(), room(text.size()));
    commit(text.size());
  }
  void append(char c) {
    *room(1) = c;
    commit(1);
  }

  // Appends a text that must stay where it is until it is taken.
  void borrow(std::string_view text);

  bool empty() const {
    return blocks_.empty() || (blocks_.size() == 1 && next_ && next_ == blocks_[0].start);
  }
  std::size_t size() const;
  // `out` must have room for all of it.
  void copyTo(char* out) const;
  // The whole text; the buffer is empty then.
  std::string take();

 private:
  struct Block {
    std::unique_ptr<char[]> bytes;  // null for a text that is borrowed
    const char* start;
    std::size_t used;  // of any but one that is being written
  };

  // The bytes in use of a block.
  std::size_t used(const Block& block) const {
    const bool isOpen = next_ && &block == &blocks_.back();
    return isOpen ? static_cast<std::size_t>(next_ - block.start) : block.used;
  }
  void addBlock(std::size_t size);
  void closeBlock();

  std::vector<Block> blocks_;
  char* next_ = nullptr;  // in the last block, if that is being written
  char* end_ = nullptr;
  std::size_t blockSize_ = 1024;
};

#endif

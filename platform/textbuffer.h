// TextBuffer: a text that grows piece by piece.
#ifndef CHARTXML_TEXTBUFFER_H
#define CHARTXML_TEXTBUFFER_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Growing copies nothing and takes no more than the text needs, however long it gets.
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

  bool empty() const {
    return blocks_.empty() || (blocks_.size() == 1 && next_ == blocks_[0].bytes.get());
  }
  std::size_t size() const;
  // `out` must have room for all of it.
  void copyTo(char* out) const;
  // The whole text; the buffer is empty then.
  std::string take();

 private:
  struct Block {
    std::unique_ptr<char[]> bytes;
    std::size_t used;  // of any but the last
  };

  // The bytes in use of a block.
  std::size_t used(const Block& block) const {
    return &block == &blocks_.back() ? next_ - block.bytes.get() : block.used;
  }
  void addBlock(std::size_t size);

  std::vector<Block> blocks_;
  char* next_ = nullptr;  // in the last block
  char* end_ = nullptr;
  std::size_t blockSize_ = 1024;
};

#endif

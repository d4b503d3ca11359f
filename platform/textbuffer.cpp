#include "textbuffer.h"

#include <utility>

namespace {

constexpr std::size_t largestBlock = 1 << 16;

}  // namespace

void TextBuffer::addBlock(std::size_t size) {
  const std::size_t capacity = std::max(size, blockSize_);
  blockSize_ = std::min(2 * blockSize_, largestBlock);
  auto bytes = std::make_unique_for_overwrite<char[]>(capacity);
  closeBlock();
  char* start = bytes.get();
  blocks_.push_back({std::move(bytes), start, 0});
  next_ = start;
  end_ = next_ + capacity;
}

void TextBuffer::closeBlock() {
  if (next_) blocks_.back().used = used(blocks_.back());
  next_ = end_ = nullptr;
}

void TextBuffer::borrow(std::string_view text) {
  if (text.empty()) return;
  closeBlock();
  blocks_.push_back({nullptr, text.data(), text.size()});
}

std::size_t TextBuffer::size() const {
  std::size_t size = 0;
  for (const Block& block : blocks_) size += used(block);
  return size;
}

void TextBuffer::copyTo(char* out) const {
  for (const Block& block : blocks_) out = std::copy_n(block.start, used(block), out);
}

std::string TextBuffer::take() {
  std::string text;
  text.reserve(size() + 1);  // whoever writes it ends the line
  closeBlock();
  for (Block& block : blocks_) {
    text.append(block.start, block.used);
    block.bytes.reset();
  }
  blocks_.clear();
  next_ = end_ = nullptr;
  return text;
}

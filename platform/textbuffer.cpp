#include "textbuffer.h"

namespace {

constexpr std::size_t largestBlock = 1 << 16;

}  // namespace

void TextBuffer::addBlock(std::size_t size) {
  if (!blocks_.empty()) blocks_.back().used = next_ - blocks_.back().bytes.get();
  const std::size_t capacity = std::max(size, blockSize_);
  blockSize_ = std::min(2 * blockSize_, largestBlock);
  blocks_.push_back({std::make_unique_for_overwrite<char[]>(capacity), 0});
  next_ = blocks_.back().bytes.get();
  end_ = next_ + capacity;
}

std::size_t TextBuffer::size() const {
  std::size_t size = 0;
  for (const Block& block : blocks_) size += used(block);
  return size;
}

void TextBuffer::copyTo(char* out) const {
  for (const Block& block : blocks_) out = std::copy_n(block.bytes.get(), used(block), out);
}

std::string TextBuffer::take() {
  std::string text;
  text.reserve(size());
  for (const Block& block : blocks_) text.append(block.bytes.get(), used(block));
  blocks_.clear();
  next_ = end_ = nullptr;
  return text;
}

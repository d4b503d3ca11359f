#include "datatext.h"

#include <new>

#include "textbuffer.h"
#include "zlib1211tavo.h"
#include "zlibstreams.h"

namespace {

void appendRows(std::string_view rows, std::string& out) {
  out.append(rows);
}

void appendRows(std::string_view rows, TextBuffer& out) {
  // Less isn't worth a block of its own.
  constexpr std::size_t shortest = 4096;
  if (rows.size() < shortest) {
    out.append(rows);
  } else {
    out.borrow(rows);
  }
}

// Compresses what is appended.
class Packer {
 public:
  void append(std::string_view text) { deflater_.write(text.data(), text.size()); }
  std::string finish() {
    if (!deflater_.finish()) throw std::bad_alloc();
    return deflater_.packed().take();
  }

 private:
  Deflater deflater_;
};

void appendRows(std::string_view rows, Packer& out) {
  out.append(rows);
}

}  // namespace

void DataText::put(std::size_t start, std::size_t end) {
  inserted_.push_back({printed_.size(), start, end});
  rowBytes_ += end - start;
}

void DataText::startSource(std::u16string_view id) {
  numbers_.emplace(id, marks_.size());
  marks_.push_back({printed_.size(), inserted_.size()});
}

template <class Out>
void DataText::write(const Mark& from, const Mark& to, Out& out) const {
  const std::string_view printed = printed_;
  std::size_t written = from.place;
  for (std::size_t i = from.rowCount; i < to.rowCount; ++i) {
    const Rows& rows = inserted_[i];
    out.append(printed.substr(written, rows.place - written));
    appendRows(std::string_view(rows_.get() + rows.start, rows.end - rows.start), out);
    written = rows.place;
  }
  out.append(printed.substr(written, to.place - written));
}

std::string DataText::whole() const {
  std::string text;
  text.reserve(size() + 1);  // whoever writes it ends the line
  write({0, 0}, {printed_.size(), inserted_.size()}, text);
  return text;
}

std::string DataText::packed() const {
  std::string result;
  if (size() <= mostAtOnce) {
    if (!zlib1211tavo::compressString(whole(), result)) throw std::bad_alloc();
    return result;
  }
  Packer packer;
  write({0, 0}, {printed_.size(), inserted_.size()}, packer);
  return packer.finish();
}

void DataText::writeSource(std::u16string_view id, TextBuffer& out) const {
  const auto found = numbers_.find(std::u16string(id));
  if (found != numbers_.end()) write(marks_[found->second], marks_[found->second + 1], out);
}

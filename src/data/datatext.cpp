#include "datatext.h"

#include "textbuffer.h"

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
    out.append(std::string_view(rows_.get() + rows.start, rows.end - rows.start));
    written = rows.place;
  }
  out.append(printed.substr(written, to.place - written));
}

std::string DataText::whole() const {
  std::string text;
  text.reserve(size());
  write({0, 0}, {printed_.size(), inserted_.size()}, text);
  return text;
}

void DataText::writeSource(std::u16string_view id, TextBuffer& out) const {
  const auto found = numbers_.find(std::u16string(id));
  if (found != numbers_.end()) write(marks_[found->second], marks_[found->second + 1], out);
}

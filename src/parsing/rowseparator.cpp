#include "rowseparator.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "chartprolog.h"
#include "plainrows.h"

namespace {

using plainrows::emptyRow;
using plainrows::rowStart;
using plainrows::sourceName;

constexpr std::string_view blanks = " \t\r\n";

bool isOn = true;

std::string_view between(const char* start, const char* end) {
  return {start, static_cast<std::size_t>(end - start)};
}

bool startsWith(const char* at, const char* end, std::string_view word) {
  return static_cast<std::size_t>(end - at) >= word.size() &&
         std::memcmp(at, word.data(), word.size()) == 0;
}

// Goes from tag to tag. What isn't well-formed may be taken for anything: it stays in the rest, and
// the parser refuses it there.
class Walk {
 public:
  Walk(std::string_view text, rowseparator::Separated& result, rowseparator::Of of)
      : start_(text.data()),
        at_(start_),
        copied_(at_),
        end_(text.data() + text.size()),
        result_(result),
        of_(of),
        rows_(end_) {}

  bool run() {
    const char* start = at_;
    if (!isPlainStart() || !passBehind("<row")) return false;
    at_ = start;
    while (at_ != end_ && (at_ = find('<')) != end_) {
      if (!passMarkup()) return false;
    }
    result_.size = rows_.size();
    if (result_.size == 0) return false;
    result_.rest.append(between(copied_, end_));
    result_.bytes = rows_.take();
    return !namesSchemasAgain();
  }

 private:
  // The declaration as nearly everyone writes it, or none.
  bool isPlainStart() const {
    std::string_view start = between(at_, end_);
    if (!start.starts_with("<?xml")) return start.starts_with('<');
    const std::size_t size = start.substr(0, 80).find("?>");
    if (size == start.npos) return false;
    std::string declaration(start.substr(0, size));
    declaration.erase(declaration.find_last_not_of(blanks) + 1);
    for (char& c : declaration) {
      if (c == '\'') c = '"';
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return declaration == "<?xml version=\"1.0\"" ||
           declaration == "<?xml version=\"1.0\" encoding=\"utf-8\"" ||
           declaration == "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"no\"";
  }

  // Grammars beside those of the root may change what is valid behind them.
  bool namesSchemasAgain() const {
    constexpr std::string_view name = "chemaLocation";
    const std::size_t first = result_.rest.find(name);
    return first != result_.rest.npos && result_.rest.find(name, first + 1) != result_.rest.npos;
  }

  const char* find(char c) const {
    const void* hit = std::memchr(at_, c, static_cast<std::size_t>(end_ - at_));
    return hit ? static_cast<const char*>(hit) : end_;
  }

  bool passBehind(std::string_view word) {
    const void* hit = memmem(at_, static_cast<std::size_t>(end_ - at_), word.data(), word.size());
    at_ = hit ? static_cast<const char*>(hit) + word.size() : end_;
    return hit;
  }

  bool passMarkup() {
    if (startsWith(at_, end_, "<?")) return passBehind("?>");
    if (startsWith(at_, end_, "<!--")) {
      at_ += 4;
      return passBehind("-->");
    }
    if (startsWith(at_, end_, "<![CDATA[")) return passBehind("]]>");
    if (startsWith(at_, end_, "<!")) return false;
    if (startsWith(at_, end_, "</")) {
      --depth_;
      return passBehind(">");
    }
    return depth_ == 2 && isInSource_ && isRow() ? takeRows() : passStartTag();
  }

  // A data document's root has a prefix, so that the default namespace is the sources' alone.
  bool isRoot(std::string_view name) const {
    return of_ == rowseparator::Of::Chart ? name == "visualization" : name == "gs:graphSources";
  }

  bool isRow() const { return startsWith(at_, end_, rowStart) || startsWith(at_, end_, emptyRow); }

  bool takeRows() {
    result_.rest.append(between(copied_, at_));
    const auto start = static_cast<std::size_t>(at_ - start_);
    at_ = rows_.copy(at_);
    copied_ = at_;
    if (!at_) return false;
    result_.cuts.push_back({start, static_cast<std::size_t>(at_ - start_)});
    result_.ends.back() = rows_.size();
    return true;
  }

  bool passStartTag() {
    const char* start = at_ + 1;
    const std::string_view tag = takeTag(start);
    if (tag.empty()) return false;
    const bool isEmpty = tag.ends_with('/');
    const std::string_view name = tag.substr(0, tag.find_first_of(" \t\r\n/"));
    if (depth_ == 0 && (!isRoot(name) || isEmpty)) return false;
    if (depth_ == 1) {
      isInSource_ = name == sourceName;
      if (!isInSource_ && name.ends_with(sourceName)) return false;
      if (isInSource_) {
        if (!hasAtMostAnId(tag.substr(name.size()))) return false;
        result_.ends.push_back(rows_.size());
      }
    }
    if (!isEmpty) ++depth_;
    return true;
  }

  // What stands before the '>' that ends the tag, and moves behind that; empty when none does.
  std::string_view takeTag(const char* start) {
    for (at_ = start; at_ != end_ && *at_ != '>'; ++at_) {
      if (*at_ != '"' && *at_ != '\'') continue;
      const char quote = *at_++;
      at_ = find(quote);
      if (at_ == end_) return {};
    }
    if (at_ == end_) return {};
    return between(start, at_++);
  }

  static bool hasAtMostAnId(std::string_view attributes) {
    const auto skipBlanks = [&] {
      attributes.remove_prefix(std::min(attributes.find_first_not_of(blanks), attributes.size()));
    };
    skipBlanks();
    if (attributes.starts_with("id")) {
      attributes.remove_prefix(2);
      skipBlanks();
      if (!attributes.starts_with('=')) return false;
      attributes.remove_prefix(1);
      skipBlanks();
      if (attributes.empty() || (attributes[0] != '"' && attributes[0] != '\'')) return false;
      const std::size_t stop = attributes.find(attributes[0], 1);
      if (stop == attributes.npos) return false;
      attributes.remove_prefix(stop + 1);
      skipBlanks();
    }
    return attributes.empty() || attributes == "/";
  }

  const char* const start_;
  const char* at_;
  const char* copied_;  // what is behind it isn't in the rest yet
  const char* const end_;
  rowseparator::Separated& result_;
  const rowseparator::Of of_;
  plainrows::Copier rows_;
  int depth_ = 0;
  bool isInSource_ = false;
};

}  // namespace

bool rowseparator::separate(std::string_view text, Separated& result, Of of) {
  return isOn && Walk(text, result, of).run();
}

void rowseparator::placeInText(std::string_view text, const Separated& separated,
                               std::vector<ChartProblem>& problems) {
  auto problem = problems.begin();
  chartprolog::PlaceCounter inRest;
  chartprolog::PlaceCounter inText;
  chartprolog::Place cutInRest{1, 1};
  chartprolog::Place cutInText{1, 1};
  std::size_t at = 0;
  // Those in front of a cut are shifted as the cut before it was.
  const auto shift = [&](const chartprolog::Place* end) {
    for (; problem != problems.end(); ++problem) {
      const std::pair place(problem->line, problem->column);
      if (end && place > std::pair(end->line, end->column)) return;
      if (problem->line == 0) continue;
      if (problem->line == cutInRest.line) {
        problem->column += cutInText.column - cutInRest.column;
      }
      problem->line += cutInText.line - cutInRest.line;
    }
  };
  if (problems.empty()) return;
  for (const Separated::Cut& cut : separated.cuts) {
    const std::string_view between = text.substr(at, cut.start - at);
    inRest.pass(between);
    inText.pass(between);
    const chartprolog::Place end = inRest.place();
    shift(&end);
    inText.pass(text.substr(cut.start, cut.end - cut.start));
    cutInRest = end;
    cutInText = inText.place();
    at = cut.end;
  }
  shift(nullptr);
}

void rowseparator::turn(bool on) {
  isOn = on;
}

#include "misspelling.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <string_view>
#include <utility>

namespace {

std::string lowered(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// How many letters are to be inserted, left out, replaced or exchanged with their neighbour.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before;
  std::vector<std::size_t> last;
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    before = std::exchange(last, row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        row[j] = std::min(row[j], before[j - 2] + 1);
      }
    }
  }
  return row.back();
}

}  // namespace

const std::string* misspelling::meantBy(const std::string& word,
                                        const std::vector<std::string>& names) {
  // A third of the letters may differ: "lgo" means log, but "q" doesn't mean x.
  std::size_t nearest = std::min<std::size_t>(word.size() / 3, 3) + 1;
  const std::string* name = nullptr;
  for (const std::string& each : names) {
    // Each letter of the difference in length is one that is inserted or left out; a word out of a
    // document may be as long as that.
    const std::size_t shorter = std::min(word.size(), each.size());
    if (std::max(word.size(), each.size()) - shorter >= nearest) continue;
    const std::size_t letters = distance(lowered(word), lowered(each));
    if (letters >= nearest) continue;
    nearest = letters;
    name = &each;
  }
  return name;
}

std::string misspelling::suggestion(const std::string* name) {
  return name ? "; did you mean '" + *name + "'?" : std::string();
}

std::string misspelling::suggestion(const std::string& word,
                                    const std::vector<std::string>& names) {
  return suggestion(meantBy(word, names));
}

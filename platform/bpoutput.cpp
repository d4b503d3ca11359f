#include "bpoutput.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "obstext.h"

namespace {

using Sublist = std::vector<std::unique_ptr<BpItem>>;

// The pattern with its items filled in; a number that no item has leaves nothing.
std::string filled(std::string_view pattern, const Sublist& items) {
  std::string text;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const bool isPlace = (pattern[i] == '%' || pattern[i] == '^') && i + 1 < pattern.size() &&
                         pattern[i + 1] >= '1' && pattern[i + 1] <= '9';
    if (!isPlace) {
      text += pattern[i];
      continue;
    }
    const std::size_t item = static_cast<std::size_t>(pattern[++i] - '1');
    if (item < items.size()) text += items[item]->GetText();
  }
  return text;
}

}  // namespace

std::string BpVariable::GetText() const {
  if (!variable_) return {};
  const char* label = show_ == showLabel ? variable_->GetLabel() : nullptr;
  return label ? label : variable_->GetName();
}

std::string BpDataValue::GetText() const {
  if (!variable_ || value_.empty()) return {};
  const TAVO_ValueLabelMap* labels =
      preference_ == preferLabel ? variable_->GetValueLabels() : nullptr;
  if (const char* label = labels ? labels->GetLabel(value_[0]) : nullptr) return label;
  const TAVO_Format format = variable_->GetFormatEx();
  if (!obstext::isText(format)) return obstext::printed(*variable_, value_[0]);
  const std::size_t size = value_.size() * sizeof(OBS);
  return obstext::textOf(value_.data(), std::min<std::size_t>(format.width, size));
}

void BpComposite::Add(std::unique_ptr<BpItem> item) {
  if (!item) return;
  if (sublists_.empty()) Sublist();
  sublists_.back().push_back(std::move(item));
}

std::string BpComposite::GetText() const {
  const std::string_view all = template_;
  const std::size_t start = all.find('[');
  const std::size_t middle = all.find(':', std::min(start, all.size()));
  const std::size_t end = all.find(":]", middle == all.npos ? all.size() : middle + 1);
  if (end == all.npos) return template_;
  const std::string_view first = all.substr(start + 1, middle - start - 1);
  const std::string_view next = all.substr(middle + 1, end - middle - 1);
  std::string text(all.substr(0, start));
  for (std::size_t i = 0; i < sublists_.size(); ++i) {
    text += filled(i == 0 ? first : next, sublists_[i]);
  }
  // Behind the bracket stands the number of the list.
  constexpr std::size_t numberedEnd = 3;
  if (end + numberedEnd < all.size()) text += all.substr(end + numberedEnd);
  return text;
}

std::unique_ptr<BpHeading> BpHeading::Heading(const BpComposite& composite) {
  return std::make_unique<BpHeading>(composite.GetText());
}

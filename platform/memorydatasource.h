// A data source that lies in memory, with one case on which its iterator stands.
#ifndef CHARTXML_MEMORYDATASOURCE_H
#define CHARTXML_MEMORYDATASOURCE_H

#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tavodatasource.h"

// Numbers are written with the format's decimals, at the right of its width; what has no room is
// all asterisks. NaN is the missing value, written as a point.
class MemoryVariable : public TAVO_Variable, public TAVO_ValueLabelMap {
 public:
  MemoryVariable(const std::string& name, const TAVO_Format& format)
      : name_(name), format_(format) {}

  void setLabel(const std::string& label) { label_ = label; }
  void setValueLabel(double value, const std::string& label) { numberLabels_[value] = label; }
  void setValueLabel(const std::string& value, const std::string& label) {
    textLabels_[value] = label;
  }

  const char* GetName() const override { return name_.c_str(); }
  const char* GetLabel() const override { return label_ ? label_->c_str() : nullptr; }
  const TAVO_ValueLabelMap* GetValueLabels() const override {
    return numberLabels_.empty() && textLabels_.empty() ? nullptr : this;
  }
  TAVO_Format GetFormatEx() const override { return format_; }
  int IsMissing(const OBS& value) const override { return std::isnan(value.number); }

  void ToString(const OBS& value, const TAVO_Format& format, char* buffer) const override {
    std::string text(format.width + std::size_t{512}, '\0');
    const int length = std::isnan(value.number)
                           ? std::snprintf(text.data(), text.size(), "%*s", int{format.width}, ".")
                           : std::snprintf(text.data(), text.size(), "%*.*f", int{format.width},
                                           int{format.decimals}, value.number);
    const bool fits = length >= 0 && length <= format.width;
    text.replace(0, std::string::npos,
                 fits ? text.substr(0, format.width) : std::string(format.width, '*'));
    std::memcpy(buffer, text.c_str(), format.width + std::size_t{1});
  }

  // Of the text values those of eight bytes at most have labels.
  const char* GetLabel(const OBS& value) const override {
    std::string_view bytes(value.text, strnlen(value.text, 8));
    bytes = bytes.substr(0, bytes.find_last_not_of(' ') + 1);
    const auto text = textLabels_.find(std::string(bytes));
    if (text != textLabels_.end()) return text->second.c_str();
    // No label is that of the missing value, which compares with none.
    if (std::isnan(value.number)) return nullptr;
    const auto number = numberLabels_.find(value.number);
    return number == numberLabels_.end() ? nullptr : number->second.c_str();
  }

 private:
  std::string name_;
  TAVO_Format format_;
  std::optional<std::string> label_;
  std::map<double, std::string> numberLabels_;
  std::map<std::string, std::string> textLabels_;
};

class MemoryDataSource : public ProcedureDataSource, public ProcDSIterator {
 public:
  // The variable is split by. The source owns it.
  void add(std::unique_ptr<MemoryVariable> variable, double value) {
    values_.push_back(std::vector<OBS>(1));
    values_.back()[0].number = value;
    variables_.push_back(std::move(variable));
  }
  // A text is filled with blanks to the width of the variable's format.
  void add(std::unique_ptr<MemoryVariable> variable, std::string text) {
    text.resize(variable->GetFormatEx().width, ' ');
    values_.push_back(std::vector<OBS>(text.size() / sizeof(OBS) + 1));
    std::memcpy(values_.back().data(), text.data(), text.size());
    variables_.push_back(std::move(variable));
  }

  const TAVO_Variable* GetVariable(int index) const override {
    return has(index) ? variables_[static_cast<std::size_t>(index)].get() : nullptr;
  }
  int GetNumberOfSplitVariables() const override { return static_cast<int>(variables_.size()); }
  int GetSplitVariableIndex(int split) const override { return split; }
  bool Activate(BpProcedure&) const override { return true; }
  const OBS* GetObsPointer(int index) const override {
    return has(index) ? values_[static_cast<std::size_t>(index)].data() : nullptr;
  }

 private:
  bool has(int index) const { return index >= 0 && index < GetNumberOfSplitVariables(); }

  std::vector<std::unique_ptr<MemoryVariable>> variables_;
  std::vector<std::vector<OBS>> values_;
};

#endif

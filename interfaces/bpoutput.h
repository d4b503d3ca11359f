// Headings of the suite's output, as split labels make them.
#ifndef CHARTXML_BPOUTPUT_H
#define CHARTXML_BPOUTPUT_H

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "export.h"
#include "tavodatasource.h"

// A part of a composite, with its text.
class CHARTXML_API BpItem {
 public:
  virtual ~BpItem() = default;
  virtual std::string GetText() const = 0;
};

// A variable by its name or its label; without a label by its name.
class CHARTXML_API BpVariable : public BpItem {
 public:
  enum Show : int { showName = 1, showLabel = 2 };

  // The variable isn't owned; one that is null has no text.
  BpVariable(const TAVO_Variable* variable, Show show) : variable_(variable), show_(show) {}
  std::string GetText() const override;

 private:
  const TAVO_Variable* variable_;
  Show show_;
};

// A value of a variable by itself or by its label; without a label by itself, a text without its
// trailing blanks.
class CHARTXML_API BpDataValue : public BpItem {
 public:
  enum Preference : int { preferValue = 1, preferLabel = 2 };

  // A text of more than eight bytes takes several values.
  BpDataValue(const TAVO_Variable* variable, std::vector<OBS> value, Preference preference)
      : variable_(variable), value_(std::move(value)), preference_(preference) {}
  BpDataValue(const TAVO_Variable* variable, const OBS& value, Preference preference)
      : BpDataValue(variable, std::vector<OBS>{value}, preference) {}
  std::string GetText() const override;

 private:
  const TAVO_Variable* variable_;
  std::vector<OBS> value_;
  Preference preference_;
};

// A text with places for lists of items. In a template "[first:next:]1" stands for the sublists:
// the first of them is written by `first` and each other by `next`, where "%1" and "^1" are its
// first item, "%2" and "^2" its second, and so on. All else stands for itself.
class CHARTXML_API BpComposite {
 public:
  // The flag tells the suite's output whether the template is a key of its string tables.
  BpComposite(const std::string& templateText, bool isKey)
      : template_(templateText), isKey_(isKey) {}

  // What is added between the two belongs to one sublist.
  void Sublist() { sublists_.emplace_back(); }
  void EndSublist() {}
  // To the last sublist; one is begun when there is none.
  void Add(std::unique_ptr<BpItem> item);

  bool IsKey() const { return isKey_; }
  std::string GetText() const;

 private:
  std::string template_;
  bool isKey_;
  std::vector<std::vector<std::unique_ptr<BpItem>>> sublists_;
};

// A heading with its text. What a procedure's output does with it is for a derived class to tell.
class CHARTXML_API BpHeading {
 public:
  BpHeading() = default;
  explicit BpHeading(const std::string& text) : text_(text) {}
  virtual ~BpHeading() = default;

  // A heading of this one's kind with the composite's text.
  virtual std::unique_ptr<BpHeading> Heading(const BpComposite& composite);
  const std::string& GetText() const { return text_; }

 private:
  std::string text_;
};

// A procedure of the suite, which is the outermost heading of its output.
class CHARTXML_API BpProcedure : public BpHeading {};

#endif

// splitInfo: the labels of one group of split data.
#ifndef CHARTXML_SPLITINFO_H
#define CHARTXML_SPLITINFO_H

#include <memory>
#include <string>

#include "export.h"

class BpHeading;
class BpProcedure;
class ProcDSIterator;
class ProcedureDataSource;

// Records the split variables of a data source and their values at the moment when an iterator
// stands on the first case of a group, and gives them back as a label or as a heading of the
// suite's output. Texts have the encoding that the data source has.
class CHARTXML_API splitInfo {
 public:
  splitInfo();
  splitInfo(const splitInfo&) = delete;
  splitInfo& operator=(const splitInfo&) = delete;
  virtual ~splitInfo();

  // Records the case, over what was recorded before. Neither is owned, and the source must live as
  // long as activateSplit() is called. Nothing is recorded without an iterator, without a source,
  // or when it has no split variables; a variable that throws is left out. Always true; a
  // TavoGoToCaller passes.
  //
  // A value is told by its value label. A text without one is told without its trailing blanks; an
  // empty one, and a missing value, by the word for missing values in the installation's language.
  // Other values are told as their format writes them.
  bool saveSplitInfo(ProcDSIterator* iterator, ProcedureDataSource const* source);

  // "gender = female, region = north", with the labels of the variables or with their names; empty
  // when nothing is recorded.
  std::string getSplitLabel(bool useNames) const;

  // The label as a heading of the procedure, which the caller owns. Null without a source, or when
  // the source refuses the procedure.
  BpHeading* activateSplit(BpProcedure& procedure) const;

 private:
  struct Record;

  std::unique_ptr<Record> record_;
};

#endif

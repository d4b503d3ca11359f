// The data that a procedure reads, as split labels see it: variables, data sources, iterators.
//
// A program that embeds the library derives from these classes. Everything that they answer belongs
// to them, and lives as long as they do.
#ifndef CHARTXML_TAVODATASOURCE_H
#define CHARTXML_TAVODATASOURCE_H

#include "export.h"
#include "tavoformat.h"

class BpProcedure;

// A value. Texts longer than eight bytes go on in the values behind it; they are filled with
// blanks, and have no end of their own.
union OBS {
  double number;
  char text[8];
};

class CHARTXML_API TAVO_ValueLabelMap {
 public:
  virtual ~TAVO_ValueLabelMap() = default;
  // Null for a value without a label.
  virtual const char* GetLabel(const OBS& value) const = 0;
};

class CHARTXML_API TAVO_Variable {
 public:
  virtual ~TAVO_Variable() = default;
  virtual const char* GetName() const = 0;
  // Null for a variable without a label.
  virtual const char* GetLabel() const = 0;
  // Null for a variable without value labels.
  virtual const TAVO_ValueLabelMap* GetValueLabels() const = 0;
  virtual TAVO_Format GetFormatEx() const = 0;
  // 1 for a missing value, system-missing or declared so.
  virtual int IsMissing(const OBS& value) const = 0;
  // Writes the value as `format.width` characters, blanks at either end included, to a buffer that
  // has room for them and for a NUL.
  virtual void ToString(const OBS& value, const TAVO_Format& format, char* buffer) const = 0;
};

class CHARTXML_API TAVO_DataSource {
 public:
  virtual ~TAVO_DataSource() = default;
  // By its position, from 0; null for a position that is none.
  virtual const TAVO_Variable* GetVariable(int index) const = 0;
};

// A data source that is split by the values of some of its variables.
class CHARTXML_API ProcedureDataSource : public TAVO_DataSource {
 public:
  virtual int GetNumberOfSplitVariables() const = 0;
  // The position in the data source of a split variable, counted from 0.
  virtual int GetSplitVariableIndex(int split) const = 0;
  // Makes the source the one whose split the procedure's output tells; false if it refuses.
  virtual bool Activate(BpProcedure& procedure) const = 0;
};

// Stands on one case of a data source.
class CHARTXML_API ProcDSIterator {
 public:
  virtual ~ProcDSIterator() = default;
  // The value of the variable at a position, and behind it the rest of a long text.
  virtual const OBS* GetObsPointer(int index) const = 0;
};

#endif

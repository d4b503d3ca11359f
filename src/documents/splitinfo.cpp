#include "splitinfo.h"

#include <cstddef>
#include <string_view>
#include <vector>

#include "bpoutput.h"
#include "facstdictionary.h"
#include "obstext.h"
#include "pathfactory.h"
#include "tavodatasource.h"
#include "tavogotocaller.h"

namespace {

constexpr const char* missingKey = "E60712";

struct splitVarInfo {
  std::string name;
  std::string label;
  std::string value;
  int index = -1;
  std::vector<OBS> obs;
};

std::string valueText(const TAVO_Variable& variable, const OBS* value,
                      FacSTDictionary& dictionary) {
  const TAVO_ValueLabelMap* labels = variable.GetValueLabels();
  if (const char* label = labels ? labels->GetLabel(*value) : nullptr) return label;
  const TAVO_Format format = variable.GetFormatEx();
  if (obstext::isText(format)) {
    const std::string text = obstext::textOf(value, format.width);
    return text.empty() ? dictionary.LookUp(missingKey) : text;
  }
  if (variable.IsMissing(*value) == 1) return dictionary.LookUp(missingKey);
  return obstext::printed(variable, *value);
}

}  // namespace

struct splitInfo::Record {
  FacSTDictionary dictionary{PathFactory::getPathInstance(3)->getLanguageResourcePath()};
  std::vector<splitVarInfo> variables;
  ProcedureDataSource const* dataSource = nullptr;
};

splitInfo::splitInfo() : record_(std::make_unique<Record>()) {}

splitInfo::~splitInfo() = default;

bool splitInfo::saveSplitInfo(ProcDSIterator* iterator, ProcedureDataSource const* source) {
  record_->dataSource = source;
  record_->variables.clear();
  const int count = source && iterator ? source->GetNumberOfSplitVariables() : 0;
  for (int i = 0; i < count; ++i) {
    try {
      splitVarInfo entry;
      entry.index = source->GetSplitVariableIndex(i);
      const TAVO_Variable* variable = source->GetVariable(entry.index);
      const OBS* value = variable ? iterator->GetObsPointer(entry.index) : nullptr;
      if (!value) continue;
      const char* label = variable->GetLabel();
      entry.name = variable->GetName();
      entry.label = label ? label : entry.name;
      entry.obs = obstext::copied(*variable, value);
      entry.value = valueText(*variable, value, record_->dictionary);
      record_->variables.push_back(std::move(entry));
    } catch (const TavoGoToCaller&) {
      throw;
    } catch (...) {
      // The variable is left out.
    }
  }
  return true;
}

std::string splitInfo::getSplitLabel(bool useNames) const {
  std::string text;
  for (const splitVarInfo& variable : record_->variables) {
    if (!text.empty()) text += ", ";
    text += (useNames ? variable.name : variable.label) + " = " + variable.value;
  }
  return text;
}

BpHeading* splitInfo::activateSplit(BpProcedure& procedure) const {
  const ProcedureDataSource* source = record_->dataSource;
  if (!source || !source->Activate(procedure)) return nullptr;
  BpComposite composite("[%1 = %2:, ^1 = ^2:]1", false);
  for (const splitVarInfo& entry : record_->variables) {
    const TAVO_Variable* variable = source->GetVariable(entry.index);
    composite.Sublist();
    composite.Add(std::make_unique<BpVariable>(variable, BpVariable::showLabel));
    composite.Add(std::make_unique<BpDataValue>(variable, entry.obs, BpDataValue::preferLabel));
    composite.EndSublist();
  }
  return procedure.Heading(composite).release();
}

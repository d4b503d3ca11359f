#include "charttemplate.h"

#include <xercesc/dom/DOM.hpp>

#include "applytemplate.h"
#include "charterrorhandler.h"
#include "chartexception.h"
#include "chartparser.h"
#include "commands.h"
#include "grammarpool.h"
#include "tavogotocaller.h"

using namespace xercesc;

namespace {

constexpr const char* marker = "grafo-template-";

ChartException reported(const std::string& message, unsigned line) {
  const ChartException e(message, __FILE__, line);
  ChartErrorHandler().error(e);
  return e;
}

}  // namespace

std::vector<ChartTemplate::CommandInfo> ChartTemplate::getCommands() {
  std::vector<CommandInfo> result;
  for (const Command& command : commands()) result.push_back({command.element, command.sentence});
  return result;
}

ChartTemplate::ChartTemplate(PlXVisualization& target, PlXVisualization* source)
    : target_(target),
      source_(source),
      parser_(std::make_unique<ChartParser>(grammarpool::Kind::Templates)) {}

ChartTemplate::~ChartTemplate() = default;

void ChartTemplate::setTemplate(const std::string& text) {
  try {
    root_ = parseTemplate(text);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    throw reported("Fatal Error occurred while applying template " + text, __LINE__);
  }
  if (!root_) reported("Failed to parse template " + text, __LINE__);
}

DOMElement* ChartTemplate::parseTemplate(const std::string& text) {
  const bool isParsed = parser_->parseText(text, "ChartTemplate");
  DOMElement* root = isParsed ? parser_->getDocument()->getDocumentElement() : nullptr;
  // Texts of the older dialect, which lack the marker, wait for their converter.
  return text.find(marker) != text.npos ? root : nullptr;
}

PlXVisualization& ChartTemplate::applyTemplate() {
  passedOver_.clear();
  if (!root_) return target_;
  ApplyTemplate run;
  try {
    run.process(source_, target_, root_);
    passedOver_ = run.getPassedOver();
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    passedOver_ = run.getPassedOver();
    throw reported("Fatal Error occurred while applying template", __LINE__);
  }
  return target_;
}

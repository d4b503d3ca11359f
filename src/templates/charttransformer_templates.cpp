// The operations of ChartTransformer that run templates. They stand here, and not with the class,
// since the class knows nothing of commands.
#include "charttemplate.h"
#include "charttransformer.h"
#include "commandoutcome.h"
#include "memoryfailure.h"
#include "plxframes.h"
#include "tavogotocaller.h"

namespace {

constexpr char popupsTemplate[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>"
    "<template TAVO-Version=\"2.10\" xmlns=\"" CHARTXML_HOST
    "/software/analytics/tavo/xml/visualization\" "
    "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:schemaLocation=\"" CHARTXML_HOST
    "/software/analytics/tavo/xml/visualization " CHARTXML_HOST
    "/software/analytics/tavo/xml/visualization/grafo-template-3.5.xsd\">"
    "<addPopups x=\"true\" y=\"true\" z=\"true\" legend=\"true\"/></template>";

}  // namespace

void ChartTransformer::dump(const std::string& prefix, unsigned counter, PRINTTYPE type) {
  printString(getEntireXML(_utf8), prefix, ".xml", counter, type);
}

bool ChartTransformer::applyTemplate(const std::string& templateText) {
  std::vector<std::size_t> passedOver;
  return applyTemplate(templateText, passedOver);
}

bool ChartTransformer::applyTemplate(const std::string& templateText,
                                     std::vector<std::size_t>& passedOver) {
  return runTemplate(templateText, passedOver, nullptr);
}

bool ChartTransformer::applyTemplate(const std::string& templateText,
                                     std::vector<CommandOutcome>& outcomes) {
  std::vector<std::size_t> passedOver;
  return runTemplate(templateText, passedOver, &outcomes);
}

bool ChartTransformer::runTemplate(const std::string& templateText,
                                   std::vector<std::size_t>& passedOver,
                                   std::vector<CommandOutcome>* outcomes) {
  static unsigned counter = 1;
  passedOver.clear();
  if (outcomes) outcomes->clear();
  if (!model_) return false;
  if (willPrintString(PRINT_BEFORE_TEMPLATE)) {
    dump("Xml_before_template_", counter, PRINT_BEFORE_TEMPLATE);
    printString(templateText, "Template_", ".sgt", counter, PRINT_TEMPLATE);
  }
  bool isApplied = true;
  std::unique_ptr<ChartTemplate> chartTemplate;
  try {
    chartTemplate = std::make_unique<ChartTemplate>(*model_, nullptr);
    chartTemplate->setTemplate(templateText);
    if (outcomes) {
      chartTemplate->applyTemplate(*outcomes);
    } else {
      chartTemplate->applyTemplate();
    }
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    isApplied = false;  // and reported where it happened
  }
  isApplied = unlessMemoryFails(false, [&] {
    if (!chartTemplate) return isApplied;
    passedOver = chartTemplate->getPassedOver();
    problems_ = chartTemplate->getProblems();
    return isApplied;
  });
  if (willPrintString(PRINT_AFTER_TEMPLATE)) {
    dump("Xml_after_template_", counter++, PRINT_AFTER_TEMPLATE);
  }
  return isApplied;
}

bool ChartTransformer::addPopups() {
  static unsigned counter = 1;
  if (!model_ || !model_->getPopups().empty()) return false;
  // The text of the template takes memory, too.
  const bool isApplied = unlessMemoryFails(false, [this] { return applyTemplate(popupsTemplate); });
  if (willPrintString(PRINT_PARSE_ERROR)) dump("xml_with_popups", counter++, PRINT_PARSE_ERROR);
  return isApplied;
}

#include "charttemplate.h"

#include <xercesc/dom/DOM.hpp>

#include "applytemplate.h"
#include "charterrorhandler.h"
#include "chartexception.h"
#include "chartparser.h"
#include "commandoutcome.h"
#include "commands.h"
#include "domwalk.h"
#include "grammarpool.h"
#include "keptdocuments.h"
#include "plxuni.h"
#include "tavogotocaller.h"

using namespace xercesc;

namespace {

constexpr const char* marker = "grafo-template-";
// What the log calls the text.
constexpr const char* sourceName = "ChartTemplate";

// Of several elements with one id the first keeps it.
void makeIdentifiers(const DOMDocument& document) {
  walkElements(document.getDocumentElement(), [&](DOMElement* element) {
    const DOMAttr* id = element->getAttributeNode(PlXUni::_id);
    if (id && *id->getValue() && !document.getElementById(id->getValue())) {
      element->setIdAttributeNode(id, true);
    }
    return true;
  });
}

ChartException reported(const std::string& message, unsigned line) {
  const ChartException e(message, __FILE__, line);
  ChartErrorHandler().error(e);
  return e;
}

std::shared_ptr<const ChartParser> parseShared(const std::string& text) {
  if (ChartTemplate::isOlder(text)) {
    const std::optional<ChartTemplate::Conversion> conversion = ChartTemplate::convertOlder(text);
    return conversion ? parseShared(conversion->text) : nullptr;
  }
  return keptdocuments::parse(grammarpool::ofTemplate(text), text, sourceName);
}

}  // namespace

std::vector<ChartTemplate::CommandInfo> ChartTemplate::getCommands() {
  std::vector<CommandInfo> result;
  for (const Command& command : commands())
    result.push_back({command.element, command.family, command.sentence});
  return result;
}

ChartTemplate::ChartTemplate(PlXVisualization& target, PlXVisualization* source)
    : target_(target), source_(source) {}

ChartTemplate::~ChartTemplate() = default;

void ChartTemplate::setTemplate(const std::string& text) {
  try {
    set_ = parseShared(text);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    throw reported("Fatal Error occurred while applying template " + text, __LINE__);
  }
  if (!set_) reported("Failed to parse template " + text, __LINE__);
}

bool ChartTemplate::isOlder(const std::string& text) {
  return text.find(marker) == text.npos;
}

std::optional<ChartTemplate::Conversion> ChartTemplate::convertOlder(const std::string& text) {
  auto parser = std::make_unique<ChartParser>(grammarpool::Kind::Templates);
  if (!parser->parseText(text, sourceName)) {
    parser = std::make_unique<ChartParser>(grammarpool::Kind::None);
    if (!parser->parseText(text, sourceName)) return std::nullopt;
  }
  makeIdentifiers(*parser->getDocument());
  LegacyTemplateConverter converter(parser->getDocument());
  std::string converted = converter.convert();
  return Conversion{std::move(converted), converter.getCommandCount(), converter.getLeftOut()};
}

bool ChartTemplate::isTemplate(const std::string& text) {
  return parseShared(text) != nullptr;
}

DOMElement* ChartTemplate::parseTemplate(const std::string& text) {
  if (isOlder(text)) {
    const std::optional<Conversion> conversion = convertOlder(text);
    return conversion ? parseTemplate(conversion->text) : nullptr;
  }
  const auto& parser =
      parsers_.emplace_back(std::make_unique<ChartParser>(grammarpool::ofTemplate(text)));
  const bool isParsed = parser->parseText(text, sourceName);
  return isParsed ? parser->getDocument()->getDocumentElement() : nullptr;
}

PlXVisualization& ChartTemplate::applyTemplate() {
  return run(nullptr);
}

PlXVisualization& ChartTemplate::applyTemplate(std::vector<CommandOutcome>& outcomes) {
  outcomes.clear();
  return run(&outcomes);
}

PlXVisualization& ChartTemplate::run(std::vector<CommandOutcome>* outcomes) {
  passedOver_.clear();
  if (!set_) return target_;
  ApplyTemplate run(outcomes);
  try {
    run.process(source_, target_, set_->document()->getDocumentElement());
    passedOver_ = run.getPassedOver();
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    passedOver_ = run.getPassedOver();
    throw reported("Fatal Error occurred while applying template", __LINE__);
  }
  return target_;
}

#include "charttemplate.h"

#include <algorithm>
#include <utility>

#include <xercesc/dom/DOM.hpp>

#include "applytemplate.h"
#include "charterrorhandler.h"
#include "chartexception.h"
#include "chartparser.h"
#include "commandoutcome.h"
#include "commands.h"
#include "documentnode.h"
#include "domwalk.h"
#include "grammarpool.h"
#include "keptdocuments.h"
#include "misspelling.h"
#include "plxuni.h"
#include "problemlist.h"
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

// In `text`, the converted one takes the place of an older template.
std::shared_ptr<const ChartParser> parseShared(std::string& text,
                                               std::vector<ChartProblem>* problems) {
  if (ChartTemplate::isOlder(text)) {
    std::optional<ChartTemplate::Conversion> conversion =
        ChartTemplate::convertOlder(text, problems);
    if (!conversion) return nullptr;
    text = std::move(conversion->text);
  }
  return keptdocuments::parse(grammarpool::ofTemplate(text), text, sourceName, problems);
}

// What a run has passed over at a node below the root.
ChartProblem passedOver(const DocumentNode& node) {
  std::vector<std::string> names;
  for (const Command& command : commands()) names.push_back(ChartString(command.element).toUTF8());
  const bool isCommand = std::ranges::find(names, node.name) != names.end();
  const std::string message =
      isCommand ? "command '" + node.name + "' failed"
                : '\'' + node.name + "' is no command" + misspelling::suggestion(node.name, names);
  return {{}, node.line, node.column, message, false};
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
  text_ = text;
  passedOver_.clear();
  problems_.clear();
  try {
    set_ = parseShared(text_, &problems_);
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

std::optional<ChartTemplate::Conversion> ChartTemplate::convertOlder(
    const std::string& text, std::vector<ChartProblem>* problems) {
  auto parser = std::make_unique<ChartParser>(grammarpool::Kind::Templates);
  if (!parser->parseText(text, sourceName)) {
    parser = std::make_unique<ChartParser>(grammarpool::Kind::None);
    const bool isParsed = parser->parseText(text, sourceName);
    if (problems) *problems = parser->problems();
    if (!isParsed) return std::nullopt;
  }
  makeIdentifiers(*parser->getDocument());
  LegacyTemplateConverter converter(parser->getDocument());
  std::string converted = converter.convert();
  return Conversion{std::move(converted), converter.getCommandCount(), converter.getLeftOut()};
}

bool ChartTemplate::isTemplate(const std::string& text, std::vector<ChartProblem>* problems) {
  std::string copy = text;
  return parseShared(copy, problems) != nullptr;
}

std::vector<ChartProblem> ChartTemplate::getProblems() const {
  std::vector<ChartProblem> result = problems_;
  if (passedOver_.empty()) return result;
  const std::optional<DocumentNode> root = DocumentNode::read(text_);
  if (!root) return result;
  std::vector<const DocumentNode*> elements;
  for (const DocumentNode& child : root->children) {
    if (!child.isText()) elements.push_back(&child);
  }
  for (const std::size_t position : passedOver_) {
    if (result.size() == ChartProblem::mostProblems) break;
    if (position < elements.size()) problemlist::add(result, passedOver(*elements[position]));
  }
  return result;
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

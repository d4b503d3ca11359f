#include "applytemplate.h"

#include <new>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLString.hpp>

#include "charterrorhandler.h"
#include "chartexception.h"
#include "commands.h"
#include "report.h"
#include "tavogotocaller.h"
#include "xmlwriter.h"

using namespace xercesc;

namespace {

template <class T>
std::unique_ptr<BaseTemplate> makeCommand(const PlXVisualization* source, PlXVisualization& target,
                                          const DOMElement* command) {
  return std::make_unique<T>(source, target, command);
}

#define COMMAND(element, type, sentence) {u"" element, sentence, &makeCommand<type>},
constexpr Command allCommands[] = {
#include "commands.inc"
};
#undef COMMAND

// Reports what stops the run, to be thrown.
ChartException stopping(const DOMElement* element, unsigned line) {
  const ChartException e(
      "Fatal Error occurred while applying template command: " + xmlText(*element, true), __FILE__, line);
  ChartErrorHandler().error(e);
  return e;
}

// Null for an element that is no command.
const Command* rowOf(std::span<const Command> table, const XMLCh* element) {
  for (const Command& command : table) {
    if (XMLString::equals(command.element, element)) return &command;
  }
  return nullptr;
}

enum class Outcome { True, False, Failed, Stopped };

Outcome run(BaseTemplate& command) {
  command.keepFindings();
  try {
    return command.ProcessCommand() ? Outcome::True : Outcome::False;
  } catch (const TavoGoToCaller&) {
    return Outcome::Stopped;
  } catch (const std::bad_alloc&) {
    // No fault of the command's: to go on would give a chart with half of the template.
    return Outcome::Stopped;
  } catch (const OutOfMemoryException&) {
    return Outcome::Stopped;
  } catch (...) {
    // A command that failed is passed over; it has reported what it chose to.
    return Outcome::Failed;
  }
}

// Failed also for an element that is no command.
Outcome dispatch(const PlXVisualization* source, PlXVisualization& target,
                 const DOMElement* element, std::span<const Command> table) {
  try {
    const Command* command = rowOf(table, element->getTagName());
    if (command) return run(*command->make(source, target, element));
    report("Unsupported Template element encountered (" + xmlText(*element, true) + ")", __FILE__,
           __LINE__);
    return Outcome::Failed;
  } catch (const XMLException& e) {
    ChartErrorHandler().error(e);
    return Outcome::Failed;
  } catch (const DOMException& e) {
    ChartErrorHandler().error(e);  // throws it on
    throw;
  } catch (...) {
    return Outcome::Stopped;
  }
}

}  // namespace

std::span<const Command> commands() {
  return allCommands;
}

bool ApplyTemplate::process(const PlXVisualization* source, PlXVisualization& target,
                            const DOMElement* root) {
  return process(source, target, root, allCommands);
}

bool ApplyTemplate::process(const PlXVisualization* source, PlXVisualization& target,
                            const DOMElement* root, std::span<const Command> table) {
  passedOver_.clear();
  if (!root) return false;
  bool answer = true;
  std::size_t position = 0;
  for (const DOMNode* child = root->getFirstChild(); child; child = child->getNextSibling()) {
    if (child->getNodeType() != DOMNode::ELEMENT_NODE) continue;
    const auto* element = static_cast<const DOMElement*>(child);
    // There already while it runs: what stops the run may be thrown.
    passedOver_.push_back(position++);
    switch (dispatch(source, target, element, table)) {
      case Outcome::True:
        passedOver_.pop_back();
        answer = true;
        break;
      case Outcome::False:
        passedOver_.pop_back();
        break;
      case Outcome::Failed:
        answer = false;
        break;
      case Outcome::Stopped:
        throw stopping(element, __LINE__);
    }
  }
  return answer;
}

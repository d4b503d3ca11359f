#include "applytemplate.h"

#include <new>
#include <optional>
#include <utility>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLString.hpp>

#include "changejournal.h"
#include "charterrorhandler.h"
#include "chartexception.h"
#include "chartstring.h"
#include "commandlistener.h"
#include "commands.h"
#include "domwalk.h"
#include "memoryfailure.h"
#include "modelstore.h"
#include "plxframes.h"
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

#define COMMAND(element, type, family, sentence) \
  {u"" element, family, sentence, &makeCommand<type>},
constexpr Command allCommands[] = {
#include "commands.inc"
};
#undef COMMAND

// Reports what stops the run, to be thrown.
ChartException stopping(const DOMElement* element, unsigned line) {
  const ChartException e(
      "Fatal Error occurred while applying template command: " + xmlText(*element, true), __FILE__,
      line);
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

enum class Answer { True, False, Failed, Stopped };

// `outcome` may be null.
Answer run(BaseTemplate& command, CommandOutcome* outcome) {
  std::optional<CommandListener> listener;
  command.keepFindings();
  if (outcome) command.listenTo(&listener.emplace(*outcome));
  try {
    const bool answer = command.ProcessCommand();
    if (listener) listener->finish();
    return answer ? Answer::True : Answer::False;
  } catch (const TavoGoToCaller&) {
    return Answer::Stopped;
  } catch (const std::bad_alloc&) {
    // No fault of the command's: to go on would give a chart with half of the template.
    return Answer::Stopped;
  } catch (const OutOfMemoryException&) {
    return Answer::Stopped;
  } catch (...) {
    // A command that failed is passed over; it has reported what it chose to.
    return Answer::Failed;
  }
}

// Failed also for an element that is no command.
Answer dispatch(const PlXVisualization* source, PlXVisualization& target, const DOMElement* element,
                std::span<const Command> table, CommandOutcome* outcome) {
  try {
    const Command* command = rowOf(table, element->getTagName());
    if (command) return run(*command->make(source, target, element), outcome);
    report("Unsupported Template element encountered (" + xmlText(*element, true) + ")", __FILE__,
           __LINE__);
    return Answer::Failed;
  } catch (const XMLException& e) {
    ChartErrorHandler().error(e);
    return Answer::Failed;
  } catch (const DOMException& e) {
    ChartErrorHandler().error(e);  // throws it on
    throw;
  } catch (...) {
    return Answer::Stopped;
  }
}

// Keeps a journal of the chart while it lives, if there is somebody to tell.
class Listening {
 public:
  Listening(PlXVisualization& chart, std::vector<CommandOutcome>* outcomes)
      : chart_(chart), outcomes_(outcomes) {
    if (outcomes_) chart_.store().setJournal(&journal_);
  }
  Listening(const Listening&) = delete;
  Listening& operator=(const Listening&) = delete;
  ~Listening() {
    // Those of a command that stopped the run, where there is memory for them.
    unlessMemoryFails(false, [this] { return takeChanges(); });
    if (outcomes_) chart_.store().setJournal(nullptr);
  }

  // Null for nobody.
  CommandOutcome* add(std::size_t position, const DOMElement& element) {
    if (!outcomes_) return nullptr;
    takeChanges();
    isOpen_ = true;
    CommandOutcome& outcome = outcomes_->emplace_back();
    outcome.position = position;
    outcome.name = ChartString(element.getTagName()).toUTF8();
    return &outcome;
  }
  // Those of the last one.
  bool takeChanges() {
    if (std::exchange(isOpen_, false)) outcomes_->back().changes = journal_.take();
    return true;
  }

 private:
  PlXVisualization& chart_;
  std::vector<CommandOutcome>* outcomes_;
  ChangeJournal journal_;
  bool isOpen_ = false;
};

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
  Listening listening(target, outcomes_);
  for (const DOMElement* element = firstElement(root); element; element = nextElement(element)) {
    // There already while it runs: what stops the run may be thrown.
    passedOver_.push_back(position);
    CommandOutcome* outcome = listening.add(position++, *element);
    const Answer given = dispatch(source, target, element, table, outcome);
    if (given == Answer::Stopped) throw stopping(element, __LINE__);
    if (given == Answer::Failed) {
      answer = false;
      continue;
    }
    passedOver_.pop_back();
    if (outcome) outcome->isDone = true;
    if (given == Answer::True) answer = true;
  }
  listening.takeChanges();
  return answer;
}

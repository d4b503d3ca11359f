// ApplyTemplate: the dispatcher of a template's commands.
#ifndef CHARTXML_APPLYTEMPLATE_H
#define CHARTXML_APPLYTEMPLATE_H

#include <cstddef>
#include <span>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

class PlXVisualization;
struct Command;
struct CommandOutcome;

class ApplyTemplate {
 public:
  // With a vector, which isn't owned, each run appends what becomes of its elements, one after the
  // other.
  explicit ApplyTemplate(std::vector<CommandOutcome>* outcomes = nullptr) : outcomes_(outcomes) {}

  // Runs the element children of `root` in document order, each command to its end before the next.
  // False for a null root, and when the last children were skipped or failed; true when there are
  // none. A command that fails is passed over, and an element that is no command is reported. What
  // stops the run is thrown: a ChartException that has been reported, or a DOMException.
  bool process(const PlXVisualization* source, PlXVisualization& target,
               const xercesc::DOMElement* root);
  // The same with commands of the caller's own.
  bool process(const PlXVisualization* source, PlXVisualization& target,
               const xercesc::DOMElement* root, std::span<const Command> table);
  // What the last run passed over, as ChartTemplate tells it.
  const std::vector<std::size_t>& getPassedOver() const { return passedOver_; }

 private:
  std::vector<CommandOutcome>* outcomes_;
  std::vector<std::size_t> passedOver_;
};

#endif

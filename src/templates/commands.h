// The classes of all commands. Each is one source file that defines its ProcessCommand.
#ifndef CHARTXML_COMMANDS_H
#define CHARTXML_COMMANDS_H

#include <memory>
#include <span>

#include "basetemplate.h"

#define COMMAND(element, type, family, sentence) \
  class type : public BaseTemplate {             \
   public:                                       \
    using BaseTemplate::BaseTemplate;            \
    bool ProcessCommand() override;              \
  };
#include "commands.inc"
#undef COMMAND

// What the dispatcher, the tool and the tests know of a command.
struct Command {
  const XMLCh* element;
  const char* family;
  const char* sentence;
  std::unique_ptr<BaseTemplate> (*make)(const PlXVisualization* source, PlXVisualization& target,
                                        const xercesc::DOMElement* command);
};

std::span<const Command> commands();

#endif

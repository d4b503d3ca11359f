// ChartTemplate: a document of editing commands, and its run over a chart.
#ifndef CHARTXML_CHARTTEMPLATE_H
#define CHARTXML_CHARTTEMPLATE_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "chartproblem.h"
#include "export.h"
#include "legacytemplateconverter.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

class ChartParser;
class PlXVisualization;
struct CommandOutcome;

// A template's root is `template` with one child element for each command. The commands run in
// document order, and what they changed stays when a later one fails.
//
// A text that doesn't mention "grafo-template-", as the name of each schema of templates does, is
// taken for an older template (LegacyTemplateConverter) and converted first. It need be no more
// than well-formed, whatever document type or schema it names.
//
// A ChartBase must live as long as the object does.
class CHARTXML_API ChartTemplate {
 public:
  // The name of a command's element, a heading for it and its kin, and a sentence on what it does.
  // The texts live as long as the process.
  struct CommandInfo {
    const XMLCh* element;
    const char* family;
    const char* sentence;
  };
  // The commands that this version of the library has.
  static std::vector<CommandInfo> getCommands();

  // What an older template is in today's language.
  struct Conversion {
    std::string text;
    std::size_t commandCount;
    std::vector<LegacyTemplateConverter::LeftOut> leftOut;
  };
  static bool isOlder(const std::string& text);
  // For a text that isOlder(). None when it isn't well-formed, or nested deeper or longer by its
  // entities than the library reads; a ChartException as LegacyTemplateConverter::convert().
  // `problems`, unless null, gets what is wrong with the text.
  static std::optional<Conversion> convertOlder(const std::string& text,
                                                std::vector<ChartProblem>* problems = nullptr);

  // True for a text that setTemplate() takes. `problems` as above.
  static bool isTemplate(const std::string& text, std::vector<ChartProblem>* problems = nullptr);

  // Neither is owned. Of the source, which may be null, commands leave alone what an object of the
  // same id states.
  ChartTemplate(PlXVisualization& target, PlXVisualization* source);
  ChartTemplate(const ChartTemplate&) = delete;
  ChartTemplate& operator=(const ChartTemplate&) = delete;
  ~ChartTemplate();

  // Parses and keeps a template. One that can't be parsed is reported, and applyTemplate() does
  // nothing then. What goes wrong otherwise is reported and thrown as a ChartException; only a
  // TavoGoToCaller passes unchanged.
  //
  // While there is a ChartBase the process keeps the last 8 templates that were set, those that
  // take more than 4 MiB together excepted: one that is set again isn't parsed again.
  void setTemplate(const std::string& text);
  // Null for a text that is no template; the element stays the object's. That of an older one is of
  // the template that it is converted to, as are the positions of getPassedOver().
  xercesc::DOMElement* parseTemplate(const std::string& text);
  // Runs the template that was set, if any, and answers the target. A failure that stops the run is
  // reported and thrown as a ChartException; only a TavoGoToCaller passes unchanged.
  PlXVisualization& applyTemplate();
  // What the last run passed over: the 0-based positions, among the elements below the root, of
  // those that are no commands and of commands that failed. When the run was stopped, the last one
  // stopped it.
  const std::vector<std::size_t>& getPassedOver() const { return passedOver_; }
  // The same, and tells for each element below the root, in document order, what became of it. When
  // the run is stopped, the last one stopped it. To find that out makes a run a little slower.
  PlXVisualization& applyTemplate(std::vector<CommandOutcome>& outcomes);

  // What was wrong with the last text that was set, as ChartBase::getProblems() tells it, and what
  // the last run passed over, which is worked out when it is asked for: an element that is no
  // command, with the one that seems to be meant, and a command that failed. Places of the latter
  // are where their tags start; of an older template, in the text that convertOlder() gives.
  std::vector<ChartProblem> getProblems() const;

 private:
  PlXVisualization& run(std::vector<CommandOutcome>* outcomes);

  PlXVisualization& target_;
  const PlXVisualization* source_;
  // Of the documents that parseTemplate() answered.
  std::vector<std::unique_ptr<ChartParser>> parsers_;
  // Of the template that was set, and others may have set, too.
  std::shared_ptr<const ChartParser> set_;
  std::string text_;  // of today's language
  std::vector<ChartProblem> problems_;
  std::vector<std::size_t> passedOver_;
};

#endif

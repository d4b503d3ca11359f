// What a template asks for, and what of it does nothing or something else than it seems to.
#ifndef CHARTXML_TOOLS_EXPLANATION_H
#define CHARTXML_TOOLS_EXPLANATION_H

#include <sstream>
#include <string>
#include <vector>

#include <chartxml/documentnode.h>

#include "chartschema.h"
#include "commandschema.h"

// What is passed over may go: with any chart, the template does the same without it.
struct Finding {
  enum class PassedOver { nothing, node, attribute };

  const DocumentNode* node = nullptr;
  std::string message;
  PassedOver passedOver = PassedOver::nothing;
  std::string attribute;
};

// Goes through one template. Each node is told before what lies in it.
class Explanation {
 public:
  // All must outlive the object.
  Explanation(const CommandSchema& schema, const ChartElements& charts, const DocumentNode& root);

  // A line for each element, attribute and text: its line in the file, and what it means.
  std::string listing() const { return listing_.str(); }
  const std::vector<Finding>& findings() const { return findings_; }

 private:
  using PassedOver = Finding::PassedOver;
  struct Place {
    const DocumentNode* node;
    const SchemaElement* element;
  };
  struct Reader {
    const DocumentNode* node;
    const SchemaElement* element;
    const SchemaChild* child;
  };

  void addLine(const DocumentNode& node, std::size_t depth, const std::string& what,
               const std::string& effect, const std::string& meaning = {});
  void addFinding(const DocumentNode& node, const std::string& message, PassedOver passedOver,
                  const std::string& attribute = {});
  void addTextOfRoot(const DocumentNode& node);
  void addCommand(const DocumentNode& node);
  void addContent(const DocumentNode& node, const SchemaElement& element, const SchemaChild* child,
                  std::size_t depth);
  void addNeeds(const DocumentNode& node, const SchemaElement& element);
  std::vector<Reader> readersOf(const std::string& name) const;
  std::string problemOf(const DocumentNode& node, const Reader& reader) const;
  bool holdsRead(const DocumentNode& node) const;
  void addChild(const DocumentNode& parent, const DocumentNode& node, const SchemaElement& element,
                std::size_t depth);
  void addBlanks(const DocumentNode& list);
  void addAttribute(const DocumentNode& node, const SchemaElement& element,
                    const SchemaChild* child, std::size_t depth, const std::string& name,
                    const std::string& value);
  void addWritten(const DocumentNode& node, const SchemaElement& element, std::size_t depth);

  const CommandSchema& schema_;
  const ChartElements& charts_;
  std::vector<Place> path_;  // from the command to the element that is gone through
  std::ostringstream listing_;
  std::vector<Finding> findings_;
};

#endif

// LegacyTemplateConverter: older templates in today's language.
#ifndef CHARTXML_LEGACYTEMPLATECONVERTER_H
#define CHARTXML_LEGACYTEMPLATECONVERTER_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "chartstring.h"
#include "export.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
XERCES_CPP_NAMESPACE_END

// An older template is itself a document like a chart, in an older vocabulary, whose settings are
// meant for other charts: frames, guides, axes, dimensions, elements, styles and lists of styles.
// Elements count wherever they stand; only tags, attributes and parents matter. Commands are
// written in an order of their own, as today's language has them, and what no command says is left
// out.
//
// A ChartBase must live as long as the object does.
class CHARTXML_API LegacyTemplateConverter {
 public:
  // Not owned, and not changed; null converts to a template without commands. Attributes `id` have
  // to be identifiers of the document.
  explicit LegacyTemplateConverter(xercesc::DOMDocument* oldDocument);
  LegacyTemplateConverter(const LegacyTemplateConverter&) = delete;
  LegacyTemplateConverter& operator=(const LegacyTemplateConverter&) = delete;
  ~LegacyTemplateConverter();

  // The new template, in UTF-8, once; also as a dump "template_converted_". A ChartException for a
  // document that says so much in so few words that the template would grow out of all proportion.
  std::string convert();

  // What convert() has left out of the old document, in its order.
  struct LeftOut {
    std::size_t element;  // the position among all elements in document order, from 0
    // The name of an attribute; empty for the whole element with all that is in it.
    ChartString attribute;
  };
  const std::vector<LeftOut>& getLeftOut() const { return leftOut_; }
  // How many commands convert() has written.
  std::size_t getCommandCount() const { return commandCount_; }

 private:
  struct Release {
    void operator()(xercesc::DOMDocument* document) const;
  };

  xercesc::DOMDocument* oldDocument_;
  std::unique_ptr<xercesc::DOMDocument, Release> newDocument_;
  std::vector<LeftOut> leftOut_;
  std::size_t commandCount_ = 0;
};

#endif

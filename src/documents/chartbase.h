// ChartBase: the root of the document classes and the toolbox for their XML.
#ifndef CHARTXML_CHARTBASE_H
#define CHARTXML_CHARTBASE_H

#include <initializer_list>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XercesDefs.hpp>

#include "charthost.h"
#include "chartproblem.h"
#include "chartstring.h"
#include "export.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
class DOMNode;
class XercesDOMParser;
XERCES_CPP_NAMESPACE_END

class ChartParser;
class FacSTDictionary;
class PlXFormat;
class PlXVisualization;
class ProblemFinder;
struct TAVO_Format;

struct CompareXMLCh {
  bool operator()(const XMLCh* a, const XMLCh* b) const {
    return xercesc::XMLString::compareString(a, b) < 0;
  }
};

// Names by their text; null and the empty text are equal. The set doesn't own them.
using ConstChartStringSet = std::set<const XMLCh*, CompareXMLCh>;

// An object starts the XML parser library when it is made and stops it when it goes; the library
// counts, so objects may overlap. One thread only.
//
// A program that works on many charts holds one ChartBase of its own all the while: schemas are
// then read once, not once for each chart, which is most of the time that a small chart takes. They
// are read anew when the last object has gone.
//
// Failures are told by results, and reported to the log of ChartErrorHandler; why a text was
// refused is told by getProblems(), too. Comparisons of names take null and the empty text as
// equal.
//
// Lack of memory, for all classes of documents: what parses, makes or gives out a document answers
// as for any other failure (null, false, an empty text), and reports it if there is memory for
// that; isOutOfMemory() tells of it. Constructors throw std::bad_alloc, or make an object without a
// chart. Operations on a caller's nodes and texts and all of the model throw that or the parser
// library's OutOfMemoryException; edits may then be half done. Whatever failed, all objects can be
// used on and destroyed, and new ones made.
class CHARTXML_API ChartBase {
 public:
#define CONSTANT(name, text) static const XMLCh name[sizeof(u"" text) / sizeof(XMLCh)];
#include "chartbase.inc"
#undef CONSTANT

  // The switches of the debug dumps, by their index in DumpChartXMLOptions.
  enum PRINTTYPE : int {
    PRINT_0 = 0,
    PRINT_1 = 1,
    PRINT_2 = 2,
    PRINT_TEMPLATE_CONVERTED = 3,
    PRINT_TEMPLATE = 4,
    PRINT_BEFORE_TEMPLATE = 5,
    PRINT_AFTER_TEMPLATE = 6,
    PRINT_7 = 7,
    PRINT_8 = 8,
    PRINT_PARSE_ERROR = 9,
  };

  ChartBase();
  ChartBase(const ChartBase&) = delete;
  ChartBase& operator=(const ChartBase&) = delete;
  virtual ~ChartBase();

  // Start and stop the parser library for a caller that uses it without an object. A failure is
  // reported and goes no further.
  static void initialize();
  static void terminate();

  // A new document whose root is `visualization` (createPlXDocument) or, in the older form, `graph`
  // (createDocument), with the dialect's namespace and schema. The caller releases it. `encoding`
  // has no effect. Null when the parser library isn't started.
  static xercesc::DOMDocument* createPlXDocument(const XMLCh* encoding);
  static xercesc::DOMDocument* createDocument(const XMLCh* encoding);

  // The first direct child element of that name; null when there is none or `parent` is null.
  static xercesc::DOMElement* getChildByTagName(const xercesc::DOMNode* parent, const XMLCh* name);
  // Copies every attribute, over those of the same name. False when either element is null.
  static bool mergeAttributes(const xercesc::DOMElement* from, xercesc::DOMElement* to);
  // Sets an attribute, which may be empty. 0, or -1 for a null value or a name that is none.
  static int AddAttributeDoc(xercesc::DOMDocument* doc, xercesc::DOMElement* element,
                             const XMLCh* name, const XMLCh* value);
  // True when the text parses and validates; an object needn't exist.
  static bool ValidXML(const std::string& text);
  // The token at a 0-based index; runs of delimiters count as one. Empty past the last.
  static ChartString getToken(const XMLCh* text, const XMLCh* delimiters, unsigned index);
  // The prefix, or "id" for an empty one, with the first number from 1 that makes it an identifier
  // which no element of the chart has. Of many, one that a plain DOM call has taken from its
  // element may be passed over for a while.
  static ChartString CreateUniqueId(const ChartString& prefix, PlXVisualization& visualization);

  // Replaces every placeholder for the present local date and time in a title or footnote:
  // "@@current_date@@", ")DATE", "@@current_time@@", ")TIME" and "@@current_X@@" with X of YYYY,
  // YY, month, day, hour24, hour, min, sec, monthname, ampm and weekday. Where "@@current_hour24@@"
  // stands, "@@current_hour@@" is left alone. Names and the words for "a.m." and "p.m." are looked
  // up by the English ones in `dictionary`, which answers in `codePage`; null leaves them English.
  static void updateText(ChartString& text, FacSTDictionary* dictionary,
                         const std::string& codePage);

  // Translate a variable's display format into the format of a chart. Every format gets the error
  // character "*"; a type of texts or of names gets nothing else. Always true.
  static bool addFormat(PlXFormat& format, TAVO_Format& source);
  // The families of formats. False, with nothing changed, for a type of another family, but
  // FormatElapsedTime() asks for no type. FormatDate() knows two types more than addFormat(), the
  // names of days (26) and of months (27). Digits that the width has no room for are none.
  static bool FormatNumber(PlXFormat& format, TAVO_Format& source);
  static bool FormatDate(PlXFormat& format, TAVO_Format& source);
  static bool FormatElapsedTime(PlXFormat& format, TAVO_Format& source);
  static bool FormatCustomCurrency(PlXFormat& format, TAVO_Format& source);

  // False unless DumpChartXMLPath is set and the character of DumpChartXMLOptions at the index of
  // `type` is there and isn't '0'.
  static bool willPrintString(PRINTTYPE type);
  // Writes a dump: the file is the text of DumpChartXMLPath, a backslash, the prefix, the counter
  // with at least two digits, and the suffix. False when the type is off or the text is empty.
  static bool printString(const std::string& text, const std::string& prefix,
                          const std::string& suffix, unsigned long counter, PRINTTYPE type);
  // Appends a line with the time since the last call and since the first to a file in the folder
  // that DumpChartTimePath names; nothing without that variable.
  static void printDebugInfo(const std::string& message);

  // Parses with schema validation. The document stays the object's and lives as long, also across
  // later calls. Null, and the text in a dump, when the parse ends in a failure: text that isn't
  // well-formed or valid, but for values that break their type; nesting over 4,096 levels; over
  // 10,000 references to entities, an entity of over 4,096 characters, or over a million characters
  // that entities and default attributes add.
  xercesc::DOMDocument* parseDocument(const std::string& text);
  // What was wrong with the last text that this object read: a document that it was asked to parse
  // or was made of, data that it looked into, or a template. Values that break their type come
  // first, and where the text was refused the reason is the last, the only one that isRefused. At
  // most ChartProblem::mostProblems. Empty when nothing was wrong or nothing has been read.
  const std::vector<ChartProblem>& getProblems() const {
    return problems_;
  }
  // All that is wrong with a text, which may be a chart, a data document, a template or a document
  // of trees: getProblems() tells what ends a parse, this goes on to the end, and knows the names
  // that misspelt ones mean, links that lead nowhere, and documents that are none of these. It
  // takes several times as long as parsing, and the first call of an object as long as a hundred
  // small charts. At most ChartProblem::mostProblems; getProblems() stays as it is.
  std::vector<ChartProblem> findProblems(const std::string& text);

  // True when the last parse, or the last of the other operations that a derived class names,
  // failed for lack of memory: it may succeed where there is more.
  bool isOutOfMemory() const {
    return isOutOfMemory_;
  }
  // For documents that belong to the caller; null is passed over.
  void releaseDocument(xercesc::DOMDocument* doc);

  // Removes every child; answers how many there were. The nodes stay owned by their document.
  unsigned removeAllChildren(xercesc::DOMNode* node);
  // Inserts before the first child of `parent` that has one of the names, or at the end. True, but
  // for null.
  bool insertBeforeSiblings(xercesc::DOMElement* parent, xercesc::DOMElement* child,
                            ConstChartStringSet names);

  // These work on the current document, which a derived class sets. Without one they find nothing
  // and make nothing. The tag "*" is any.
  xercesc::DOMElement* getElementWithAttribute(const XMLCh* tag, const XMLCh* attribute,
                                               const XMLCh* value) const;
  // Sets the attribute "id" and makes it an identifier of the document. An id that exists already
  // is reported and set all the same. False for a null or empty id, which is reported too.
  bool AddID(xercesc::DOMElement* element, const XMLCh* id);
  int AddAttribute(xercesc::DOMElement* element, const XMLCh* name, const XMLCh* value);
  // The first `style` of that id below the element, made as its last child if there is none. Null
  // for a null element and a null or empty id.
  xercesc::DOMElement* addStyle(xercesc::DOMElement* element, const XMLCh* styleId);

  // Numbers as text with '.' as the decimal point, whatever the process's locale. A text that is no
  // number reads as 0; the text has at most 16 significant digits.
  double asDouble(const std::string& text) const;
  std::string asString(const double& value) const;
  std::string asString(int value) const;

 protected:
  // A document with an empty root that has these attributes; the caller releases it. Null when the
  // parser library isn't started. Throws for lack of memory.
  using Attributes = std::initializer_list<std::pair<const XMLCh*, const XMLCh*>>;
  static xercesc::DOMDocument* newDocument(const XMLCh* root, Attributes attributes);

  // As parseDocument(), but the document is the caller's to release, before the object goes. Throws
  // std::bad_alloc for lack of memory.
  xercesc::DOMDocument* parseOwned(const std::string& text);
  // The same for a text of the schemas that all documents share. Null for any other and where
  // parseOwned() answers null, but without a trace of it in log and dumps.
  xercesc::DOMDocument* tryOwned(const std::string& text);

  // Not owned; null until a derived class sets it.
  xercesc::DOMDocument* document_ = nullptr;
  // What getProblems() answers.
  std::vector<ChartProblem> problems_;
  mutable bool isOutOfMemory_ = false;

 private:
  ChartParser& parser();
  bool parse(const std::string& text);

  // Made by the first parse and used for every later one; owns what parseDocument answered.
  std::unique_ptr<ChartParser> parser_;
  // Made by the first findProblems().
  std::unique_ptr<ProblemFinder> finder_;
};

#endif

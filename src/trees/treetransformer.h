// TreeTransformer: a tree model and the settings of the viewer that shows it.
#ifndef CHARTXML_TREETRANSFORMER_H
#define CHARTXML_TREETRANSFORMER_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "chartbase.h"

// Two documents that travel together: the model, a PMML 2.1 tree model, and the display document,
// whose root is `displaySettings`. The model is kept compressed and parsed only when it is asked
// for; the display document is parsed at once and edited in place.
//
// Documents are validated against the installation's pmml-2-1.xsd, whose namespace is
// http://www.dmg.org/PMML-2_1, and treeview-1.0.xsd, whose namespaces are those of the paths
// /tavo/treeview and /treeview; one of the latter isn't valid in UTF-16, with a document type or
// with several schemas. A document has to name its schema; host and folder of the name don't
// matter, but a model that names others beside it isn't parsed. Values that break the type of their
// attribute are no errors.
//
// Texts are UTF-8, and the `encoding` arguments have no effect. Operations that fail answer null,
// false or an empty text and report to the log of ChartErrorHandler; they don't throw, but for the
// settings where memory fails. Only a TavoGoToCaller always passes.
class CHARTXML_API TreeTransformer : public ChartBase {
 public:
  enum TreeOrientation : int { TopDown = 0, LeftToRight = 1, RightToLeft = 2 };
  enum TreeDisplayOption : int { NodeTable = 0, NodeGraph = 1, NodeTableAndGraph = 2 };
  enum ColorIds : int { ChartColors = 0, SwatchColors = 1 };

  // The name by which the log calls the texts that are parsed.
  static const XMLCh s_membufid[];

  // A compressed model with the length of its text in bytes, 0 where that isn't known. A length
  // that isn't the true one costs time, and is the true one once the model has been read. An empty
  // `displayXml` stands for the text of SetupDisplayData(); one that can't be parsed, or is of
  // another root, leaves the object without a display document.
  TreeTransformer(const std::string& compressedPMML, unsigned long length,
                  const std::string& displayXml);
  // A model as text, which is compressed at once.
  TreeTransformer(const std::string& pmmlXml, const std::string& displayXml);
  ~TreeTransformer() override;

  // ---- documents

  // Merges a display template into the display document, as mergeDOM() does: settings that are
  // there already stay in front of the template's. Where one of the two is written with a prefix,
  // the template takes the document's namespace and prefix. False, and nothing changes, for a text
  // that is empty, can't be parsed or is of another root, and without a display document.
  bool applyTemplate(const std::string& xml);

  // The model as it is stored. `length`, unless null, gets the length of its text, 0 for unknown.
  std::string getCompressedPMML(unsigned long* length);
  // The model's text, parsed and printed anew with white space; without parsing, as it is stored,
  // when it can't be parsed or is no model. Empty when it can't be inflated. The length is known
  // afterwards. The document that was parsed is the base's current one until the next call.
  std::string getUncompressedPMML(const XMLCh* encoding);
  // True when the last getUncompressedPMML() parsed the model.
  bool isPMMLParsed() const { return document_; }
  // The display document, printed with white space; empty when there is none. Like a printed model
  // it is its root alone: comments and a document type before it aren't kept.
  std::string getDisplayData(const XMLCh* encoding);

  // The text of any document, compressed; null counts as an empty text.
  std::string compressDocument(const xercesc::DOMDocument* document) const;

  // Parses a model, a display document or a template. The document stays the object's and lives as
  // long; null when the text can't be parsed.
  xercesc::DOMDocument* parseDocument(const std::string& xml);
  // Inflates and parses the model, in the same way.
  xercesc::DOMDocument* setupPMMLDOM();

  // Copies the attributes of the root of `from` to the root of `into`, over those of the same name
  // (of schema instances, under whatever prefix), and its children behind those of `into`. Nothing
  // is compared: what both have is there twice. A null document changes nothing.
  void mergeDOM(xercesc::DOMDocument* from, xercesc::DOMDocument* into);

  // New documents that the caller releases, with the roots `PMML` and `displaySettings`; the latter
  // is of the namespace /treeview. Null when the parser library isn't started. The model's root has
  // no attributes, and the log tells so: they are set behind the document's version, and the parser
  // library refuses 2.1, the model's, as one of XML.
  xercesc::DOMDocument* createPMMLDocument(const XMLCh* encoding);
  xercesc::DOMDocument* createDisplayDocument(const XMLCh* encoding);

  // The display document that an object has without one of its own: colours, and an empty element
  // for most other settings.
  static std::string SetupDisplayData();

  // ---- display settings

  // Each sets attributes of the first element of its name, at any depth, or of a new one at the end
  // of the root where there is none. Texts are in the process's multibyte encoding
  // (textconversion.h). Without a display document none has an effect.

  // Percent. Outside of 2 to 500 nothing changes.
  void SetZoomFactor(int factor);
  // A value that is no enumerator sets nothing, but makes the element all the same.
  void SetOrientation(TreeOrientation orientation);
  void SetTreeDisplayOption(TreeDisplayOption option);
  // Whether the statistics of splits, and the ranges of predictors that define a node, are shown.
  void ShowBranchStatistics(bool isShown);
  void ShowNodeDefs(bool isShown);
  void applyFont(const std::string& family);
  // Sets the first colours of a list, "#aarrggbb" each; colours that it has beyond those stay. An
  // empty list, or an id that is no enumerator, changes nothing.
  void applyColors(ColorIds id, const std::vector<std::string>& colours);
  // "en" or, with a country, "en-US": how values are written, and the language of texts. Reported
  // when there is no display document.
  void SetOutputLocale(const std::string& language, const std::string& country);
  void SetOutputLanguage(const std::string& language, const std::string& country);

  // The target's date format, of which there is one; width in characters, precision in decimals of
  // seconds.
  void addTargetDateFormat(const std::string& name, long width, long precision);
  // The format of one predictor. Each call adds an item, whatever there is for that variable.
  void addPredictorDate(const std::string& variable, const std::string& name, long width,
                        long precision);
  void addPredictorPrecision(const std::string& variable, long precision);

  // The element of all formats, made if there is none, and a new element for a predictor's. Null
  // without a display document, whose they are.
  xercesc::DOMElement* GetStatFormatElement();
  xercesc::DOMElement* GetNewPredictorItem();

  // All settings by their names, for programs that take them from users.
  struct SettingInfo {
    std::string name;
    std::string values;  // such as "2..500", "top-down|left-to-right|right-to-left", "TEXT"
    std::string sentence;
  };
  static std::vector<SettingInfo> getSettings();
  // Sets one by its name. Parts of a value are separated by commas. False, and nothing changes, for
  // a name or value that isn't in the table, and without a display document.
  bool setSetting(const std::string& name, const std::string& value);

 private:
  struct Release {
    void operator()(xercesc::DOMDocument* document) const;
  };
  using OwnedDocument = std::unique_ptr<xercesc::DOMDocument, Release>;

  void openDisplay(const std::string& displayXml);
  bool parse(const std::string& xml);
  OwnedDocument parseOwned(const std::string& xml, const XMLCh* root);
  bool inflatePMML(std::string& text);

  xercesc::DOMElement* addElement(xercesc::DOMElement* parent, const XMLCh* name);
  xercesc::DOMElement* findElement(const XMLCh* name);
  xercesc::DOMElement* obtainElement(const XMLCh* name);
  void setWord(const char* name, int index);
  void setColours(const XMLCh* name, const std::vector<std::string>& colours);

  std::string compressedPMML_;
  unsigned long pmmlLength_ = 0;
  // In this order: documents that were parsed lie in the parser's memory.
  std::unique_ptr<ChartParser> treeParser_;
  OwnedDocument display_;
  OwnedDocument pmml_;  // the base's current document
};

using TreeOrientation = TreeTransformer::TreeOrientation;
using TreeDisplayOption = TreeTransformer::TreeDisplayOption;
using ColorIds = TreeTransformer::ColorIds;

#endif

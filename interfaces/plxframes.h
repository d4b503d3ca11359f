// The root of a chart and its frames.
#ifndef CHARTXML_PLXFRAMES_H
#define CHARTXML_PLXFRAMES_H

#include <memory>
#include <string>

#include "plxbaseelement.h"

class ModelStore;

// The root of a chart. Making one builds the object tree over the whole element in one pass; the
// objects of rows of data are left out.
class CHARTXML_API PlXVisualization : public PlXBaseElement {
 public:
  // A second one over a root that has one already shares the objects of the first.
  explicit PlXVisualization(xercesc::DOMElement* root);
  ~PlXVisualization() override;

  // The whole document as UTF-8 text without added white space; for an element that isn't its
  // document's root that element alone.
  virtual std::string AsUTF8() const;

  static const XMLCh _UTF_visualization[];

  // For the model itself.
  ModelStore& store() const { return *store_; }

 private:
  std::unique_ptr<ModelStore> store_;
};

// STUB
class CHARTXML_API PlXLocation : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_location[];
  enum ENUM_part : int { part_left = 0, part_right = 1 };
  ENUM_part getPart() const { return word<ENUM_part>(u"part"); }
  void setPart(ENUM_part part) { setWord(u"part", part); }
};

#endif

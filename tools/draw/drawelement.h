// What drawElement() makes the layers of one element with. Its parts lie in
//
//   drawmarks.cpp    which rows, which looks, which mark; the encodings; slices and lines in pieces
//   drawplaces.cpp   places by values and statistics
//   drawlayouts.cpp  places of networks, densities, boxes and cells
//   drawlabels.cpp   data labels, and popups as tooltips
#ifndef CHARTXML_TOOLS_DRAWELEMENT_H
#define CHARTXML_TOOLS_DRAWELEMENT_H

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "drawaesthetics.h"
#include "drawmarks.h"

// Where a mark is along a side: at the value of a field, or from one field to another.
struct MarkPlace {
  std::string field;
  std::string end;  // empty for none
  bool isBinned = false;
};

// Whether an element has a child of a kind.
template <class T>
bool has(const PlXBaseElement& element) {
  return childOf<T>(element);
}

// Draws once.
class ElementDrawer {
 public:
  ElementDrawer(DrawContext& context, const DrawPlane& plane, const CTElementType& element,
                const DrawPanel& panel, const PlXStyle* style, const std::string& condition)
      : context_(context),
        plane_(plane),
        element_(element),
        panel_(panel),
        style_(style),
        condition_(condition),
        keys_(panel.fields) {}

  std::vector<Json> draw();

 private:
  void tell(const std::string& what) { context_.notes.tell(element_, what); }
  const DrawSide& side(std::size_t i) const { return i == 0 ? plane_.x() : plane_.y(); }
  template <class T>
  bool is() const {
    return dynamic_cast<const T*>(&element_);
  }
  std::string channel(std::size_t i) const { return side(i).channel; }
  bool isStacked() const;

  // ---- data

  bool findFields();

  bool isHere(const DrawField* field, const PlXBaseElement& user);

  const DrawField* fieldHere(const CTVariableType* variable, const PlXBaseElement& user);

  void addFilter(const std::string& expression);

  void keepOnly(const DrawField& field, const std::vector<std::string>& texts);

  void filterBy(const CTAesthetic& visibility);

  // Cases that aren't in the picture: those hidden, and those of categories that aren't shown.
  void addFilters();

  // ---- looks

  void addKey(const std::string& field);
  // Of items that belong together, such as the places of one line.
  void addGroup(const std::string& field);

  void findLooks();

  // ---- marks

  void makeMark();

  void setMark(const char* type, Json look);

  // ---- places

  // False when the element is left out.
  bool place();

  bool hasNumbers(std::size_t i) const;

  Summary makeSummary() const;

  // The looks and labels of aggregated items are those of a statistic.
  void addToSummary(Summary& summary, const std::string& response);

  const PlXPopup* popupOf() const;

  void plainLabels();

  // Several variables on one coordinate become one with the values of all.
  void fold(std::size_t i);

  bool placeSummary(const PlXBinStatistic* bins);

  // The place of groups of rows: their category, number or bin.
  void placeKey(const PlXBinStatistic* bins);

  // From the least to the greatest of one or several variables.
  bool placeRange();

  // ---- networks

  static std::string textOr(const DrawField& field, const std::string& raw);

  // A node for each name, and a line for each row that links two.
  bool placeNetwork(const CTVariableType* from, const CTVariableType* to, bool isTree);

  bool placeWords();

  // Values with places of their own, and nothing of the rows but the name.
  void usePlaces(const Json& values, const DrawField& name);

  // The theoretical curve: over a histogram in the histogram's units.
  bool placeDistribution(const PlXDistributionStatistic& statistic);

  // The moments of a variable with the weights of its cases.
  void estimate(const DrawField& field, double (&parameters)[2]);

  // What a density is multiplied by to lie over the histogram of the same variable.
  double histogramFactor(const DrawField& field);

  bool placeDensity();

  bool placeBoxes();

  // Cells of a grid; hexagons lie as bricks do.
  bool placeCells(const PlXBinStatistic& bins);

  // Every second row is moved by half a cell.
  void brick(const Bins (&cut)[2]);

  // Lines from the items to a common place.
  void addSpikes(const PlXLinkStatistic& link);

  bool addCurve(const PlXSmoothStatistic& smooth);

  // From the items to their mean; other curves have no values at the items.
  bool addFitSpikes(long degree, const std::vector<std::string>& parts);

  // ---- popups as tooltips

  void addTips();

  void addTip(const PlXPopup& popup, const std::string& token, const std::string& name,
              std::string title);

  // ---- encodings

  void putPlace(Json& encoding, std::size_t i) const;

  Json places() const;

  // A log scale has no place for zero and less, and bars on it stand on its lower end.
  void keepPositive();

  // Symbols that would cover each other are strewn.
  void putJitter(Json& encoding) const;

  void addJitter();

  // The stack's order is that of the categories, the same for bars and for their labels.
  void addStackOrder(Json& encoding);

  Json detail() const;

  void finish();

  void addLayer(const Json& mark, const Json& encoding, const Json& more = Json::array());

  void putBreaks();

  // An element that a legend explains as a whole is one entry of it.
  void putOwnLegend();

  // ---- slices

  // A slice reaches from one share of the circle to another. Without a variable of their own,
  // slices are as wide as their values say; else all are equally wide, and as long as the values
  // say.
  void placeSlices(Json& encoding);

  // Pulled out slices are farther from the middle at both ends.
  void putRadius(Json& encoding);

  // A line that changes its looks on its way: a piece from each place to the next.
  void cutIntoPieces(Json& encoding);

  // The crossbars of error bars.
  void addEnds(const Json& encoding);

  // ---- data labels

  void addLabels(const PlXLabeling& labeling, const std::string& name, const Json& places);

  // Labels that cover each other aren't shown: of those in one cell of a grid the first is.
  void thinLabels(Json& steps) const;

  void putLabelPlace(const PlXLabeling& labeling, Json& mark, Json& encoding);

  DrawContext& context_;
  const DrawPlane& plane_;
  const CTElementType& element_;
  const DrawPanel& panel_;
  const PlXStyle* style_;
  const std::string& condition_;

  std::vector<const DrawField*> fields_[2];
  const DrawField* within_ = nullptr;  // the element's own x, where clusters take its place
  DrawField folded_;
  std::string source_;
  std::vector<std::string> keys_;    // of rows that make one item, those of panels included
  std::vector<std::string> groups_;  // of items that belong together
  const DrawField* group_ = nullptr;
  const DrawField* offsetBy_ = nullptr;
  const DrawField* responseField_ = nullptr;
  const PlXOffset* offset_ = nullptr;
  const DrawField* offsetField_ = nullptr;
  std::vector<DrawLook> looks_;
  std::vector<std::pair<const PlXLabeling*, std::string>> labels_;
  std::map<std::string, std::string> tips_;  // fields by tokens
  Json tip_ = Json::array();
  MarkPlace places_[2];
  Json ends_[2];
  Json base_;  // of bars on a log scale
  double binWidth_ = 0;
  bool isSummarized_ = false;
  bool isFit_ = false;
  bool isInPieces_ = false;
  bool hasFreePlaces_ = false;
  MarkKind kind_ = MarkKind::Surface;
  Json mark_;
  Json transforms_ = Json::array();
  Json ownData_;
  std::vector<Json> layers_;
};

#endif

#include "drawmarks.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>

#include "drawaesthetics.h"
#include "drawnetwork.h"

namespace {

constexpr int curvePoints = 101;

// Where a mark is along a side: at the value of a field, or from one field to another.
struct Place {
  std::string field;
  std::string end;  // empty for none
  bool isBinned = false;
};

// The statistics that have no picture here, and what is told of them.
struct LeftOut {
  bool (*has)(const PlXBaseElement&);
  const char* what;
};
template <class T>
bool has(const PlXBaseElement& element) {
  return childOf<T>(element);
}
constexpr LeftOut leftOut[] = {
    {has<PlXClusteringStatistic>, "groups of near rows are left out"},
    {has<PlXMapStatistic>, "a map has no outlines here and is left out"},
    {has<PlXRegionStatistic>, "a region of confidence is left out"},
    {has<PlXSOMStatistic>, "a self-organizing map is left out"},
    {has<PlXPatternLinkStatistic>, "links between categories are left out"},
};

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

  std::vector<Json> draw() {
    if (!findFields()) return {};
    addFilters();
    findLooks();
    makeMark();
    if (!place()) return {};
    addTips();
    finish();
    return std::move(layers_);
  }

 private:
  void tell(const std::string& what) { context_.notes.tell(element_, what); }
  const DrawSide& side(std::size_t i) const { return i == 0 ? plane_.x() : plane_.y(); }
  template <class T>
  bool is() const {
    return dynamic_cast<const T*>(&element_);
  }
  std::string channel(std::size_t i) const { return side(i).channel; }
  bool isStacked() const {
    const auto modifier = element_.getPositionModifier();
    return modifier == CTElementType::positionModifier_stack ||
           modifier == CTElementType::positionModifier_stackInterpolating;
  }

  // ---- data

  bool findFields() {
    const CTCoordinate* coordinates[] = {element_.getX(), element_.getY()};
    for (const std::size_t i : {0U, 1U}) {
      if (!coordinates[i]) continue;
      fields_[i] = context_.data.fieldsOf(coordinates[i]->getVariable());
      const DrawField* own = i == 0 ? panel_.x : panel_.y;
      if (own && fields_[i].size() > 1) fields_[i] = {own};
    }
    if (fields_[0].empty() && fields_[1].empty()) {
      tell("has no data and is left out");
      return false;
    }
    source_ = fields_[fields_[0].empty() ? 1 : 0][0]->source;
    for (auto& list : fields_) {
      std::erase_if(list, [&](const DrawField* field) { return !isHere(field, element_); });
    }
    return true;
  }

  bool isHere(const DrawField* field, const PlXBaseElement& user) {
    if (!field) return false;
    if (field->source == source_) return true;
    context_.notes.tell(user, "a variable of another source is left out");
    return false;
  }

  const DrawField* fieldHere(const CTVariableType* variable, const PlXBaseElement& user) {
    const DrawField* field = context_.data.fieldOf(variable);
    return isHere(field, user) ? field : nullptr;
  }

  void addFilter(const std::string& expression) {
    const Json step = filter(expression);
    if (std::ranges::find(transforms_, step) == transforms_.end()) transforms_.push_back(step);
  }

  void keepOnly(const DrawField& field, const std::vector<std::string>& texts) {
    transforms_.push_back({{"filter", {{"field", field.name}, {"oneOf", texts}}}});
  }

  void filterBy(const CTAesthetic& visibility) {
    const DrawField* field = fieldHere(visibility.getVariable(), visibility);
    const PlXBaseElement* domain = visibility.getDomain();
    if (!field) return;
    if (field->isCategorical) {
      const auto& order =
          context_.data.orderOf(*field, dynamic_cast<const PlXCategoricalDomain*>(domain));
      if (order.isPart) keepOnly(*field, order.texts);
    } else if (const auto* interval = dynamic_cast<const PlXIntervalDomain*>(domain)) {
      for (const auto* range : childrenOf<PlXRange>(*interval)) {
        const Json low = field->valueOf(utf8(range->getMin()));
        const Json high = field->valueOf(utf8(range->getMax()));
        if (!low.is_null()) addFilter(datum(field->name) + " >= " + low.dump());
        if (!high.is_null()) addFilter(datum(field->name) + " <= " + high.dump());
      }
    }
  }

  // Cases that aren't in the picture: those hidden, and those of categories that aren't shown.
  void addFilters() {
    if (!condition_.empty()) addFilter(condition_);
    for (const auto* visibility : childrenOf<PlXVisibility>(element_)) filterBy(*visibility);
    for (const std::size_t i : {0U, 1U}) {
      for (const DrawField* field : fields_[i]) {
        if (!field->isCategorical || panel_.isTable) continue;
        const auto& order = side(i).order;
        const std::set<std::string> shown(order.begin(), order.end());
        const bool isPart = std::ranges::any_of(field->raws, [&](const std::string& raw) {
          return !shown.contains(field->labels.at(raw));
        });
        if (isPart) {
          keepOnly(*field, order);
        } else if (field->hasMissing) {
          addFilter("isValid(" + datum(field->name) + ')');
        }
      }
    }
  }

  // ---- looks

  void addKey(const std::string& field) {
    if (std::ranges::find(keys_, field) == keys_.end()) keys_.push_back(field);
  }
  // Of items that belong together, such as the places of one line.
  void addGroup(const std::string& field) {
    addKey(field);
    if (std::ranges::find(groups_, field) == groups_.end()) groups_.push_back(field);
  }

  void findLooks() {
    for (const auto* aesthetic : childrenOf<CTAesthetic>(element_)) {
      if (dynamic_cast<const PlXVisibility*>(aesthetic)) continue;
      const DrawField* field = fieldHere(aesthetic->getVariable(), *aesthetic);
      if (!field) continue;
      const bool parts = field->isCategorical || dynamic_cast<const PlXSplit*>(aesthetic);
      DrawLook look = {aesthetic, field, field->name, field->isCategorical};
      if (aesthetic->getSummaryStatistic()) look.isCategorical = false;
      if (field->isCategorical) {
        const auto& order = context_.data.orderOf(
            *field, dynamic_cast<const PlXCategoricalDomain*>(aesthetic->getDomain()));
        if (order.isPart && isDrawn(*aesthetic)) keepOnly(*field, order.texts);
      }
      // A line keeps together where it is told to.
      const bool isKept = (is<PlXLine>() || is<PlXPath>()) && look.isCategorical &&
                          isDrawn(*aesthetic) && attribute(*aesthetic, u"split") == "false";
      // And Vega-Lite has one look for a line, unless it is cut.
      const bool isVarying = (is<PlXLine>() || is<PlXPath>()) && !look.isCategorical &&
                             isDrawn(*aesthetic) && !plane_.x().isDiscrete;
      isInPieces_ = isInPieces_ || isKept || isVarying;
      if (parts && !isKept && look.isCategorical == field->isCategorical) {
        addGroup(field->name);
        if (!group_ && field->isCategorical) group_ = field;
      }
      if (const auto* offset = dynamic_cast<const PlXOffset*>(aesthetic)) {
        offset_ = offset;
        offsetField_ = field;
      } else if (isDrawn(*aesthetic)) {
        looks_.push_back(look);
      }
    }
    const DrawField* cluster = plane_.x().cluster;
    if (cluster && cluster->source == source_) {
      offsetBy_ = cluster;
    } else if (element_.getPositionModifier() == CTElementType::positionModifier_dodge) {
      offsetBy_ = group_;
    }
    if (offsetBy_) {
      addGroup(offsetBy_->name);
    }
    for (const auto* rows : childrenOf<PlXCollectRowsStatistic>(element_)) {
      if (const DrawField* field = fieldHere(rows->getVariable(), *rows)) {
        addGroup(field->name);
      }
    }
  }

  // ---- marks

  void makeMark() {
    kind_ = MarkKind::Surface;
    const std::string symbol = style_ ? attribute(*style_, u"symbol") : "";
    if (is<PlXPoint>()) {
      kind_ = MarkKind::Point;
      setMark("point", pointLook(style_));
    } else if (is<PlXLine>() || is<PlXPath>()) {
      kind_ = MarkKind::Line;
      setMark("line", lineLook(style_));
    } else if (is<PlXEdge>()) {
      kind_ = MarkKind::Line;
      setMark("rule", lineLook(style_));
    } else if (is<PlXArea>()) {
      setMark("area", surfaceLook(style_));
    } else if (is<PlXPolygon>()) {
      setMark("rect", surfaceLook(style_));
    } else if (is<PlXSchema>()) {
      setMark("boxplot", Json::object());
    } else if (plane_.isPolar()) {
      setMark("arc", surfaceLook(style_));
    } else if (symbol == "ibeam" || symbol == "line") {
      kind_ = MarkKind::Line;
      setMark("rule", lineLook(style_));
    } else {
      setMark("bar", surfaceLook(style_));
      const auto share = style_ ? shareOf(attribute(*style_, u"width")) : std::nullopt;
      const auto width = style_ ? pixelsOf(attribute(*style_, u"width")) : std::nullopt;
      if (plane_.x().isDiscrete) {
        mark_["width"] =
            width ? numberJson(*width)
                  : Json{{"band", numberJson(std::clamp(share.value_or(0.8), 0.02, 1.0))}};
      } else if (width) {
        mark_["width"] = numberJson(*width);
      }
      mark_["binSpacing"] = 0;
    }
    for (const auto& [name, what] : std::initializer_list<std::pair<const XMLCh*, const char*>>{
             {u"gradient-method", "gradients are left out"},
             {u"shadow-color", "shadows are left out"},
             {u"bevel-size", "slanted edges are left out"},
             {u"background-image", "pictures are left out"},
             {u"stroke-decoration", "ends of lines are left out"}}) {
      const std::string value = style_ ? attribute(*style_, name) : "";
      if (!value.empty() && value != "none") context_.notes.tell(*style_, what);
    }
    if (style_ && style_->getPattern() > 0) context_.notes.tell(*style_, "patterns are left out");
  }

  void setMark(const char* type, Json look) {
    mark_ = {{"type", type}};
    for (const auto& [name, value] : look.items()) mark_[name] = value;
    const auto isPartOf = [](const Json& scale) {
      return scale.contains("domain") && scale["domain"].size() == 2 &&
             scale["domain"][0].is_number();
    };
    if (isPartOf(plane_.x().scale) || isPartOf(plane_.y().scale) || plane_.y().isLog()) {
      mark_["clip"] = true;
    }
  }

  // ---- places

  // False when the element is left out.
  bool place() {
    for (const LeftOut& row : leftOut) {
      if (!row.has(element_)) continue;
      tell(row.what);
      return false;
    }
    if (const auto* network = childOf<PlXGraphLayoutStatistic>(element_)) {
      return placeNetwork(network->getFromVariable(), network->getToVariable(), false);
    }
    if (const auto* tree = childOf<PlXTreeLayoutStatistic>(element_)) {
      return placeNetwork(tree->getNodeVariable(), tree->getParentVariable(), true);
    }
    if (has<PlXTagCloudStatistic>(element_)) return placeWords();
    if (const auto* distribution = childOf<PlXDistributionStatistic>(element_)) {
      return placeDistribution(*distribution);
    }
    if (has<PlXFixedWindowDensityStatistic>(element_) ||
        has<PlXNearestNeighborDensityStatistic>(element_)) {
      return placeDensity();
    }
    if (is<PlXSchema>()) return placeBoxes();
    const auto* bins = childOf<PlXBinStatistic>(element_);
    if (bins && !fields_[0].empty() && !fields_[1].empty() &&
        (bins->getMethod() == PlXBinStatistic::method_allDimensions || is<PlXPolygon>())) {
      return placeCells(*bins);
    }
    if (!placeSummary(bins)) return false;
    if (const auto* link = childOf<PlXLinkStatistic>(element_)) addSpikes(*link);
    if (const auto* smooth = childOf<PlXSmoothStatistic>(element_)) return addCurve(*smooth);
    return true;
  }

  bool hasNumbers(std::size_t i) const {
    return !fields_[i].empty() && !fields_[i][0]->isCategorical;
  }

  Summary makeSummary() const {
    const DrawField* along = fields_[0].empty() ? nullptr : fields_[0][0];
    static const std::vector<std::string> noOrder;
    return {context_,
            source_,
            keys_,
            places_[0].field,
            along && along->isCategorical ? plane_.x().order : noOrder,
            panel_.fields};
  }

  // The looks and labels of aggregated items are those of a statistic.
  void addToSummary(Summary& summary, const std::string& response) {
    for (DrawLook& look : looks_) {
      const PlXSummaryStatistic* own = look.aesthetic->getSummaryStatistic();
      if (look.isCategorical && !own) continue;
      if (std::ranges::find(keys_, look.name) != keys_.end()) continue;
      const auto value = own ? summary.add(*own, look.field) : std::nullopt;
      look.name = value ? *value : summary.add("mean", look.field);
    }
    for (const auto* labeling : childrenOf<PlXLabeling>(element_)) {
      const DrawField* field = fieldHere(labeling->getVariable(), *labeling);
      const PlXSummaryStatistic* own = labeling->getSummaryStatistic();
      const DrawField* measured = field && !field->isCategorical ? field
                                  : !responseField_              ? field
                                                                 : responseField_;
      std::string name = response;
      if (own && (!field || !field->isCategorical || measured != field)) {
        if (const auto value = summary.add(*own, measured)) name = *value;
      } else if (field && std::ranges::find(keys_, field->name) != keys_.end()) {
        name = field->name;
      } else if (field && field != responseField_ && !field->isCategorical) {
        name = summary.add("mean", field);
      } else if (field && field != responseField_) {
        context_.notes.tell(*labeling, "its labels differ within an item; the value is shown");
      }
      labels_.emplace_back(labeling, name);
    }
    if (const PlXPopup* popup = popupOf()) {
      for (const auto* token : childrenOf<PlXTokenMapping>(*popup)) {
        const DrawField* field = fieldHere(token->getVariable(), *popup);
        const auto* own = childOf<PlXSummaryStatistic>(*token);
        if (own) {
          if (const auto value = summary.add(*own, field))
            tips_[attribute(*token, u"valueToken")] = *value;
        } else if (field && std::ranges::find(keys_, field->name) != keys_.end()) {
          tips_[attribute(*token, u"valueToken")] = field->name;
        } else if (field && field == responseField_) {
          tips_[attribute(*token, u"valueToken")] = response;
        }
      }
    }
  }

  const PlXPopup* popupOf() const {
    const auto found = context_.popups.find(attribute(element_, PlXUni::_id));
    return found == context_.popups.end() ? nullptr : found->second;
  }

  void plainLabels() {
    for (const auto* labeling : childrenOf<PlXLabeling>(element_)) {
      const DrawField* field = fieldHere(labeling->getVariable(), *labeling);
      if (!field && !places_[1].field.empty()) {
        labels_.emplace_back(labeling, places_[1].field);
      } else if (field) {
        labels_.emplace_back(labeling, field->name);
      }
    }
    if (const PlXPopup* popup = popupOf()) {
      for (const auto* token : childrenOf<PlXTokenMapping>(*popup)) {
        if (const DrawField* field = fieldHere(token->getVariable(), *popup)) {
          tips_[attribute(*token, u"valueToken")] = field->name;
        }
      }
    }
  }

  // Several variables on one coordinate become one with the values of all.
  void fold(std::size_t i) {
    if (fields_[i].size() < 2) return;
    Json names = Json::array();
    for (const DrawField* field : fields_[i]) names.push_back(field->name);
    const std::string as = i == 0 ? "x_value" : "y_value";
    transforms_.push_back({{"fold", names}, {"as", {as + "_of", as}}});
    folded_ = *fields_[i][0];
    folded_.name = as;
    fields_[i] = {&folded_};
    addGroup(as + "_of");
  }

  bool placeSummary(const PlXBinStatistic* bins) {
    const auto* statistic = childOf<PlXSummaryStatistic>(element_);
    const auto method = statistic ? statistic->getMethod() : PlXSummaryStatistic::method_value;
    if (method == PlXSummaryStatistic::method_range && !fields_[1].empty()) {
      placeKey(bins);
      return placeRange();
    }
    fold(0);
    fold(1);
    const bool isWhole = fields_[1].empty() && hasNumbers(0) && !bins;
    if (!isWhole) placeKey(bins);
    const std::size_t at = isWhole && plane_.isPolar() ? 0 : 1;
    const auto& response = isWhole ? fields_[0] : fields_[1];
    responseField_ = response.empty() ? nullptr : response[0];

    // Rows on top of each other are one bar, as high as their sum.
    const bool isPile =
        isStacked() && (is<PlXInterval>() || is<PlXArea>()) && hasNumbers(at) && !element_.getDot();
    const bool counts = response.empty() || bins || isPile ||
                        (statistic && method != PlXSummaryStatistic::method_value && method != 0);
    if (!counts && has<PlXAggregateStatistic>(element_)) {
      tell("rows that agree are drawn over each other");
    }
    if (!counts) {
      places_[at].field = responseField_->name;
      plainLabels();
      return true;
    }
    if (responseField_ && responseField_->isCategorical && bins) responseField_ = nullptr;
    Summary summary = makeSummary();
    std::string value;
    if (statistic && method != 0 && method != PlXSummaryStatistic::method_value) {
      const auto found = summary.add(*statistic, responseField_);
      if (!found) tell("the statistic " + attribute(*statistic, u"method") + " is drawn as counts");
      value = found ? *found : summary.count();
    } else {
      value = isPile && !bins ? summary.add("sum", responseField_) : summary.count();
    }
    addToSummary(summary, value);
    summary.appendTo(transforms_);
    isSummarized_ = true;
    places_[at].field = value;
    return true;
  }

  // The place of groups of rows: their category, number or bin.
  void placeKey(const PlXBinStatistic* bins) {
    if (fields_[0].empty()) return;
    const DrawField& field = *fields_[0][0];
    if (bins && !field.isCategorical) {
      const Bins cut = addBins(transforms_, field, *bins);
      binWidth_ = cut.width;
      places_[0] = {cut.low, cut.high, true};
      addKey(cut.low);
      addKey(cut.high);
      if (is<PlXInterval>() && bins->getGridType() == PlXBinStatistic::gridType_dot) {
        tell("dots are drawn as bars");
      }
    } else {
      places_[0].field = field.name;
      addKey(field.name);
    }
  }

  // From the least to the greatest of one or several variables.
  bool placeRange() {
    std::string low, high;
    for (const DrawField* field : fields_[1]) {
      if (field->isCategorical) continue;
      low += (low.empty() ? "" : ", ") + datum(field->name);
    }
    if (low.empty()) return false;
    high = low;
    if (fields_[1].size() > 1) {
      transforms_.push_back(calculation("lowest", "min(" + low + ')'));
      transforms_.push_back(calculation("highest", "max(" + high + ')'));
      low = "lowest";
      high = "highest";
    } else {
      low = high = fields_[1][0]->name;
    }
    transforms_.push_back({{"aggregate",
                            {{{"op", "min"}, {"field", low}, {"as", "range_low"}},
                             {{"op", "max"}, {"field", high}, {"as", "range_high"}}}},
                           {"groupby", keys_}});
    addFilter("isValid(" + datum("range_low") + ')');
    places_[1] = {"range_low", "range_high", false};
    isSummarized_ = true;
    if (!childrenOf<PlXLabeling>(element_).empty()) tell("labels of ranges are left out");
    return true;
  }

  // ---- networks

  static std::string textOr(const DrawField& field, const std::string& raw) {
    const auto found = field.labels.find(raw);
    return found == field.labels.end() ? raw : found->second;
  }

  // A node for each name, and a line for each row that links two.
  bool placeNetwork(const CTVariableType* from, const CTVariableType* to, bool isTree) {
    const DrawField* first = fieldHere(from, element_);
    const DrawField* second = fieldHere(to, element_);
    if (!first || !second || !first->isCategorical || !second->isCategorical) {
      tell("a network without names is left out");
      return false;
    }
    const auto links = context_.data.pairsOf(*first, *second);
    const NetworkPlaces places = isTree ? treePlaces(links) : circlePlaces(links);
    tell(isTree ? "a tree is drawn from the top down"
                : "the nodes of a network are drawn on a circle");
    Json values = Json::array();
    const bool isEdge = is<PlXEdge>();
    std::set<std::string> known;
    for (const auto& [a, b] : links) {
      const auto start = places.find(a);
      const auto end = places.find(b);
      if (isEdge && start != places.end() && end != places.end()) {
        values.push_back({{"x", start->second.first},
                          {"y", start->second.second},
                          {"x_end", end->second.first},
                          {"y_end", end->second.second}});
      }
      for (const std::string& name : {a, b}) {
        const auto place = places.find(name);
        if (isEdge || place == places.end() || !known.insert(name).second) continue;
        values.push_back(
            {{first->name, name}, {"x", place->second.first}, {"y", place->second.second}});
      }
    }
    usePlaces(values, *first);
    if (isEdge) {
      places_[0].end = "x_end";
      places_[1].end = "y_end";
      setMark("rule", lineLook(style_));
    }
    return !values.empty();
  }

  bool placeWords() {
    const DrawField& field = *fields_[0][0];
    if (!field.isCategorical) return false;
    std::vector<std::string> words;
    for (const std::string& raw : field.raws) words.push_back(textOr(field, raw));
    tell("a cloud of words is drawn as rows of words");
    Json values = Json::array();
    for (const auto& [word, place] : gridPlaces(words)) {
      values.push_back({{field.name, word}, {"x", place.first}, {"y", place.second}});
    }
    usePlaces(values, field);
    return !values.empty();
  }

  // Values with places of their own, and nothing of the rows but the name.
  void usePlaces(const Json& values, const DrawField& name) {
    ownData_ = {{"values", values}};
    transforms_ = Json::array();
    for (const DrawLook& look : looks_) {
      if (look.field != &name) context_.notes.tell(*look.aesthetic, "a node has no value for it");
    }
    std::erase_if(looks_, [&](const DrawLook& look) { return look.field != &name; });
    groups_.clear();
    if (popupOf()) tell("popups are left out");
    places_[0].field = "x";
    places_[1].field = "y";
    hasFreePlaces_ = true;
    for (const auto* labeling : childrenOf<PlXLabeling>(element_)) {
      if (fieldHere(labeling->getVariable(), *labeling) == &name) {
        labels_.emplace_back(labeling, name.name);
      }
    }
  }

  // The theoretical curve: over a histogram in the histogram's units.
  bool placeDistribution(const PlXDistributionStatistic& statistic) {
    const DrawSide& x = plane_.x();
    const ChartString first(statistic.getParameter());
    const ChartString second(statistic.getSecondaryParameter());
    if (!hasNumbers(0) || !x.hasExtent() || !(x.least < x.greatest)) return false;
    const DrawField& field = *fields_[0][0];
    const auto distribution = states(statistic, u"distribution")
                                  ? statistic.getDistribution()
                                  : PlXDistributionStatistic::distribution_normal;
    double parameters[] = {first.convertToDouble(), second.convertToDouble()};
    const bool isNormal = distribution == PlXDistributionStatistic::distribution_normal;
    if (first.empty() || (isNormal && second.empty())) {
      if (!isNormal) {
        tell("a distribution without parameters is left out");
        return false;
      }
      estimate(field, parameters);
    }
    const double factor = histogramFactor(field);
    Json values = Json::array();
    for (int i = 0; i < curvePoints; ++i) {
      const double at = x.least + (x.greatest - x.least) * i / (curvePoints - 1);
      const double density = densityAt(distribution, at, parameters[0], parameters[1]);
      if (std::isfinite(density)) {
        values.push_back({{"x", numberJson(at)}, {"density", numberJson(density * factor)}});
      }
    }
    if (values.empty()) {
      tell("the distribution " + attribute(statistic, u"distribution") + " is left out");
      return false;
    }
    ownData_ = {{"values", values}};
    transforms_ = Json::array();
    looks_.clear();
    groups_.clear();
    places_[0].field = "x";
    places_[1].field = "density";
    return true;
  }

  // The moments of a variable with the weights of its cases.
  void estimate(const DrawField& field, double (&parameters)[2]) {
    const auto moments = context_.data.momentsOf(field);
    parameters[0] = moments.mean;
    parameters[1] = moments.deviation;
  }

  // What a density is multiplied by to lie over the histogram of the same variable.
  double histogramFactor(const DrawField& field) {
    const auto* graph = dynamic_cast<const PlXGraph*>(element_.objectOf(
        static_cast<xercesc::DOMElement*>(element_.getImplementation()->getParentNode())));
    for (const PlXInterval* bars : graph ? graph->getIntervals() : std::vector<PlXInterval*>()) {
      const auto* bins = childOf<PlXBinStatistic>(*bars);
      const CTCoordinate* coordinate = bars->getX();
      if (!bins || !coordinate) continue;
      const auto fields = context_.data.fieldsOf(coordinate->getVariable());
      if (std::ranges::find(fields, &field) == fields.end()) continue;
      Json unused = Json::array();
      const double width = addBins(unused, field, *bins).width;
      if (width > 0) return width * context_.data.momentsOf(field).cases;
    }
    return 1;
  }

  bool placeDensity() {
    if (!hasNumbers(0)) return false;
    const DrawField& field = *fields_[0][0];
    Json density = {{"density", field.name}};
    if (const auto* window = childOf<PlXFixedWindowDensityStatistic>(element_)) {
      if (window->getBandwidth() > 0 && std::isfinite(window->getBandwidth())) {
        density["bandwidth"] = numberJson(window->getBandwidth());
      }
      if (window->getKernel() != PlXSmoothStatistic::kernel_gaussian) {
        tell("its kernel is drawn as a Gaussian one");
      }
    } else {
      tell("windows of a number of rows are drawn as those of one width");
    }
    std::vector<std::string> parts = groups_;
    parts.insert(parts.begin(), panel_.fields.begin(), panel_.fields.end());
    putGroups(density, parts);
    const double factor = histogramFactor(field);
    if (factor != 1) density["counts"] = true;
    const DrawSide& x = plane_.x();
    if (x.hasExtent() && x.least < x.greatest)
      density["extent"] = {numberJson(x.least), numberJson(x.greatest)};
    density["as"] = {field.name, "density"};
    transforms_.push_back(density);
    if (factor != 1) {
      // Counts are told for a unit of the variable.
      const double width = factor / context_.data.momentsOf(field).cases;
      const double weight =
          context_.data.momentsOf(field).cases / context_.data.momentsOf(field).rows;
      transforms_.push_back(
          calculation("density", datum("density") + " * " + literal(width * weight)));
    }
    std::erase_if(looks_, [](const DrawLook& look) { return !look.isCategorical; });
    places_[0].field = field.name;
    places_[1].field = "density";
    return true;
  }

  bool placeBoxes() {
    if (!hasNumbers(1)) {
      tell("has no numbers and is left out");
      return false;
    }
    const auto& schema = dynamic_cast<const PlXSchema&>(element_);
    const auto* tukey = childOf<PlXTukeyStatistic>(element_);
    const double fence = tukey && states(*tukey, u"fence") ? tukey->getFence() : 1.5;
    if (tukey && states(*tukey, u"extreme")) tell("extremes are drawn as other outliers");
    if (schema.getExtremeStyle() && schema.getExtremeStyle() != schema.getOutlierStyle()) {
      tell("extremes have the style of outliers");
    }
    mark_["extent"] = numberJson(fence > 0 && std::isfinite(fence) ? fence : 1.5);
    const auto partStyle = [&](const PlXStyle* own) { return own ? own : style_; };
    Json box = surfaceLook(partStyle(schema.getHingeStyle()));
    if (plane_.x().isDiscrete) {
      const auto share = style_ ? shareOf(attribute(*style_, u"width")) : std::nullopt;
      const double boxes = static_cast<double>(
          std::max<std::size_t>(1, plane_.x().order.size()) *
          std::max<std::size_t>(1, offsetBy_ ? context_.data.orderOf(*offsetBy_).texts.size() : 1));
      const double length = channel(0) == "x" ? plane_.width() : plane_.height();
      const double width = 0.8 * length / boxes * std::clamp(share.value_or(0.7), 0.05, 1.0);
      mark_["size"] = numberJson(std::max(2.0, std::round(width)));
    }
    mark_["box"] = box;
    mark_["median"] = lineLook(partStyle(schema.getMedianStyle()));
    mark_["rule"] = lineLook(partStyle(schema.getFenceStyle()));
    mark_["ticks"] = lineLook(partStyle(schema.getFenceStyle()));
    mark_["ticks"]["size"] = numberJson(std::round(mark_.value("size", 20.0) / 3));
    mark_["outliers"] = pointLook(partStyle(schema.getOutlierStyle()));
    if (!mark_["outliers"].contains("size")) mark_["outliers"]["size"] = 16;
    places_[0].field = fields_[0].empty() ? "" : fields_[0][0]->name;
    places_[1].field = fields_[1][0]->name;
    if (!childrenOf<PlXLabeling>(element_).empty()) tell("labels of outliers are left out");
    if (popupOf()) tell("its popup shows what Vega-Lite shows of boxes");
    return true;
  }

  // Cells of a grid; hexagons lie as bricks do.
  bool placeCells(const PlXBinStatistic& bins) {
    if (!hasNumbers(0) || !hasNumbers(1)) return false;
    const bool isSquare = bins.getGridType() == PlXBinStatistic::gridType_square;
    Bins cut[2];
    for (const std::size_t i : {0U, 1U}) {
      cut[i] = addBins(transforms_, *fields_[i][0], bins);
      places_[i] = {cut[i].low, cut[i].high, true};
    }
    if (!isSquare && cut[0].width > 0 && cut[1].width > 0) {
      brick(cut);
    } else if (!is<PlXPolygon>()) {
      // A symbol stands in the middle.
      for (const std::size_t i : {0U, 1U}) {
        const std::string middle = fields_[i][0]->name + "_mid";
        transforms_.push_back(
            calculation(middle, '(' + datum(cut[i].low) + " + " + datum(cut[i].high) + ") / 2"));
        places_[i] = {middle, "", false};
      }
    }
    for (const Place& place : places_) {
      addKey(place.field);
      if (!place.end.empty()) addKey(place.end);
    }
    const auto* statistic = childOf<PlXSummaryStatistic>(element_);
    Summary summary = makeSummary();
    const auto value = statistic ? summary.add(*statistic, fields_[1][0]) : std::nullopt;
    responseField_ = fields_[1][0];
    addToSummary(summary, value ? *value : summary.count());
    summary.appendTo(transforms_);
    isSummarized_ = true;
    if (bins.getLocation() == PlXBinStatistic::location_centroid) {
      tell("cells stand in the grid, not where their rows are");
    }
    return true;
  }

  // Every second row is moved by half a cell.
  void brick(const Bins (&cut)[2]) {
    const DrawField& x = *fields_[0][0];
    const DrawField& y = *fields_[1][0];
    const std::string column = literal(cut[0].width);
    transforms_.push_back(calculation(
        "hex_shift", "floor((" + datum(cut[1].low) + " - " + literal(y.least) + ") / " +
                         literal(cut[1].width) + " + 0.5) % 2 == 0 ? 0 : 0.5 * " + column));
    transforms_.push_back(calculation(
        x.name + "_mid", "(floor((" + datum(x.name) + " - " + datum("hex_shift") + " - " +
                             literal(x.least) + ") / " + column + ") + 0.5) * " + column + " + " +
                             literal(x.least) + " + " + datum("hex_shift")));
    transforms_.push_back(calculation(
        y.name + "_mid", '(' + datum(cut[1].low) + " + " + datum(cut[1].high) + ") / 2"));
    places_[0] = {x.name + "_mid", "", false};
    places_[1] = {y.name + "_mid", "", false};
    if (is<PlXPolygon>()) {
      kind_ = MarkKind::Point;
      mark_["type"] = "point";
      mark_["shape"] = symbolShape("hexagon");
      const double columns = std::max(1.0, (x.greatest - x.least) / cut[0].width);
      const double width = plane_.width() / columns;
      mark_["size"] = numberJson(std::round(width * width * 1.33));
      std::erase_if(looks_, [](const DrawLook& look) {
        return dynamic_cast<const PlXSize*>(look.aesthetic);
      });
    }
    tell("hexagons are counted as bricks are laid");
  }

  // Lines from the items to a common place.
  void addSpikes(const PlXLinkStatistic& link) {
    const PlXLinkStatistic::ENUM_location ends[] = {link.getX(), link.getY()};
    kind_ = MarkKind::Line;
    setMark("rule", lineLook(style_));
    for (const std::size_t i : {0U, 1U}) {
      if (ends[i] == PlXLinkStatistic::location_centroid ||
          ends[i] == PlXLinkStatistic::location_mean) {
        if (side(i).isDiscrete || places_[i].field.empty()) continue;
        const std::string as = i == 0 ? "x_end" : "y_end";
        Json mean = {
            {"joinaggregate", {{{"op", "mean"}, {"field", places_[i].field}, {"as", as}}}}};
        std::vector<std::string> parts = panel_.fields;
        parts.insert(parts.end(), groups_.begin(), groups_.end());
        putGroups(mean, parts);
        transforms_.push_back(mean);
        places_[i].end = as;
      } else if (ends[i] == PlXLinkStatistic::location_base ||
                 ends[i] == PlXLinkStatistic::location_origin) {
        if (side(i).isDiscrete) continue;
        const bool isLeast = ends[i] == PlXLinkStatistic::location_base &&
                             !side(i).scale.value("zero", false) && side(i).hasExtent();
        ends_[i] = isLeast ? numberJson(side(i).least) : Json(0);
      }
    }
  }

  bool addCurve(const PlXSmoothStatistic& smooth) {
    const auto method = smooth.getMethod();
    static constexpr std::pair<PlXSmoothStatistic::ENUM_method, const char*> shapes[] = {
        {PlXSmoothStatistic::method_stepLeft, "step-after"},
        {PlXSmoothStatistic::method_stepRight, "step-before"},
        {PlXSmoothStatistic::method_stepCenter, "step"},
        {PlXSmoothStatistic::method_spline, "monotone"}};
    for (const auto& [known, shape] : shapes) {
      if (method != known) continue;
      mark_["interpolate"] = shape;
      return true;
    }
    const long degree = method == PlXSmoothStatistic::method_polynomial ? smooth.getDegree() : 1;
    std::vector<std::string> parts = panel_.fields;
    parts.insert(parts.end(), groups_.begin(), groups_.end());
    if (is<PlXInterval>() || smooth.getSpikes()) return addFitSpikes(degree, parts);
    if (plane_.x().isDiscrete || plane_.y().isDiscrete || places_[0].field.empty() ||
        places_[1].field.empty()) {
      tell("a fit needs numbers and is left out");
      return false;
    }
    Json fit = Json::object();
    if (method == PlXSmoothStatistic::method_loess) {
      fit = {{"loess", places_[1].field}, {"on", places_[0].field}};
      const double share = smooth.getProportion();
      if (share > 0 && share <= 1) fit["bandwidth"] = numberJson(share);
      if (smooth.getKernel() != PlXSmoothStatistic::kernel_tricube) {
        tell("its kernel is drawn as a tricube one");
      }
    } else {
      static constexpr const char* names[] = {"poly", "linear", "quad", "poly"};
      fit = {{"regression", places_[1].field}, {"on", places_[0].field}};
      const auto order = static_cast<std::size_t>(std::clamp(degree, 0L, 20L));
      fit["method"] = names[std::min<std::size_t>(order, 3)];
      if (order == 0 || order > 2) fit["order"] = order;
      const DrawSide& x = plane_.x();
      if (!smooth.getBounded() && x.scale.contains("domain") && x.hasExtent()) {
        fit["extent"] = {numberJson(x.least), numberJson(x.greatest)};
      }
      if (states(smooth, u"intercept")) tell("its intercept is left out");
    }
    putGroups(fit, parts);
    transforms_.push_back(fit);
    std::erase_if(looks_, [&](const DrawLook& look) {
      const bool isLost = !look.isCategorical;
      if (isLost) context_.notes.tell(*look.aesthetic, "a fit has no values for it");
      return isLost;
    });
    labels_.clear();
    tips_.clear();
    isFit_ = true;
    if (!is<PlXArea>() && !is<PlXPoint>()) mark_["type"] = "line";
    return true;
  }

  // From the items to their mean; other curves have no values at the items.
  bool addFitSpikes(long degree, const std::vector<std::string>& parts) {
    if (degree != 0) {
      tell("spikes to a fitted curve are left out");
      return false;
    }
    Json mean = {
        {"joinaggregate", {{{"op", "mean"}, {"field", places_[1].field}, {"as", "y_end"}}}}};
    putGroups(mean, parts);
    transforms_.push_back(mean);
    places_[1].end = "y_end";
    kind_ = MarkKind::Line;
    setMark("rule", lineLook(style_));
    return true;
  }

  // ---- popups as tooltips

  void addTips() {
    const PlXPopup* popup = popupOf();
    if (!popup || tips_.empty()) return;
    const std::string text = attribute(*popup, u"tokenTemplate");
    std::size_t end = 0;
    for (std::size_t start; (start = text.find("$[", end)) != text.npos;) {
      std::string title = text.substr(end, start - end);
      const std::size_t close = text.find("]$", start);
      if (close == text.npos) break;
      const auto found = tips_.find(text.substr(start + 2, close - start - 2));
      end = close + 2;
      if (found == tips_.end()) continue;
      addTip(*popup, found->first, found->second, title.substr(title.rfind('\n') + 1));
    }
    for (const auto* token : childrenOf<PlXTokenMapping>(*popup)) {
      if (!tips_.contains(attribute(*token, u"valueToken"))) {
        context_.notes.tell(*token, "differs within an item and is left out");
      }
    }
  }

  void addTip(const PlXPopup& popup, const std::string& token, const std::string& name,
              std::string title) {
    const DrawField* field = nullptr;
    for (const auto* mapping : childrenOf<PlXTokenMapping>(popup)) {
      if (attribute(*mapping, u"valueToken") == token) {
        field = context_.data.fieldOf(mapping->getVariable());
      }
    }
    static constexpr std::string_view around = " \t\r:=,;.()";
    const std::size_t first = title.find_first_not_of(around);
    title =
        first == title.npos ? "" : title.substr(first, title.find_last_not_of(around) - first + 1);
    if (title.empty() && field) title = utf8(field->variable->getLabel());
    if (title.empty()) title = name;
    if (field && field->isCategorical && name == field->name) {
      tip_.push_back({{"field", name}, {"type", "nominal"}, {"title", title}});
      return;
    }
    const bool isOwn = field && (name == field->name || name.ends_with('_' + field->name)) &&
                       !name.starts_with("percent") && !name.starts_with("valid");
    const std::string as = "tip_" + std::to_string(tip_.size() + 1);
    transforms_.push_back(
        calculation(as, textExpression(datum(name), isOwn ? formatOf(field->variable) : nullptr,
                                       isOwn && field->isDate)));
    tip_.push_back({{"field", as}, {"type", "nominal"}, {"title", title}});
  }

  // ---- encodings

  void putPlace(Json& encoding, std::size_t i) const {
    const Place& at = places_[i];
    if (at.field.empty()) return;
    const std::string& name = channel(i);
    const bool isOfTable =
        panel_.isTable && !fields_[i].empty() &&
        std::ranges::find(panel_.fields, fields_[i][0]->name) != panel_.fields.end();
    if (isOfTable) return;
    if (hasFreePlaces_) {
      encoding[name] = {{"field", at.field},
                        {"type", "quantitative"},
                        {"scale", {{"domain", {-0.1, 1.1}}}},
                        {"axis", nullptr}};
      if (!at.end.empty()) encoding[name + '2'] = {{"field", at.end}};
      return;
    }
    encoding[name] = DrawPlane::position(side(i), at.field);
    if (at.isBinned) encoding[name]["bin"] = "binned";
    if (!at.end.empty()) encoding[name + '2'] = {{"field", at.end}};
    if (!ends_[i].is_null()) encoding[name + '2'] = {{"datum", ends_[i]}};
    if (i == 1 && !base_.is_null()) encoding[name + '2'] = base_;
  }

  Json places() const {
    Json encoding = Json::object();
    putPlace(encoding, 0);
    putPlace(encoding, 1);
    const std::string& value =
        channel(plane_.isPolar() && !places_[0].field.empty() && places_[1].field.empty() ? 0 : 1);
    if (encoding.contains(value) && !encoding.contains(value + '2')) {
      const bool canStack = is<PlXInterval>() || is<PlXArea>();
      if (canStack && mark_["type"] != "rule") {
        encoding[value]["stack"] = isStacked() ? Json("zero") : Json();
      }
    }
    if (offsetBy_ && plane_.x().isDiscrete && !plane_.isPolar() && !hasFreePlaces_) {
      const auto& order = context_.data.orderOf(*offsetBy_);
      encoding[channel(0) + "Offset"] = {
          {"field", offsetBy_->name}, {"type", "nominal"}, {"scale", {{"domain", order.texts}}}};
    }
    if (element_.getPositionModifier() == CTElementType::positionModifier_jitter)
      putJitter(encoding);
    return encoding;
  }

  // A log scale has no place for zero and less, and bars on it stand on its lower end.
  void keepPositive() {
    for (const std::size_t i : {0U, 1U}) {
      if (!side(i).isLog() || places_[i].field.empty() || hasFreePlaces_) continue;
      addFilter(datum(places_[i].field) + " > 0");
      const bool isOpen = places_[i].end.empty() && ends_[i].is_null();
      if (ends_[i].is_number() && ends_[i].get<double>() <= 0) ends_[i] = nullptr;
      const bool hasBase = is<PlXInterval>() || is<PlXArea>() || (!isOpen && places_[i].end.empty());
      if (i == 0 || !hasBase || !places_[i].end.empty()) continue;
      base_ = {{"datum", numberJson(side(i).base)}};
      if (isStacked()) tell("on a log scale all bars stand on its lower end");
    }
  }

  // Symbols that would cover each other are strewn.
  void putJitter(Json& encoding) const {
    if (!plane_.x().isDiscrete || encoding.contains(channel(0) + "Offset")) return;
    encoding[channel(0) + "Offset"] = {
        {"field", "jitter"}, {"type", "quantitative"}, {"scale", {{"domain", {-0.5, 1.5}}}}};
  }

  void addJitter() {
    if (element_.getPositionModifier() != CTElementType::positionModifier_jitter) return;
    if (!plane_.x().isDiscrete) return tell("items on numbers aren't strewn");
    // Not by chance, so that a picture is the same each time.
    transforms_.push_back({{"window", {{{"op", "row_number"}, {"as", "row"}}}}});
    transforms_.push_back(calculation("jitter", "(" + datum("row") + " * 0.618034) % 1"));
  }

  // The stack's order is that of the categories, the same for bars and for their labels.
  void addStackOrder(Json& encoding) {
    if (!group_ || (!isStacked() && mark_["type"] != "arc")) return;
    const std::string rank = "rank_" + group_->name;
    const auto& order = context_.data.orderOf(*group_).texts;
    transforms_.push_back(calculation(
        rank, "indexof(" + Json(order).dump(-1, ' ', false, Json::error_handler_t::replace) + ", " +
                  datum(group_->name) + ')'));
    encoding["order"] = {{"field", rank}, {"type", "quantitative"}};
  }

  Json detail() const {
    Json list = Json::array();
    for (const std::string& name : groups_) list.push_back({{"field", name}, {"type", "nominal"}});
    return list;
  }

  void finish() {
    addJitter();
    keepPositive();
    Json encoding = places();
    if (!plane_.isPolar() || mark_["type"] == "arc") addStackOrder(encoding);
    if (is<PlXPath>() && !isSummarized_ && !isFit_) {
      transforms_.push_back({{"window", {{{"op", "row_number"}, {"as", "row"}}}}});
      encoding["order"] = {{"field", "row"}, {"type", "quantitative"}};
    }
    putBreaks();
    if (mark_["type"] == "arc") placeSlices(encoding);
    const Json bare = encoding;
    cutIntoPieces(encoding);
    for (const DrawLook& look : looks_) putLook(context_, look, kind_, style_, encoding);
    if (mark_["type"] == "boxplot" && encoding.contains("fill")) {
      encoding["color"] = encoding["fill"];  // the only colour that boxes have
      encoding.erase("fill");
      mark_["box"].erase("fill");
      mark_["outliers"].erase("fill");
    }
    putOwnLegend();
    if (!groups_.empty() && mark_["type"] != "boxplot") encoding["detail"] = detail();
    if (!tip_.empty()) encoding["tooltip"] = tip_;
    if (isVisible(style_)) {
      addLayer(mark_, encoding);
      addEnds(encoding);
    }
    for (const auto& [labeling, name] : labels_) addLabels(*labeling, name, bare);
  }

  void addLayer(const Json& mark, const Json& encoding, const Json& more = Json::array()) {
    Json layer = Json::object();
    const std::string name = attribute(element_, PlXUni::_id);
    if (!name.empty()) layer["description"] = name;
    layer["data"] = ownData_.is_null() ? Json{{"name", DrawData::tableName(source_)}} : ownData_;
    if (!panel_.fields.empty() && ownData_.is_null()) layer.erase("data");
    Json steps = transforms_;
    for (const Json& step : more) steps.push_back(step);
    if (!steps.empty()) layer["transform"] = steps;
    layer["mark"] = mark;
    layer["encoding"] = encoding;
    layers_.push_back(layer);
  }

  void putBreaks() {
    const std::string breaks = attribute(element_, u"breakRepresentation");
    if (mark_["type"] != "line" && mark_["type"] != "area") return;
    if (breaks == "interpolated") mark_["invalid"] = "filter";
    if (breaks == "wings") tell("wings at gaps are left out");
    if (attribute(element_, u"showDiscontinuity") == "true" && mark_.contains("interpolate")) {
      tell("steps are drawn with their risers");
    }
  }

  // An element that a legend explains as a whole is one entry of it.
  void putOwnLegend() {
    const auto found = context_.legends.find(attribute(element_, PlXUni::_id));
    if (found == context_.legends.end()) return;
    DrawLegend& legend = found->second;
    const char* channel = kind_ == MarkKind::Line ? "stroke" : "fill";
    legend.mark = mark_;
    for (const char* name : {"type", "size", "angle", "strokeCap", "width", "binSpacing", "clip",
                             "invalid", "interpolate"}) {
      legend.mark.erase(name);
    }
    if (mark_["type"] == "boxplot") legend.mark = surfaceLook(style_);
    if (kind_ == MarkKind::Point &&
        (!legend.mark.contains("fill") || legend.mark["fill"] == "transparent" ||
         isStroked(legend.mark.value("shape", "")))) {
      channel = "stroke";
    }
    const Json color = legend.mark.contains(channel) ? legend.mark[channel] : Json("#4c78a8");
    std::string name = utf8(element_.getName());
    if (name.empty()) name = attribute(element_, PlXUni::_id);
    Json look = legend.look;
    if (!look.contains("title")) look["title"] = nullptr;
    if (kind_ == MarkKind::Line) look["symbolType"] = "stroke";
    if (kind_ == MarkKind::Surface) look["symbolType"] = "square";
    if (mark_.contains("strokeDash")) look["symbolDash"] = mark_["strokeDash"];
    legend.encoding[channel] = {{"field", "entry"},
                                {"type", "nominal"},
                                {"scale", {{"domain", {name}}, {"range", {color}}}},
                                {"legend", look}};
  }

  // ---- slices

  // A slice reaches from one share of the circle to another. Without a variable of their own,
  // slices are as wide as their values say; else all are equally wide, and as long as the values
  // say.
  void placeSlices(Json& encoding) {
    const PlXPolarTransform& polar = *plane_.polar();
    const bool isRose = !places_[0].field.empty() && !places_[1].field.empty();
    if (isRose) {
      const std::string rank =
          "indexof(" + Json(plane_.x().order).dump(-1, ' ', false, Json::error_handler_t::replace) +
          ", " + datum(places_[0].field) + ')';
      const std::string count = literal(static_cast<double>(plane_.x().order.size()));
      transforms_.push_back(calculation("slice_start", rank + " / " + count));
      transforms_.push_back(calculation("slice_end", "(" + rank + " + 1) / " + count));
    } else {
      Json stack = {{"stack", places_[places_[0].field.empty() ? 1 : 0].field},
                    {"groupby", panel_.fields},
                    {"offset", "normalize"},
                    {"as", {"slice_start", "slice_end"}}};
      if (encoding.contains("order")) stack["sort"] = {{{"field", encoding["order"]["field"]}}};
      transforms_.push_back(stack);
    }
    encoding.erase("order");
    // Degrees count from the right and against the clock; Vega's radians from the top and with it.
    const double start = std::numbers::pi / 180 * (90 - std::fmod(polar.getStartAngle(), 360));
    const double cycles = polar.getCycles() > 0 && polar.getCycles() <= 1 ? polar.getCycles() : 1;
    const double turn = 2 * std::numbers::pi * cycles * (polar.getCounterClockwise() ? -1 : 1);
    encoding["theta"] = {{"field", "slice_start"},
                         {"type", "quantitative"},
                         {"stack", nullptr},
                         {"scale", {{"domain", {0, 1}}, {"range", {start, start + turn}}}}};
    encoding["theta2"] = {{"field", "slice_end"}};
    if (isRose) {
      encoding["radius"]["stack"] = nullptr;
      encoding["radius"]["scale"] = {{"type", "sqrt"}, {"zero", true}};
      return;
    }
    putRadius(encoding);
  }

  // Pulled out slices are farther from the middle at both ends.
  void putRadius(Json& encoding) {
    const double radius = std::min(plane_.width(), plane_.height()) / 2;
    mark_["outerRadius"] = numberJson(std::round(radius * 0.85));
    if (!offset_ || !offsetField_) return;
    const double distance = shareOf(utf8(offset_->getHigh())).value_or(0.05) * 2;
    const auto* domain = dynamic_cast<const PlXCategoricalDomain*>(offset_->getDomain());
    const auto& order = context_.data.orderOf(*offsetField_, domain);
    const std::string test =
        "indexof(" + Json(order.texts).dump(-1, ' ', false, Json::error_handler_t::replace) + ", " +
        datum(offsetField_->name) + ") >= 0 ? ";
    const auto put = [&](const std::string& channel, double near, double far) {
      transforms_.push_back(calculation(
          channel, test + literal(std::round(far)) + " : " + literal(std::round(near))));
      encoding[channel] = {{"field", channel}};
    };
    mark_.erase("outerRadius");
    put("radius", radius * 0.85, radius * (0.85 + distance));
    put("radius2", 0, radius * distance);
    encoding["radius"].update(
        Json{{"type", "quantitative"}, {"scale", nullptr}, {"stack", nullptr}});
  }

  // A line that changes its looks on its way: a piece from each place to the next.
  void cutIntoPieces(Json& encoding) {
    if (!isInPieces_ || mark_["type"] != "line" || isFit_) return;
    Json window = {{"window",
                    {{{"op", "lead"}, {"field", places_[0].field}, {"as", "next_x"}},
                     {{"op", "lead"}, {"field", places_[1].field}, {"as", "next_y"}}}}};
    if (!is<PlXPath>()) window["sort"] = {{{"field", places_[0].field}}};
    std::vector<std::string> parts = panel_.fields;
    parts.insert(parts.end(), groups_.begin(), groups_.end());
    putGroups(window, parts);
    transforms_.push_back(window);
    addFilter("isValid(" + datum("next_x") + ") && isValid(" + datum("next_y") + ") && isValid(" +
              datum(places_[1].field) + ')');
    mark_["type"] = "rule";
    mark_.erase("interpolate");
    encoding.erase("order");
    encoding[channel(0) + '2'] = {{"field", "next_x"}};
    encoding[channel(1) + '2'] = {{"field", "next_y"}};
  }

  // The crossbars of error bars.
  void addEnds(const Json& encoding) {
    const std::string symbol = style_ ? attribute(*style_, u"symbol") : "";
    const std::string& value = channel(1);
    if (mark_["type"] != "rule" || symbol != "ibeam" || !encoding.contains(value + '2')) return;
    for (const bool isSecond : {false, true}) {
      Json mark = {{"type", "tick"}, {"orient", value == "y" ? "horizontal" : "vertical"}};
      if (mark_.contains("stroke")) mark["color"] = mark_["stroke"];
      mark["thickness"] = mark_.value("strokeWidth", Json(1));
      mark["size"] = 8;
      if (mark_.contains("clip")) mark["clip"] = true;
      Json ends = encoding;
      for (const char* channel : {"stroke", "strokeDash", "strokeWidth", "tooltip"})
        ends.erase(channel);
      const Json end = ends[value + '2'];
      ends.erase(value + '2');
      if (isSecond) {
        if (!end.contains("field")) continue;
        ends[value]["field"] = end["field"];
      }
      addLayer(mark, ends);
    }
  }

  // ---- data labels

  void addLabels(const PlXLabeling& labeling, const std::string& name, const Json& places) {
    if (!isVisible(labeling.getStyle())) return;
    const DrawField* field = context_.data.fieldOf(labeling.getVariable());
    const auto formats = labeling.getFormats();
    const bool isText = field && field->isCategorical && name == field->name;
    const PlXFormat* format = !formats.empty() ? formats[0]
                              : field && (name == field->name || name.ends_with(field->name))
                                  ? formatOf(field->variable)
                                  : nullptr;
    const std::string as = "label_" + name;
    Json steps = Json::array();
    for (const auto* visibility : childrenOf<PlXVisibility>(labeling)) {
      const DrawField* shown = fieldHere(visibility->getVariable(), *visibility);
      if (!shown || (isSummarized_ && std::ranges::find(keys_, shown->name) == keys_.end()))
        continue;
      Json before = std::move(transforms_);
      transforms_ = Json::array();
      filterBy(*visibility);
      steps = std::move(transforms_);
      transforms_ = std::move(before);
    }
    const bool isDate = field && field->isDate && name == field->name;
    steps.push_back(calculation(
        as, "isValid(" + datum(name) + ") ? " +
                (isText ? datum(name) : textExpression(datum(name), format, isDate)) + " : \"\""));
    Json mark = {{"type", "text"}};
    const Json look = textLook(labeling.getStyle());
    for (const auto& [key, value] : look.items()) mark[key] = value;
    if (mark_.contains("clip")) mark["clip"] = true;
    Json encoding = places;
    for (const char* channel : {"x2", "y2", "radius", "radius2"}) encoding.erase(channel);
    for (const std::size_t i : {0U, 1U}) {
      if (!places_[i].isBinned || !encoding.contains(channel(i))) continue;
      steps.push_back(calculation(
          "middle", '(' + datum(places_[i].field) + " + " + datum(places_[i].end) + ") / 2"));
      encoding[channel(i)]["field"] = "middle";
      encoding[channel(i)].erase("bin");
    }
    thinLabels(steps);
    putLabelPlace(labeling, mark, encoding);
    if (mark_["type"] == "arc") {
      steps.push_back(calculation(
          "slice_middle", '(' + datum("slice_start") + " + " + datum("slice_end") + ") / 2"));
    }
    encoding["text"] = {{"field", as}, {"type", "nominal"}};
    if (!groups_.empty()) encoding["detail"] = detail();
    for (const auto* aesthetic : childrenOf<CTAesthetic>(labeling)) {
      if (!isDrawn(*aesthetic)) continue;
      const DrawField* shown = fieldHere(aesthetic->getVariable(), *aesthetic);
      const bool isKnown = shown && !hasFreePlaces_ &&
                           (!isSummarized_ || std::ranges::find(keys_, shown->name) != keys_.end());
      if (!isKnown) {
        context_.notes.tell(*aesthetic, "differs within an item and is left out");
        continue;
      }
      putLook(context_, {aesthetic, shown, shown->name, shown->isCategorical}, MarkKind::Text,
              labeling.getStyle(), encoding);
    }
    addLayer(mark, encoding, steps);
    if (labeling.getConnectingLines())
      context_.notes.tell(labeling, "lines to labels are left out");
    if (labeling.getTextFrameStyle())
      context_.notes.tell(labeling, "frames around labels are left out");
  }

  // Labels that cover each other aren't shown: of those in one cell of a grid the first is.
  void thinLabels(Json& steps) const {
    if (element_.getShowCollidingLabels() || is<PlXInterval>() || hasFreePlaces_) return;
    constexpr double cell[] = {56, 14};
    std::vector<std::string> parts = panel_.fields;
    bool isThinned = false;
    for (const std::size_t i : {0U, 1U}) {
      if (places_[i].field.empty()) continue;
      const bool isX = channel(i) == "x";
      const double span = side(i).greatest - side(i).least;
      const double cells = (isX ? plane_.width() : plane_.height()) / cell[isX ? 0 : 1];
      if (side(i).isDiscrete) {
        parts.push_back(places_[i].field);
      } else if (!side(i).hasExtent() || (i == 1 && (isSummarized_ || isStacked()))) {
        parts.insert(parts.end(), groups_.begin(), groups_.end());
      } else if (span > 0) {
        const std::string as = isX ? "cell_x" : "cell_y";
        steps.push_back(calculation(as, "floor((" + datum(places_[i].field) + " - " +
                                            literal(side(i).least) + ") / " +
                                            literal(span / cells) + ')'));
        parts.push_back(as);
        isThinned = true;
      }
    }
    if (!isThinned) return;
    Json window = {{"window", {{{"op", "row_number"}, {"as", "cell_row"}}}}};
    putGroups(window, parts);
    steps.push_back(window);
    steps.push_back(filter(datum("cell_row") + " == 1"));
  }

  void putLabelPlace(const PlXLabeling& labeling, Json& mark, Json& encoding) {
    const PlXStyle* style = labeling.getStyle();
    std::string across = style ? attribute(*style, u"labelLocationHorizontal") : "";
    std::string upright = style ? attribute(*style, u"labelLocationVertical") : "";
    const auto locations = labeling.getLabelLocations();
    if (!locations.empty()) {
      across = attribute(*locations[0], u"horizontal");
      upright = attribute(*locations[0], u"vertical");
    }
    const std::string& value = channel(1);
    if (mark_["type"] == "arc") {
      const double radius = std::min(plane_.width(), plane_.height()) / 2;
      // In the middle between the slice's sides.
      encoding["theta"]["field"] = "slice_middle";
      encoding.erase("theta2");
      const bool isInside = style && style->getLabelInside() == PlXStyle::labelInside_true;
      mark["radius"] = numberJson(std::round(radius * (isInside ? 0.55 : offset_ ? 1.08 : 0.98)));
      return;
    }
    const bool isOutside = style && style->getLabelInside() == PlXStyle::labelInside_false;
    if (mark_["type"] == "bar" && isStacked() && !isOutside && encoding.contains(value)) {
      encoding[value]["bandPosition"] = 0.5;
      return;
    }
    const auto put = [&](const std::string& where, const char* property, const char* offset,
                         const char* low, const char* high, double step) {
      if (where == "negative") {
        mark[property] = low;
        mark[offset] = numberJson(-step);
      } else if (where == "positive") {
        mark[property] = high;
        mark[offset] = numberJson(step);
      } else if (where == "center") {
        mark[property] = std::string_view(property) == "align" ? "center" : "middle";
      }
    };
    if (mark_["type"] == "bar" && upright.empty() && across.empty()) {
      (value == "y" ? upright : across) = "positive";
    }
    put(across, "align", "dx", "right", "left", 4);
    put(upright, "baseline", "dy", "top", "bottom", -4);
    // Labels within a bar stand below its end.
    if (mark_["type"] == "bar" && upright == "negative" && value == "y") mark["dy"] = 3;
  }

  DrawContext& context_;
  const DrawPlane& plane_;
  const CTElementType& element_;
  const DrawPanel& panel_;
  const PlXStyle* style_;
  const std::string& condition_;

  std::vector<const DrawField*> fields_[2];
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
  Place places_[2];
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

}  // namespace

std::optional<bool> conditionOf(const PlXConditionalStyle& entry, const DrawPanel& panel,
                                std::string& test) {
  const std::string when = attribute(entry, u"when");
  const bool isEqual = when == "facet1==facet2";
  if (!isEqual && when != "facet1!=facet2") return {};
  if (panel.x && panel.y) return (panel.x == panel.y) == isEqual;
  if (panel.fields.size() < 2) return false;
  test = datum(panel.fields[0]) + (isEqual ? " == " : " != ") + datum(panel.fields[1]);
  return {};
}

std::vector<Json> drawElement(DrawContext& context, const DrawPlane& plane,
                              const CTElementType& element, const DrawPanel& panel) {
  const PlXStyle* style = element.getStyle();
  std::string others;  // the condition of what has the element's own style
  std::vector<Json> layers;
  const auto add = [&](const PlXStyle* with, const std::string& condition) {
    if (!isVisible(with) && element.getLabelings().empty()) return;
    for (Json& layer : ElementDrawer(context, plane, element, panel, with, condition).draw()) {
      layers.push_back(std::move(layer));
    }
  };
  for (const auto* entry : childrenOf<PlXConditionalStyle>(element)) {
    std::string test;
    const std::optional<bool> holds = conditionOf(*entry, panel, test);
    if (holds) {
      if (*holds) style = entry->getStyle();
    } else if (test.empty()) {
      context.notes.tell(*entry, "a condition that isn't known is passed over");
    } else {
      others = "!(" + test + ')';
      if (isVisible(entry->getStyle())) add(entry->getStyle(), test);
    }
  }
  add(style, others);
  return layers;
}

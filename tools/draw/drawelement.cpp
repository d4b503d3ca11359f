#include "drawelement.h"

#include <set>

namespace draw {

// ---- what it is drawn from

bool Subject::isStacked() const {
  const auto modifier = element.getPositionModifier();
  return modifier == CTElementType::positionModifier_stack ||
         modifier == CTElementType::positionModifier_stackInterpolating;
}

bool Subject::hasNumbers(std::size_t i) const {
  return !fields[i].empty() && !fields[i][0]->isCategorical;
}

namespace {

void tellUnknown(DrawContext& context, const CTVariableType* variable, const PlXBaseElement& user) {
  const std::string name = attribute(user, u"variable");
  if (!variable && !name.empty()) context.notes.tell(user, "there is no variable '" + name + "'");
}

bool isOf(const std::string& source, const DrawField* field, DrawContext& context,
          const PlXBaseElement& user) {
  if (!field) return false;
  if (field->source == source) return true;
  context.notes.tell(user, "a variable of another source is left out");
  return false;
}

}  // namespace

const DrawField* Subject::fieldHere(const CTVariableType* variable,
                                    const PlXBaseElement& user) const {
  tellUnknown(context, variable, user);
  const DrawField* field = context.data.fieldOf(variable);
  return isOf(source, field, context, user) ? field : nullptr;
}

const PlXPopup* Subject::popup() const {
  const auto found = context.popups.find(attribute(element, PlXUni::_id));
  return found == context.popups.end() ? nullptr : found->second;
}

std::optional<Subject> subjectOf(DrawContext& context, const DrawPlane& plane,
                                 const CTElementType& element, const DrawPanel& panel,
                                 const PlXStyle* style, const std::string& condition) {
  Subject of = {context, plane, element, panel, style, condition, {}, {}};
  const CTCoordinate* coordinates[] = {element.getX(), element.getY()};
  for (const std::size_t i : {0U, 1U}) {
    if (!coordinates[i]) continue;
    tellUnknown(context, coordinates[i]->getVariable(), *coordinates[i]);
    of.fields[i] = context.data.fieldsOf(coordinates[i]->getVariable());
    const DrawField* own = i == 0 ? panel.x : panel.y;
    if (own && of.fields[i].size() > 1) of.fields[i] = {own};
  }
  if (of.fields[0].empty() && of.fields[1].empty()) {
    of.tell("has no data and is left out");
    return {};
  }
  of.source = of.fields[of.fields[0].empty() ? 1 : 0][0]->source;
  for (auto& list : of.fields) {
    std::erase_if(
        list, [&](const DrawField* field) { return !isOf(of.source, field, context, element); });
  }
  const DrawField* cluster = plane.x().cluster;
  if (isOf(of.source, cluster, context, element)) {
    if (of.fields[0].size() > 1) of.tell("of several variables the first is drawn in the clusters");
    if (!of.fields[0].empty() && of.fields[0][0] != cluster) of.within = of.fields[0][0];
    of.fields[0] = {cluster};
  }
  return of;
}

// ---- which rows

namespace {

Json oneOf(const DrawField& field, const std::vector<std::string>& texts) {
  return {{"filter", {{"field", field.name}, {"oneOf", texts}}}};
}

}  // namespace

void addOnce(Json& steps, const Json& step) {
  if (std::ranges::find(steps, step) == steps.end()) steps.push_back(step);
}

Json validFilter(const std::string& field) {
  return filter("isValid(" + datum(field) + ')');
}

Json filtersOf(const Subject& of, const CTAesthetic& visibility) {
  Json steps = Json::array();
  const DrawField* field = of.fieldHere(visibility.getVariable(), visibility);
  const PlXBaseElement* domain = visibility.getDomain();
  if (!field) return steps;
  if (field->isCategorical) {
    const auto& order =
        of.context.data.orderOf(*field, dynamic_cast<const PlXCategoricalDomain*>(domain));
    if (order.isPart) steps.push_back(oneOf(*field, order.texts));
  } else if (const auto* interval = dynamic_cast<const PlXIntervalDomain*>(domain)) {
    for (const auto* range : childrenOf<PlXRange>(*interval)) {
      const Json low = field->valueOf(utf8(range->getMin()));
      const Json high = field->valueOf(utf8(range->getMax()));
      if (!low.is_null()) steps.push_back(filter(datum(field->name) + " >= " + low.dump()));
      if (!high.is_null()) steps.push_back(filter(datum(field->name) + " <= " + high.dump()));
    }
  }
  return steps;
}

Json rowFilters(const Subject& of) {
  Json steps = Json::array();
  if (!of.condition.empty()) steps.push_back(filter(of.condition));
  for (const auto* visibility : childrenOf<PlXVisibility>(of.element)) {
    for (const Json& step : filtersOf(of, *visibility)) addOnce(steps, step);
  }
  if (of.within) {
    const auto& order = of.context.data.orderOf(*of.within);
    if (order.isPart) steps.push_back(oneOf(*of.within, order.texts));
    if (!order.isPart && of.within->hasMissing) addOnce(steps, validFilter(of.within->name));
  }
  for (const std::size_t i : {0U, 1U}) {
    for (const DrawField* field : of.fields[i]) {
      if (!field->isCategorical || of.panel.isTable) continue;
      const auto& order = of.side(i).order;
      const std::set<std::string> shown(order.begin(), order.end());
      const bool isPart = std::ranges::any_of(field->raws, [&](const std::string& raw) {
        return !shown.contains(field->labels.at(raw));
      });
      if (isPart) {
        steps.push_back(oneOf(*field, order));
      } else if (field->hasMissing) {
        addOnce(steps, validFilter(field->name));
      }
    }
  }
  return steps;
}

// ---- which looks

bool Looks::isKey(const std::string& field) const {
  return std::ranges::find(keys, field) != keys.end();
}

void Looks::addKey(const std::string& field) {
  if (!isKey(field)) keys.push_back(field);
}

void Looks::addGroup(const std::string& field) {
  addKey(field);
  if (std::ranges::find(groups, field) == groups.end()) groups.push_back(field);
}

std::vector<std::string> Looks::partsIn(const DrawPanel& panel) const {
  std::vector<std::string> parts = panel.fields;
  parts.insert(parts.end(), groups.begin(), groups.end());
  return parts;
}

namespace {

// Adds one aesthetic of an element to its looks.
void addLook(const Subject& of, const CTAesthetic& aesthetic, Looks& looks) {
  const DrawField* field = of.fieldHere(aesthetic.getVariable(), aesthetic);
  if (!field) return;
  DrawLook look = {&aesthetic, field, field->name, field->isCategorical};
  if (aesthetic.getSummaryStatistic()) look.isCategorical = false;
  if (field->isCategorical) {
    const auto& order = of.context.data.orderOf(
        *field, dynamic_cast<const PlXCategoricalDomain*>(aesthetic.getDomain()));
    if (order.isPart && isDrawn(aesthetic)) looks.filters.push_back(oneOf(*field, order.texts));
  }
  const bool isLine = of.is<PlXLine>() || of.is<PlXPath>();
  // A line keeps together where it is told to.
  const bool isKept = isLine && look.isCategorical && isDrawn(aesthetic) &&
                      attribute(aesthetic, u"split") == "false";
  // And Vega-Lite has one look for a line, unless it is cut.
  const bool isVarying =
      isLine && !look.isCategorical && isDrawn(aesthetic) && !of.plane.x().isDiscrete;
  looks.isInPieces = looks.isInPieces || isKept || isVarying;
  const bool parts = field->isCategorical || dynamic_cast<const PlXSplit*>(&aesthetic);
  if (parts && !isKept && look.isCategorical == field->isCategorical) {
    looks.addGroup(field->name);
    if (!looks.group && field->isCategorical) looks.group = field;
  }
  if (const auto* offset = dynamic_cast<const PlXOffset*>(&aesthetic)) {
    looks.offset = offset;
    looks.offsetField = field;
  } else if (isDrawn(aesthetic)) {
    looks.list.push_back(look);
  }
}

}  // namespace

Looks looksOf(const Subject& of) {
  Looks looks;
  looks.keys = of.panel.fields;
  for (const auto* aesthetic : childrenOf<CTAesthetic>(of.element)) {
    if (!dynamic_cast<const PlXVisibility*>(aesthetic)) addLook(of, *aesthetic, looks);
  }
  const DrawField* depth = of.plane.x().depth;
  if (of.within) {
    looks.offsetBy = of.within;
  } else if (depth && depth->source == of.source) {
    looks.offsetBy = depth;
  } else if (of.element.getPositionModifier() == CTElementType::positionModifier_dodge) {
    looks.offsetBy = looks.group;
  }
  if (looks.offsetBy) looks.addGroup(looks.offsetBy->name);
  for (const auto* rows : childrenOf<PlXCollectRowsStatistic>(of.element)) {
    if (const DrawField* field = of.fieldHere(rows->getVariable(), *rows)) {
      looks.addGroup(field->name);
    }
  }
  return looks;
}

// ---- which mark

namespace {

void tellOfStyle(const Subject& of) {
  if (!of.style) return;
  for (const auto& [name, what] : std::initializer_list<std::pair<const XMLCh*, const char*>>{
           {u"gradient-method", "gradients are left out"},
           {u"shadow-color", "shadows are left out"},
           {u"bevel-size", "slanted edges are left out"},
           {u"background-image", "pictures are left out"},
           {u"stroke-decoration", "ends of lines are left out"}}) {
    const std::string value = of.look(name);
    if (!value.empty() && value != "none") of.context.notes.tell(*of.style, what);
  }
  if (of.style->getPattern() > 0) of.context.notes.tell(*of.style, "patterns are left out");
}

Mark barOf(const Subject& of) {
  Mark mark = markOf(of, MarkKind::Surface, "bar", surfaceLook(of.style));
  const auto share = shareOf(of.look(u"width"));
  const auto width = pixelsOf(of.look(u"width"));
  const char* across = of.isTransposed() ? "height" : "width";
  if (of.plane.x().isDiscrete) {
    mark.json[across] =
        width ? numberJson(*width)
              : Json{{"band", numberJson(std::clamp(share.value_or(0.8), 0.02, 1.0))}};
  } else if (width) {
    mark.json[across] = numberJson(*width);
  }
  mark.json["binSpacing"] = 0;
  return mark;
}

}  // namespace

Mark markOf(const Subject& of, MarkKind kind, const char* type, const Json& look) {
  Mark mark = {kind, {{"type", type}}};
  const Json stated = std::string_view(type) == "boxplot" ? look : statedLook(kind, look);
  for (const auto& [name, value] : stated.items()) mark.json[name] = value;
  const auto isPartOf = [](const Json& scale) {
    return scale.contains("domain") && scale["domain"].size() == 2 &&
           scale["domain"][0].is_number();
  };
  // Else Vega-Lite would guess which side is along.
  const std::string_view kindOfMark = type;
  if (of.isTransposed() && (kindOfMark == "line" || kindOfMark == "area" || kindOfMark == "bar")) {
    mark.json["orient"] = "horizontal";
  }
  const DrawPlane& plane = of.plane;
  if (isPartOf(plane.x().scale) || isPartOf(plane.y().scale) || plane.y().isLog()) {
    mark.json["clip"] = true;
  }
  return mark;
}

Mark markOf(const Subject& of) {
  tellOfStyle(of);
  const std::string symbol = of.look(u"symbol");
  const bool isThin =
      of.is<PlXInterval>() && !of.plane.isPolar() && (symbol == "ibeam" || symbol == "line");
  if (of.is<PlXPoint>()) return markOf(of, MarkKind::Point, "point", pointLook(of.style));
  if (of.is<PlXLine>() || of.is<PlXPath>()) {
    return markOf(of, MarkKind::Line, "line", lineLook(of.style));
  }
  if (of.is<PlXEdge>() || isThin) return markOf(of, MarkKind::Line, "rule", lineLook(of.style));
  const Json look = surfaceLook(of.style);
  if (of.is<PlXArea>()) return markOf(of, MarkKind::Surface, "area", look);
  if (of.is<PlXPolygon>()) return markOf(of, MarkKind::Surface, "rect", look);
  if (of.is<PlXSchema>()) return markOf(of, MarkKind::Surface, "boxplot", Json::object());
  if (of.plane.isPolar()) return markOf(of, MarkKind::Surface, "arc", look);
  return barOf(of);
}

}  // namespace draw

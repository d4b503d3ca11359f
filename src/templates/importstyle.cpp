// BaseTemplate's import of style elements.
#include <type_traits>
#include <unordered_set>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "basetemplate.h"
#include "chartbase.h"
#include "dialect.h"
#include "domwalk.h"
#include "findings.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "report.h"
#include "statedvalues.h"
#include "styleproperties.h"
#include "templatexml.h"
#include "xmlwriter.h"

using namespace xercesc;

namespace {

using styleproperties::Statements;
using StyleUsers = BaseTemplate::StyleUsers;
template <class T>
using Painted = StyleUsers::Painted<T>;

// ---- the keys stroke and fill
void importStrokeAndFill(const Statements& stated, PlXStyle& style, const PlXStyle* source,
                         bool isSurface) {
  if (!stated.stroke.empty() && !(source && source->isColor2Present())) {
    isSurface ? style.setColor2(stated.stroke.xc_str()) : style.setColor(stated.stroke.xc_str());
  }
  if (isSurface && !stated.fill.empty() && !(source && source->isColorPresent())) {
    style.setColor(stated.fill.xc_str());
  }
}

// ---- the child interpolation, which acts on elements
struct Interpolation {
  ChartString type;
  PlXSmoothStatistic::ENUM_method method = PlXSmoothStatistic::method_linear;
  // Nothing to leave it as it is.
  std::optional<CTElementType::ENUM_breakRepresentation> breaks;
};

Interpolation readInterpolation(const DOMElement& element) {
  Interpolation result;
  result.type = element.getAttribute(PlXUni::_type);
  if (result.type.equals(PlXUni::_step) || result.type.equals(PlXUni::_jump)) {
    const ChartString position = element.getAttribute(u"pointPosition");
    result.method = position.equals(PlXUni::_left)    ? PlXSmoothStatistic::method_stepLeft
                    : position.equals(PlXUni::_right) ? PlXSmoothStatistic::method_stepRight
                                                      : PlXSmoothStatistic::method_stepCenter;
  }
  result.breaks = templatexml::wordOf<CTElementType::ENUM_breakRepresentation>(
      element.getAttribute(PlXUni::_missingRepresentation));
  return result;
}

template <class T>
void addPainted(Painted<T>& painted, T& element) {
  painted.all.push_back(&element);
  painted.ofStyle[element.getStyle()->getId()].push_back(&element);
}

// Gives each element of a tag a style.
template <class T>
void findPainted(BaseTemplate& base, const XMLCh* tag, std::optional<Painted<T>>& painted) {
  if (painted) return;
  std::vector<CTElementType*> elements;
  base.getAllElementsByType(tag, elements);
  Painted<T> found;
  for (CTElementType* each : elements) {
    auto* element = dynamic_cast<T*>(each);
    if (!element) continue;
    base.styleOf<CTElementType>(*element);
    addPainted(found, *element);
  }
  painted = std::move(found);
}

template <class T>
void noticePainted(std::optional<Painted<T>>& painted, PlXBaseElement& part) {
  auto* element = painted ? dynamic_cast<T*>(&part) : nullptr;
  if (element && element->getStyle()) addPainted(*painted, *element);
}

// What got a style of its own since the last import, as a new element does.
void noticeRestyled(StyleUsers& users) {
  for (PlXBaseElement* part : users.restyled) {
    users.noticeSurface(*part);
    noticePainted(users.lines, *part);
    noticePainted(users.areas, *part);
    noticePainted(users.paths, *part);
  }
  users.restyled.clear();
}

// Those that a style paints.
template <class T>
std::vector<T*> elementsOf(const Painted<T>& painted, const std::u16string& style) {
  if (style == ChartBase::_container) return painted.all;
  const auto found = painted.ofStyle.find(style);
  return found == painted.ofStyle.end() ? std::vector<T*>() : found->second;
}

template <class T>
void setBreaks(const BaseTemplate& base, T& element, const Interpolation& interpolation) {
  if (!base.source || !base.source->doesIdExist(element.getId()) || !interpolation.breaks) return;
  const T* other = base.sourceOf(element);
  if (other ? !other->getBreakRepresentation() : std::is_same_v<T, PlXLine>) {
    element.setBreakRepresentation(*interpolation.breaks);
  }
}

template <class T>
void setSmoothing(T& element, const Interpolation& interpolation) {
  if (interpolation.type.empty()) return;
  BaseTemplate::smoothStatisticOf(element).setMethod(interpolation.method);
  element.setShowDiscontinuity(interpolation.type.equals(PlXUni::_jump));
}

// Lines, areas and paths that the style paints are interpolated; the other areas and paths are too,
// but for their breaks. A command may say the same of many styles: each is asked for its elements
// once, and all areas and paths follow once.
void interpolate(BaseTemplate& base, StyleUsers& users, const DOMElement& element,
                 const PlXStyle& style) {
  const auto [followed, isFirst] = users.followed.try_emplace(&element);
  const std::u16string id(style.getId());
  if (!followed->second.insert(id).second) return;
  const Interpolation interpolation = readInterpolation(element);
  findPainted(base, PlXLine::_UTF_line, users.lines);
  findPainted(base, PlXArea::_UTF_area, users.areas);
  findPainted(base, PlXPath::_UTF_path, users.paths);
  const auto paint = [&](const auto& painted) {
    for (auto* each : elementsOf(painted, id)) {
      setBreaks(base, *each, interpolation);
      setSmoothing(*each, interpolation);
    }
  };
  paint(*users.lines);
  paint(*users.areas);
  paint(*users.paths);
  if (!isFirst) return;
  for (PlXArea* area : users.areas->all) setSmoothing(*area, interpolation);
  for (PlXPath* path : users.paths->all) setSmoothing(*path, interpolation);
}

void reportUnknownChild(const DOMElement& child) {
  report("Unsupported style child encountered (" + xmlText(child) + ")", __FILE__, __LINE__);
}

}  // namespace

// What a style element says, but for its children.
struct BaseTemplate::StyleImport::Reading {
  Statements stated;
};

BaseTemplate::StyleImport::StyleImport(BaseTemplate& base, const DOMElement* element,
                                       Painting painting)
    : base_(base), element_(element) {
  if (!element) return;
  reading_.reset(new Reading{styleproperties::read(base, *element, painting)});
}

BaseTemplate::StyleImport::~StyleImport() = default;

void BaseTemplate::StyleImport::onto(PlXStyle& style) const {
  if (!element_) return;
  const PlXStyle* source = base_.sourceOf(style);
  const Statements& stated = reading_->stated;
  StyleUsers own;
  StyleUsers& users = base_.findings_ ? base_.findings_->users : own;
  noticeRestyled(users);
  styleproperties::write(stated.properties, style, source);
  if (!stated.stroke.empty() || !stated.fill.empty()) {
    users.findSurfaces(base_, base_.target,
                       stated::selection(base_, base_.command, PlXUni::_graph) > 0);
    importStrokeAndFill(stated, style, source, users.isSurface(style));
  }
  for (const DOMElement* child = firstElement(element_); child; child = nextElement(child)) {
    if (styleproperties::writeChild(base_, *child, style, source)) continue;
    if (XMLString::equals(child->getTagName(), PlXUni::_interpolation)) {
      interpolate(base_, users, *child, style);
    } else {
      reportUnknownChild(*child);
    }
  }
  styleproperties::write(stated.withoutKey, style, source);
}

void BaseTemplate::importStyle(const DOMElement* styleElement, PlXStyle& style) {
  if (!findings_) return StyleImport(*this, styleElement).onto(style);
  std::unique_ptr<StyleImport>& import = findings_->imports[styleElement];
  if (!import) import = std::make_unique<StyleImport>(*this, styleElement);
  import->onto(style);
}

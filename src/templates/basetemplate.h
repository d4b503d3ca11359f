// BaseTemplate: the frame of every template command, and the questions that commands ask a chart.
#ifndef CHARTXML_BASETEMPLATE_H
#define CHARTXML_BASETEMPLATE_H

#include <memory>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "chartstring.h"
#include "export.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

class CTAesthetic;
class CTElementType;
class CTVariableType;
class CommandListener;
class PlXAxis;
class PlXBaseElement;
class PlXCategoricalDomain;
class PlXDash;
class PlXDimension;
class PlXFormat;
class PlXGraph;
class PlXGridline;
class PlXInterval;
class PlXLabel;
class PlXLabeling;
class PlXLegend;
class PlXMajorTicks;
class PlXMinorTicks;
class PlXSmoothStatistic;
class PlXStyle;
class PlXStyleBy;
class PlXStyleCycle;
class PlXVisualization;

// A command is made for one element of a template, asked once to apply itself, and destroyed; it
// keeps nothing between commands. It edits the target alone. Where a source chart is given, whose
// objects have the ids of the target's, what an object there states is left alone in the target.
//
// Roles name dimensions by their position in a coordinates block: `x`, `y` and `z` are the first
// three, `y2` is the second of the second block; `legend` names the aesthetics.
//
// Queries find nothing rather than fail: null, false, 0 or an empty list. Objects belong to the
// target.
class CHARTXML_API BaseTemplate {
 public:
#define CONSTANT(name, text) static const XMLCh name[sizeof(u"" text) / sizeof(XMLCh)];
#include "basetemplate.inc"
#undef CONSTANT

  struct StyleUsers;  // For the import of styles.
  struct Findings;

  // None is owned; `source` may be null, and `command` stays in its template's document.
  BaseTemplate(const PlXVisualization* source, PlXVisualization& target,
               const xercesc::DOMElement* command);
  // For the queries alone: every graph is addressed.
  BaseTemplate(const PlXVisualization* source, PlXVisualization& target);
  BaseTemplate(const BaseTemplate&) = delete;
  BaseTemplate& operator=(const BaseTemplate&) = delete;
  virtual ~BaseTemplate();

  // What it was made with.
  PlXVisualization& target;
  const PlXVisualization* const source;
  const xercesc::DOMElement* const command;

  // The object of the source chart that has the id of this one and its class; null without either.
  template <class T>
  const T* sourceOf(const T& object) const {
    return dynamic_cast<const T*>(sourceObject(object));
  }

  // Applies the command; what the answer means is each command's affair. This one does nothing and
  // answers false.
  virtual bool ProcessCommand();
  // For the dispatcher: nobody but the command edits the chart from here on, so that the command
  // may keep what it finds out until it goes.
  void keepFindings();

  // ---- what a command says, to who listens (CommandOutcome); without a listener it costs nothing
  // For the dispatcher. Not owned; null for nobody.
  void listenTo(CommandListener* listener) {
    listener_ = listener;
  }
  // A note of what was asked for and can't be had, and the word that it was asked for by, which is
  // put behind in quotes: tell("there is no graph", "7"). It is told whatever the command changes.
  void tell(const char* note, const ChartString& word) const;
  void tell(const char* note) const;
  // A reason why the command passes over something, in the same form. It is told of a command that
  // changed nothing, so that it may be given for each thing that is passed over.
  void because(const char* reason, const ChartString& word) const;
  void because(const char* reason) const;
  // The same for what is looked for in many places: told at the end if it was found in none.
  void tellUnless(bool isFound, const char* note, const ChartString& word) const;
  void becauseUnless(bool isFound, const char* reason, const ChartString& word) const;

  // True for exactly "true", false for exactly "false".
  bool getBooleanAttribute(const xercesc::DOMElement* element, const XMLCh* name,
                           bool defaultValue) const;
  // As ChartBase::CreateUniqueId, in the target.
  ChartString CreateUniqueId(const ChartString& base) const;
  ChartString CreateUniqueId(const char* base) const;
  // A style of that id, made under the chart's container style if there is none. Null or an empty
  // id makes a new one, "style" and a number. The caller links it to what it styles.
  PlXStyle* addStyle(PlXBaseElement& element, const XMLCh* id);

  // ---- graphs and elements
  // Appends the graphs that the command's attribute `graph` addresses, in containers too: all for 0
  // or none, else that of the 1-based position. Answers how many.
  unsigned getGraphs(std::vector<PlXGraph*>& graphs) const;
  // Appends all elements by kind: points first, then lines, edges, paths, intervals, areas,
  // polygons and schemas.
  static void getAllElements(const PlXGraph& graph, std::vector<CTElementType*>& elements);
  // Appends the elements of that tag from the whole chart.
  void getAllElementsByType(const XMLCh* tagName, std::vector<CTElementType*>& elements) const;
  // Appends the intervals of the addressed graphs that are polar, or of those that aren't. Answers
  // the size of the list.
  unsigned getIntervalElements(std::vector<PlXInterval*>& intervals, bool polar) const;
  // Elements whose first summary is a count or a percent of counts.
  std::vector<CTElementType*> getElementsWithSummaryStatistics(const PlXGraph& graph) const;
  // The first element that draws expressions with "/" on x and y, as scatterplot matrices do. Those
  // of the second block are on the diagonal of a matrix.
  CTElementType* getFirstSPLOMElement(const PlXGraph& graph) const;
  // In the fixed order: style-bys, dashes, shapes, sizes, rotations, colours, offsets, patterns,
  // transparencies, splits, colour components, visibilities.
  std::vector<CTAesthetic*> getAesthetics(const CTElementType& element) const;

  // ---- dimensions, variables and domains
  std::vector<PlXDimension*> getDimensionsByRole(const PlXGraph& graph,
                                                 const ChartString& role) const;
  // The first of the dimensions of a role; null when none is clustered.
  CTVariableType* clusterVariable(const PlXGraph& graph, const ChartString& role) const;
  // Of role `x` the cluster variable of the first addressed graph comes first.
  CTVariableType* getElementVariable(const CTElementType& element, const ChartString& role) const;
  // Looked for at the element, which may be null, and then at the dimensions of the role.
  PlXCategoricalDomain* getCategoricalDomain(const PlXGraph& graph, const ChartString& role,
                                             const CTElementType* element) const;
  // The raw value that a label stands for.
  ChartString getCategoryValue(const PlXGraph& graph, const XMLCh* role,
                               const ChartString& label) const;

  // ---- legends
  std::vector<PlXLegend*> getLegends() const;
  // For `legend` every variable that an aesthetic shows, for another role those that are the
  // element's variable of that role. In element order, with repetitions.
  std::vector<CTVariableType*> getLegendVariables(const PlXGraph& graph,
                                                  const ChartString& role) const;
  // Gives the aesthetic an entry for each entry that the aesthetic of that id has in any legend,
  // and an id with the first of them if it has none.
  void CloneLegendEntry(const ChartString& aestheticId, const PlXBaseElement& aesthetic);

  // ---- copies of what an element shows by value, for another that stands beside it. A copy has an
  // id of its own, or none; lists of styles are copied, variables, domains and conditional styles
  // are shared.
  // Every attribute but the id, and but those that the dialect doesn't have for `to`. Answers how
  // many were copied.
  int duplicateAttributes(const PlXBaseElement& from, PlXBaseElement& to) const;
  // The variables of x, y and z. Mind the order of arguments, here and in one other.
  void copyVariables(CTElementType& to, const CTElementType& from);
  void cloneConditionalStyles(const CTElementType& from, CTElementType& to);
  // The scale and the statistic of an aesthetic, for one that has none.
  void cloneScaleAndStatistic(const CTAesthetic& from, CTAesthetic& to) const;
  // Dimension, domain, variable and a copy of the list of styles.
  void cloneStyleBy(const PlXStyleBy& from, PlXStyleBy& to);
  // Each may be an element or a labeling; with anything else nothing happens. Style-bys, colour
  // components, colours, dashes, patterns, shapes and sizes are copied, in this order and as far as
  // `to` may have them; a shape becomes a dash on a line or a path, with the stock list of dashes.
  // `cloneLegendEntries` gives a copy entries in the legends of what it is a copy of, unless it has
  // a scale, a statistic or mappings. An element also gets the dots and the block of the other.
  void cloneElementAesthetics(const PlXBaseElement& from, PlXBaseElement& to,
                              bool cloneLegendEntries);
  // The same without the sizes, for lines that stand beside an element.
  void cloneAestheticsButSizes(const CTElementType& from, CTElementType& to,
                               bool cloneLegendEntries);
  // Variables, aesthetics and conditional styles.
  void cloneElementChildren(const CTElementType& from, CTElementType& to, bool cloneLegendEntries);
  // For lines and texts, which have one colour: the styles of the style-bys take their second
  // colour for their first, all of them for `always`, else those whose first is missing or
  // transparent, and black where the second is so too. Colours then act on the first. Answers the
  // number of style-bys.
  int changeColor2ToColor(CTElementType& element, bool always);
  int changeColor2ToColor(PlXLabeling& labeling, bool always);
  // Adds copies of all lists.
  void cloneStyleCycle(const PlXStyleCycle& from, PlXStyleCycle& to);
  // For clients of the class: gives `to` a style-by with the source or expression variable of the
  // first of `from`, and lists with the two colours of its styles. They change places from a
  // "point" to a "line" or a "text".
  void cloneStyleCycle(CTElementType& to, const CTElementType& from, const XMLCh* idBase,
                       const ChartString& fromType, const ChartString& toType);

  // ---- predicates
  bool isGraphPolar(const PlXGraph& graph) const;
  bool isGraphClustered(const PlXGraph& graph) const;
  // A dimension `z` has an axis and an element has a place on it.
  bool isChartTrue3D(const PlXGraph& graph) const;
  bool isRoleCategorical(const PlXGraph& graph, const ChartString& role) const;
  bool isAxisDerived(const PlXAxis& axis) const;
  bool isIntervalRangeElement(const CTElementType& element) const;
  // True when the element is in the coordinates block of that 0-based index; an empty text is 0,
  // and an element that names no block is in the first.
  bool doesCoordinateMatch(const CTElementType& element, const ChartString& coordinate) const;
  // True when the nearest block around the element is the one of the role: for `y2` the second of
  // its graph, else the first.
  bool doesCoordinateMatch(const PlXBaseElement& element, const ChartString& role) const;

  // ---- styles
  // A style that an object links, as by getHingeStyle and setHingeStyle. Made with an id of the
  // base, "style" without one, and linked when there is none.
  template <class T, class Holder>
  PlXStyle& ensuredStyle(T& object, PlXStyle* (Holder::*get)() const,
                         void (Holder::*set)(PlXStyle&), const XMLCh* idBase = nullptr) {
    PlXStyle* style = (object.*get)();
    if (!style) {
      style = addStyle(object, idBase ? CreateUniqueId(idBase).xc_str() : nullptr);
      (object.*set)(*style);
    }
    return *style;
  }
  // The one that is simply its style.
  template <class T>
  PlXStyle& styleOf(T& object) {
    return ensuredStyle(object, &T::getStyle, &T::setStyle);
  }
  // The curve of an element, made when it has none; the child interpolation of a style that was
  // imported may have made it.
  static PlXSmoothStatistic& smoothStatisticOf(CTElementType& element);
  // The hinge style of a schema, the style of any other element.
  PlXStyle& elementStyle(CTElementType& element);
  // Sets what a style element of a template names: attributes, keys of the text in its attribute
  // `value` (ChartStyleValue), which go before attributes, and children. What it doesn't name stays
  // as it is, with two exceptions: a gradient colour is taken away, and the children glyph,
  // intervalGlyph and shadow are meant whole. Keys of a surface's style (an interval, a cell, the
  // box of a box plot, a legend, the page) differ: stroke is its outline there, and only there fill
  // counts. A child interpolation acts on the lines, areas and paths that the style paints. A child
  // that is none of these is reported, and a value out of range dropped. A null element does
  // nothing.
  void importStyle(const xercesc::DOMElement* styleElement, PlXStyle& style);
  // The same for many styles: the element is read once, and must not change in between.
  class StyleImport {
   public:
    // The slices of a pie fill it: they take no attribute size, and any width is 100%.
    enum class Painting { Anything, Slices };
    StyleImport(BaseTemplate& base, const xercesc::DOMElement* styleElement,
                Painting painting = Painting::Anything);
    ~StyleImport();
    void onto(PlXStyle& style) const;

   private:
    struct Reading;

    BaseTemplate& base_;
    const xercesc::DOMElement* element_;
    std::unique_ptr<Reading> reading_;
  };

  // ---- formats, ticks and labels, as elements of a template tell them; null elements do nothing
  // These merge: attributes that aren't named stay, but where the words of an attribute say
  // otherwise (templates' schema).
  void importNumberFormat(PlXFormat& format, const xercesc::DOMElement* element);
  void importDateTimeFormat(PlXFormat& format, const xercesc::DOMElement* element);
  void importElapsedTimeFormat(PlXFormat& format, const xercesc::DOMElement* element);
  void importStringFormat(PlXFormat& format, const xercesc::DOMElement* element);
  // Replaces the format, its identifier included, by those of the element's own attributes that a
  // format has.
  void replaceFormat(PlXFormat& format, const xercesc::DOMElement* element);
  // The same without a command.
  static void importFormat(PlXFormat& format, const xercesc::DOMElement* element);
  // Define and style the ticks of an axis whose role is the element's, made unless the element says
  // `styleOnly`. Minor ticks are made only beside major ones. True when there are ticks then.
  bool setMajorTicks(PlXAxis& axis, const xercesc::DOMElement* element);
  bool setMinorTicks(PlXAxis& axis, const xercesc::DOMElement* element);
  // Give ticks the styles that they lack, and import the element's onto them.
  void styleMajorTicks(PlXMajorTicks& ticks, const xercesc::DOMElement* element);
  void styleMinorTicks(PlXMinorTicks& ticks, const xercesc::DOMElement* element,
                       PlXMajorTicks* major);
  // A new grid line starts in the colour of the marks, whose style may be null.
  void styleGridLines(PlXStyle* markStyle, PlXGridline& gridline,
                      const xercesc::DOMElement* element);
  // Gives a label the styles that it lacks, black text in an invisible frame, also for a null
  // element.
  void styleLabel(PlXLabel& label, const xercesc::DOMElement* element);
  // The element's own text, CDATA sections included and its placeholders filled in, becomes the
  // label's; an empty one doesn't, nor one of nothing but blanks and line ends.
  void mergeText(const xercesc::DOMElement* element, PlXLabel& label);

  // Adds a dimension to every block of the graph that has exactly two, references included.
  void addZDimension(const PlXGraph& graph);

 protected:
  // The attribute of the command; empty when there is none.
  ChartString attribute(const XMLCh* name) const;
  // The first element of that name below the command, which converted templates write in small
  // letters; null when there is none.
  const xercesc::DOMElement* ticksElement(const XMLCh* name, const XMLCh* smallName) const;
  // Imports the style elements below an element: those of number 1 onto the second style, all
  // others onto the first.
  void importNumberedStyles(const xercesc::DOMElement* element, PlXStyle& first, PlXStyle& second);
  // A command that adds or removes legends or their entries, other than by CloneLegendEntry, has to
  // say so before it clones.
  void forgetLegends();

 private:
  const PlXBaseElement* sourceObject(const PlXBaseElement& object) const;
  std::vector<PlXGraph*> addressedGraphs() const;
  CTVariableType* firstCluster() const;
  void giveStockDashes(PlXDash& dash);
  void cloneAesthetics(const PlXBaseElement& from, PlXBaseElement& to, bool cloneLegendEntries,
                       bool withSizes);

  ChartString filledText(const xercesc::DOMElement& element) const;

  CommandListener* listener_ = nullptr;
  // Null unless they are kept.
  std::unique_ptr<Findings> findings_;
};

#endif

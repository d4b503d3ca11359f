// Extension records, attributes that the dialect leaves to its users: PlXExtension,
// PlXExtensionVis of the chart, PlXExtensionSV of a variable; and the name PlXDrillDown.
#ifndef CHARTXML_PLXEXTENSION_H
#define CHARTXML_PLXEXTENSION_H

#include "chartstring.h"
#include "plxbaseelement.h"

class PlXLabelFrame;
class PlXLegend;
class PlXStyleCycle;

// A record of free name and value pairs, written as attributes.
class CHARTXML_API PlXExtension : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_extension[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  const XMLCh* getAttribute(const XMLCh* name) const { return GetAttribute(name); }
  // False, and nothing changed, when `name` is no XML name.
  bool setAttribute(const ChartString& name, const ChartString& value) {
    return SetAttribute(name.xc_str(), value.xc_str());
  }
};

// The chart's own record. It tells which of the chart's frames have which role: an attribute of
// the role's name and number holds the frame's id ("title1", "legend2", "subtitle").
//
// Numbers count from 1, and one below 1 counts as 1. Each number is a place of its own: the ones
// below it may be free, and one frame may stand in several. A free place reads as null.
class CHARTXML_API PlXExtensionVis : public PlXExtension {
 public:
  using PlXExtension::PlXExtension;
  static const XMLCh _UTF_extension[];

  PlXLabelFrame* getTitle(unsigned number) const { return frame(u"title", number); }
  PlXLabelFrame* getTitle1() const { return link<PlXLabelFrame>(u"title1"); }
  PlXLabelFrame* getTitle2() const { return link<PlXLabelFrame>(u"title2"); }
  void setTitle(PlXLabelFrame& title, unsigned number) { setFrame(u"title", number, title); }
  PlXLabelFrame* getSubtitle() const { return link<PlXLabelFrame>(u"subtitle"); }
  void setSubtitle(PlXLabelFrame& subtitle) { setLink(u"subtitle", subtitle); }
  PlXLabelFrame* getFootnote(unsigned number) const { return frame(u"footnote", number); }
  PlXLabelFrame* getFootnote1() const { return link<PlXLabelFrame>(u"footnote1"); }
  PlXLabelFrame* getFootnote2() const { return link<PlXLabelFrame>(u"footnote2"); }
  PlXLabelFrame* getFootnote3() const { return link<PlXLabelFrame>(u"footnote3"); }
  void setFootnote(PlXLabelFrame& note, unsigned number) { setFrame(u"footnote", number, note); }
  // A text that has none of the other roles.
  PlXLabelFrame* getText(unsigned number) const { return frame(u"text", number); }
  void setText(PlXLabelFrame& text, unsigned number) { setFrame(u"text", number, text); }
  PlXLabelFrame* getKey(unsigned number) const { return frame(u"key", number); }
  void setKey(PlXLabelFrame& key, unsigned number) { setFrame(u"key", number, key); }
  PlXLabelFrame* getStatisticsSummary(long number) const {
    return frame(u"statisticsSummary", number);
  }
  void setStatisticsSummary(PlXLabelFrame& summary, long number) {
    setFrame(u"statisticsSummary", number, summary);
  }
  // The number comes first here.
  PlXLegend* getLegend(unsigned number) const;
  PlXLegend* getLegend1() const { return link<PlXLegend>(u"legend1"); }
  PlXLegend* getLegend2() const { return link<PlXLegend>(u"legend2"); }
  void setLegend(unsigned number, PlXLegend& legend);

  // The stock of cycles that new style cycles are copied from.
  PlXStyleCycle* getStyleCycleRepository() const {
    return link<PlXStyleCycle>(u"styleCycleRepository");
  }
  void setStyleCycleRepository(PlXStyleCycle& cycle) { setLink(u"styleCycleRepository", cycle); }
  // True for a chart whose frames must stay where they are.
  bool getPreserveLocations() const { return flag(u"preserveLocations"); }
  void setPreserveLocations(bool preserve) { setFlag(u"preserveLocations", preserve); }

 private:
  PlXLabelFrame* frame(const XMLCh* role, long number) const;
  void setFrame(const XMLCh* role, long number, PlXLabelFrame& frame);
};

// The record of a variable.
class CHARTXML_API PlXExtensionSV : public PlXExtension {
 public:
  using PlXExtension::PlXExtension;
  static const XMLCh _UTF_extension[];

  // What the variable's values are: 1 counts, 2 percents, 6 sums, 30 percents of a sum, 9 and 10
  // the upper and the lower end of a range; 0 plain values.
  long getStatistic() const { return integer(u"statistic"); }
  void setStatistic(long statistic) { setInteger(u"statistic", statistic); }
};

// A drill-down is an extension record of the chart that has this attribute, "true".
class CHARTXML_API PlXDrillDown {
 public:
  static const XMLCh _UTF_drillDown[];
};

#endif

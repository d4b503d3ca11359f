// What commands change, and what they say of the rest.
#include "commandoutcome.h"
#include "changejournal.h"
#include "commandcases.h"
#include "modelstore.h"
#include "plxelements.h"
#include "plxgraph.h"
#include "plxstyle.h"
#include "plxstylecycle.h"
#include "plxvariables.h"

namespace {

// "+tag id" of an element that was added, "-" removed, "~" changed.
std::string textOf(const std::vector<ElementChange>& changes) {
  std::string text;
  for (const ElementChange& each : changes) {
    text += text.empty() ? "" : " ";
    text += each.kind == ElementChange::Kind::added     ? '+'
            : each.kind == ElementChange::Kind::removed ? '-'
                                                        : '~';
    text += each.tag + (each.id.empty() ? "" : "=" + each.id);
  }
  return text;
}

constexpr std::pair<const char*, const char*> forms[] = {
    {"[XY]", "<graph><coordinates>[x]<dimension id='y'/></coordinates></graph>"},
    {"[x]",
     "<dimension id='x' upperMargin='1%'><axis id='a'><label><text>t</text></label></axis>"
     "</dimension>"},
    {"[margin]", "<setAxisMargin role='x' upperMargin='1%'/>"},
    {"[text]", "<setGenericAttributes elementName='text' text="},
    {"[D]",
     "<categoricalDomain id='d'><variableReference ref='v'/>"
     "<simpleSort method='natural' descending='false'/></categoricalDomain>"
     "<sourceVariable id='v' domain='d' categorical='true'/>"
     "<graph><coordinates><dimension/><dimension/></coordinates><interval><x variable='v'/>"
     "</interval></graph>"},
    {"[R]",
     "<categoricalDomain id='d'><variableReference ref='v'/></categoricalDomain>"
     "<sourceVariable id='v' domain='d' categorical='true'><format><relabel from='1' to='one'/>"
     "<relabel from='3' to='three'/></format></sourceVariable><graph><coordinates><dimension/>"
     "<dimension/></coordinates><interval><x variable='v'/></interval></graph>"},
    {"[sort]",
     "<setCategorySorting role='x'><sort descending='false'><simpleSort "
     "method='natural'/></sort></setCategorySorting>"},
};

// A body, commands, and what the last of them changes and says.
TEST(CommandOutcome, TellsNetChangesAndReasons) {
  const ChartBase holder;
  for (const auto& row : rowsOf(R"(
[XY] | [margin] | none
[XY]<graph/> | [margin] | none
[XY] | <setAxisMargin role='x' upperMargin='2%'/> | ~dimension=x
[XY] | <setAxisMargin role='x' upperMargin='2%'/>[margin] | ~dimension=x
[XY] | <setAxisMargin role='z' upperMargin='2%'/> | ; there is no dimension 'z'
[XY] | <setAxisOpposite role='x'/> | ~axis=a
[XY] | <setAxisOpposite role='x'/><setAxisOpposite role='x'/> | none
[XY] | [text]'t'/> | none
[XY] | [text]'u'/> | ~text
[XY] | [text]'u'/>[text]'u'/> | none
[XY] | <setTranspose transpose='true'/> | +transposeTransform
[XY] | <setTranspose transpose='true'/><setTranspose/> | -transposeTransform
[XY] | <addPopups graph='2'/> | !there is no graph '2'
[XY] | <addAnchoredAnnotation x='L' xcategorical='true'><label/></addAnchoredAnnotation> |
 !no category has the label 'L'
[D] | [sort] | none
[D] | <setCategorySorting role='x'><sort descending='true'><simpleSort/></sort></setCategorySorting> |
 -simpleSort +simpleSort
[R] | <setOrder role='x'><categoryValue>one;3;two</categoryValue></setOrder> |
 +simpleSort !no category has the label 'two'
[R] | <setExclude role='x'><categoryValue>one;3</categoryValue></setExclude> |
 +categories !no category has the label '3'
[R] | <hideFrame type='title' count='1'/> | ; there is no such frame of the type 'title'
<style id='s'/>[XY] | <setGenericAttributes elementName='style' id='t'/> | ~style=t
<style id='s'/><labelFrame style='s'/> | <setGenericAttributes elementName='style' id='t'/> |
 ~style=t ~labelFrame
)")) {
    EditedChart chart(withForms(row.at(0), forms));
    const Fragment fragment(withForms(row.at(1), forms));
    std::vector<CommandOutcome> outcomes;
    ApplyTemplate(&outcomes).process(nullptr, chart.chart(), fragment.root());
    const CommandOutcome& last = outcomes.back();
    EXPECT_TRUE(last.isDone);
    std::string told = textOf(last.changes);
    for (const std::string& note : last.notes) told += (told.empty() ? "!" : " !") + note;
    for (const std::string& reason : last.reasons) told += "; " + reason;
    EXPECT_EQ(told.empty() ? "none" : told, row.at(2)) << row[0] << row[1];
    EXPECT_EQ(chart.chart().store().journal(), nullptr);
  }
}

// What no command does in one go.
TEST(ChangeJournal, ComparesWithWhatStoodBefore) {
  EditedChart edited(
      "<styleCycle id='c'><cycle><style id='s' color='red'/></cycle></styleCycle>"
      "<graph><line id='f' style='s'/><line id='g'/></graph>");
  PlXVisualization& chart = edited.chart();
  ChangeJournal journal;
  chart.store().setJournal(&journal);
  PlXGraph& graph = *chart.getGraphs().front();
  PlXCycle& cycle = *chart.getStyleCycles().front()->getCycles().front();
  const auto line = [&](std::size_t i) -> PlXLine& { return *graph.getLines().at(i); };
  const auto writeAnew = [&](const XMLCh* color) {
    cycle.removeStyles();
    PlXStyle* style = cycle.addStyle();
    style->setColor(color);
    style->setId(u"s");
    line(0).setStyle(*style);
  };

  // Added and removed again, and an attribute that was away for a while.
  graph.removeElement(*graph.addLine(u"h"));
  line(0).getStyle()->setColor(nullptr);
  line(0).getStyle()->setColor(u"red");
  EXPECT_EQ(textOf(journal.take()), "");

  // Written anew, with the link to it that was lost; and once more, when it had been changed.
  writeAnew(u"red");
  EXPECT_EQ(textOf(journal.take()), "");
  line(0).getStyle()->setColor(u"blue");
  writeAnew(u"blue");
  EXPECT_EQ(textOf(journal.take()), "-style=s +style=s");

  // The two change places by what they are.
  graph.removeElement(line(0));
  graph.removeElement(line(0));
  graph.addLine(u"g");
  graph.addLine(u"f")->setStyle(*cycle.getStyles().front());
  EXPECT_EQ(textOf(journal.take()), "~graph");

  // Only the top of what is new or gone is told.
  line(0).addX()->setVariable(*chart.addDerivedVariable(u"v"));
  EXPECT_EQ(textOf(journal.take()), "+x +derivedVariable=v");
  line(0).getX()->getVariable()->setLabel(u"V");
  line(0).setName(u"n");
  graph.removeElement(line(0));
  EXPECT_EQ(textOf(journal.take()), "~derivedVariable=v -line=g");
  chart.store().setJournal(nullptr);
}

}  // namespace

// Ten times as much costs ten times as much: what is made, printed and edited.
#include <xercesc/dom/DOM.hpp>

#include <functional>
#include <memory>
#include <vector>

#include "charts.h"
#include "charttransformer.h"
#include "framepacker.h"
#include "measures.h"
#include "model.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxgraph.h"
#include "plxsources.h"
#include "plxstyle.h"

using namespace xercesc;

namespace {

ChartString numbered(const XMLCh* prefix, int number) {
  ChartString text(prefix);
  return text.append(static_cast<unsigned long>(number));
}

// Making an object of class T over a text, and its end.
template <class T>
void addLife(const std::string& name, int count, std::function<std::string(int)> textOf) {
  measureGrowth(
      "growth/" + name, count,
      [textOf](int n) -> Run {
        const auto object = std::make_shared<std::unique_ptr<T>>();
        return [object, text = textOf(n)] { *object = std::make_unique<T>(text); };
      },
      End::Timed);
}

// Charts whose size is `sizeOf(n)`.
template <class SizeOf>
void addChart(const std::string& label, int count, SizeOf sizeOf) {
  const auto textOf = [sizeOf](int n) { return chartText(sizeOf(n)); };
  addLife<ChartTransformer>(label + "/ChartTransformer", count, textOf);
  addLife<Model>(label + "/PlXVisualization", count, textOf);
  measureGrowth("growth/" + label + "/getXML", count, [sizeOf](int n) -> Run {
    const auto chart = std::make_shared<ChartTransformer>(chartText(sizeOf(n)));
    return [chart] { chart->getXML(nullptr); };
  });
  measureGrowth("growth/" + label + "/getEntireXML", count, [sizeOf](int n) -> Run {
    ChartSize size = sizeOf(n);
    if (size.rows == 0) size.rows = 1;
    const auto chart = std::make_shared<ChartTransformer>(chartText(size));
    return [chart] { chart->getEntireXML(nullptr); };
  });
}

// One step for each number from 0 below n, on the model of a chart whose size is `sizeOf(n)`.
template <class SizeOf, class Step>
void addLoop(const std::string& label, int count, SizeOf sizeOf, Step step) {
  measureGrowth("growth/model/" + label, count, [=](int n) -> Run {
    const auto model = std::make_shared<Model>(sizeOf(n));
    return [=] {
      for (int i = 0; i < n; ++i) step(model->root, i);
    };
  });
}

ChartSize smallChart(int) {
  return {};
}

void addAdding() {
  addLoop("addStyle", 2000, smallChart, [](PlXVisualization& root, int) { root.addStyle(); });
  addLoop("addLabelFrame with ids", 2000, smallChart, [](PlXVisualization& root, int i) {
    root.addLabelFrame(numbered(u"label", i).xc_str());
  });
  addLoop("addExtension", 2000, smallChart,
          [](PlXVisualization& root, int) { root.addExtension(); });
  addLoop("addLabelFrame, addStyle, setStyle", 2000, smallChart, [](PlXVisualization& root, int) {
    PlXLabelFrame* frame = root.addLabelFrame(nullptr);
    frame->setStyle(*root.addStyle());
  });
  addLoop("CreateUniqueId", 2000, smallChart, [](PlXVisualization& root, int) {
    root.addStyle()->setId(ChartBase::CreateUniqueId("fresh", root).xc_str());
  });
  measureGrowth("growth/model/CreateUniqueId after removals", 500, [](int n) -> Run {
    const auto model = std::make_shared<Model>(ChartSize{});
    PlXGraph* graph = model->root.addGraph(u"graph");
    for (int i = 1; i <= 2 * n; ++i) graph->addPoint(numbered(u"point", i).xc_str());
    return [model, graph, n] {
      const std::vector<PlXPoint*> points = graph->getPoints();
      for (int i = 0; i < n; ++i) {
        graph->removeElement(*points[2 * static_cast<std::size_t>(i)]);
        model->root.addStyle()->setId(ChartBase::CreateUniqueId("fresh", model->root).xc_str());
        graph->addPoint(ChartBase::CreateUniqueId("point", model->root).xc_str());
      }
    };
  });
}

void addReleasing() {
  measureGrowth("growth/model/releaseDocument", 1000, [](int n) -> Run {
    const auto base = std::make_shared<ChartBase>();
    DOMDocument* document = ChartBase::createPlXDocument(nullptr);
    PlXVisualization root(document->getDocumentElement());
    for (int i = 0; i < n; ++i) root.addStyle()->setColor(u"black");
    return [base, document] { base->releaseDocument(document); };
  });
}

// An element of a chart, with the graph that it is in.
struct Member {
  PlXGraph* graph;
  CTElementType* element;
};

std::vector<Member> barsAndLines(const PlXVisualization& root) {
  std::vector<Member> members;
  for (PlXGraph* graph : root.getGraphs()) {
    for (PlXInterval* bar : graph->getIntervals()) members.push_back({graph, bar});
    for (PlXLine* line : graph->getLines()) members.push_back({graph, line});
  }
  return members;
}

void addLinking() {
  measureGrowth("growth/model/setStyle", 1000, [](int n) -> Run {
    const auto model = std::make_shared<Model>(ChartSize{.elements = n, .styles = n});
    const std::vector<PlXStyle*> styles = model->root.getStyles();
    return [model, members = barsAndLines(model->root), styles] {
      for (std::size_t i = 0; i < members.size(); ++i) members[i].element->setStyle(*styles[i]);
    };
  });
}

void addRemoving() {
  // The first removal in a chart looks for all links. The others are measured apart: they find a
  // small chart in the caches then, and a large one not.
  measureGrowth("growth/model/removeElement, the first", 1000, [](int n) -> Run {
    const auto model = std::make_shared<Model>(ChartSize{.elements = n, .styles = n});
    return [model, member = barsAndLines(model->root)[0]] {
      member.graph->removeElement(*member.element);
    };
  });
  measureGrowth("growth/model/removeElement, the others", 1000, [](int n) -> Run {
    const auto model = std::make_shared<Model>(ChartSize{.elements = n, .styles = n});
    std::vector<Member> members = barsAndLines(model->root);
    members.back().graph->removeElement(*members.back().element);
    members.pop_back();
    return [model, members] {
      for (const auto& [graph, element] : members) graph->removeElement(*element);
    };
  });
  measureGrowth("growth/model/removeElement of one graph", 2000, [](int n) -> Run {
    const auto model = std::make_shared<Model>(ChartSize{});
    PlXGraph* graph = model->root.addGraph(u"graph");
    for (int i = 0; i < n; ++i) graph->addPoint(numbered(u"point", i).xc_str());
    return [model, graph] {
      for (PlXPoint* point : graph->getPoints()) graph->removeElement(*point);
    };
  });
  measureGrowth("growth/model/removeEmbeddedSources", 2000, [](int n) -> Run {
    const auto model = std::make_shared<Model>(ChartSize{.rows = n, .sources = n});
    return [model] { model->root.removeEmbeddedSources(); };
  });
}

// No more frames than that: each role is a name, and the parser library looks names up in a table
// of fixed size.
void addPacking() {
  measureGrowth("growth/packFrames", 300, [](int n) -> Run {
    const auto model = std::make_shared<Model>(ChartSize{});
    PlXExtensionVis* roles = model->root.addExtension();
    for (int i = 1; i <= n; ++i) {
      roles->setLegend(i, *model->root.addLegend(numbered(u"legend", i).xc_str()));
      roles->setKey(*model->root.addLabelFrame(numbered(u"key", i).xc_str()), i);
    }
    return [model] { FramePacker().packFrames(model->root, nullptr); };
  });
}

}  // namespace

void addGrowth() {
  addChart("elements", 200, [](int n) { return ChartSize{.elements = n}; });
  addChart("styles", 500, [](int n) { return ChartSize{.styles = n}; });
  addChart("rows", 2000, [](int n) { return ChartSize{.rows = n}; });
  addChart("sources", 500, [](int n) { return ChartSize{.rows = n, .sources = n}; });
  addAdding();
  addReleasing();
  addLinking();
  addRemoving();
  addPacking();
}

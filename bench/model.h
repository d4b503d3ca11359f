// A chart that is edited through its model.
#ifndef CHARTXML_BENCH_MODEL_H
#define CHARTXML_BENCH_MODEL_H

#include <string>

#include <xercesc/dom/DOM.hpp>

#include "chartbase.h"
#include "charts.h"
#include "plxframes.h"

struct Model {
  explicit Model(const std::string& text) : root(base.parseDocument(text)->getDocumentElement()) {}
  explicit Model(const ChartSize& size) : Model(chartText(size)) {}

  ChartBase base;
  PlXVisualization root;
};

#endif

// The legend that names the lines which commands add.
#ifndef CHARTXML_LINELEGEND_H
#define CHARTXML_LINELEGEND_H

#include <array>

#include "basetemplate.h"

class PlXLegend;
class PlXVisualization;

// The first legend of a chart, which is made when there is none: with a transparent style, at the
// places on the left, right, top and bottom. Looked for once; a command makes one of these.
class LineLegend {
 public:
  struct Form {
    std::array<const XMLCh*, 4> places;
    bool isVisible;
  };

  LineLegend(BaseTemplate& base, const Form& form) : base_(base), form_(form) {}

  PlXLegend& ensured();
  // An entry for a whole line. Cloning copies those of aesthetics alone, so it needn't be told.
  void add(CTElementType& line);

 private:
  BaseTemplate& base_;
  Form form_;
  PlXLegend* legend_ = nullptr;
};

#endif

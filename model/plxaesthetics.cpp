#include "plxaesthetics.h"

// The method is written for a linear scale too: a copy of the scale's attributes, laid over a scale
// of another method, then brings its own.
PlXScale* CTAesthetic::addScale(PlXScale::ENUM_method method) {
  auto* scale = add<PlXScale>();
  scale->setMethod(method);
  return scale;
}

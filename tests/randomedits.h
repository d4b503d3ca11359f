// What tests of random edits share: how many there are, values for any attribute, and what must
// hold behind each edit.
#ifndef CHARTXML_RANDOMEDITS_H
#define CHARTXML_RANDOMEDITS_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "charttransformer.h"
#include "commandcases.h"

#ifdef __SANITIZE_ADDRESS__
constexpr unsigned usualCount = 1000;
#else
constexpr unsigned usualCount = 10000;
#endif
// Values for any attribute.
constexpr const char* valueRows =
    "0 | 1 | 2 | 10 | -1 | 0.5 | -0.0 | 1e3 | 1e308 | nan | 007 | 100000 | 4294967296 |"
    " 99999999999999999999 | 5% | 150% | 8pt | -3px | 9pt 7pt | 4 2 1 | 1/2 | true | false | True |"
    " x | y | z | y2 | legend | none | bar | auto | style | c-o-n-t-a-i-n-er | #1F3A5F | #12 |"
    " white | 2,5 | 1.5x | five | 1.5 | +3 | .5% | -INF | #12345G | ;:; | a:b | <&'\"> | 日本𝒳 | "
    "2024-02-29 12:30:00.000 | ";
constexpr unsigned templatesOfAChart = 20;  // before it is opened anew

inline unsigned setting(const char* variable, unsigned usual) {
  const char* text = std::getenv(variable);
  return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : usual;
}

inline std::string utf8(const XMLCh* text) {
  return ChartString(text).toUTF8();
}

inline std::string escaped(const std::string& text) {
  std::string result;
  for (char c : text) {
    if (c == '&') result += "&amp;";
    if (c == '<') result += "&lt;";
    if (c == '\'') result += "&apos;";
    if (c != '&' && c != '<' && c != '\'') result += c;
  }
  return result;
}

// That all values are of their attributes' types, which a parse passes over.
inline void expectTyped(const std::string& text) {
  ChartBase base;
  walkElements(rootOf(base.parseDocument(text)), [](const xercesc::DOMElement* element) {
    const dialect::Element* row = dialect::find(element);
    const xercesc::DOMNamedNodeMap* attributes = element->getAttributes();
    for (XMLSize_t i = 0; row && i < attributes->getLength(); ++i) {
      const xercesc::DOMNode* each = attributes->item(i);
      const dialect::Attribute* known = dialect::attributeOf(*row, each->getNodeName());
      EXPECT_TRUE(!known || dialect::isOfSchemaType(*known, each->getNodeValue()))
          << utf8(row->tag) << ' ' << utf8(each->getNodeName()) << '='
          << utf8(each->getNodeValue());
    }
    return row && row->content != dialect::Content::Data;
  });
}

// Applies it, and once more when that is to change nothing.
inline void expectHarmless(ChartTransformer& chart, const std::string& edit, bool isStyleOnly,
                           std::size_t unknownCommands = 0) {
  const std::string before = chart.getXML(nullptr);
  const std::string data = chart.getCompressedData();
  std::vector<std::size_t> passedOver;
  EXPECT_TRUE(chart.applyTemplate(edit, passedOver));
  EXPECT_EQ(passedOver.size(), unknownCommands);
  const std::string after = chart.getXML(nullptr);
  expectSound(after, "the chart");
  expectTyped(after);
  EXPECT_EQ(ChartTransformer(after).getXML(nullptr), after);
  EXPECT_EQ(chart.getCompressedData(), data);
  if (isStyleOnly) {
    chart.applyTemplate(edit);
    EXPECT_EQ(chart.getXML(nullptr), after);
  }
  if (testing::Test::HasFailure()) {
    ADD_FAILURE() << "template: " << edit << "\nchart: " << before;
  }
}

#endif

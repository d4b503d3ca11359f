// Charts that commands edit, and cases as text.
#ifndef CHARTXML_COMMANDCASES_H
#define CHARTXML_COMMANDCASES_H

#include <gtest/gtest.h>

#include <set>
#include <span>
#include <sstream>
#include <stdexcept>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "applytemplate.h"
#include "dialect.h"
#include "domwalk.h"
#include "plxframes.h"
#include "testsupport.h"

inline xercesc::DOMElement* rootOf(const xercesc::DOMDocument* document) {
  xercesc::DOMElement* root = document ? document->getDocumentElement() : nullptr;
  if (!root) throw std::runtime_error("a text of the test is not XML or no valid chart");
  return root;
}

// Elements of a template that no schema sees.
class Fragment {
 public:
  explicit Fragment(const std::string& elements) {
    const std::string text = "<template>" + elements + "</template>";
    parser_.parse(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(text.data()),
                                             text.size(), "commands"));
  }
  // Around the elements.
  xercesc::DOMElement* root() const { return rootOf(parser_.getDocument()); }
  xercesc::DOMElement* first() const { return root()->getFirstElementChild(); }

 private:
  mutable xercesc::XercesDOMParser parser_;
};

// A valid chart, by its body or its whole text.
class EditedChart {
 public:
  explicit EditedChart(const std::string& text)
      : chart_(rootOf(base_.parseDocument(text.starts_with("<?xml") ? text : chartText(text)))) {}

  // Runs command elements, which no schema sees. Answers what the last of them does.
  bool apply(const std::string& commands, const EditedChart* source = nullptr) {
    const Fragment fragment(commands);
    return ApplyTemplate().process(source ? &source->chart_ : nullptr, chart_, fragment.root());
  }

  PlXVisualization& chart() { return chart_; }

  // What is printed between the root's tags, with single quotes; attributes are in alphabetic order
  // behind `id`.
  std::string body() const {
    std::string text = chart_.AsUTF8();
    std::replace(text.begin(), text.end(), '"', '\'');
    const std::size_t start = text.find('>', text.find("<visualization")) + 1;
    const std::size_t end = text.find("</visualization>");
    return end == text.npos ? "" : text.substr(start, end - start);
  }

 private:
  ChartBase base_;
  PlXVisualization chart_;
};

// A table as text: a row a line, its parts between " | ". A line that begins with a blank goes on
// with the one above, behind a blank unless that is between two tags; empty lines are no rows.
inline std::vector<std::vector<std::string>> rowsOf(const std::string& table) {
  std::vector<std::string> lines;
  std::istringstream stream(table);
  for (std::string line; std::getline(stream, line);) {
    if (line.empty()) continue;
    if (line[0] != ' ') {
      lines.push_back(line);
    } else {
      const std::string rest = line.substr(line.find_first_not_of(' '));
      lines.back() += (lines.back().ends_with('>') && rest[0] == '<' ? "" : " ") + rest;
    }
  }
  std::vector<std::vector<std::string>> rows;
  for (const std::string& line : lines) {
    std::vector<std::string>& row = rows.emplace_back();
    std::size_t start = 0;
    for (std::size_t bar; (bar = line.find(" | ", start)) != line.npos; start = bar + 3) {
      row.push_back(line.substr(start, bar - start));
    }
    row.push_back(line.substr(start));
  }
  return rows;
}

// A template of the newest version around commands.
inline std::string templateText(const std::string& body) {
  const std::string uri = CHARTXML_HOST "/software/analytics/tavo/xml/visualization";
  return "<template xmlns='" + uri +
         "' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='" + uri +
         " " + uri + "/grafo-template-3.5.xsd'>" + body + "</template>";
}

// Valid, with identifiers of one element each and links that lead somewhere.
inline void expectSound(const std::string& text, const std::string& name) {
  ChartBase base;
  const xercesc::DOMDocument* document = base.parseDocument(text);
  ASSERT_NE(document, nullptr) << name;
  std::set<std::string> ids;
  walkElements(document->getDocumentElement(), [&](const xercesc::DOMElement* element) {
    const std::string id = ChartString(element->getAttribute(u"id")).toUTF8();
    EXPECT_TRUE(id.empty() || ids.insert(id).second) << name << " has two " << id;
    const dialect::Element* row = dialect::find(element);
    const xercesc::DOMNamedNodeMap* attributes = element->getAttributes();
    for (XMLSize_t i = 0; row && i < attributes->getLength(); ++i) {
      const xercesc::DOMNode* each = attributes->item(i);
      if (!dialect::isLink(*row, each->getNodeName())) continue;
      EXPECT_TRUE(document->getElementById(each->getNodeValue()))
          << name << " misses " << ChartString(each->getNodeValue()).toUTF8();
    }
    return true;
  });
}

struct CommandCase {
  const char* chart;
  const char* commands;
  const char* expected;
  // Null for none.
  const char* source = nullptr;
};

inline void expectCases(std::span<const CommandCase> cases) {
  const ChartBase holder;  // schemas are read once
  for (const CommandCase& each : cases) {
    EditedChart chart(each.chart);
    const EditedChart source(each.source ? each.source : "");
    chart.apply(each.commands, each.source ? &source : nullptr);
    EXPECT_EQ(chart.body(), each.expected) << each.commands;
  }
}

// Short forms of a table and what they mean, the later ones within the earlier ones' meanings too.
using Forms = std::span<const std::pair<const char*, const char*>>;

inline std::string withForms(std::string text, Forms forms) {
  for (const auto& [form, meaning] : forms) {
    const std::string_view name = form;
    for (std::size_t at = 0; (at = text.find(name, at)) != text.npos;) {
      text.replace(at, name.size(), meaning);
      at += std::string_view(meaning).size();
    }
  }
  return text;
}

// Whether a second run leaves a chart as the first does.
enum class Again { same, different };

// Rows of a body, commands, the body that they leave, and perhaps the body of the source. A body
// of "=" is the one before.
inline void expectTable(const std::string& table, Forms forms, Again again = Again::same) {
  const ChartBase holder;
  for (const auto& row : rowsOf(table)) {
    EditedChart chart(withForms(row.at(0), forms));
    const EditedChart source(row.size() > 3 ? withForms(row[3], forms) : "");
    const EditedChart* pins = row.size() > 3 ? &source : nullptr;
    const std::string commands = withForms(row.at(1), forms);
    chart.apply(commands, pins);
    // Read and printed, so that the forms needn't be those of the printer.
    const std::string expected = row.at(2) == "=" ? row[0] : row[2];
    EXPECT_EQ(chart.body(), EditedChart(withForms(expected, forms)).body()) << commands;
    expectSound(chart.chart().AsUTF8(), commands);
    const std::string once = chart.body();
    chart.apply(commands, pins);
    EXPECT_EQ(chart.body() == once, again == Again::same) << "again: " << commands << chart.body();
  }
}

#endif

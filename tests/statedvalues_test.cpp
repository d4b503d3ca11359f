// What is no value of its kind counts as not stated, in every command and wherever it stands.
#include "charttemplate.h"
#include "commandcases.h"
#include "commands.h"
#include "commandschema.h"
#include "testplaces.h"

using namespace xercesc;

namespace {

// What is no number, no whole number, no length and no colour; and no number alone.
constexpr const char* malformed[] = {"2,5", "1.5x%"};

bool isMalformed(const CommandSchema& schema, const std::string& element, const std::string& name,
                 const std::string& value) {
  const SchemaElement* known = schema.find(element);
  if (!known || !known->attributes.contains(name)) return false;
  const ValueRule& rule = known->attributes.at(name).rule;
  return rule.kind == ValueRule::Kind::pattern && !rule.problemsOf(value).empty();
}

// A command of an example, to be changed, and the chart that its comment names.
class Example {
 public:
  explicit Example(const std::string& command)
      : template_(readFile(CHARTXML_EXAMPLES "/commands/" + command + ".xml")),
        chart_(readFile(CHARTXML_EXAMPLES "/" + chartNamed(template_))),
        fragment_(template_.substr(template_.find("?>") + 2)) {}

  DOMElement* commands() const { return fragment_.root()->getFirstElementChild(); }
  std::string chart() const { return chart_; }
  std::string result() const {
    EditedChart edited(chart_);
    ApplyTemplate().process(nullptr, edited.chart(), commands());
    return edited.body();
  }

 private:
  static std::string chartNamed(const std::string& text) {
    const std::size_t start = text.find("<!-- ") + 5;
    return text.substr(start, text.find(".xml", start) + 4 - start);
  }

  std::string template_;
  std::string chart_;
  Fragment fragment_;
};

// That a malformed value leaves the chart as none does.
void expectNotStated(const Example& example, DOMElement& element, const XMLCh* name) {
  const ChartString before(element.getAttribute(name));
  element.removeAttribute(name);
  const std::string without = example.result();
  for (const char* value : malformed) {
    element.setAttribute(name, ChartString(value).xc_str());
    EXPECT_EQ(example.result(), without) << value << " is read as " << ChartString(name).toUTF8()
                                         << " of " << ChartString(element.getTagName()).toUTF8();
  }
  before.empty() ? element.removeAttribute(name) : element.setAttribute(name, before.xc_str());
}

TEST(StatedValues, AreNoneUnlessTheyAreOfTheirKind) {
  const ChartBase holder;
  const CommandSchema schema;
  std::size_t count = 0;
  for (const Command& command : commands()) {
    const Example example(ChartString(command.element).toUTF8());
    std::vector<DOMElement*> elements;
    walkElements(example.commands(), [&](DOMElement* element) {
      elements.push_back(element);
      return true;
    });
    for (DOMElement* element : elements) {
      const std::string tag = ChartString(element->getTagName()).toUTF8();
      const SchemaElement* known = schema.find(tag);
      for (const auto& [name, about] : known->attributes) {
        if (!isMalformed(schema, tag, name, malformed[0])) continue;
        ++count;
        expectNotStated(example, *element, ChartString(name.c_str()).xc_str());
      }
      const bool isParameter = tag == "parameter";
      if (isParameter && ChartString(element->getAttribute(u"value")).isNumber()) {
        expectNotStated(example, *element, u"value");
      }
    }
  }
  EXPECT_GT(count, 500u);
}

// The chart with a style s, and what its style has behind a command that states a value.
struct StyleRow {
  const char* stated;
  const char* written;
};

TEST(StatedValues, OfStylesAreWrittenAsTheyStand) {
  const StyleRow rows[] = {
      {"color='#1F3A5F'", "color='#1F3A5F'"},
      {"color='#12'", ""},
      {"color='1red'", ""},
      {"color='transparent' value='color:#12'", "color='transparent'"},
      {"value='color:red' color='blue'", "color='red'"},
      {"stroke-width='.5pt'", "stroke-width='.5pt'"},
      {"stroke-width='0'", "stroke-width='0'"},
      {"stroke-width='-1.%'", "stroke-width='-1.%'"},
      {"stroke-width='5'", ""},
      {"stroke-width='5pt 6pt'", ""},
      {"stroke-width='.pt'", ""},
      {"width='auto, 5pt'", "width='auto, 5pt'"},
      {"width='5pt 6pt 7pt 8pt'", ""},
      {"width='5pt 6'", ""},
      {"pattern='+3'", "pattern='+3'"},
      {"pattern='3.5'", ""},
      {"pattern='99999999999999999999'", "pattern='99999999999999999999'"},
      {"opacity='1e-1'", "opacity='1e-1'"},
      {"opacity='INF'", ""},
      {"opacity='1e400'", ""},
      {"visible='True'", ""},
      {"font-weight='heavy'", ""},
      {"value='font-weight:heavy'", "font-weight='bold'"},
  };
  const ChartBase holder;
  for (const auto& [stated, written] : rows) {
    EditedChart chart("<style id='s'/>");
    chart.apply(std::string("<setStyle id='s'><style ") + stated + "/></setStyle>");
    const std::string between = *written ? " " : "";
    EXPECT_EQ(chart.body(), "<style id='s'" + between + written + "/>") << stated;
  }
}

}  // namespace

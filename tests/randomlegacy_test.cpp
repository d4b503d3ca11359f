// Random older templates, made of what their document type declares, over every example.
#include <map>
#include <regex>

#include "charttemplate.h"
#include "commands.h"
#include "randomedits.h"
#include "testplaces.h"

using namespace xercesc;

namespace {

using Texts = std::vector<std::string>;

Texts wordsOf(const std::string& text) {
  static const std::regex word("[^ |()*]+");
  return {std::sregex_token_iterator(text.begin(), text.end(), word), {}};
}

struct Declaration {
  Texts children;
  std::map<std::string, Texts> attributes;  // with their words, none for any text
};

std::map<std::string, Declaration> readDocumentType() {
  const std::string text = readFile(CHARTXML_INSTALLATION "/schemas/chartXML20.dtd");
  std::map<std::string, Declaration> all;
  const std::regex declarations("<!ELEMENT (\\S+) ([^>]*)>\\s*<!ATTLIST \\S+([^>]*)>");
  const std::regex attributes("(\\S+) (CDATA|ID|\\([^)]*\\)) #IMPLIED");
  for (std::sregex_iterator each(text.begin(), text.end(), declarations), end; each != end;
       ++each) {
    Declaration& made = all[(*each)[1]];
    if ((*each)[2] != "EMPTY") made.children = wordsOf((*each)[2]);
    const std::string list = (*each)[3];
    for (std::sregex_iterator one(list.begin(), list.end(), attributes); one != end; ++one) {
      const std::string type = (*one)[2];
      made.attributes[(*one)[1]] = type[0] == '(' ? wordsOf(type) : Texts();
    }
  }
  return all;
}

class OlderGenerator {
 public:
  OlderGenerator(const std::map<std::string, Declaration>& known, std::seed_seq seed)
      : known_(known), random_(seed) {}

  std::string text() { return element("graph", 0); }

 private:
  bool chance(unsigned percent) { return random_() % 100 < percent; }
  std::string oneOf(const Texts& texts) { return texts[random_() % texts.size()]; }

  std::string value(const std::string& name, const Texts& words) {
    static const Texts any = rowsOf(valueRows)[0];
    static const Texts ids = wordsOf(
        "frame_title_1 frame_title_2s frame_footnote_1 frame_data_1 frame_legend_1 frame_legend_1s "
        "frame_graph_1 c-o-n-t-a-i-n-er styleCycleDefault styleCycleRepository a b c d");
    static const Texts names = wordsOf(
        "x y z degree model proportion kernel alpha predictIndividuals distance theta phi base "
        "safe "
        "bin-count bin-width start grid location base-ratio derived-match");
    static const Texts styles = wordsOf(
        "visibility:hidden;color:red label-location-y:center;size:4px shadow-dx:2px;shadow-dy:1px "
        "stroke:blue;fill:#12;depth:10% color:white;fill-pattern:3");
    if (!words.empty() && chance(90)) return oneOf(words);
    if (name == "id" ||
        ((name.ends_with("tyle") || name == "domain" || name == "variable") && chance(90))) {
      return oneOf(ids);
    }
    if (name == "name" && chance(90)) return oneOf(names);
    if (name == "value" && chance(50)) return oneOf(styles);
    return oneOf(any);
  }

  std::string element(const std::string& tag, int depth) {
    const Declaration& declared = known_.at(tag);
    std::string text = "<" + tag;
    for (const auto& [name, words] : declared.attributes) {
      if (chance(60) && name != "xmlns") {
        text += " " + name + "='" + escaped(value(name, words)) + "'";
      }
    }
    std::string children;
    constexpr int deepest = 7;
    for (const std::string& child : declared.children) {
      for (int times = 0; times < 2 && depth < deepest && chance(50 - 5 * depth); ++times) {
        children += child[0] == '#' ? "a text" : element(child, depth + 1);
      }
    }
    return text + ">" + children + "</" + tag + ">";
  }

  const std::map<std::string, Declaration>& known_;
  std::mt19937 random_;
};

// Of the commands that a template is converted to.
std::size_t countUnknown(const std::string& converted) {
  EditedChart chart("");
  ChartTemplate parsed(chart.chart(), nullptr);
  const DOMElement* root = parsed.parseTemplate(converted);
  EXPECT_NE(root, nullptr) << converted;
  std::size_t count = 0;
  for (const DOMElement* each = root ? firstElement(root) : nullptr; each;
       each = nextElement(each)) {
    const ChartString name(each->getTagName());
    count += std::ranges::none_of(
        commands(), [&](const Command& command) { return name.equals(command.element); });
  }
  return count;
}

TEST(RandomOlderTemplates, DoNoHarm) {
  const ChartBase holder;
  const auto known = readDocumentType();
  ASSERT_GT(known.size(), 40U);
  const unsigned count = setting("CHARTXML_RANDOM_TEMPLATES", usualCount);
  const unsigned seed = setting("CHARTXML_RANDOM_SEED", 1);
  const Texts files = exampleFiles();
  std::size_t converted = 0;
  for (unsigned i = 0; i < count && !testing::Test::HasFailure();) {
    ChartTransformer chart(readFile(files[i / templatesOfAChart % files.size()]));
    for (const unsigned end = std::min(i + templatesOfAChart, count); i < end; ++i) {
      const std::string old = OlderGenerator(known, {seed, i}).text();
      const auto conversion = ChartTemplate::convertOlder(old);
      ASSERT_TRUE(conversion) << old;
      converted += conversion->commandCount;
      expectHarmless(chart, conversion->text, false, countUnknown(conversion->text));
      if (testing::Test::HasFailure()) {
        ADD_FAILURE() << "older template " << i << " of seed " << seed << ": " << old;
        return;
      }
    }
  }
  EXPECT_GT(converted, 5 * count);
}

}  // namespace

#include "drawdata.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <set>
#include <sstream>

#include "commandline.h"
#include "drawexpression.h"
#include "naturalorder.h"

using namespace xercesc;

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t longestExpression = 64;  // variables on one coordinate

// The whole of a text as a number.
double numberOf(const std::string& text) {
  double value = none;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end ? value : none;
}

}  // namespace

double dateOf(const std::string& text) {
  int year = 0;
  unsigned month = 0, day = 0, hour = 0, minute = 0, second = 0, milli = 0;
  const int found = std::sscanf(text.c_str(), "%4d-%2u-%2u %2u:%2u:%2u.%3u", &year, &month, &day,
                                &hour, &minute, &second, &milli);
  if (found != 3 && found < 5) return none;
  namespace chrono = std::chrono;
  const chrono::year_month_day date{chrono::year(year), chrono::month(month), chrono::day(day)};
  if (!date.ok()) return none;
  const double days = static_cast<double>(chrono::sys_days(date).time_since_epoch().count());
  return 1000 * (60 * (60 * (24 * days + hour) + minute) + second) + milli;
}

std::vector<std::string> listItems(const std::string& text) {
  std::vector<std::string> items;
  std::istringstream in(text);
  for (std::string item; std::getline(in, item, ';');) {
    const std::size_t first = item.find_first_not_of(" \t\r\n");
    if (first == item.npos) continue;
    items.push_back(item.substr(first, item.find_last_not_of(" \t\r\n") - first + 1));
  }
  return items;
}

Json DrawField::valueOf(const std::string& raw) const {
  if (isCategorical) {
    const auto found = labels.find(raw);
    return found == labels.end() ? raw : found->second;
  }
  return numberJson(isDate ? dateOf(raw) : numberOf(raw));
}

// ---- the sources

class DrawData::Store : public VarDataProcessor {
 public:
  explicit Store(const PlXVisualization& chart) {
    std::ostringstream out;
    out.exceptions(std::ios::badbit);  // for lack of memory
    ChartPrinter().Print(chart.getImplementation()->getOwnerDocument(), out);
    XmlDataHandler::Problem problem;
    if (!XmlDataHandler::ReadStore(std::move(out).str(), *this, XmlDataHandler::Keep::All,
                                   &problem)) {
      throw Failure(std::string("the data can't be read: ") + problem.reason);
    }
    for (const PlXSource* source : chart.getSources()) readOlderSource(*source);
  }

 private:
  // Rows of elements, which name their cells.
  void readOlderSource(const PlXSource& source) {
    const std::string name = attribute(source, PlXUni::_id);
    AddDataSource(name, 0);
    unsigned row = 0;
    const DOMElement* line = source.getImplementation()->getFirstElementChild();
    for (; line; line = line->getNextElementSibling()) {
      const DOMElement* cell = line->getFirstElementChild();
      for (; cell; cell = cell->getNextElementSibling()) {
        setCell(name, utf8(cell->getAttribute(u"name")), row, utf8(cell->getTextContent()));
      }
      ++row;
    }
  }

  void setCell(const std::string& source, const std::string& variable, unsigned row,
               const std::string& text) {
    if (text.empty()) return;
    const double number = numberOf(text);
    SetVariableValue(source, variable, row, std::isnan(number) ? systemMissing : number);
    if (std::isnan(number)) SetStringVariableValue(source, variable, row, text);
  }
};

// The cells of a variable before they are made ready for a picture.
struct DrawData::Column {
  std::string source;
  std::vector<double> numbers;     // NaN for missing ones and texts
  std::vector<std::string> texts;  // of categorical variables; empty for missing ones
  bool isDate = false;
  // What rows of the table have; a category as its text.
  Json cells = Json::array();
};

DrawData::DrawData(const PlXVisualization& chart, DrawNotes& notes)
    : chart_(chart), notes_(notes), store_(std::make_unique<Store>(chart)) {}
DrawData::~DrawData() = default;

DrawData::Column* DrawData::columnOf(const CTVariableType& variable) {
  if (const auto found = columns_.find(&variable); found != columns_.end()) {
    return found->second.get();
  }
  columns_[&variable] = nullptr;  // for expressions that depend on themselves
  if (dynamic_cast<const PlXDerivedVariable*>(&variable)) return derivedColumn(variable);

  _varinfo info;
  const std::string source = utf8(variable.getSource());
  if (!store_->FindVariable(source, utf8(variable.getSourceName()), info)) {
    notes_.tell(variable, "its data isn't in the chart");
    return nullptr;
  }
  auto column = std::make_unique<Column>();
  column->source = source;
  _varreader reader(*store_, info);
  const unsigned rows = store_->GetRowCount(source);
  std::size_t strange = 0;
  std::string text;
  for (unsigned row = 0; row < rows; ++row) {
    text.clear();
    reader.append(row, text);
    double number = none;
    if (info.strings->count(row) > 0) {
      const double date = variable.getCategorical() ? none : dateOf(text);
      column->isDate = column->isDate || !std::isnan(date);
      number = date;
      if (std::isnan(date)) VarDataProcessor::SpellingOf(text, number);
      strange += std::isnan(number) && !text.empty();
    } else if (!text.empty()) {
      number = info.bag->values[row];
    }
    column->numbers.push_back(number);
    if (variable.getCategorical()) column->texts.push_back(text);
  }
  if (strange > 0 && !variable.getCategorical()) {
    notes_.tell(variable, std::to_string(strange) + " cells are neither numbers nor dates");
  }
  return (columns_[&variable] = std::move(column)).get();
}

DrawData::Column* DrawData::derivedColumn(const CTVariableType& variable) {
  const std::string text = attribute(variable, u"value");
  const std::unique_ptr<Expression> expression = Expression::parse(text);
  std::vector<const Column*> inputs;
  for (const std::string& name : expression ? expression->names() : std::vector<std::string>()) {
    const auto* object = chart_.objectOf(chart_.getElementById(ChartString(name.c_str()).xc_str()));
    const auto* input = dynamic_cast<const CTVariableType*>(object);
    const Column* column = input ? columnOf(*input) : nullptr;
    if (column && (inputs.empty() || inputs[0]->source == column->source)) inputs.push_back(column);
  }
  if (!expression || inputs.empty() || inputs.size() != expression->names().size()) {
    notes_.tell(variable, "can't be computed: " + text);
    return nullptr;
  }
  auto column = std::make_unique<Column>();
  column->source = inputs[0]->source;
  std::vector<double> values(inputs.size());
  for (std::size_t row = 0; row < inputs[0]->numbers.size(); ++row) {
    for (std::size_t i = 0; i < inputs.size(); ++i) values[i] = inputs[i]->numbers[row];
    const double value = expression->valueFor(values);
    column->numbers.push_back(value);
    if (!variable.getCategorical()) continue;
    column->texts.emplace_back();
    if (!std::isnan(value)) VarDataProcessor::AppendNumber(value, column->texts.back());
  }
  return (columns_[&variable] = std::move(column)).get();
}

// ---- fields

const DrawField* DrawData::fieldOf(const CTVariableType* variable) {
  if (!variable) return nullptr;
  if (const auto found = fields_.find(variable); found != fields_.end()) return found->second.get();
  Column* column = columnOf(*variable);
  if (!column) {
    fields_[variable] = nullptr;
    return nullptr;
  }
  return fieldOfColumn(*variable, *column);
}

std::vector<const DrawField*> DrawData::fieldsOf(const CTVariableType* variable) {
  std::vector<const DrawField*> fields;
  const auto* list = dynamic_cast<const PlXExpressionVariable*>(variable);
  std::string text = list ? attribute(*list, u"expression") : "";
  std::ranges::replace(text, '+', ';');
  std::ranges::replace(text, '/', ';');
  if (!list) {
    if (const DrawField* field = fieldOf(variable)) fields.push_back(field);
    return fields;
  }
  for (const std::string& id : listItems(text)) {
    const auto* object = chart_.objectOf(chart_.getElementById(ChartString(id.c_str()).xc_str()));
    const auto* part = dynamic_cast<const CTVariableType*>(object);
    if (!part || dynamic_cast<const PlXExpressionVariable*>(part)) {
      notes_.tell(*variable, "names no variable '" + id + "'");
    } else if (fields.size() >= longestExpression) {
      notes_.tell(*variable, "has more variables than can be drawn");
      break;
    } else if (const DrawField* field = fieldOf(part)) {
      fields.push_back(field);
    }
  }
  return fields;
}

// Field names are ids as far as Vega takes them: it reads points, brackets, quotes and backslashes
// in a name as a path, and has fields of its own that begin with '_'.
std::string DrawData::freeName(const std::string& source, const std::string& id) {
  std::string name = id;
  for (char& c : name) {
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
                         (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
    if (!isPlain) c = '_';
  }
  if (name.empty() || name[0] == '_') name = "v" + name;
  // Numbers go on from the last of the name: many may have it.
  int& number = names_[{source, name}];
  std::string result = number++ == 0 ? name : name + '_' + std::to_string(number);
  while (result != name && !names_.emplace(std::pair(source, result), 1).second) {
    result = name + '_' + std::to_string(++number);
  }
  return result;
}

const DrawField* DrawData::fieldOfColumn(const CTVariableType& variable, Column& column) {
  auto field = std::make_unique<DrawField>();
  field->variable = &variable;
  field->source = column.source;
  field->name = freeName(column.source, attribute(variable, PlXUni::_id));
  field->isCategorical = variable.getCategorical();
  field->isDate = column.isDate;
  const std::vector<PlXFormat*> formats = variable.getFormats();
  if (field->isCategorical) {
    if (!formats.empty()) {
      for (const auto* rule : childrenOf<PlXRelabel>(*formats[0])) {
        field->labels.emplace(attribute(*rule, u"from"), attribute(*rule, u"to"));
      }
    }
    std::set<std::string> known;
    std::set<std::string> taken;
    for (const std::string& text : column.texts) {
      if (text.empty()) {
        field->hasMissing = true;
      } else if (known.insert(text).second) {
        field->raws.push_back(text);
        std::string& label = field->labels.emplace(text, text).first->second;
        // Categories stay apart though their texts are the same.
        if (!taken.insert(label).second) label += " (" + text + ')';
      }
    }
    for (const PlXAggregation* aggregation : variable.getAggregations()) {
      mergeSmall(*aggregation, *field, column);
    }
    for (const std::string& text : column.texts) {
      column.cells.push_back(text.empty() ? Json() : Json(field->labels[text]));
    }
  } else {
    for (const double number : column.numbers) {
      column.cells.push_back(numberJson(number));
      field->hasMissing = field->hasMissing || std::isnan(number);
      if (!std::isfinite(number)) continue;
      const bool isFirst = field->least > field->greatest;
      field->least = isFirst ? number : std::min(field->least, number);
      field->greatest = isFirst ? number : std::max(field->greatest, number);
    }
  }
  inOrder_.push_back(field.get());
  return (fields_[&variable] = std::move(field)).get();
}

void DrawData::mergeSmall(const PlXAggregation& aggregation, DrawField& field,
                          const Column& column) {
  const Column* sizes = aggregation.getVariable() ? columnOf(*aggregation.getVariable()) : nullptr;
  if (!sizes || sizes->source != column.source) {
    return notes_.tell(aggregation, "small categories aren't merged");
  }
  std::map<std::string, double> sums;
  double whole = 0;
  for (std::size_t row = 0; row < column.texts.size() && row < sizes->numbers.size(); ++row) {
    if (std::isnan(sizes->numbers[row])) continue;
    sums[column.texts[row]] += sizes->numbers[row];
    whole += sizes->numbers[row];
  }
  for (const std::string& raw : field.raws) {
    if (sums[raw] < aggregation.getMinFraction() * whole) {
      field.labels[raw] = utf8(aggregation.getCategory());
    }
  }
}

const DrawField* DrawData::weightOf(const std::string& source) {
  for (const PlXSourceVariable* variable : chart_.getSourceVariables()) {
    if (utf8(variable->getSource()) == source &&
        XMLString::equals(variable->getSourceName(), u"$WEIGHT")) {
      return fieldOf(variable);
    }
  }
  return nullptr;
}

DrawData::Moments DrawData::momentsOf(const DrawField& field) {
  const Column& column = *columnOf(*field.variable);
  const DrawField* weights = weightOf(field.source);
  const Column* weighing = weights ? columnOf(*weights->variable) : nullptr;
  const auto weightIn = [&](std::size_t row) {
    const double weight = weighing ? weighing->numbers[row] : 1;
    return std::isnan(column.numbers[row]) || std::isnan(weight) ? 0 : weight;
  };
  Moments result;
  for (std::size_t row = 0; row < column.numbers.size(); ++row) {
    result.rows += weightIn(row) > 0;
    result.cases += weightIn(row);
    if (weightIn(row) > 0) result.mean += weightIn(row) * column.numbers[row];
  }
  result.mean /= result.cases;
  double squares = 0;
  for (std::size_t row = 0; row < column.numbers.size(); ++row) {
    const double distance = column.numbers[row] - result.mean;
    if (weightIn(row) > 0) squares += weightIn(row) * distance * distance;
  }
  result.deviation = std::sqrt(squares / (result.cases - 1));
  return result;
}

double DrawData::rSquared(const DrawField& x, const DrawField& y) {
  const std::vector<double>& first = columnOf(*x.variable)->numbers;
  const std::vector<double>& second = columnOf(*y.variable)->numbers;
  if (x.source != y.source) return none;
  double count = 0, sumX = 0, sumY = 0, xx = 0, xy = 0, yy = 0;
  for (std::size_t row = 0; row < first.size(); ++row) {
    if (std::isnan(first[row]) || std::isnan(second[row])) continue;
    ++count;
    sumX += first[row];
    sumY += second[row];
    xx += first[row] * first[row];
    xy += first[row] * second[row];
    yy += second[row] * second[row];
  }
  const double covariance = count * xy - sumX * sumY;
  return covariance * covariance / ((count * xx - sumX * sumX) * (count * yy - sumY * sumY));
}

std::vector<std::pair<std::string, std::string>> DrawData::pairsOf(const DrawField& first,
                                                                   const DrawField& second) {
  const Column& a = *columnOf(*first.variable);
  const Column& b = *columnOf(*second.variable);
  const auto textIn = [](const DrawField& field, const std::string& raw) {
    return raw.empty() ? raw : field.labels.at(raw);
  };
  std::vector<std::pair<std::string, std::string>> pairs;
  for (std::size_t row = 0; row < a.texts.size() && row < b.texts.size(); ++row) {
    pairs.emplace_back(textIn(first, a.texts[row]), textIn(second, b.texts[row]));
  }
  return pairs;
}

std::string DrawData::tableName(const std::string& source) {
  // Vega-Lite calls its own data source_0, facet, child_layer_0_main...
  for (const char* own : {"source", "data", "child", "facet", "row", "column", "concat", "layer"}) {
    if (source.starts_with(own)) return "table_" + source;
  }
  return source.empty() ? "table" : source;
}

Json DrawData::tables() const {
  Json result = Json::object();
  for (const DrawField* field : inOrder_) {
    Json& rows = result[tableName(field->source)];
    if (rows.is_null()) rows = Json::array();
    const Json& cells = columns_.at(field->variable)->cells;
    while (rows.size() < cells.size()) rows.push_back(Json::object());
    for (std::size_t row = 0; row < cells.size(); ++row) rows[row][field->name] = cells[row];
  }
  return result;
}

// ---- the order of categories

const DrawData::Order& DrawData::orderOf(const DrawField& field,
                                         const PlXCategoricalDomain* domain) {
  if (!domain) domain = field.variable->getCategoricalDomain();
  const auto key = std::make_pair(&field, domain);
  if (const auto found = orders_.find(key); found != orders_.end()) return found->second;
  return orders_[key] = orderFor(field, domain);
}

std::map<std::string, double> DrawData::meansOf(const DrawField& field,
                                                const CTVariableType* measure) {
  std::map<std::string, double> means;
  const Column* column = columnOf(*field.variable);
  const Column* values = measure ? columnOf(*measure) : nullptr;
  if (!values || values->source != column->source) return means;
  std::map<std::string, std::size_t> counts;
  for (std::size_t row = 0; row < column->texts.size() && row < values->numbers.size(); ++row) {
    if (column->texts[row].empty() || std::isnan(values->numbers[row])) continue;
    const std::string& text = field.labels.at(column->texts[row]);
    means[text] += values->numbers[row];
    ++counts[text];
  }
  for (auto& [text, sum] : means) sum /= static_cast<double>(counts[text]);
  return means;
}

namespace {

// A category by what a chart calls it: a raw value, or the name of merged ones.
std::string textOf(const DrawField& field, const std::string& raw) {
  const auto found = field.labels.find(raw);
  return found == field.labels.end() ? raw : found->second;
}

// Keeps the categories of each list, or leaves them out.
void restrict(const DrawField& field, const PlXCategoricalDomain& domain,
              std::vector<std::string>& raws) {
  for (const auto* list : childrenOf<PlXCategories>(domain)) {
    std::set<std::string> named;
    for (const std::string& raw : listItems(utf8(list->getText()))) named.insert(raw);
    std::erase_if(raws, [&](const std::string& raw) {
      const bool isNamed = named.contains(raw) || named.contains(textOf(field, raw));
      return isNamed == list->getRemove();
    });
  }
}

// An unknown place is the last.
template <class Key, class Rank>
auto rankIn(const std::map<Key, Rank>& ranks, const Key& key, Rank unknown) {
  const auto found = ranks.find(key);
  return found == ranks.end() ? unknown : found->second;
}

}  // namespace

DrawData::Order DrawData::orderFor(const DrawField& field, const PlXCategoricalDomain* domain) {
  std::vector<std::string> raws = field.raws;
  if (domain) restrict(field, *domain, raws);
  Order order;
  order.isPart = raws.size() < field.raws.size();

  const auto sortBy = [&](auto&& isLess, bool isDescending) {
    std::ranges::stable_sort(raws, [&](const std::string& a, const std::string& b) {
      return isDescending ? isLess(b, a) : isLess(a, b);
    });
  };
  const auto sortNaturally = [&](auto&& textFor, bool isDescending) {
    std::map<std::string, NaturalKey> keys;
    for (const std::string& raw : raws) keys.emplace(raw, naturalKey(textFor(raw)));
    sortBy([&](const auto& a, const auto& b) { return keys.at(a) < keys.at(b); }, isDescending);
  };
  const auto moveEnds = [&](const PlXBaseElement& sort) {
    for (const auto* move : childrenOf<PlXSortMove>(sort)) {
      const std::string text = textOf(field, utf8(move->getCategory()));
      std::stable_partition(raws.begin(), raws.end(), [&](const std::string& raw) {
        return (textOf(field, raw) == text) == move->getFirst();
      });
    }
  };
  const DOMElement* child = domain ? domain->getImplementation()->getFirstElementChild() : nullptr;
  for (; child; child = child->getNextElementSibling()) {
    const PlXBaseElement* object = domain->objectOf(const_cast<DOMElement*>(child));
    if (const auto* sort = dynamic_cast<const PlXSimpleSort*>(object)) {
      if (sort->getMethod() == PlXSimpleSort::method_natural) {
        sortNaturally([&](const auto& raw) { return textOf(field, raw); }, sort->getDescending());
      } else if (sort->getMethod() == PlXSimpleSort::method_value) {
        sortNaturally(std::identity(), sort->getDescending());
      } else if (sort->getMethod() == PlXSimpleSort::method_explicit) {
        std::map<std::string, std::size_t> ranks;
        const auto* list = childOf<PlXCategoryOrder>(*sort);
        for (const std::string& raw : listItems(list ? utf8(list->getText()) : "")) {
          ranks.emplace(raw, ranks.size());
        }
        sortBy(
            [&](const auto& a, const auto& b) {
              return rankIn(ranks, a, ranks.size()) < rankIn(ranks, b, ranks.size());
            },
            sort->getDescending());
      } else if (sort->getDescending()) {
        std::ranges::reverse(raws);
      }
      moveEnds(*sort);
    } else if (const auto* byMean = dynamic_cast<const PlXStatisticSort*>(object)) {
      const auto means = meansOf(field, byMean->getStatVariable());
      if (means.empty()) notes_.tell(*byMean, "the categories stay in the order of the data");
      const double last = byMean->getDescending() ? -std::numeric_limits<double>::infinity()
                                                  : std::numeric_limits<double>::infinity();
      sortBy(
          [&](const auto& a, const auto& b) {
            return rankIn(means, textOf(field, a), last) < rankIn(means, textOf(field, b), last);
          },
          byMean->getDescending());
      moveEnds(*byMean);
    }
  }
  std::set<std::string> known;
  for (const std::string& raw : raws) {
    const std::string text = textOf(field, raw);
    if (known.insert(text).second) order.texts.push_back(text);
  }
  return order;
}

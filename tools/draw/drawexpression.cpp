#include "drawexpression.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace draw {

namespace {

constexpr int deepest = 64;

struct UnaryFunction {
  const char* name;
  double (*apply)(double);
};
constexpr UnaryFunction unaryFunctions[] = {
    {"-", [](double a) { return -a; }},
    {"!", [](double a) { return std::isnan(a) ? a : double(a == 0); }},
    {"abs", [](double a) { return std::abs(a); }},
    {"ceil", [](double a) { return std::ceil(a); }},
    {"cos", [](double a) { return std::cos(a); }},
    {"exp", [](double a) { return std::exp(a); }},
    {"floor", [](double a) { return std::floor(a); }},
    {"log", [](double a) { return std::log(a); }},
    {"log10", [](double a) { return std::log10(a); }},
    {"round", [](double a) { return std::round(a); }},
    {"sin", [](double a) { return std::sin(a); }},
    {"sqrt", [](double a) { return std::sqrt(a); }},
    {"tan", [](double a) { return std::tan(a); }},
};

struct BinaryFunction {
  const char* name;
  int level;  // how tight an operator binds; 0 for a function
  double (*apply)(double, double);
};

double truth(double a, double b, bool value) {
  return std::isnan(a) || std::isnan(b) ? std::numeric_limits<double>::quiet_NaN() : double(value);
}

// Of two operators that start alike the longer comes first.
constexpr BinaryFunction binaryFunctions[] = {
    {"||", 1, [](double a, double b) { return truth(a, b, a != 0 || b != 0); }},
    {"&&", 2, [](double a, double b) { return truth(a, b, a != 0 && b != 0); }},
    {"==", 3, [](double a, double b) { return truth(a, b, a == b); }},
    {"!=", 3, [](double a, double b) { return truth(a, b, a != b); }},
    {"<=", 4, [](double a, double b) { return truth(a, b, a <= b); }},
    {">=", 4, [](double a, double b) { return truth(a, b, a >= b); }},
    {"<", 4, [](double a, double b) { return truth(a, b, a < b); }},
    {">", 4, [](double a, double b) { return truth(a, b, a > b); }},
    {"+", 5, [](double a, double b) { return a + b; }},
    {"-", 5, [](double a, double b) { return a - b; }},
    {"*", 6, [](double a, double b) { return a * b; }},
    {"/", 6, [](double a, double b) { return a / b; }},
    {"^", 7, [](double a, double b) { return std::pow(a, b); }},
    {"pow", 0, [](double a, double b) { return std::pow(a, b); }},
    {"min", 0, [](double a, double b) { return std::min(a, b); }},
    {"max", 0, [](double a, double b) { return std::max(a, b); }},
};
constexpr int tightest = 7;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isNameChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
         static_cast<unsigned char>(c) >= 0x80 || isDigit(c);
}

}  // namespace

class Expression::Parser {
 public:
  Parser(Expression& result, std::string_view text) : result_(result), text_(text) {}

  bool parseAll() {
    const bool isGood = parseChoice();
    skipBlanks();
    return isGood && at_ == text_.size();
  }

 private:
  void skipBlanks() {
    while (at_ < text_.size() && std::string_view(" \t\r\n").find(text_[at_]) != text_.npos) ++at_;
  }
  bool accept(std::string_view sign) {
    skipBlanks();
    if (!text_.substr(at_).starts_with(sign)) return false;
    at_ += sign.size();
    return true;
  }
  void add(Step::Kind kind, std::size_t target, double number = 0) {
    result_.steps_.push_back({kind, number, target});
  }

  bool parseChoice() {
    if (++depth_ > deepest) return false;
    bool isGood = parseOperators(1);
    if (isGood && accept("?")) {
      const std::size_t toSecond = result_.steps_.size();
      add(Step::JumpIfFalse, 0);
      isGood = parseChoice() && accept(":");
      const std::size_t toEnd = result_.steps_.size();
      add(Step::Jump, 0);
      result_.steps_[toSecond].target = result_.steps_.size();
      isGood = isGood && parseChoice();
      result_.steps_[toEnd].target = result_.steps_.size();
    }
    --depth_;
    return isGood;
  }

  bool parseOperators(int level) {
    if (level > tightest) return parseOperand();
    if (!parseOperators(level + 1)) return false;
    for (;;) {
      const auto* found = std::ranges::find_if(binaryFunctions, [&](const auto& function) {
        return function.level == level && accept(function.name);
      });
      if (found == std::end(binaryFunctions)) return true;
      if (!parseOperators(level + 1)) return false;
      add(Step::Binary, static_cast<std::size_t>(found - binaryFunctions));
    }
  }

  bool parseOperand() {
    if (++depth_ > deepest) return false;
    skipBlanks();
    bool isGood = false;
    if (accept("-") || accept("!")) {
      const std::size_t sign = text_[at_ - 1] == '-' ? 0 : 1;
      isGood = parseOperand();
      add(Step::Unary, sign);
    } else if (accept("(")) {
      isGood = parseChoice() && accept(")");
    } else if (at_ < text_.size() && (isDigit(text_[at_]) || text_[at_] == '.')) {
      isGood = parseNumber();
    } else {
      isGood = parseName();
    }
    --depth_;
    return isGood;
  }

  bool parseNumber() {
    const std::size_t start = at_;
    const auto skipDigits = [&] {
      while (at_ < text_.size() && isDigit(text_[at_])) ++at_;
    };
    skipDigits();
    if (at_ < text_.size() && text_[at_] == '.') ++at_;
    skipDigits();
    if (at_ < text_.size() && (text_[at_] == 'e' || text_[at_] == 'E')) {
      const std::size_t mark = at_++;
      if (at_ < text_.size() && (text_[at_] == '-' || text_[at_] == '+')) ++at_;
      if (at_ >= text_.size() || !isDigit(text_[at_])) at_ = mark;
      skipDigits();
    }
    double number = 0;
    const char* end = text_.data() + at_;
    const auto [stop, error] = std::from_chars(text_.data() + start, end, number);
    add(Step::Number, 0, number);
    return error == std::errc() && stop == end;
  }

  bool parseName() {
    const std::size_t start = at_;
    while (at_ < text_.size() && isNameChar(text_[at_])) ++at_;
    const std::string name(text_.substr(start, at_ - start));
    if (name.empty()) return false;
    if (accept("(")) return parseCall(name);
    auto& names = result_.names_;
    const auto found = std::ranges::find(names, name);
    add(Step::Name, static_cast<std::size_t>(found - names.begin()));
    if (found == names.end()) names.push_back(name);
    return true;
  }

  bool parseCall(const std::string& name) {
    const auto isCalled = [&](const auto& function) { return name == function.name; };
    if (!parseChoice()) return false;
    if (const auto* unary = std::ranges::find_if(unaryFunctions, isCalled);
        unary != std::end(unaryFunctions)) {
      add(Step::Unary, static_cast<std::size_t>(unary - unaryFunctions));
      return accept(")");
    }
    const auto* binary = std::ranges::find_if(binaryFunctions, isCalled);
    if (binary == std::end(binaryFunctions) || !accept(",") || !parseChoice()) return false;
    add(Step::Binary, static_cast<std::size_t>(binary - binaryFunctions));
    return accept(")");
  }

  Expression& result_;
  std::string_view text_;
  std::size_t at_ = 0;
  int depth_ = 0;
};

std::unique_ptr<Expression> Expression::parse(const std::string& text) {
  auto result = std::make_unique<Expression>();
  return Parser(*result, text).parseAll() ? std::move(result) : nullptr;
}

double Expression::valueFor(std::span<const double> values) const {
  std::vector<double> stack;
  const auto pop = [&] {
    const double top = stack.back();
    stack.pop_back();
    return top;
  };
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    const Step& step = steps_[i];
    switch (step.kind) {
      case Step::Number:
        stack.push_back(step.number);
        break;
      case Step::Name:
        stack.push_back(values[step.target]);
        break;
      case Step::Unary:
        stack.back() = unaryFunctions[step.target].apply(stack.back());
        break;
      case Step::Binary: {
        const double second = pop();
        stack.back() = binaryFunctions[step.target].apply(stack.back(), second);
        break;
      }
      case Step::Jump:
        i = step.target - 1;
        break;
      case Step::JumpIfFalse: {
        const double condition = pop();
        if (std::isnan(condition)) return condition;
        if (condition == 0) i = step.target - 1;
        break;
      }
    }
  }
  return stack.back();
}

}  // namespace draw

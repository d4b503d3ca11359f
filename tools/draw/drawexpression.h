// Expressions over the variables of a chart, such as "age > 64 ? 1 : 0" and "0.5*x+2".
#ifndef CHARTXML_TOOLS_DRAWEXPRESSION_H
#define CHARTXML_TOOLS_DRAWEXPRESSION_H

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace draw {

// Numbers, names, the operators ?: || && == != < <= > >= + - * / ^ ! and parentheses, and the
// functions of one argument (abs ceil cos exp floor log log10 round sin sqrt tan) and of two (pow
// min max). What is missing is NaN, and so is what is computed from it. True is 1, false 0.
class Expression {
 public:
  // Null for a text that is none, or that is nested deeper than 64 levels.
  static std::unique_ptr<Expression> parse(const std::string& text);

  // The names, each once.
  const std::vector<std::string>& names() const { return names_; }
  // `values` are those of the names, in their order.
  double valueFor(std::span<const double> values) const;

 private:
  class Parser;

  // A program for a stack. `target` is where a jump goes, the index of a name, or a function's.
  struct Step {
    enum Kind { Number, Name, Unary, Binary, Jump, JumpIfFalse } kind;
    double number = 0;
    std::size_t target = 0;
  };

  std::vector<Step> steps_;
  std::vector<std::string> names_;
};

}  // namespace draw

#endif

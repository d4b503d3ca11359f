// Scenarios, and the sweep that makes every use of a resource fail in turn.
#ifndef CHARTXML_TESTS_FAILING_SWEEP_H
#define CHARTXML_TESTS_FAILING_SWEEP_H

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "resources.h"

// What one run of a scenario gave. A step that fails gives the empty text; anything else is to be
// what it gives when nothing fails.
class Answers {
 public:
  Answers() = default;
  Answers(const Answers&) = delete;
  Answers& operator=(const Answers&) = delete;
  ~Answers();

  // A step that tells its failure by its result: an exception is a fault.
  template <class Step>
  void take(Step step) {
    std::string text;
    try {
      text = step();
    } catch (...) {
      hasThrown_ = true;
    }
    const resources::Pause pause;
    texts_.push_back(text);
  }
  // One that may throw for lack of memory, like constructors.
  template <class Step>
  void takeUnlessThrown(Step step) {
    std::string text;
    try {
      text = step();
    } catch (...) {
    }
    const resources::Pause pause;
    texts_.push_back(text);
  }
  // What went wrong otherwise.
  void blame(const std::string& fault) {
    const resources::Pause pause;
    fault_ = fault;
  }

  // Empty when all is as it may be.
  std::string faultAgainst(const Answers& expected) const;
  bool operator==(const Answers& other) const { return texts_ == other.texts_; }
  bool isWhole() const;

 private:
  std::vector<std::string> texts_;
  bool hasThrown_ = false;
  std::string fault_;
};

struct Scenario {
  const char* name;
  std::function<void(Answers&)> run;
  long stride = 1;
};

struct Sweep {
  resources::Failure failure;  // `at` is where it begins
  long stride = 1;
  bool isOne = false;  // no more than the first
};

// Answers how many faults there were, and writes them.
int sweep(const Scenario& scenario, const Sweep& how);

#endif

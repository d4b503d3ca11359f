// CommandListener: takes down what a command says while it runs.
#ifndef CHARTXML_COMMANDLISTENER_H
#define CHARTXML_COMMANDLISTENER_H

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "commandoutcome.h"

class CommandListener {
 public:
  // To be finished before the outcome goes.
  explicit CommandListener(CommandOutcome& outcome) : outcome_(outcome) {}

  void addNote(const std::string& note) { addOnce(outcome_.notes, note); }
  void addReason(const std::string& reason) { addOnce(outcome_.reasons, reason); }
  // A note or a reason that holds only if nothing of it was found until the end.
  void addLook(const std::string& text, bool isNote, bool isFound) {
    const auto [known, isFirst] = looks_.try_emplace(text, Look{isNote, isFound});
    if (isFirst) order_.push_back(text);
    known->second.isFound = known->second.isFound || isFound;
  }
  void finish() {
    for (const std::string& text : order_) {
      const Look& look = looks_.at(text);
      if (!look.isFound) addOnce(look.isNote ? outcome_.notes : outcome_.reasons, text);
    }
  }

 private:
  struct Look {
    bool isNote;
    bool isFound;
  };

  void addOnce(std::vector<std::string>& texts, const std::string& text) {
    if (told_.insert(text).second) texts.push_back(text);
  }

  CommandOutcome& outcome_;
  std::unordered_set<std::string> told_;
  std::unordered_map<std::string, Look> looks_;
  std::vector<std::string> order_;
};

#endif

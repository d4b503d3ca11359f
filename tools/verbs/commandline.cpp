#include "commandline.h"

#include <getopt.h>

#include <iostream>

std::vector<std::string> readOptions(int argc, char** argv, std::span<const Option> options) {
  constexpr int firstLong = 256;  // behind all letters
  std::string letters = "h";
  std::vector<option> names = {{"help", no_argument, nullptr, 'h'}};
  for (std::size_t i = 0; i < options.size(); ++i) {
    const Option& row = options[i];
    const bool takesArgument = row.value || row.list;
    const int kind = takesArgument ? required_argument : no_argument;
    names.push_back({row.name, kind, nullptr, firstLong + static_cast<int>(i)});
    if (row.letter)
      letters += takesArgument ? std::string{row.letter, ':'} : std::string{row.letter};
  }
  names.push_back({});

  // Its messages then start as all others do; 0 makes it start anew.
  static char toolName[] = "chartxml";
  argv[0] = toolName;
  optind = 0;
  for (int found;
       (found = getopt_long(argc, argv, letters.c_str(), names.data(), nullptr)) != -1;) {
    if (found == 'h') throw HelpWanted();
    if (found == '?') throw UsageError("");
    for (std::size_t i = 0; i < options.size(); ++i) {
      if (found != options[i].letter && found != firstLong + static_cast<int>(i)) continue;
      if (options[i].value) {
        *options[i].value = optarg;
      } else if (options[i].list) {
        options[i].list->push_back(optarg);
      } else {
        *options[i].flag = true;
      }
    }
  }
  return {argv + optind, argv + argc};
}

void complain(std::string_view message) {
  std::cerr << "chartxml: " << message << '\n';
}

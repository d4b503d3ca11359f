// The template that is measured.
#ifndef CHARTXML_BENCH_HOUSESTYLE_H
#define CHARTXML_BENCH_HOUSESTYLE_H

#include <cstddef>
#include <string>
#include <string_view>

namespace housestyle {

constexpr std::size_t size = 40;  // commands

std::string_view command(std::size_t index);
// A template of so many commands of it, over again where there are more than it has.
std::string text(int commands = size);
// A template of the caller's own commands.
std::string templateOf(std::string_view commands);

}  // namespace housestyle

#endif

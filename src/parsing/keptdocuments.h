// The documents of the last few texts, for who reads the same ones again and again.
#ifndef CHARTXML_KEPTDOCUMENTS_H
#define CHARTXML_KEPTDOCUMENTS_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "chartproblem.h"
#include "grammarpool.h"

class ChartParser;

namespace keptdocuments {

// As ChartTemplate tells them. The bytes are those of the texts and of all that their parsers hold.
constexpr std::size_t mostTexts = 8;
constexpr std::size_t mostBytes = std::size_t(4) << 20;

// The parser of an earlier call for that text, or a new one that has parsed it. Others may have the
// same: its document is for reading. Null when the parse failed, which ChartParser::parseText() has
// reported; then nothing is kept, nor is what another file than a schema of the pool could change.
// `problems`, unless null, gets what was wrong with the text.
std::shared_ptr<const ChartParser> parse(grammarpool::Kind kind, const std::string& text,
                                         const char* sourceName,
                                         std::vector<ChartProblem>* problems = nullptr);

// Forgets all; who has one of them keeps it.
void clear();

}  // namespace keptdocuments

#endif

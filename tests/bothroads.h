// What a caller sees of a chart's text, with its rows taken out before it is read and without.
#ifndef CHARTXML_BOTHROADS_H
#define CHARTXML_BOTHROADS_H

#include <memory>
#include <regex>
#include <string>

#include "charttransformer.h"
#include "rowseparator.h"
#include "testsupport.h"
#include "xmlwriter.h"

namespace bothroads {

// The log without its times, which are in front of each report.
inline std::string withoutTimes(const std::string& log) {
  static const std::regex time("[^\n]*?((Fatal |)Error|Warning) -- ");
  return std::regex_replace(log, time, "$1 -- ");
}

// "LINE:COLUMN MESSAGE" of each, with '~' in front of what is tolerated.
inline std::string toldOf(const std::vector<ChartProblem>& problems) {
  std::string text;
  for (const ChartProblem& problem : problems) {
    if (!text.empty()) text += '\n';
    text += (problem.isRefused ? "" : "~") + std::to_string(problem.line) + ':' +
            std::to_string(problem.column) + ' ' + problem.message;
  }
  return text;
}

// Everything that a chart gives, what it logged and which dumps it wrote, one behind the other.
inline std::string whatIsSeen(const std::string& text) {
  const LogFolder folder("0000000001");
  std::string seen;
  const auto tell = [&seen](const std::string& name, const std::string& value) {
    seen += "\n== " + name + " ==\n" + value;
  };
  {
    ChartTransformer chart(text);
    tell("problems", toldOf(chart.getProblems()));
    tell("chart", chart.getXML(nullptr));
    tell("whole", chart.getEntireXML(nullptr));
    const xercesc::DOMDocument* data = chart.getDataDocument();
    tell("data", data ? xmlText(*data) : "none");
    unsigned long size = 0;
    const std::unique_ptr<unsigned char[]> stream(chart.getCompressedDataStream(size));
    tell("stream", std::string(reinterpret_cast<const char*>(stream.get()), size));
    tell("compressed data", chart.getCompressedData());
    tell("compressed chart", chart.getCompressedXML());
    tell("whole again", chart.getEntireXML(nullptr));
    ChartTransformer reopened(chart.getCompressedXML(), chart.getCompressedData());
    tell("whole of both", reopened.getEntireXML(nullptr));
    ChartTransformer streamed(chart.getCompressedXML(), stream.get(), size);
    tell("whole of a stream", streamed.getEntireXML(nullptr));
  }
  for (const std::string& name : folder.files()) tell("file", name);
  tell("log", withoutTimes(folder.log()));
  return seen;
}

struct Seen {
  std::string separated;
  std::string read;
};

inline Seen both(const std::string& text) {
  Seen seen;
  seen.separated = whatIsSeen(text);
  rowseparator::turn(false);
  seen.read = whatIsSeen(text);
  rowseparator::turn(true);
  return seen;
}

inline bool isSeparated(const std::string& text) {
  rowseparator::Separated rows;
  return rowseparator::separate(text, rows);
}

}  // namespace bothroads

#endif

// chartxml::Chart: the front door. A chart as a value with an owner, in UTF-8, and with failures
// that can't be overlooked.
//
// Beside it stand the classes that it is made of (ChartTransformer, ChartTemplate, VarDataProcessor
// and the typed views of the chart's elements); what isn't here is there.
#ifndef CHARTXML_CHART_H
#define CHARTXML_CHART_H

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "chartproblem.h"
#include "export.h"

class ChartTransformer;
class PlXVisualization;
class VarDataProcessor;

namespace chartxml {

// What ends every operation below that can't do what it is for: nothing here answers null, or a
// text that may be empty for two reasons. Operations throw, and don't answer a result that holds
// one or the other, since a chart that was refused is of no use to what follows, and a program of a
// few lines then needs one handler. After it the object is as it was. What lack of memory ends is
// a std::bad_alloc, or an Error that says so.
class CHARTXML_API Error : public std::runtime_error {
 public:
  // what() is "FILE:LINE:COLUMN: MESSAGE" of the first problem for which the text was refused,
  // with the parts that there are. `file` may be empty.
  Error(const std::string& file, std::vector<ChartProblem> problems);
  ~Error() override;

  // As ChartBase::getProblems() tells them; never empty.
  const std::vector<ChartProblem>& problems() const { return problems_; }

 private:
  std::vector<ChartProblem> problems_;
};

// Empty for null.
CHARTXML_API std::string toUtf8(const XMLCh* text);

// All that is wrong with a text, as ChartBase::findProblems() tells it; empty for a sound one.
CHARTXML_API std::vector<ChartProblem> problemsOf(const std::string& text);

// A text that is known to be a template, of today or older.
class CHARTXML_API Template {
 public:
  static Template parse(std::string text);
  static Template read(const std::string& path);

  const std::string& text() const { return text_; }

 private:
  explicit Template(std::string text) : text_(std::move(text)) {}

  std::string text_;
};

// One thread only. The first use of this header starts the library, which then stays for the rest
// of the process: schemas are read once. A chart that has been moved from can be destroyed and
// assigned to.
class CHARTXML_API Chart {
 public:
  // A chart's text, which may be compressed.
  static Chart parse(const std::string& text);
  static Chart read(const std::string& path);

  Chart(Chart&& other) noexcept;
  Chart& operator=(Chart&& other) noexcept;
  ~Chart();

  // Runs the commands one after the other; what they changed stays when a later one fails. Answers
  // what was passed over: elements that are no commands, and commands that failed. Throws when the
  // run was stopped.
  std::vector<ChartProblem> apply(const Template& commands);

  // The typed views of the chart's elements, which are the chart's and live as long. For each
  // embedded source of data there is a `userSource` in its place.
  PlXVisualization& visualization();
  const PlXVisualization& visualization() const;

  // The chart with its data.
  std::string text() const;
  std::string textWithoutData() const;
  // Writes text() and a line end. The file is replaced as a whole or not at all; where the path is
  // a device or a pipe, it is written to.
  void write(const std::string& path) const;

  // ---- data, as a document, as a compressed stream or as columns: what was set in one of these
  // can be read in each

  // A data document, root `gs:graphSources`; empty without data.
  std::string data() const;
  // What programs in other languages read (docs/stream.md), texts in cells included.
  struct Stream {
    std::unique_ptr<unsigned char[]> bytes;
    std::size_t size = 0;
  };
  Stream dataStream() const;
  // Never null; without sources where there is no data.
  std::unique_ptr<VarDataProcessor> columns() const;

  // Each takes the place of all data that there was. Every `userSource` of the chart must have its
  // source in it, by id; for a source that none stands for, one is added.
  void setData(std::string document);
  void setDataStream(const unsigned char* bytes, std::size_t size);
  void setColumns(VarDataProcessor& columns);

 private:
  explicit Chart(std::unique_ptr<ChartTransformer> transformer);

  std::unique_ptr<ChartTransformer> transformer_;  // with a chart
};

}  // namespace chartxml

#endif

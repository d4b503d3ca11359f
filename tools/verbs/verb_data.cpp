#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <set>
#include <sstream>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "csv.h"
#include "files.h"
#include "problems.h"
#include "progress.h"

using namespace xercesc;
namespace fs = std::filesystem;

const char dataHelp[] =
    R"(usage: chartxml data [--csv] [--source ID] FILE...
       chartxml data [--csv] [--source ID] --to FORM [-o OUT] [-z] FILE...
       chartxml data [--csv] --to csv --out-dir DIR FILE...

Shows the data that charts, data documents and data streams hold: the sources, their
variables, and of each the missing cells, the texts and the range of its numbers. With --to,
writes it in another form: as a data document (xml), as a stream (stream), or as a table of
each source, the names of the variables in the first line (csv).

      --to FORM       write the data as xml, stream or csv
  -o, --output OUT    write to a file in place of standard output
      --out-dir DIR   write the table of each source to a file ID.csv in a folder, which is
                      made if there is none
  -s, --source ID     only this source; of a table, its name
      --csv           each FILE is a table, as one named .csv is anyway; it becomes a source of
                      the file's name
  -z, --compress      write a document compressed, as a stream always is
  -h, --help          show this

Examples:
  chartxml data sales.xml
  chartxml data --to csv --source sales sales.xml > sales.csv
  chartxml data --to xml -o sales.data.xml sales.csv stores.csv
)";

namespace {

struct Job {
  std::string form;  // empty to show
  std::string output;
  std::string outFolder;
  std::string source;  // empty for all
  bool isCsv = false;
  bool isCompressed = false;
  std::vector<std::string> files;
};

// A name tells a table, which may hold anything.
bool isTable(const Job& job, const std::string& file) {
  return job.isCsv || ::isTable(file);
}

Job readJob(int argc, char** argv) {
  Job job;
  job.files = readOptions(argc, argv,
                          {{{"to", '\0', nullptr, &job.form},
                            {"output", 'o', nullptr, &job.output},
                            {"out-dir", '\0', nullptr, &job.outFolder},
                            {"source", 's', nullptr, &job.source},
                            {"csv", '\0', &job.isCsv, nullptr},
                            {"compress", 'z', &job.isCompressed, nullptr}}});
  if (job.files.empty()) throw UsageError("a file is missing");
  if (!job.form.empty() && job.form != "xml" && job.form != "stream" && job.form != "csv") {
    throw UsageError("unknown form '" + job.form + "'");
  }
  if (job.form.empty() && !(job.output + job.outFolder).empty()) {
    throw UsageError("--output and --out-dir need --to");
  }
  if (!job.outFolder.empty() && job.form != "csv") throw UsageError("--out-dir needs --to csv");
  if (!job.outFolder.empty() && !job.output.empty()) {
    throw UsageError("--output and --out-dir don't go together");
  }
  const auto tables = static_cast<std::size_t>(std::ranges::count_if(
      job.files, [&](const std::string& file) { return isTable(job, file); }));
  if (job.files.size() > 1 && !job.form.empty() && tables < job.files.size()) {
    throw UsageError("one FILE is to be given, or several tables");
  }
  if (tables > 1 && !job.source.empty()) {
    throw UsageError("--source names the source of one table");
  }
  if (job.output.empty()) job.output = "-";
  return job;
}

// ---- reading

bool isDocument(std::string_view text) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  if (text.starts_with(mark)) text.remove_prefix(mark.size());
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  // UTF-16 has a mark of its own, or a zero beside the first '<'.
  return (start != text.npos && text[start] == '<') || text.starts_with("\xFE\xFF") ||
         text.starts_with("\xFF\xFE") || text.starts_with(std::string_view("\0<", 2));
}

bool isStream(std::string_view text) {
  constexpr char magic = '\xB0';
  return text.size() > 1 && text[1] == magic;
}

// A document as the library writes it, which the parser needs not spell anew.
bool isPlainData(const std::string& text) {
  VarDataProcessor empty;
  std::string frame;
  XmlDataHandler::WriteStore(empty, frame);
  constexpr std::string_view end = "</gs:graphSources>\n";
  return text.starts_with(frame.substr(0, frame.size() - end.size())) && text.ends_with(end);
}

std::string lineOf(const std::string& text, std::size_t offset) {
  if (offset == std::string::npos) return {};
  const auto end = text.begin() + static_cast<std::ptrdiff_t>(offset);
  return ':' + std::to_string(1 + std::count(text.begin(), end, '\n'));
}

void readDocumentText(const std::string& name, const std::string& text, VarDataProcessor& store) {
  using Handler = XmlDataHandler;
  Handler::Problem problem;
  if (isPlainData(text)) {
    if (Handler::ReadStore(text, store, Handler::Keep::All, &problem)) return;
    throw Failure(name + lineOf(text, problem.offset) + ": " + problem.reason);
  }

  std::string spelled;
  {
    ChartBase base;
    const DOMElement& root = rootOf(base, name, text);
    if (!XMLString::equals(root.getLocalName(), u"graphSources")) requireChart(root, name);
    std::ostringstream out;
    out.exceptions(std::ios::badbit);  // for lack of memory
    ChartPrinter().Print(root.getOwnerDocument(), out);
    spelled = std::move(out).str();
  }
  if (Handler::ReadStore(spelled, store, Handler::Keep::All, &problem)) return;
  // The line is that of the file, if the problem shows there as well.
  VarDataProcessor other;
  Handler::Problem original;
  Handler::ReadStore(text, other, Handler::Keep::All, &original);
  const bool isSame = std::string_view(original.reason) == problem.reason;
  throw Failure(name + (isSame ? lineOf(text, original.offset) : "") + ": " + problem.reason);
}

std::string nameOfSource(const Job& job, const std::string& file) {
  std::string name = job.source.empty() ? sourceNameOf(file) : job.source;
  requireSourceName(file, name);
  return name;
}

void readFileInto(const Job& job, const std::string& file, VarDataProcessor& store) {
  Progress progress;
  progress.say("reading " + file);
  std::string text = readFile(file);
  if (text.empty()) throw Failure(file + ": is empty");
  if (isTable(job, file)) {
    const std::string source = nameOfSource(job, file);
    if (store.GetCapacity(source) > 0) {
      throw Failure(file + ": another table is named '" + escaped(source) + "' as well");
    }
    return readCsv(file, text, source, store);
  }
  if (text.starts_with('x')) {
    const std::string packed = std::move(text);
    if (!zlib1211tavo::decompressString(text, packed)) {
      throw Failure(file + ": is not whole, or longer than " +
                    std::to_string(zlib1211tavo::getInflateLimit() >> 20) + " MiB");
    }
    if (isStream(text)) {
      text = {};
      if (packed.size() > std::numeric_limits<unsigned>::max() ||
          !store.ReadStream(packed.data(), static_cast<unsigned>(packed.size()))) {
        throw Failure(file + ": is a damaged stream");
      }
      return;
    }
  }
  if (!isDocument(text)) throw Failure(file + ": is no chart, data document or stream");
  readDocumentText(file, text, store);
}

std::vector<std::string> sourcesOf(const Job& job, const std::string& file,
                                   const VarDataProcessor& store) {
  std::vector<std::string> sources;
  store.GetSourceNames(sources);
  if (job.source.empty()) return sources;
  if (std::ranges::count(sources, job.source) == 0) {
    throw Failure(file + ": has no source '" + escaped(job.source) + "'");
  }
  return {job.source};
}

// ---- showing

std::string numberText(double value) {
  std::string text;
  VarDataProcessor::AppendNumber(value, text);
  return text;
}

std::string variableLine(const std::string& variable, const _varinfo& info, unsigned rows) {
  std::size_t missing = 0;
  std::size_t texts = 0;
  double min = HUGE_VAL;
  double max = -HUGE_VAL;
  bool hasNumbers = false;
  auto next = info.strings->begin();
  for (unsigned row = 0; row < rows; ++row) {
    if (next != info.strings->end() && next->first == row) {
      ++next;
      ++texts;
      continue;
    }
    const double value = info.bag->values[row];
    if (value == VarDataProcessor::systemMissing) {
      ++missing;
    } else {
      hasNumbers = true;
      min = std::min(min, value);
      max = std::max(max, value);
    }
  }
  std::string line = "  variable name=" + word(variable) + " missing=" + std::to_string(missing);
  if (texts > 0) line += " texts=" + std::to_string(texts);
  if (hasNumbers && min <= max) line += " min=" + numberText(min) + " max=" + numberText(max);
  return line + '\n';
}

std::string reportOf(const Job& job, const std::string& file, VarDataProcessor& store) {
  std::string report = "data " + word(file) + '\n';
  for (const std::string& source : sourcesOf(job, file, store)) {
    std::vector<std::string> variables;
    store.GetVariableNames(source, variables);
    const unsigned rows = store.GetRowCount(source);
    report += "source id=" + word(source) + " rows=" + std::to_string(rows) +
              " variables=" + std::to_string(variables.size()) + '\n';
    for (const std::string& variable : variables) {
      _varinfo info;
      if (store.FindVariable(source, variable, info)) report += variableLine(variable, info, rows);
    }
  }
  return report;
}

// ---- writing

// "file: source 'a', row 3, 'x': ", counted from 1.
std::string placeOf(const std::string& file, const std::string& source, unsigned row,
                    const std::string& variable) {
  return file + ": source '" + escaped(source) + "', row " + std::to_string(row + 1) + ", '" +
         escaped(variable) + "': ";
}

bool isXmlText(const std::string& text) {
  if (std::ranges::any_of(text, [](char c) {
        return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r';
      })) {
    return false;
  }
  std::u16string wide;
  std::string again;
  TAVOMBGenericToU16(nullptr, wide, text);
  TAVOMBU16ToGeneric(nullptr, again, wide);
  return again == text && wide.find_first_of(u"\xFFFE\xFFFF") == wide.npos;
}

// Texts of a stream, which may hold any bytes.
void requireWritableTexts(const std::string& file, const std::string& source,
                          const std::string& variable, VarDataProcessor& store) {
  _varinfo info;
  if (!store.FindVariable(source, variable, info)) return;
  std::size_t blank = 0;
  unsigned firstBlank = 0;
  for (const auto& [row, index] : *info.strings) {
    if (index >= store.stringTable.size()) continue;
    const std::string& text = store.stringTable[index].text;
    if (!isXmlText(text)) {
      throw Failure(placeOf(file, source, row, variable) + "no document has the text '" +
                    escaped(text) + "'");
    }
    if (text.empty() || text.find_first_not_of(" \t\r\n") != text.npos) continue;
    if (blank++ == 0) firstBlank = row;
  }
  if (blank == 0) return;
  complain(placeOf(file, source, firstBlank, variable) +
           "a text of blanks is a missing cell of the document" +
           (blank > 1 ? ", as are " + std::to_string(blank - 1) + " more" : ""));
}

// What is cut in a stream.
void requireShortNames(const std::string& file, const std::vector<std::string>& sources,
                       const VarDataProcessor& store) {
  constexpr std::size_t longestSource = 64;
  constexpr std::size_t longestVariable = 287;
  const auto require = [&](const char* kind, const std::string& name, std::size_t longest) {
    if (name.size() <= longest) return;
    throw Failure(file + ": no stream has a " + kind + " of more than " + std::to_string(longest) +
                  " bytes: '" + escaped(name) + "'");
  };
  for (const std::string& source : sources) {
    require("source", source, longestSource);
    std::vector<std::string> variables;
    store.GetVariableNames(source, variables);
    for (const std::string& variable : variables) require("variable", variable, longestVariable);
  }
}

// What no document can hold as it is.
void requireWritable(const std::string& file, const std::vector<std::string>& sources,
                     VarDataProcessor& store) {
  for (const std::string& source : sources) {
    if (source.find_first_of("<\"") != source.npos) {
      throw Failure(file + ": no document has a source '" + escaped(source) + "'");
    }
    std::vector<std::string> variables;
    store.GetVariableNames(source, variables);
    for (const std::string& variable : variables) {
      if (variable.find(';') != variable.npos) {
        throw Failure(file + ": no document has a variable '" + escaped(variable) +
                      "', since ';' separates names");
      }
      requireWritableTexts(file, source, variable, store);
    }
  }
}

std::string documentOf(const std::string& file, VarDataProcessor& store) {
  std::string text;
  if (!XmlDataHandler::WriteStore(store, text)) {
    throw Failure(file + ": is too much for a document of " +
                  std::to_string(zlib1211tavo::getInflateLimit() >> 20) + " MiB");
  }
  return text;
}

std::string streamOf(const std::string& file, VarDataProcessor& store) {
  unsigned size = 0;
  const std::unique_ptr<unsigned char[]> stream(store.WriteStream(size));
  if (!stream) throw Failure(file + ": is too much for a stream");
  return {reinterpret_cast<const char*>(stream.get()), size};
}

// A file name for a source: what a path or a shell takes for something else stands as %XX.
std::string fileNameOf(const std::string& source) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string name;
  for (const char c : source) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isPlain = byte > ' ' && byte != 0x7F && c != '/' && c != '%' && c != '\\';
    if (isPlain && !(name.empty() && (c == '.' || c == '-'))) {
      name += c;
    } else {
      name += {'%', digits[byte >> 4], digits[byte & 15]};
    }
  }
  return name + ".csv";
}

void writeTables(const Job& job, const std::vector<std::string>& sources, VarDataProcessor& store) {
  if (job.outFolder.empty()) {
    if (sources.size() != 1) {
      throw Failure(job.files[0] + ": has " + std::to_string(sources.size()) +
                    " sources; choose one with --source, or give --out-dir");
    }
    return PendingFile(job.output, csvOf(store, sources[0])).commit();
  }
  std::error_code error;
  fs::create_directories(job.outFolder, error);
  if (error) throw Failure(job.outFolder + ": " + error.message());
  for (const std::string& source : sources) {
    const fs::path path = fs::path(job.outFolder) / fileNameOf(source);
    PendingFile(path, csvOf(store, source)).commit();
  }
}

void keepOnly(const std::string& source, VarDataProcessor& store) {
  std::vector<std::string> sources;
  store.GetSourceNames(sources);
  for (const std::string& other : sources) {
    if (other == source) continue;
    std::vector<std::string> variables;
    store.GetVariableNames(other, variables);
    for (const std::string& variable : variables) store.DeleteColumn(other, variable);
    store.stringMaps.erase(other);
    store.sources.erase(other);
  }
}

void convert(const Job& job) {
  VarDataProcessor store;
  for (const std::string& file : job.files) readFileInto(job, file, store);
  const std::string& file = job.files[0];
  const std::vector<std::string> sources = sourcesOf(job, file, store);
  if (job.form == "csv") return writeTables(job, sources, store);
  if (!job.source.empty()) keepOnly(job.source, store);
  Progress progress;
  progress.say("writing " + job.output);
  std::string result;
  if (job.form == "stream") {
    requireShortNames(file, sources, store);
    result = streamOf(file, store);
  } else {
    requireWritable(file, sources, store);
    result = documentOf(file, store);
    if (job.isCompressed && !zlib1211tavo::compressString(result, result)) {
      throw Failure(file + ": can't be compressed");
    }
  }
  progress.say("");
  PendingFile(job.output, std::move(result)).commit();
}

}  // namespace

int runData(int argc, char** argv) {
  const Job job = readJob(argc, argv);
  if (!job.form.empty()) {
    convert(job);
    return exitDone;
  }
  return forEachFile(job.files, [&](const std::string& file) {
    VarDataProcessor store;
    readFileInto(job, file, store);
    writeOutput(reportOf(job, file, store));
  });
}

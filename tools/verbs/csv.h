// Tables as CSV (RFC 4180), the names of the variables in the first line.
#ifndef CHARTXML_TOOLS_CSV_H
#define CHARTXML_TOOLS_CSV_H

#include <string>

class Progress;
class VarDataProcessor;

// Adds a table as a source of the store. Fields that are finite decimal numbers become numbers,
// blank ones missing cells, and others texts; so do all of a column with codes in it
// (VarDataProcessor::SpellingOf). Lines may end with LF alone. Throws a Failure with the line, and
// `file` for its name, when the table isn't one, or holds what isn't UTF-8 or no document can hold.
void readCsv(const std::string& file, const std::string& text, const std::string& source,
             VarDataProcessor& store);

// True for a file whose name is that of a table: *.csv.
bool isTable(const std::string& file);

// The name of the source that a table becomes: that of the file without its extension, "data" for
// standard input.
std::string sourceNameOf(const std::string& file);

// Throws a Failure for a name that no source of a document can have.
void requireSourceName(const std::string& file, const std::string& name);

// The table of a source. Its lines end with CR LF.
std::string csvOf(VarDataProcessor& store, const std::string& source);

#endif

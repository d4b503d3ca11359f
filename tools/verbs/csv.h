// Tables as CSV (RFC 4180), the names of the variables in the first line.
#ifndef CHARTXML_TOOLS_CSV_H
#define CHARTXML_TOOLS_CSV_H

#include <string>

class Progress;
class VarDataProcessor;

// Adds a table as a source of the store. Fields that are finite decimal numbers become numbers,
// empty ones missing cells, and others texts. Lines may end with LF alone. Throws a Failure with
// the line, and `file` for its name, when the table isn't one, or holds what isn't UTF-8 or no
// document can hold.
void readCsv(const std::string& file, const std::string& text, const std::string& source,
             VarDataProcessor& store);

// The table of a source. Its lines end with CR LF.
std::string csvOf(VarDataProcessor& store, const std::string& source);

#endif

// The scanner of data documents. XmlDataHandler tells the rules.
#ifndef CHARTXML_XMLDATAREADER_H
#define CHARTXML_XMLDATAREADER_H

#include <string>
#include <string_view>
#include <vector>

#include "xmldatahandler.h"

namespace xmldata {

enum class Form { Current, Older };

Form formOf(std::string_view xml);

// Adds the sources of a plain document to the store; answers their number. Throws a
// XmlDataHandler::Problem for a text that breaks the rules.
std::size_t read(std::string_view xml, Form form, VarDataProcessor& store,
                 XmlDataHandler::Keep keep);

// The rows in front of the first end tag of a source; 0 when there is none.
unsigned countRows(std::string_view text, Form form);

// What stands in front of the next double quote; empty without one.
std::string_view quotedName(std::string_view text);

// Stores the row that the text starts with, up to where it breaks the rules. Names are those of the
// current form, and not looked at in the older one. Throws when memory passes the limit.
void readRow(std::string_view text, Form form, VarDataProcessor& store, const std::string& source,
             const std::vector<std::string>& names, unsigned row);

}  // namespace xmldata

#endif

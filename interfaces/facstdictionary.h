// FacSTDictionary: the words that charts show to users, by key.
#ifndef CHARTXML_FACSTDICTIONARY_H
#define CHARTXML_FACSTDICTIONARY_H

#include <map>
#include <string>

#include "export.h"

// The string tables of one language are text files in its folder, one for each procedure:
// resources/<language>/<procedure in lower case>.txt, in UTF-8. A line is a key, a tab and the text
// for it:
//
//   # a comment
//   @codepage CP1251
//   Total<tab>Всего
//
// In a text `\s` is a blank, for the ends of lines where an editor would strip it; any other
// backslash is the text's own. An entry may hold further texts behind further tabs. The line
// `@codepage` names the encoding in which the texts are answered, UTF-8 without it; charts read
// them in the page of their language, CP1252 for one that has no other. Empty lines and lines
// without a tab are passed over, and of several entries for a key the first counts.
//
// Nothing fails: a key without an entry is answered by the key itself, and a table that is missing,
// or larger than a megabyte, has no entries. A file is read at the first look-up after its
// selection; a dictionary is cheap to make and to throw away.
class CHARTXML_API FacSTDictionary {
 public:
  // A language's folder, such as PathFactory::getLanguageResourcePath(), with or without a
  // separator at the end. The table of "GRAPH" is selected.
  explicit FacSTDictionary(const std::string& path);

  void SetProcedure(const std::string& name);

  // In the code page of the language; what that lacks is '?'. `position` chooses among the texts of
  // an entry, from 0, and beyond the last it is the first one.
  std::string LookUp(const std::string& key, int position = 0);

 private:
  void load();
  void addLine(const std::string& line);

  std::string path_;
  std::string procedure_;
  bool isLoaded_ = false;
  std::string codePage_;
  std::map<std::string, std::string> entries_;  // as in the file
};

#endif

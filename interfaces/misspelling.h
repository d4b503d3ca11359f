// Which of several names a word is a misspelling of.
#ifndef CHARTXML_MISSPELLING_H
#define CHARTXML_MISSPELLING_H

#include <string>
#include <vector>

#include "export.h"

namespace misspelling {

// The nearest of the names, whatever the case of letters: at most three letters, and no more than a
// third of the word's, are inserted, left out, replaced or exchanged with their neighbour. Null
// without one; else it is one of `names`.
CHARTXML_API const std::string* meantBy(const std::string& word,
                                        const std::vector<std::string>& names);

// "; did you mean 'NAME'?", to stand behind a message; empty without a name.
CHARTXML_API std::string suggestion(const std::string* name);
CHARTXML_API std::string suggestion(const std::string& word, const std::vector<std::string>& names);

}  // namespace misspelling

#endif

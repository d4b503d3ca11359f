// The grammars that the schemas gave when the library was built. They are a part of its own file,
// so that there is nothing to install, to lose or to tamper with; to take them from there costs a
// sixth of reading the schemas.
#ifndef CHARTXML_STOREDGRAMMARS_H
#define CHARTXML_STOREDGRAMMARS_H

#include <memory>
#include <string>
#include <string_view>

#include "grammarpool.h"

namespace storedgrammars {

// A pool like that of grammarpool::read(), which may be locked. Null, and the schemas are to be
// read, when those in the folder aren't the very ones, byte by byte; when the parser library keeps
// grammars in another way than the one it was built with; and where none are linked.
std::unique_ptr<grammarpool::Grammars> read(grammarpool::Kind kind, const std::string& folder);

// What embedded() answers: the files of the schemas, each with its text, and the grammars. Empty
// when they can't be read.
std::string write(grammarpool::Kind kind, const std::string& folder);

// What is linked. In the program that writes it, that is nothing; see embedded/grammars.cpp.
std::string_view embedded(grammarpool::Kind kind);

}  // namespace storedgrammars

#endif

// The schemas that all parsers of the process share while there is at least one ChartBase.
#ifndef CHARTXML_GRAMMARPOOL_H
#define CHARTXML_GRAMMARPOOL_H

#include <memory>
#include <set>
#include <string>
#include <string_view>

#include <xercesc/framework/XMLGrammarPoolImpl.hpp>

namespace grammarpool {

// Each ChartBase holds the pools while it lives; the last one frees them.
void hold();
void drop();

// Templates have schemas apart from those of charts: one of their namespaces is that of data
// documents. Those of version 3 are in another namespace. Those of trees are tree models and their
// display documents. None has no schemas.
enum class Kind { Charts, Templates, NewerTemplates, Trees, None };

// A pool without the parser library's model of the schemas: nobody here asks for it, and to make it
// takes as long as to parse several charts.
class Grammars : public xercesc::XMLGrammarPoolImpl {
  void createXSModel() override {}
};

// The locked pool over the schemas of that kind in the installation's folder, made by the first
// call for that folder. Null for None, when nobody holds the pools or the schemas can't be read.
// This and read() throw std::bad_alloc for lack of memory, which leaves nothing behind.
xercesc::XMLGrammarPool* shared(Kind kind);

// True for a document that a parser with this pool may read with the pool's schemas: its root is of
// one of them and names just that one, so that it makes no difference to reading the schema anew;
// but for display documents of the namespace /treeview, which the schema's file alone doesn't know.
bool serves(Kind kind, const xercesc::XMLGrammarPool* pool, std::string_view text);

// Reads the schemas of that kind into a pool that may be locked; null when they can't be read. With
// `files`, adds their names.
std::unique_ptr<Grammars> read(Kind kind, const std::string& folder,
                               std::set<std::string>* files = nullptr);

// Display documents come in two namespaces, and a schema is of one: the text of the schema's file
// with the one in the place of the other. Empty when there is no file.
std::string otherDisplaySchema(const std::string& folder);

// Which of the two kinds may serve a template.
Kind ofTemplate(std::string_view text);

}  // namespace grammarpool

#endif

// ParserMemory: the memory of one parser and its documents.
#ifndef CHARTXML_PARSERMEMORY_H
#define CHARTXML_PARSERMEMORY_H

#include <xercesc/framework/MemoryManager.hpp>

// Frees in the end whatever is still allocated: a parse that fails in the middle, and the parser's
// reading of an external document type, lose blocks that nobody else would free.
class ParserMemory : public xercesc::MemoryManager {
 public:
  ParserMemory() = default;
  ParserMemory(const ParserMemory&) = delete;
  ParserMemory& operator=(const ParserMemory&) = delete;
  ~ParserMemory() override;

  void* allocate(XMLSize_t size) override;
  void deallocate(void* block) override;
  // Exceptions may outlive the parser.
  xercesc::MemoryManager* getExceptionMemoryManager() override;

 private:
  // In front of each block, 16 bytes long so that blocks stay aligned; all are in one ring.
  struct Header {
    Header* previous = this;
    Header* next = this;
  };

  Header ring_;
};

#endif

// ParserMemory: the memory of one parser and its documents.
#ifndef CHARTXML_PARSERMEMORY_H
#define CHARTXML_PARSERMEMORY_H

#include <algorithm>
#include <cstddef>
#include <limits>

#include <xercesc/framework/MemoryManager.hpp>

// Frees in the end whatever is still allocated: a parse that fails in the middle, and the parser's
// reading of an external document type, lose blocks that nobody else would free.
class ParserMemory : public xercesc::MemoryManager {
 public:
  // Thrown through the parser by an allocation that passes a bound. Not the parser library's own
  // exception for lack of memory: behind that a parser is of no further use.
  struct Exceeded {
    const XMLCh* reason = u"the document type costs too much";
  };

  ParserMemory() = default;
  ParserMemory(const ParserMemory&) = delete;
  ParserMemory& operator=(const ParserMemory&) = delete;
  ~ParserMemory() override;

  // From now on no more than so many bytes beyond what is in use.
  void boundBytes(std::size_t bytes) { mostBytes_ = bytes_ + bytes; }
  // From now on, beyond so many bytes more, there is no memory: the machine may give out more than
  // it has, and end the process later.
  void boundRoom(std::size_t bytes) { room_ = bytes_ + std::min(bytes, unbound - bytes_); }
  // From now on no more readers of texts than that: the parser makes one for each reference to an
  // entity, and tells nobody of those in declarations and defaults.
  void boundReaders(std::size_t count) { mostReaders_ = readers_ + count; }
  void unboundReaders() { mostReaders_ = unbound; }
  void unbind();

  std::size_t bytes() const { return bytes_; }

  // To be told when the parser goes. Releasing a document takes a little memory: where there is no
  // other, that comes out of this object.
  void endsNow() { isEnding_ = true; }

  void* allocate(XMLSize_t size) override;
  void deallocate(void* block) override;
  // Exceptions may outlive the parser.
  xercesc::MemoryManager* getExceptionMemoryManager() override;

 private:
  static constexpr std::size_t unbound = std::numeric_limits<std::size_t>::max();

  // In front of each block; all are in one ring.
  struct Header {
    Header* previous;
    Header* next;
    std::size_t size;
    std::size_t unused;  // so that blocks stay aligned
  };
  static_assert(sizeof(Header) % alignof(std::max_align_t) == 0);

  void* reserve(std::size_t size);

  Header ring_{&ring_, &ring_, 0, 0};
  std::size_t bytes_ = 0;  // in use
  std::size_t mostBytes_ = unbound;
  std::size_t room_ = unbound;
  std::size_t readers_ = 0;  // made so far
  std::size_t mostReaders_ = unbound;
  bool isEnding_ = false;
  bool isReserveTaken_ = false;
  // For one block at a time. The parser library itself aligns objects no better than this.
  alignas(Header) std::byte reserve_[256];
};

#endif

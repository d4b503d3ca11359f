#include "parsermemory.h"

#include <new>

#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

using namespace xercesc;

namespace {

// A reader is by far the largest object of the parser's. In front of it the parser keeps a pointer.
bool isReader(XMLSize_t size) {
  return size >= sizeof(XMLReader) && size <= sizeof(XMLReader) + alignof(std::max_align_t);
}

}  // namespace

ParserMemory::~ParserMemory() {
  while (ring_.next != &ring_) deallocate(ring_.next + 1);
}

void ParserMemory::unbind() {
  mostBytes_ = room_ = unbound;
  unboundReaders();
}

void* ParserMemory::allocate(XMLSize_t size) {
  if (bytes_ > mostBytes_ || size > mostBytes_ - bytes_) throw Exceeded();
  if (bytes_ > room_ || size > room_ - bytes_) throw OutOfMemoryException();
  if (isReader(size) && ++readers_ > mostReaders_) throw Exceeded();
  void* memory = ::operator new(sizeof(Header) + size, std::nothrow);
  if (!memory) memory = reserve(sizeof(Header) + size);
  auto* header = new (memory) Header{&ring_, ring_.next, size, 0};
  bytes_ += size;
  ring_.next->previous = header;
  ring_.next = header;
  return header + 1;
}

void* ParserMemory::reserve(std::size_t size) {
  if (!isEnding_ || isReserveTaken_ || size > sizeof reserve_) throw OutOfMemoryException();
  isReserveTaken_ = true;
  return reserve_;
}

void ParserMemory::deallocate(void* block) {
  if (!block) return;
  auto* header = static_cast<Header*>(block) - 1;
  bytes_ -= header->size;
  header->previous->next = header->next;
  header->next->previous = header->previous;
  if (static_cast<void*>(header) == reserve_) {
    isReserveTaken_ = false;
  } else {
    ::operator delete(header);
  }
}

MemoryManager* ParserMemory::getExceptionMemoryManager() {
  return XMLPlatformUtils::fgMemoryManager;
}

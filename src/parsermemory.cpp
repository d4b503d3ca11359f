#include "parsermemory.h"

#include <new>

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

using namespace xercesc;

ParserMemory::~ParserMemory() {
  while (ring_.next != &ring_) deallocate(ring_.next + 1);
}

void* ParserMemory::allocate(XMLSize_t size) {
  void* memory = ::operator new(sizeof(Header) + size, std::nothrow);
  if (!memory) throw OutOfMemoryException();
  auto* header = new (memory) Header{&ring_, ring_.next};
  ring_.next->previous = header;
  ring_.next = header;
  return header + 1;
}

void ParserMemory::deallocate(void* block) {
  if (!block) return;
  auto* header = static_cast<Header*>(block) - 1;
  header->previous->next = header->next;
  header->next->previous = header->previous;
  ::operator delete(header);
}

MemoryManager* ParserMemory::getExceptionMemoryManager() {
  return XMLPlatformUtils::fgMemoryManager;
}

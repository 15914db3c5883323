#pragma once

#include <cstdlib>
#include <new>
#include <pugixml.hpp>

namespace support {

/// While it lives, the XML parser takes its memory from the operator new: it is counted, and fails in its turn.
class CountedParser {
 public:
  CountedParser() { pugi::set_memory_management_functions(&Allocate, &Free); }
  ~CountedParser() { pugi::set_memory_management_functions(&std::malloc, &std::free); }
  CountedParser(const CountedParser&) = delete;
  CountedParser& operator=(const CountedParser&) = delete;

 private:
  static void* Allocate(std::size_t size) { return ::operator new(size, std::nothrow); }
  static void Free(void* memory) { ::operator delete(memory); }
};

}  // namespace support

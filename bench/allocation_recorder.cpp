#include "bench/allocation_recorder.h"

#include <cstdint>
#include <cstdlib>
#include <new>
#include <unordered_map>

namespace {

constexpr std::size_t kReleased = SIZE_MAX;

// The log does not use the heap operators that it watches. Plain numbers: the operators run before main and after it.
bench::Block* entries = nullptr;
std::size_t entryCount = 0;
std::size_t capacity = 0;
bool recording = false;
long allocations = 0;

void Grow() {
  capacity = capacity == 0 ? 1 << 16 : capacity * 2;
  void* const grown = std::realloc(entries, capacity * sizeof(bench::Block));
  if (grown == nullptr) std::abort();
  entries = static_cast<bench::Block*>(grown);
}

void WriteDown(void* address, std::size_t size) {
  if (entryCount == capacity) Grow();
  entries[entryCount++] = {static_cast<std::byte*>(address), size};
}

void* Allocate(std::size_t size) {
  void* const address = std::malloc(size == 0 ? 1 : size);
  if (address == nullptr) throw std::bad_alloc();
  ++allocations;
  if (recording) WriteDown(address, size);
  return address;
}

void Release(void* address) {
  if (recording && address != nullptr) WriteDown(address, kReleased);
  std::free(address);
}

}  // namespace

namespace bench {

long AllocationCount() { return allocations; }

AllocationRecorder::AllocationRecorder() {
  entryCount = 0;
  recording = true;
}

AllocationRecorder::~AllocationRecorder() {
  recording = false;
  std::free(entries);
  entries = nullptr;
  entryCount = capacity = 0;
}

std::vector<Block> AllocationRecorder::LiveBlocks() {
  recording = false;
  std::unordered_map<std::byte*, std::size_t> living;  // address to its place in the log
  for (std::size_t i = 0; i < entryCount; ++i) {
    if (entries[i].size != kReleased) {
      living[entries[i].address] = i;
    } else if (const auto allocated = living.find(entries[i].address); allocated != living.end()) {
      entries[allocated->second].size = kReleased;
      living.erase(allocated);
    }
  }
  std::vector<Block> blocks;
  for (std::size_t i = 0; i < entryCount; ++i) {
    if (entries[i].size != kReleased) blocks.push_back(entries[i]);
  }
  return blocks;
}

std::vector<const std::byte*> AllocationRecorder::Releases() {
  recording = false;
  std::vector<const std::byte*> addresses;
  for (std::size_t i = 0; i < entryCount; ++i) {
    if (entries[i].size == kReleased) addresses.push_back(entries[i].address);
  }
  return addresses;
}

}  // namespace bench

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* address) noexcept { Release(address); }
void operator delete[](void* address) noexcept { Release(address); }
void operator delete(void* address, std::size_t) noexcept { Release(address); }
void operator delete[](void* address, std::size_t) noexcept { Release(address); }

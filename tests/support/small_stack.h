#pragma once

#include <pthread.h>

#include <cstddef>
#include <stdexcept>

namespace support {

/// Runs `work` in a thread with as little stack as a system gives threads by default: 128 KiB.
template <typename Work>
void RunWithSmallStack(Work work) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, std::size_t{128} << 10);
  const auto run = [](void* argument) -> void* {
    (*static_cast<Work*>(argument))();
    return nullptr;
  };
  pthread_t thread = {};
  const int failed = pthread_create(&thread, &attributes, run, &work);
  pthread_attr_destroy(&attributes);
  if (failed != 0) throw std::runtime_error("no thread");
  pthread_join(thread, nullptr);
}

}  // namespace support

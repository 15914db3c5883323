#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace tool {

/// Tells a person who waits which of several files is being loaded: once a second has passed, and one line at most, which is
/// gone at the end.
class Progress {
 public:
  using Write = std::function<void(const std::string& text)>;
  using Now = std::function<std::chrono::steady_clock::time_point()>;

  /// The time starts to run. `write` puts text on the person's terminal; empty where there is none.
  Progress(std::size_t files, Write write, Now now = std::chrono::steady_clock::now);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Next(const std::string& file);  ///< The next of the files is loaded from now on.
  void Show(const std::string& line);  ///< Another line, once a second has passed.

 private:
  void Erase();

  std::size_t files_;
  std::size_t file_ = 0;
  std::size_t width_ = 0;  // of the text in the line
  Write write_;
  Now now_;
  std::chrono::steady_clock::time_point start_;
};

}  // namespace tool

#pragma once

#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

/// \file
/// Runs the built command as a user would: arguments and standard input in, exit code and both outputs back.

namespace run_tool_detail {

/// The tests do not read the descriptions of the user who runs them.
inline const bool kNoOwnDescriptions =
    unsetenv("PLDDB_PATH") == 0 && setenv("XDG_CONFIG_HOME", "/nonexistent", 1) == 0;  // NOLINT(concurrency-mt-unsafe)

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// A temporary file without a name: unlike a pipe, it takes any amount without a reader.
inline File TemporaryFile(const std::string& content) {
  File file(std::tmpfile(), std::fclose);
  if (file == nullptr) throw std::runtime_error("no temporary file");
  std::fwrite(content.data(), 1, content.size(), file.get());
  std::rewind(file.get());
  return file;
}

inline std::string Content(std::FILE* file) {
  std::string content;
  std::rewind(file);
  for (int c; (c = std::fgetc(file)) != EOF;) content += static_cast<char>(c);
  return content;
}

/// Starts the program with the three files as its standard streams.
inline pid_t Start(const std::vector<std::string>& command, const int (&streams)[3]) {
  std::vector<char*> argv;
  for (const std::string& word : command) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (int i = 0; i < 3; ++i) posix_spawn_file_actions_adddup2(&actions, streams[i], i);
  pid_t child = 0;
  const int failed = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failed != 0) throw std::runtime_error("cannot run " + command[0]);
  return child;
}

inline int WaitFor(pid_t child) {
  int status = 0;
  if (waitpid(child, &status, 0) != child) throw std::runtime_error("a program was lost");
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace run_tool_detail

struct ToolRun {
  int exitCode;  ///< 128 + the signal when one ended the program.
  std::string out;
  std::string err;
};

/// Runs `program` with `arguments`; `input` is its standard input.
inline ToolRun RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                          const std::string& input = "") {
  std::vector<std::string> command = {program};
  command.insert(command.end(), arguments.begin(), arguments.end());
  const auto in = run_tool_detail::TemporaryFile(input);
  const auto out = run_tool_detail::TemporaryFile("");
  const auto err = run_tool_detail::TemporaryFile("");
  const int code =
      run_tool_detail::WaitFor(run_tool_detail::Start(command, {fileno(in.get()), fileno(out.get()), fileno(err.get())}));
  return {code, run_tool_detail::Content(out.get()), run_tool_detail::Content(err.get())};
}

/// Runs the plddb of this build.
inline ToolRun RunTool(const std::vector<std::string>& arguments, const std::string& input = "") {
  return RunProgram(PLDDB_TOOL, arguments, input);
}

/// `text` without the line ends of wrapped sentences: the lines that continue one are indented by 4.
inline std::string Unwrapped(std::string text) {
  for (std::size_t at = 0; (at = text.find("\n    ", at)) != text.npos;) text.replace(at, 5, " ");
  return text;
}

/// `text` with one blank for each gap: a table is compared without its layout, which depends on the length of a path.
inline std::string OneBlankEach(const std::string& text) {
  std::string words;
  for (const char c : text) {
    if (c != ' ' && c != '\n')
      words += c;
    else if (!words.empty() && words.back() != ' ')
      words += ' ';
  }
  return words;
}

/// Where the word that starts at `start` ends. The path of these sources is never cut, whatever is in it.
inline std::size_t EndOfWord(const std::string& line, std::size_t start) {
  static const std::string kSources = PLDDB_SOURCE_DIR;
  std::size_t end = line.find(' ', start);
  for (std::size_t path = line.find(kSources, start); path < end; path = line.find(kSources, path + 1)) {
    end = line.find(' ', path + kSources.size());
  }
  return end;
}

/// The words of `line` between blanks, for tables of test cases; '...' is one word.
inline std::vector<std::string> Words(const std::string& line) {
  std::vector<std::string> words;
  for (std::size_t start = 0; (start = line.find_first_not_of(' ', start)) != line.npos;) {
    const bool isQuoted = line[start] == '\'';
    if (isQuoted) ++start;
    const std::size_t end = isQuoted ? line.find('\'', start) : EndOfWord(line, start);
    words.push_back(line.substr(start, end - start));
    start = end == line.npos ? end : end + 1;
  }
  return words;
}

/// The words of a table, in order: a path of a certain length moves words of other cells to lines of their own.
inline std::vector<std::string> SortedWords(const std::string& table) {
  std::vector<std::string> words = Words(OneBlankEach(table));
  std::sort(words.begin(), words.end());
  return words;
}

#pragma once

#include <pty.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "run_tool.h"

/// \file
/// Runs the built command at a terminal.

enum class AtTerminal { kOutput, kMessages };  ///< Which stream is the terminal; the other one is a file.

/// What a terminal is sent by `command`, which is found by its whole path; line ends as "\n".
inline std::string SentToTerminal(const std::vector<std::string>& command, AtTerminal stream) {
  int terminal = -1;
  int programSide = -1;
  if (openpty(&terminal, &programSide, nullptr, nullptr, nullptr) != 0) throw std::runtime_error("no terminal");
  const auto in = run_tool_detail::TemporaryFile("");
  const auto other = run_tool_detail::TemporaryFile("");
  const bool isOutput = stream == AtTerminal::kOutput;
  const pid_t child = run_tool_detail::Start(
      command, {fileno(in.get()), isOutput ? programSide : fileno(other.get()), isOutput ? fileno(other.get()) : programSide});
  close(programSide);
  std::string sent;
  for (char c; read(terminal, &c, 1) == 1;) {  // ends with an error once the other side is closed
    if (c != '\r') sent += c;
  }
  close(terminal);
  run_tool_detail::WaitFor(child);
  return sent;
}

/// The same for the plddb of this build, in an environment that has `variables` ("TERM=xterm") set.
inline std::string ToolAtTerminal(const std::vector<std::string>& variables, const std::vector<std::string>& arguments,
                                  AtTerminal stream) {
  std::vector<std::string> command = {"/usr/bin/env", "-u", "NO_COLOR"};
  command.insert(command.end(), variables.begin(), variables.end());
  command.push_back(PLDDB_TOOL);
  command.insert(command.end(), arguments.begin(), arguments.end());
  return SentToTerminal(command, stream);
}

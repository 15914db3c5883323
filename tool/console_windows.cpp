#include "console.h"

// The order matters.
#include <windows.h>
// The others need it.
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdlib>

#include "Files.h"

namespace tool {
namespace {

UINT formerCodePage = 0;

void RestoreCodePage() { SetConsoleOutputCP(formerCodePage); }

HANDLE HandleOf(int descriptor) { return GetStdHandle(descriptor == kOutput ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE); }

}  // namespace

/// The arguments of main are in a code page that lacks most characters.
std::vector<std::string> StartConsole(int /*argc*/, char** /*argv*/) {
  for (const int descriptor : {0, kOutput, kMessages}) _setmode(descriptor, _O_BINARY);
  if (IsTerminal(kOutput) || IsTerminal(kMessages)) {
    formerCodePage = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    std::atexit(RestoreCodePage);
  }
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(plddb::ToUtf8(words[i]));
  LocalFree(words);
  return arguments;
}

bool IsTerminal(int descriptor) {
  DWORD mode = 0;
  return GetConsoleMode(HandleOf(descriptor), &mode) != 0;
}

bool IsColourTerminal(int descriptor) {
  DWORD mode = 0;
  const HANDLE console = HandleOf(descriptor);
  return plddb::Environment("TERM") != "dumb" && GetConsoleMode(console, &mode) != 0 &&
         SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

}  // namespace tool

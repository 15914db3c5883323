// Limits of input, and of the memory that a command takes.

#include <gtest/gtest.h>

#include <string>

#include "run_tool.h"

namespace {

const std::string kData = PLDDB_DATA_DIR;

TEST(Bounds, AnEndlessScanEndsWithAMessage) {
  const ToolRun run = RunTool({"identify", "--db", kData + "/xilinx.xml", "--scan", "/dev/zero"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.err, "/dev/zero:1:1: error: cannot read the file: larger than 64 MiB\n");
  const ToolRun input = RunProgram("/bin/sh", {"-c", "exec \"$0\" identify --scan - < /dev/zero", PLDDB_TOOL});
  EXPECT_EQ(input.exitCode, 2);
  EXPECT_EQ(input.err, "plddb: error: cannot read standard input: larger than 64 MiB\n");
}

TEST(Bounds, AnEndlessDescriptionEndsWithAMessage) {
  for (const char* const command : {"list --db", "check", "export", "find x --db", "show x --db"}) {
    const ToolRun run = RunProgram("/bin/sh", {"-c", "exec \"$0\" " + std::string(command) + " /dev/zero", PLDDB_TOOL});
    EXPECT_EQ(run.exitCode, 2) << "row: " << command;
    EXPECT_NE((run.out + run.err).find("larger than 64 MiB"), std::string::npos) << "row: " << command << "\n" << run.err;
  }
}

#if defined(__has_feature)  // clang's word for what g++ defines macros
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define PLDDB_IS_SANITIZED
#endif
#endif
// The sanitizers need more address space than any limit.
#if !defined(PLDDB_IS_SANITIZED) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(Bounds, RunningOutOfMemoryIsReportedInEveryForm) {
  const std::string folder = kData;
  for (const char* const command : {"show XC9572XL --json --db", "list --json --db", "find XC9572XL --json --db",
                                    "check --json", "check --format sarif", "identify 0x59604093 --json --db"}) {
    int told = 0;
    for (int kilobytes = 8400; kilobytes < 14000; kilobytes += 400) {
      const std::string limit = "ulimit -v " + std::to_string(kilobytes) + " && exec \"$0\" ";
      if (RunProgram("/bin/sh", {"-c", limit + "--version", PLDDB_TOOL}).exitCode != 0) continue;  // it does not even start
      const std::string line = limit + command + " \"$1\"";
      const ToolRun run = RunProgram("/bin/sh", {"-c", line, PLDDB_TOOL, folder + "/xilinx.xml"});
      // The C++ runtime itself: it found no memory even for an exception.
      if (run.err.find("terminate called without an active exception") != std::string::npos) continue;
      told += run.exitCode == 2 ? 1 : 0;
      EXPECT_TRUE(run.exitCode == 0 || run.exitCode == 2) << "row: " << line << ": " << run.exitCode << "\n" << run.err;
    }
    EXPECT_GT(told, 0) << "row: " << command;
  }
}
#endif

}  // namespace

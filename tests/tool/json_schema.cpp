#include "json_schema.h"

#include "run_tool.h"

std::string SchemaFaults(const std::string& schema, const std::string& text) {
  const std::string folder = PLDDB_TEST_DIR "/tool/";
  const ToolRun run = RunProgram(PLDDB_PYTHON, {folder + "validate_json", folder + "data/schemas/" + schema}, text);
  if (run.exitCode == 0) return run.out;
  return run.out + run.err + "validate_json: exit code " + std::to_string(run.exitCode) + "\n";
}

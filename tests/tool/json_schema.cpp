#include "json_schema.h"

#include <nlohmann/json.hpp>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/utils/nlohmann_json_utils.hpp>
#include <valijson/validator.hpp>

std::string SchemaFaults(const std::string& schema, const std::string& text) {
  const std::string file = PLDDB_TEST_DIR "/tool/data/schemas/" + schema;
  nlohmann::json rules;
  if (!valijson::utils::loadDocument(file, rules)) return file + ": no JSON here\n";
  const nlohmann::json document = nlohmann::json::parse(text, nullptr, false);
  if (document.is_discarded()) return "not JSON: " + text + "\n";
  valijson::Schema parsed;
  valijson::SchemaParser().populateSchema(valijson::adapters::NlohmannJsonAdapter(rules), parsed);
  valijson::ValidationResults results;
  valijson::Validator().validate(parsed, valijson::adapters::NlohmannJsonAdapter(document), &results);
  std::string faults;
  for (const auto& error : results) {
    for (const std::string& step : error.context) faults += step;
    faults += ": " + error.description + "\n";
  }
  return faults;
}

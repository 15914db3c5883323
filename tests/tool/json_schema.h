#pragma once

#include <string>

/// The parts of the JSON `text` that the schema `schema` (a file of data/schemas, such as "list.json") does not allow, a line
/// for each fault; empty when it keeps to the schema. A schema or a text that cannot be read is a fault as well.
std::string SchemaFaults(const std::string& schema, const std::string& text);

#pragma once

/// \file
/// The areas that are measured. A benchmark is named AREA/SUBJECT/.../VARIANT/SIZE, and those with the same name except for
/// VARIANT does the same work: "library" is this library, "floor" the least that a machine has to do for it, "literal" the rule
/// written out step by step, "sqlite" and "sqlite-index" the same question to SQLite.

void RegisterParsers();
void RegisterLookups();
void RegisterTrees();
void RegisterMemory();
void RegisterDescriptions();

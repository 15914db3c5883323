#pragma once

/// PLDDB_EXPORT marks what the shared library shows to its clients; everything else stays hidden.
/// PLDDB_STATIC: the library is static, and nothing is exported or imported. The CMake target and the pkg-config file of a
/// static library define it for its clients; others define it themselves, which only Windows needs.
#if defined(PLDDB_STATIC)
#define PLDDB_EXPORT
#elif defined(_WIN32) && defined(PLDDB_BUILDING)
#define PLDDB_EXPORT __declspec(dllexport)
#elif defined(_WIN32)
#define PLDDB_EXPORT __declspec(dllimport)
#else
#define PLDDB_EXPORT __attribute__((visibility("default")))
#endif

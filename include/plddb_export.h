#pragma once

/// PLDDB_EXPORT marks what the shared library exports; everything else is hidden.
/// PLDDB_STATIC: the library is static, and nothing is exported or imported. The CMake target and the pkg-config file of a
/// static library define it for their users; others define it themselves, which is needed only on Windows.
#if defined(PLDDB_STATIC)
#define PLDDB_EXPORT
#elif defined(_WIN32) && defined(PLDDB_BUILDING)
#define PLDDB_EXPORT __declspec(dllexport)
#elif defined(_WIN32)
#define PLDDB_EXPORT __declspec(dllimport)
#else
#define PLDDB_EXPORT __attribute__((visibility("default")))
#endif

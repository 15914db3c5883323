#pragma once

/// PLDDB_EXPORT marks what the shared library shows to its clients; everything else stays hidden.
/// Define PLDDB_STATIC when you link the static library on Windows; elsewhere it makes no difference.
#if defined(PLDDB_STATIC)
#define PLDDB_EXPORT
#elif defined(_WIN32) && defined(PLDDB_BUILDING)
#define PLDDB_EXPORT __declspec(dllexport)
#elif defined(_WIN32)
#define PLDDB_EXPORT __declspec(dllimport)
#else
#define PLDDB_EXPORT __attribute__((visibility("default")))
#endif

#pragma once

#include <string>

#include "plddb_export.h"

/// \file
/// Free string functions. Only ASCII letters are letters, whatever the locale; bytes from 0x80 on never change.
/// Null arguments are harmless: nothing is written through a null pointer, a null `src` counts as the empty text, and a search
/// with a null argument finds nothing.

/// Copies `src` into `dst` and always writes the terminating zero; `dst` must hold the result. n = 0 copies all of `src`,
/// n > 0 its first `n` characters (all of it if it is shorter), n < 0 none. `m` has no meaning. `src` may overlap `dst`.
PLDDB_EXPORT void util_strncpy(char* dst, const char* src, int n, int m);

PLDDB_EXPORT void strupr(std::string& s);  ///< Upper-cases the letters of `s` in place.

#if defined(_WIN32) || defined(__EMSCRIPTEN__)
// The <string.h> of these platforms declares both, too. On purpose: declared as there, without import, and defined here; so
// the order of the two headers makes no difference, and the rules above hold.
extern "C" {
char* strupr(char* s);  ///< Upper-cases the letters of `s` in place, and returns it.
char* strlwr(char* s);  ///< Lower-cases the letters of `s` in place, and returns it.
}
#else
PLDDB_EXPORT void strupr(char* s);  ///< Upper-cases the letters of `s` in place.
PLDDB_EXPORT void strlwr(char* s);  ///< Lower-cases the letters of `s` in place.
#endif

/// Position in `s` of the first `sub` at or after `start`; -1 without one or if an argument is null. `flag` true compares
/// exactly, false ignores letter case. A negative `start` counts as 0; one after the end of `s` finds nothing.
PLDDB_EXPORT int FindSubString(const char* s, const char* sub, int start, bool flag);

#pragma once

#include "LObject.h"
#include "plddb_export.h"

/// The string helpers as member functions. They use their arguments only; the state of an LString does not matter.
///
/// Rules of every helper:
///  - `dst` is the caller's buffer, large enough for the result; every result is zero-terminated.
///  - Positions are 0-based, in bytes. White space is space, \\t, \\n, \\v, \\f and \\r, whatever the locale.
///  - Null: nothing is written to a null `dst` or `s`; a null `src` counts as the empty text; a search with a null argument
///    finds nothing.
class PLDDB_EXPORT LString : public LObject {
 public:
  LString();
  ~LString() override;

  /// Position of the first `c`, -1 without one. The terminating zero is not part of the text: Find(s, '\\0') is -1.
  int Find(const char* s, char c) const;

  /// Position of the first `sub` (case-sensitive), -1 without one. The empty text is found at 0.
  int Find(const char* s, const char* sub) const;

  /// Writes the first `n` characters of `src`: none for n <= 0, all if `n` exceeds its length.
  /// `dst` may be `src`, which cuts a buffer in place.
  void Left(char* dst, const char* src, int n) const;

  /// Writes the last `n` characters of `src`: none for n <= 0, all if `n` exceeds its length. `dst` may be `src`.
  void Right(char* dst, const char* src, int n) const;

  void TrimLeft(char* s) const;   ///< Removes leading white space in place.
  void TrimRight(char* s) const;  ///< Removes trailing white space in place.

 private:
  [[maybe_unused]] int reserved_ = 0;  // never read; part of the object's shape
};

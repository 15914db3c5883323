#pragma once

#include <sqlite3.h>

#include "DeviceList.h"
#include "bench/question.h"

/// \file
/// The same database in SQLite, in memory: the obvious alternative to a special library.

namespace bench {

/// Tables device and package with what lookups read, one row a record; names are compared ignoring letter case. Rows of real
/// records would be wider, and slower to scan.
class SqliteDatabase {
 public:
  explicit SqliteDatabase(const DeviceList& database);
  ~SqliteDatabase();
  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;

  sqlite3* Handle() const { return handle_; }

 private:
  sqlite3* handle_ = nullptr;
};

/// A prepared statement whose parameters :comm, :id, ... are bound to the question's members, once.
class SqliteQuery {
 public:
  SqliteQuery(const SqliteDatabase& database, const char* sql, const Question& question);
  ~SqliteQuery();
  SqliteQuery(const SqliteQuery&) = delete;
  SqliteQuery& operator=(const SqliteQuery&) = delete;

  int CountRows();  ///< Runs the statement to its end.

 private:
  void Bind(const char* parameter, const char* text);
  void Bind(const char* parameter, unsigned int number);

  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace bench

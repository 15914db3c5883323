#include "bench/sqlite_database.h"

#include <stdexcept>
#include <string>

namespace bench {
namespace {

constexpr const char* kSchema = R"(
  CREATE TABLE device (id INTEGER PRIMARY KEY, name TEXT COLLATE NOCASE, codename TEXT COLLATE NOCASE,
    alias TEXT COLLATE NOCASE, vendor TEXT, comm TEXT, isp INTEGER, jtag INTEGER, mask INTEGER, fuses INTEGER, ues INTEGER);
  CREATE TABLE package (id INTEGER PRIMARY KEY, device INTEGER, type TEXT, jdf TEXT, backuppon TEXT COLLATE NOCASE,
    aliaspon TEXT COLLATE NOCASE);
)";

constexpr const char* kIndexes = R"(
  CREATE INDEX device_name ON device (name);
  CREATE INDEX device_codename ON device (codename);
  CREATE INDEX device_alias ON device (alias);
  CREATE INDEX package_device ON package (device);
  CREATE INDEX package_backuppon ON package (backuppon);
  CREATE INDEX package_aliaspon ON package (aliaspon);
)";

void Execute(sqlite3* handle, const char* sql) {
  if (sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(handle));
}

sqlite3_stmt* Prepare(sqlite3* handle, const char* sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(handle, sql, -1, &statement, nullptr) != SQLITE_OK) {
    throw std::runtime_error(std::string(sqlite3_errmsg(handle)) + ": " + sql);
  }
  return statement;
}

void BindColumn(sqlite3_stmt* statement, int column, const char* text) {
  sqlite3_bind_text(statement, column, text, -1, SQLITE_STATIC);
}

void BindColumn(sqlite3_stmt* statement, int column, unsigned int number) { sqlite3_bind_int64(statement, column, number); }

template <typename... Values>
void Insert(sqlite3_stmt* statement, Values... values) {
  int column = 0;
  (BindColumn(statement, ++column, values), ...);
  sqlite3_step(statement);
  sqlite3_reset(statement);
}

void InsertDevices(sqlite3* handle, const DeviceList& database) {
  sqlite3_stmt* const devices = Prepare(handle, "INSERT INTO device VALUES (?,?,?,?,?,?,?,?,?,?,?)");
  sqlite3_stmt* const packages =
      Prepare(handle, "INSERT INTO package (device, type, jdf, backuppon, aliaspon) VALUES (?,?,?,?,?)");
  unsigned int id = 0;
  for (int i = 0; const FamilyList* const family = database.GetFamily(i); ++i) {
    for (int k = 0; const DeviceInfo* const device = family->GetDevice(k); ++k) {
      Insert(devices, ++id, device->GetName(), device->GetCodeName(), device->GetAliasName(), device->GetVendor(),
             device->GetComm(), device->GetispDeviceID(), device->GetjtagDeviceID(), device->GetDeviceIDScanMask(),
             device->GetFuseNumber(), device->GetPhysicalUESLength());
      for (int p = 0; const Package* const package = device->GetDevicePackage()->GetPackage(p); ++p) {
        Insert(packages, id, package->GetType(), package->GetJDF(), package->GetBackupPON(), package->GetAliasPON());
      }
    }
  }
  sqlite3_finalize(devices);
  sqlite3_finalize(packages);
}

}  // namespace

SqliteDatabase::SqliteDatabase(const DeviceList& database) {
  if (sqlite3_open(":memory:", &handle_) != SQLITE_OK) throw std::runtime_error("no SQLite database");
  Execute(handle_, kSchema);
  Execute(handle_, "BEGIN");
  InsertDevices(handle_, database);
  Execute(handle_, "COMMIT");
  Execute(handle_, kIndexes);
}

SqliteDatabase::~SqliteDatabase() { sqlite3_close(handle_); }

SqliteQuery::SqliteQuery(const SqliteDatabase& database, const char* sql, const Question& question)
    : statement_(Prepare(database.Handle(), sql)) {
  Bind(":comm", question.comm);
  Bind(":id", question.id);
  Bind(":ispId", question.ispId);
  Bind(":name", question.name);
  Bind(":codeName", question.codeName);
  Bind(":vendor", question.vendor);
  Bind(":packageType", question.packageType);
  Bind(":jdf", question.jdf);
  Bind(":pon", question.pon);
  Bind(":entityName", question.entityName);
  Bind(":rareFuseCount", question.rareFuseCount);
}

SqliteQuery::~SqliteQuery() { sqlite3_finalize(statement_); }

int SqliteQuery::CountRows() {
  int rows = 0;
  while (sqlite3_step(statement_) == SQLITE_ROW) ++rows;
  sqlite3_reset(statement_);
  return rows;
}

void SqliteQuery::Bind(const char* parameter, const char* text) {
  const int column = sqlite3_bind_parameter_index(statement_, parameter);
  if (column != 0) BindColumn(statement_, column, text);
}

void SqliteQuery::Bind(const char* parameter, unsigned int number) {
  const int column = sqlite3_bind_parameter_index(statement_, parameter);
  if (column != 0) BindColumn(statement_, column, number);
}

}  // namespace bench

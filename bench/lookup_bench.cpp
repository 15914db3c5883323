// Every lookup of a database and of a family, as a miss and as a hit in the middle.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/allocation_recorder.h"
#include "bench/areas.h"
#include "bench/fixtures.h"
#include "bench/generated_database.h"
#include "bench/literal_lookups.h"
#include "bench/lookup_floors.h"
#include "bench/question.h"
#include "bench/sqlite_database.h"

namespace {

using bench::LookupFloors;
using bench::Question;

using Strings = std::vector<std::string>;

/// What the lookups are asked of: a database of families, and all of its devices in one family.
struct Target {
  DeviceList& database;
  FamilyList& family;
  Strings candidates = {};
  Strings collected = {};
};

using Ask = int (*)(Target&, const Question&);                   // the number of devices or texts found
using AskFloor = int (*)(const LookupFloors&, const Question&);  // a position, or -1

struct Lookup {
  const char* name;
  AskFloor floor;
  Ask library;
  Ask literal;
  const char* sql;
  const char* indexedSql = nullptr;
};

int Found(const DeviceInfo* device) { return device == nullptr ? 0 : 1; }

int FindNumber(const LookupFloors& floors, const Question& question) { return floors.FindNumber(question.id); }
int FindMasked(const LookupFloors& floors, const Question& question) { return floors.FindMasked(question.id); }
int FindText(const LookupFloors& floors, const Question& question) { return floors.FindText(question.name); }
int FindPON(const LookupFloors& floors, const Question& question) { return floors.FindPackagePON(question.pon); }
int FindJDF(const LookupFloors& floors, const Question& question) { return floors.FindPackageJDF(question.jdf); }

/// For lookups that visit all devices whatever they find.
int VisitAllNumbers(const LookupFloors& floors, const Question&) { return floors.FindNumber(0); }
int VisitAllMasked(const LookupFloors& floors, const Question&) { return floors.FindMasked(0); }

/// For lookups by code name, which without a hit ask for the alias name of every device.
int FindTextTwice(const LookupFloors& floors, const Question& question) {
  const int position = FindText(floors, question);
  return position >= 0 ? position : FindText(floors, question);
}

#define PLDDB_ASK(expression) [](Target& target, const Question& question) -> int { return expression; }
#define PLDDB_IN_DATABASE(call, ...) \
  PLDDB_ASK(Found(target.database.call(__VA_ARGS__))), PLDDB_ASK(Found(literal::call(target.database, __VA_ARGS__)))
#define PLDDB_IN_FAMILY(call, ...) \
  PLDDB_ASK(Found(target.family.call(__VA_ARGS__))), PLDDB_ASK(Found(literal::call(target.family, __VA_ARGS__)))

// A name lookup's first statement scans the table, its second one goes by the index.
#define PLDDB_BY_NAME "SELECT id FROM device NOT INDEXED WHERE name = :name"
#define PLDDB_BY_CODE_NAME "SELECT id FROM device NOT INDEXED WHERE codename = :codeName"
#define PLDDB_HAS_COMM " AND comm = :comm LIMIT 1"
#define PLDDB_HAS_PACKAGE " AND EXISTS (SELECT 1 FROM package WHERE device = device.id AND type = :packageType) LIMIT 1"

constexpr const char* kCodeNameScan =
    "SELECT * FROM (SELECT id FROM device NOT INDEXED WHERE codename = :codeName LIMIT 1) UNION ALL "
    "SELECT * FROM (SELECT id FROM device NOT INDEXED WHERE alias = :codeName AND vendor <> 'Quorel' LIMIT 1) LIMIT 1";
constexpr const char* kCodeNameIndexed =
    "SELECT * FROM (SELECT id FROM device INDEXED BY device_codename WHERE codename = :codeName ORDER BY id LIMIT 1) UNION ALL "
    "SELECT * FROM (SELECT id FROM device INDEXED BY device_alias WHERE alias = :codeName AND vendor <> 'Quorel' ORDER BY id "
    "LIMIT 1) LIMIT 1";
constexpr const char* kMaskedJtag =
    "SELECT codename FROM device WHERE (jtag & mask) = (:id & mask) AND mask <> 0 AND jtag <> 0";
constexpr const char* kPON =
    "SELECT device FROM package NOT INDEXED WHERE backuppon = :pon OR aliaspon = :pon ORDER BY id LIMIT 1";
constexpr const char* kPONIndexed =
    "SELECT device FROM (SELECT device FROM package INDEXED BY package_backuppon WHERE backuppon = :pon UNION ALL "
    "SELECT device FROM package INDEXED BY package_aliaspon WHERE aliaspon = :pon) ORDER BY device LIMIT 1";
#define PLDDB_ENTITY                                                                                                          \
  "SELECT device FROM package WHERE replace(replace(replace(backuppon, ' ', ''), '-', '_'), '/', '_') = :entityName COLLATE " \
  "NOCASE"

// Null instead of a statement: SQL has no words for the rule.
const Lookup kLookups[] = {
    {"DeviceList.GetDeviceWithName", FindText, PLDDB_IN_DATABASE(GetDeviceWithName, question.name), PLDDB_BY_NAME " LIMIT 1",
     "SELECT id FROM device INDEXED BY device_name WHERE name = :name ORDER BY id LIMIT 1"},
    {"DeviceList.GetDeviceWithCodeName", FindTextTwice, PLDDB_IN_DATABASE(GetDeviceWithCodeName, question.codeName),
     kCodeNameScan, kCodeNameIndexed},
    {"DeviceList.GetDeviceWithComm", FindText, PLDDB_IN_DATABASE(GetDeviceWithComm, question.comm, question.name),
     PLDDB_BY_NAME PLDDB_HAS_COMM},
    {"DeviceList.GetDeviceWithCommAndCodeName", FindText,
     PLDDB_IN_DATABASE(GetDeviceWithCommAndCodeName, question.comm, question.codeName), PLDDB_BY_CODE_NAME PLDDB_HAS_COMM},
    {"DeviceList.GetDeviceWithPackage", FindText, PLDDB_IN_DATABASE(GetDeviceWithPackage, question.packageType, question.name),
     PLDDB_BY_NAME PLDDB_HAS_PACKAGE},
    {"DeviceList.GetDeviceWithPackageAndCodeName", FindText,
     PLDDB_IN_DATABASE(GetDeviceWithPackageAndCodeName, question.packageType, question.codeName),
     PLDDB_BY_CODE_NAME PLDDB_HAS_PACKAGE},
    {"DeviceList.GetDeviceWithPON", FindPON, PLDDB_IN_DATABASE(GetDeviceWithPON, question.pon, false), kPON, kPONIndexed},
    {"DeviceList.GetDeviceWithPON-stripped", FindPON, PLDDB_IN_DATABASE(GetDeviceWithPON, question.name, true), nullptr},
    {"DeviceList.GetDeviceWithJDFFileName", FindJDF, PLDDB_IN_DATABASE(GetDeviceWithJDFFileName, question.jdf),
     "SELECT device FROM package WHERE substr(jdf, 1, 6) = substr(:jdf, 1, 6) AND length(jdf) = length(:jdf) LIMIT 1"},

    {"DeviceList.GetDeviceWithCommAndID-JTAG", FindMasked, PLDDB_IN_DATABASE(GetDeviceWithCommAndID, "JTAG", question.id),
     "SELECT id FROM device WHERE (jtag & mask) = (:id & mask) AND mask <> 0 AND jtag <> 0 LIMIT 1"},
    {"DeviceList.GetDeviceWithCommAndID-ISP", FindMasked, PLDDB_IN_DATABASE(GetDeviceWithCommAndID, "ISP", question.ispId),
     "SELECT id FROM device WHERE (isp & mask) = (:ispId & mask) AND mask <> 0 AND isp <> 0 LIMIT 1"},
    {"DeviceList.GetDeviceWithCommAndID-DUAL", FindMasked, PLDDB_IN_DATABASE(GetDeviceWithCommAndID, "DUAL", question.id),
     "SELECT id FROM device WHERE mask <> 0 AND ((isp & 255) = (:id & 255) OR (jtag & mask) = (:id & mask)) LIMIT 1"},
    {"DeviceList.GetDeviceWithCommAndIDAndCodeName", FindMasked,
     PLDDB_IN_DATABASE(GetDeviceWithCommAndIDAndCodeName, "JTAG", question.id, question.codeName),
     "SELECT id FROM device NOT INDEXED WHERE (jtag & mask) = (:id & mask) AND mask <> 0 AND jtag <> 0 AND "
     "codename = :codeName COLLATE BINARY LIMIT 1"},
    {"DeviceList.GetDeviceWithCommAndIDNoMask", FindNumber,
     PLDDB_IN_DATABASE(GetDeviceWithCommAndIDNoMask, "JTAG", question.id), "SELECT id FROM device WHERE jtag = :id LIMIT 1"},
    {"DeviceList.GetDeviceListWithCommAndID", VisitAllMasked,
     PLDDB_ASK(target.database.GetDeviceListWithCommAndID("JTAG", question.id)),
     PLDDB_ASK(literal::GetDeviceListWithCommAndID(target.database, "JTAG", question.id, target.collected)), kMaskedJtag},
    {"DeviceList.GetDeviceListWithCommAndID-copied", VisitAllMasked,
     PLDDB_ASK(target.database.GetDeviceListWithCommAndID("JTAG", question.id, target.candidates)),
     PLDDB_ASK(literal::GetDeviceListWithCommAndID(target.database, "JTAG", question.id, target.collected, target.candidates)),
     kMaskedJtag},

    {"DeviceList.GetDeviceWithEntityName", FindPON, PLDDB_IN_DATABASE(GetDeviceWithEntityName, question.entityName),
     PLDDB_ENTITY " AND (SELECT ues FROM device WHERE id = package.device) <> 0 LIMIT 1"},
    {"DeviceList.GetDeviceWithEntityNameDisregardUES", FindPON,
     PLDDB_IN_DATABASE(GetDeviceWithEntityNameDisregardUES, question.entityName), PLDDB_ENTITY " LIMIT 1"},
    {"DeviceList.GetDeviceCommISPWithFuseMap", FindNumber,
     PLDDB_ASK(target.database.GetDeviceCommISPWithFuseMap(question.rareFuseCount)),
     PLDDB_ASK(literal::GetDeviceCommISPWithFuseMap(target.database, question.rareFuseCount)),
     "SELECT id FROM device WHERE fuses = :rareFuseCount AND comm = 'ISP' LIMIT 1"},
    {"DeviceList.GetDeviceWithFuseMapAndFullName", FindNumber,
     PLDDB_IN_DATABASE(GetDeviceWithFuseMapAndFullName, question.fuseCount, question.codeName), nullptr},
    {"DeviceList.GetDeviceWithFuseMapAndFullNameEx", FindNumber,
     PLDDB_IN_DATABASE(GetDeviceWithFuseMapAndFullNameEx, question.fuseCount, question.codeName), nullptr},
    {"DeviceList.GetDeviceCodeNameWithFuseMap", VisitAllNumbers,
     PLDDB_ASK(target.database.GetDeviceCodeNameWithFuseMap(question.rareFuseCount, target.candidates)),
     PLDDB_ASK(literal::GetDeviceCodeNameWithFuseMap(target.database, question.rareFuseCount, target.candidates)),
     "SELECT codename, comm FROM device WHERE fuses = :rareFuseCount"},
    {"DeviceList.GetDeviceWithFuseMap", VisitAllNumbers,
     PLDDB_ASK((target.candidates.clear(), target.database.GetDeviceWithFuseMap(question.rareFuseCount, target.candidates))),
     PLDDB_ASK((target.candidates.clear(),
                literal::GetDeviceWithFuseMap(target.database, question.rareFuseCount, target.candidates))),
     "SELECT name, comm FROM device WHERE fuses = :rareFuseCount AND ues <> 0"},

    {"FamilyList.GetDevice-name", FindText, PLDDB_IN_FAMILY(GetDevice, question.name), PLDDB_BY_NAME " LIMIT 1"},
    {"FamilyList.GetDeviceWithCodeName", FindTextTwice, PLDDB_IN_FAMILY(GetDeviceWithCodeName, question.codeName),
     kCodeNameScan},
    {"FamilyList.GetDeviceWithCodeNameandVendor", FindText,
     PLDDB_IN_FAMILY(GetDeviceWithCodeNameandVendor, question.codeName, question.vendor),
     PLDDB_BY_CODE_NAME " AND vendor = :vendor COLLATE NOCASE LIMIT 1"},
    {"FamilyList.GetDevice-comm-id", FindNumber, PLDDB_IN_FAMILY(GetDevice, "JTAG", question.id),
     "SELECT id FROM device WHERE jtag = :id LIMIT 1"},
    {"FamilyList.GetDeviceWithComm", FindText, PLDDB_IN_FAMILY(GetDeviceWithComm, question.comm, question.name),
     PLDDB_BY_NAME PLDDB_HAS_COMM},
    {"FamilyList.GetDeviceWithCodeName-comm", FindText,
     PLDDB_IN_FAMILY(GetDeviceWithCodeName, question.comm, question.codeName), PLDDB_BY_CODE_NAME PLDDB_HAS_COMM},
    {"FamilyList.GetDeviceWithPackage", FindText, PLDDB_IN_FAMILY(GetDeviceWithPackage, question.packageType, question.name),
     PLDDB_BY_NAME PLDDB_HAS_PACKAGE},
    {"FamilyList.GetDevice-package-codename", FindText, PLDDB_IN_FAMILY(GetDevice, question.packageType, question.codeName),
     PLDDB_BY_CODE_NAME PLDDB_HAS_PACKAGE},
};

constexpr int kMiddlePackage = 2;

Question QuestionFor(const DeviceInfo& device, std::string& entityName) {
  const Package& package = *device.GetDevicePackage()->GetPackage(kMiddlePackage);
  entityName = package.GetEntityName();
  return {"JTAG",
          device.GetjtagDeviceID(),
          device.GetispDeviceID(),
          device.GetName(),
          device.GetCodeName(),
          device.GetVendor(),
          package.GetType(),
          package.GetJDF(),
          package.GetBackupPON(),
          entityName.c_str(),
          device.GetFuseNumber(),
          bench::kRareFuseCount};
}

/// What the measurements of one size share.
class Fixture {
 public:
  explicit Fixture(int devices)
      : data_(devices),
        database_(data_.Load()),
        oneFamilyData_(devices, devices),
        oneFamily_(oneFamilyData_.Load()),
        floors(*database_),
        familyFloors(*oneFamily_),
        sqlite(*database_),
        target{*database_, *oneFamily_->GetFamily(0)} {}

 private:
  bench::GeneratedDatabase data_;  // kept, so that later objects find no holes in the heap
  DeviceListOwner database_;
  bench::GeneratedDatabase oneFamilyData_;
  DeviceListOwner oneFamily_;
  std::string entityName_;

 public:
  LookupFloors floors;
  LookupFloors familyFloors;  // for lookups within the one family
  bench::SqliteDatabase sqlite;
  Target target;
  Question hit = QuestionFor(*target.family.GetDevice(target.family.GetDeviceCount() / 2), entityName_);
  Question miss = {"JTAG", 0x2FFFE6AB,   0x0FFFFFFE,         "PLD9999Z",         "PLD9999Z-7TQ100C", hit.vendor,
                   "CS48", "9999Z2.jdf", "PLD9999Z-10CS48C", "PLD9999Z_10CS48C", hit.fuseCount,      1};
};

/// Times `ask(question)`, whose answer has to be right; the question is new to the compiler in every round.
template <typename AskQuestion>
void Time(benchmark::State& state, Question question, bool isHit, AskQuestion ask) {
  const long allocationsBefore = bench::AllocationCount();
  const bool isRight = (ask(question) > 0) == isHit;
  const long allocations = bench::AllocationCount() - allocationsBefore;
  if (!isRight) {
    state.SkipWithError("wrong answer");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(question);
    auto answer = ask(question);
    benchmark::DoNotOptimize(answer);
  }
  state.counters["allocations"] = static_cast<double>(allocations);
}

template <typename MakeAsk>
void Register(const std::string& name, bool isHit, MakeAsk makeAsk) {
  const auto run = [isHit, makeAsk](benchmark::State& state) {
    Fixture& fixture = bench::FixtureOf<Fixture>(state);
    const Question& question = isHit ? fixture.hit : fixture.miss;
    Time(state, question, isHit, makeAsk(fixture, question));
  };
  auto* const benchmark = benchmark::RegisterBenchmark(("lookup/" + name).c_str(), run);
  for (const int devices : bench::kDatabaseSizes) benchmark->Arg(devices);
}

void RegisterTarget(const std::string& name, bool isHit, Ask ask) {
  Register(name, isHit, [ask](Fixture& fixture, const Question&) {
    return [ask, &fixture](const Question& question) { return ask(fixture.target, question); };
  });
}

void RegisterFloor(const std::string& name, bool isHit, AskFloor ask, LookupFloors Fixture::*floors) {
  const bool visitsAll = ask == VisitAllNumbers || ask == VisitAllMasked;
  Register(name, isHit && !visitsAll, [ask, floors](Fixture& fixture, const Question&) {
    return [ask, &asked = fixture.*floors](const Question& question) { return ask(asked, question) + 1; };
  });
}

void RegisterSql(const std::string& name, bool isHit, const char* sql) {
  if (sql == nullptr) return;
  Register(name, isHit, [sql](Fixture& fixture, const Question& question) {
    const auto query = std::make_shared<bench::SqliteQuery>(fixture.sqlite, sql, question);
    return [query](const Question&) { return query->CountRows(); };
  });
}

void RegisterArray(const std::string& name, bool isHit) {
  Register(name, isHit, [](Fixture& fixture, const Question&) {
    return [&fixture](const Question& question) { return fixture.floors.FindInArray(question.id) + 1; };
  });
}

}  // namespace

void RegisterLookups() {
  for (const Lookup& lookup : kLookups) {
    for (const bool isHit : {false, true}) {
      const std::string name = std::string(lookup.name) + (isHit ? "/hit" : "/miss");
      RegisterTarget(name + "/library", isHit, lookup.library);
      const bool isOfFamily = name.rfind("FamilyList.", 0) == 0;
      RegisterFloor(name + "/floor", isHit, lookup.floor, isOfFamily ? &Fixture::familyFloors : &Fixture::floors);
      if (lookup.floor == FindNumber || lookup.floor == FindMasked) RegisterArray(name + "/array", isHit);
      RegisterTarget(name + "/literal", isHit, lookup.literal);
      RegisterSql(name + "/sqlite", isHit, lookup.sql);
      RegisterSql(name + "/sqlite-index", isHit, lookup.indexedSql);
    }
  }
}

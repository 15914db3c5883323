// Readers in parallel: every lookup of a database and of its families from eight threads at once, on one tree. What they may
// not do to each other is the thread sanitizer's to see (preset "tsan"); that each gets the answers of a lone reader is checked
// in every build.

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "DeviceListOwner.h"

namespace {

constexpr int kReaders = 8;
constexpr int kRounds = 5;

/// The answers that a reader got, in the order of its questions.
struct Answers {
  std::vector<const void*> objects;
  std::vector<long> numbers;
  std::vector<std::string> texts;

  void Add(const LObject* object) { objects.push_back(object); }
  void Add(const char* text) {
    objects.push_back(text);
    if (text != nullptr) texts.emplace_back(text);
  }
  void Add(const std::string& text) { texts.push_back(text); }
  void Add(long number) { numbers.push_back(number); }
  template <class List>
  void AddSize(const List& list) {
    numbers.push_back(static_cast<long>(list.size()));
  }

  friend bool operator==(const Answers& a, const Answers& b) {
    return a.objects == b.objects && a.numbers == b.numbers && a.texts == b.texts;
  }
};

constexpr const char* kTexts[] = {nullptr,   "",   "pld1",         "PLD3-CODE",    "alias2",
                                  "Example", "F1", "PLD1-5TQ100C", "PLD1_5TQ100C", "abcdefgh.jdf"};
constexpr const char* kKeys[] = {nullptr, "ISP", "JTAG", "DUAL", "TQ100"};
constexpr unsigned int kNumbers[] = {0, 1, 3, 5892, 5828, 0x01234057, 0xF1234057, 4988064};

/// Devices with all that lookups compare; some lack a name, a code name or packages.
void FillDevice(DeviceInfo& device, int number) {
  const std::string name = "PLD" + std::to_string(number);
  if (number % 4 != 3) device.SetName(name.c_str());
  if (number % 5 != 4) device.SetCodeName((name + "-CODE").c_str());
  if (number % 3 == 2) device.SetAliasName(("ALIAS" + std::to_string(number)).c_str());
  device.SetVendor(number % 2 == 0 ? "Quorel" : "Example");
  device.SetComm(kKeys[1 + number % 3]);
  device.SetFamily(number % 2 == 0 ? "IEEE 1532" : "Custom");
  device.SetjtagDeviceID(0x01234057U + static_cast<unsigned int>(number % 4));
  device.SetispDeviceID(static_cast<unsigned int>(number));
  device.SetDeviceIDScanMask(0x0FFFFFFF);
  device.SetFuseNumber(number % 2 == 0 ? 5828 : 5892);
  device.SetPhysicalUESLength(static_cast<unsigned int>(number % 3));
  device.SetSysIOList("\"LVCMOS33\", \"LVTTL\"");
  device.SetListControlReg1BitName("NAME;SECURE;");
  if (number % 6 == 5) return;
  Package* const package = device.GetDevicePackage()->NewPackage();
  package->SetType("TQ100");
  package->SetPON((name + "-5TQ100C").c_str());
  package->SetBackupPON((name + "-5TQ100C").c_str());
  package->SetJDF("abcdef01.jdf");
  package->AddAdapter("Example", "TQ100-A");
}

DeviceListOwner MakeTree() {
  DeviceListOwner database = MakeDeviceList();
  for (int i = 0; i < 3; ++i) {
    FamilyList* const family = database->NewFamily();
    family->SetName(("F" + std::to_string(i)).c_str());
    family->SetHidden(i == 1);
    family->SetOperationList("\"Erase\", \"Program\"");
    for (int k = 0; k < 8; ++k) FillDevice(*family->NewDevice(), 8 * i + k);
  }
  database->GetDeviceListWithCommAndID("JTAG", 0x01234057);
  return database;
}

// A reader's questions. Every const member of the interface that answers from the tree is asked.

void AskPackages(const PackageList& packages, Answers& answers) {
  answers.Add(packages.GetPackageCount());
  answers.Add(packages.GetLastPackage());
  for (const char* const text : kTexts) {
    answers.Add(packages.GetPackage(text));
    answers.Add(packages.GetPackageTypeWithJDFFile(text));
    answers.Add(packages.GetPackagePONWithJDFFile(text));
    answers.Add(packages.GetOrvoSettingWithJDFFile(text));
  }
  for (int i = 0; const Package* const package = packages.GetPackage(i); ++i) {
    answers.Add(package->GetType());
    answers.Add(package->GetEntityName());
    answers.Add(package->GetAdapterCount());
    answers.Add(package->GetAdapterName(0));
    answers.Add(package->GetAdapterVendor(0));
  }
}

void AskDevice(const DeviceInfo& device, Answers& answers) {
  for (const auto text : {&DeviceInfo::GetName, &DeviceInfo::GetCodeName, &DeviceInfo::GetAliasName, &DeviceInfo::GetVendor,
                          &DeviceInfo::GetComm, &DeviceInfo::GetAlgOptions}) {
    answers.Add((device.*text)());
  }
  for (const auto number : {&DeviceInfo::GetjtagDeviceID, &DeviceInfo::GetispDeviceID, &DeviceInfo::GetFuseNumber}) {
    answers.Add(static_cast<long>((device.*number)()));
  }
  for (int i = 0; i <= device.GetSysIOCount(); ++i) answers.Add(device.GetSysIO(i));
  answers.AddSize(device.GetlistControlRegOne());
  answers.AddSize(device.GetlistAddressRange());
  answers.Add(device.GetBitstreamColWidth());
  answers.Add(device.GetFamilyObject());
  for (int mode = -1; mode <= 7; ++mode) answers.Add(IsBypassDevice(&device, mode));
  AskPackages(*device.GetDevicePackage(), answers);
}

void AskFamily(const FamilyList& family, Answers& answers) {
  answers.Add(family.GetDeviceCount());
  answers.Add(family.GetLastDevice());
  answers.Add(IsHidenFamily(&family));
  answers.Add(family.GetICFFile());
  for (int i = 0; i <= family.GetOperationCount(); ++i) answers.Add(family.GetOperation(i));
  for (int i = 0; const DeviceInfo* const device = family.GetDevice(i); ++i) AskDevice(*device, answers);
  for (const char* const text : kTexts) {
    answers.Add(family.GetDevice(text));
    answers.Add(family.GetDevicePos(text));
    answers.Add(family.GetDeviceWithCodeName(text));
    answers.Add(family.GetDeviceWithCodeNameandVendor(text, "Example"));
    for (const char* const key : kKeys) {
      answers.Add(family.GetDeviceWithComm(key, text));
      answers.Add(family.GetDeviceWithCodeName(key, text));
      answers.Add(family.GetDeviceWithPackage(key, text));
      answers.Add(family.GetDevice(key, text));
    }
  }
  for (const char* const key : kKeys) {
    for (const unsigned int number : kNumbers) answers.Add(family.GetDevice(key, number));
  }
}

void AskFamilyAttributes(const DeviceList& database, Answers& answers) {
  for (const char* const text : kTexts) {
    answers.Add(database.GetFamily(text));
    answers.Add(database.GetBypassInstwfamilyName(text));
    answers.Add(database.GetIDCodeInstwfamilyName(text));
    answers.Add(database.GetISCReleasewfamilyName(text));
    answers.Add(database.GetHiddenwfamilyName(text));
    answers.Add(database.GetFPGALoaderSupportwfamilyName(text));
    answers.Add(database.GetFPGADevicewfamilyName(text));
    answers.Add(database.GetReInitializewfamilyName(text));
    answers.Add(database.GetDebugModewfamilyName(text));
    answers.Add(database.GetExtensionwfamilyName(text));
  }
}

void AskByText(const DeviceList& database, Answers& answers) {
  for (const char* const text : kTexts) {
    answers.Add(database.GetDeviceWithName(text));
    answers.Add(database.GetDeviceWithCodeName(text));
    answers.Add(database.GetDeviceWithPON(text, false));
    answers.Add(database.GetDeviceWithPON(text, true));
    answers.Add(database.GetDeviceWithJDFFileName(text));
    answers.Add(database.GetDeviceWithEntityName(text));
    answers.Add(database.GetDeviceWithEntityNameDisregardUES(text));
    for (const char* const key : kKeys) {
      answers.Add(database.GetDeviceWithComm(key, text));
      answers.Add(database.GetDeviceWithCommAndCodeName(key, text));
      answers.Add(database.GetDeviceWithPackage(key, text));
      answers.Add(database.GetDeviceWithPackageAndCodeName(key, text));
    }
  }
}

void AskByNumber(const DeviceList& database, Answers& answers) {
  for (const unsigned int number : kNumbers) {
    for (const char* const key : kKeys) {
      answers.Add(database.GetDeviceWithCommAndID(key, number));
      answers.Add(database.GetDeviceWithCommAndIDNoMask(key, number));
      answers.Add(database.GetDeviceWithCommAndIDAndCodeName(key, number, "PLD3-CODE"));
    }
    for (const char* const text : kTexts) {
      answers.Add(database.GetDeviceWithFuseMapAndFullName(number, text));
      answers.Add(database.GetDeviceWithFuseMapAndFullNameEx(number, text));
    }
    std::vector<std::string> candidates;
    answers.Add(database.GetDeviceCommISPWithFuseMap(number));
    answers.Add(database.GetDeviceCodeNameWithFuseMap(number, candidates));
    answers.Add(database.GetDeviceWithFuseMap(number, candidates));
    for (const std::string& candidate : candidates) answers.Add(candidate);
  }
}

Answers AskEverything(const DeviceList& database) {
  Answers answers;
  answers.Add(database.GetFamilyCount());
  answers.Add(database.GetDeviceCount());
  answers.Add(database.GetLastFamily());
  answers.Add(database.GetVersion());
  answers.AddSize(database.GetlistDevicenames());
  AskFamilyAttributes(database, answers);
  AskByText(database, answers);
  AskByNumber(database, answers);
  for (int i = 0; const FamilyList* const family = database.GetFamily(i); ++i) AskFamily(*family, answers);
  return answers;
}

/// Where threads wait for each other, so that they start at once.
class Start {
 public:
  void WaitForAll() {
    std::unique_lock lock(mutex_);
    if (--missing_ == 0) {
      all_.notify_all();
    } else {
      all_.wait(lock, [&] { return missing_ == 0; });
    }
  }

 private:
  std::mutex mutex_;
  std::condition_variable all_;
  int missing_ = kReaders;
};

TEST(ConcurrentReaders, EachGetsTheAnswersOfALoneReader) {
  const DeviceListOwner database = MakeTree();
  const Answers alone = AskEverything(*database);
  Start start;
  int wrong[kReaders] = {};
  std::vector<std::thread> readers;
  for (int& mine : wrong) {
    readers.emplace_back([&] {
      start.WaitForAll();
      for (int round = 0; round < kRounds; ++round) mine += AskEverything(*database) == alone ? 0 : 1;
    });
  }
  for (std::thread& reader : readers) reader.join();
  for (int reader = 0; reader < kReaders; ++reader) EXPECT_EQ(wrong[reader], 0) << "reader: " << reader;
}

TEST(ConcurrentReaders, AskQuestionsThatHaveAnswers) {
  const DeviceListOwner database = MakeTree();
  const Answers answers = AskEverything(*database);
  const auto found =
      answers.objects.size() - static_cast<std::size_t>(std::count(answers.objects.begin(), answers.objects.end(), nullptr));
  EXPECT_GT(found, answers.objects.size() / 10);
}

}  // namespace

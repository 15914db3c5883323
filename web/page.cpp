// The page's answers as functions that JavaScript calls.

#include "page.h"

#include <exception>
#include <functional>
#include <new>

#include "json_text.h"

namespace web {

void Page::Forget() {
  read.chain.reset();
  read.finder.reset();
  found = {};
}

std::vector<const DeviceList*> Page::Lists() const {
  std::vector<const DeviceList*> lists;
  lists.reserve(databases.size());
  for (const tool::Database& database : databases) lists.push_back(database.devices.get());
  return lists;
}

Page& ThePage() {
  static Page& page = *new Page();
  return page;
}

std::string Failed(const std::string& why) { return tool::ToText({{"failure", why}}); }

std::string Joined(const std::vector<std::string>& objects) {
  std::string text = "{";
  for (const std::string& object : objects) {
    const std::size_t first = object.find('{') + 1;
    text += (text.size() == 1 ? "" : ",") + object.substr(first, object.rfind('}') - first);
  }
  return text + "}";
}

namespace {

/// Keeps the answer that `ask` gives, which throws nothing on: a page that is out of memory says so, and lives.
const char* Answer(const std::function<std::string()>& ask) {
  std::string& answer = ThePage().answer;
  answer.clear();
  answer.shrink_to_fit();
  try {
    answer = ask();
  } catch (const std::bad_alloc&) {
    return R"({"failure": "this needs more memory than the page may use"})";
  } catch (const std::exception& e) {
    answer = Failed(e.what());
  }
  return answer.c_str();
}

}  // namespace
}  // namespace web

// A text is a pointer to memory from `allocate`, and its size.

#ifdef __wasm__
#define PLDDB_EXPORTED(NAME) extern "C" __attribute__((export_name(NAME), used))
#else
#define PLDDB_EXPORTED(NAME) extern "C"
#endif

PLDDB_EXPORTED("allocate") void* Allocate(std::size_t size) { return ::operator new(size, std::nothrow); }
PLDDB_EXPORTED("release") void Release(void* memory) { ::operator delete(memory); }

PLDDB_EXPORTED("identify")
const char* Identify(const char* text, std::size_t size, const char* order, std::size_t orderSize, const char* comm,
                     std::size_t commSize, const char* lengths, std::size_t lengthsSize, int trustsIrLengths) {
  return web::Answer([&] {
    return web::Identify({text, size}, {order, orderSize}, {comm, commSize}, {lengths, lengthsSize}, trustsIrLengths != 0);
  });
}

PLDDB_EXPORTED("form") const char* Form(const char* name, std::size_t size) {
  return web::Answer([&] { return web::Form({name, size}); });
}

PLDDB_EXPORTED("draw") const char* Draw(std::size_t perRow) {
  return web::Answer([&] { return web::Draw(perRow); });
}

PLDDB_EXPORTED("find") const char* Find(const char* text, std::size_t size) {
  return web::Answer([&] { return web::Find({text, size}); });
}

PLDDB_EXPORTED("show") const char* Show(std::size_t n) {
  return web::Answer([&] { return web::Show(n); });
}

PLDDB_EXPORTED("fits") const char* Fits(const char* name, std::size_t nameSize, const char* bytes, std::size_t size) {
  return web::Answer([&] { return web::Fits({name, nameSize}, {bytes, size}); });
}

PLDDB_EXPORTED("add")
const char* Add(const char* name, std::size_t nameSize, const char* text, std::size_t size, const char* family,
                std::size_t familySize) {
  return web::Answer([&] { return web::Add({name, nameSize}, {text, size}, {family, familySize}); });
}

PLDDB_EXPORTED("addShipped")
const char* AddShipped(const char* name, std::size_t nameSize, const char* text, std::size_t size) {
  return web::Answer([&] { return web::AddShipped({name, nameSize}, {text, size}); });
}

PLDDB_EXPORTED("removeFile") const char* Remove(const char* name, std::size_t size) {
  return web::Answer([&] { return web::Remove({name, size}); });
}

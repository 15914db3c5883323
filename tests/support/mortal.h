#pragma once

#include <vector>

#include "LObject.h"

namespace support {

/// Reports its destruction.
class Mortal : public LObject {
 public:
  Mortal(int id, std::vector<int>& deaths) : id_(id), deaths_(deaths) {}
  ~Mortal() override { deaths_.push_back(id_); }

 private:
  const int id_;
  std::vector<int>& deaths_;
};

}  // namespace support

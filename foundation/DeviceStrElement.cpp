#include "DeviceStrElement.h"

#include <cstring>
#include <utility>

DeviceStrElement::DeviceStrElement() = default;
DeviceStrElement::~DeviceStrElement() = default;

void DeviceStrElement::SetString(const char* text) {
  if (text == nullptr) return;
  const std::size_t size = std::strlen(text) + 1;
  std::unique_ptr<char[]> copy(new char[size]);  // before the old text is freed: `text` may be part of it
  std::memcpy(copy.get(), text, size);
  text_ = std::move(copy);
}

char* DeviceStrElement::GetString() const { return text_.get(); }

void DeviceStrElement::Swap(DeviceStrElement& other) noexcept { text_.swap(other.text_); }

#pragma once

#include <memory>

#include "LObject.h"
#include "plddb_export.h"

/// One owned text: the storage of every text field of the tree, and the element of its lists of texts.
/// The text is null until it is first set; nothing makes it null again.
class PLDDB_EXPORT DeviceStrElement : public LObject {
 public:
  DeviceStrElement();  ///< Holds no text. Made by the records of a tree; free for other uses.
  ~DeviceStrElement() override;

  /// Copies `text`, which may be (part of) the text held so far. Null keeps the old text.
  /// std::bad_alloc leaves the old text.
  void SetString(const char* text);

  /// Lends the text, valid until the next SetString or Swap of this element or its end; null while unset.
  char* GetString() const;

  void Swap(DeviceStrElement& other) noexcept;  ///< Exchanges the two texts; never fails.

 private:
  std::unique_ptr<char[]> text_;
};

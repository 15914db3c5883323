#pragma once

#include <memory>

#include "LObject.h"
#include "plddb_export.h"

/// One owned text: the storage of every text field of the tree, and the element of its lists of texts.
/// The text is null until it is first set, and never again.
class PLDDB_EXPORT DeviceStrElement : public LObject {
 public:
  DeviceStrElement();  ///< Holds no text. The records of a tree create their own; you may create others.
  ~DeviceStrElement() override;

  /// Copies `text`, which may be (part of) the old text. Null keeps the old text.
  /// std::bad_alloc keeps the old text.
  void SetString(const char* text);

  /// Lends the text, valid until the next SetString or Swap of this element or its destruction; null while unset.
  char* GetString() const;

  void Swap(DeviceStrElement& other) noexcept;  ///< Exchanges the two texts; never fails.

 private:
  std::unique_ptr<char[]> text_;
};

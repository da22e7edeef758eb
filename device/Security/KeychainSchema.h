// What the keychain can hold: the item classes, their attributes, and which of these name an item.
#pragma once

#include <span>
#include <string_view>

namespace qvdevice {

enum class AttributeKind {
  text,
  /// Text or data.
  any,
  data,
  number,
  flag,
  date
};

struct Attribute {
  const char* key;
  AttributeKind kind;
  /// Two items of a class may not agree in all of these.
  bool primary = false;
};

struct ItemClass {
  const char* name;
  std::span<const Attribute> attributes;
  /// Whether an item may consist of its attributes alone.
  bool mayBeEmpty;
};

/// What every item has besides its class's attributes.
std::span<const Attribute> commonAttributes();
std::span<const ItemClass> itemClasses();

/// Null when there is none of that name.
const ItemClass* itemClassNamed(std::string_view name);
const Attribute* attributeNamed(const ItemClass& itemClass, std::string_view key);

} // namespace qvdevice

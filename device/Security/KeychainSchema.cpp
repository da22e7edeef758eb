#include "Security/KeychainSchema.h"

#include <algorithm>

namespace qvdevice {

namespace {

using enum AttributeKind;

constexpr bool primary = true;

constexpr Attribute common[] = {
    {"agrp", text, primary}, {"sync", flag, primary}, {"pdmn", text}, {"cdat", date}, {"mdat", date}, {"labl", text},
};

constexpr Attribute genericPassword[] = {
    {"acct", any, primary}, {"svce", any, primary}, {"gena", data}, {"desc", text}, {"icmt", text},
    {"crtr", number},       {"type", number},       {"invi", flag}, {"nega", flag},
};

constexpr Attribute internetPassword[] = {
    {"acct", any, primary},  {"sdmn", any, primary},    {"srvr", text, primary}, {"ptcl", text, primary},
    {"atyp", text, primary}, {"port", number, primary}, {"path", text, primary}, {"desc", text},
    {"icmt", text},          {"crtr", number},          {"type", number},        {"invi", flag},
    {"nega", flag},
};

constexpr Attribute certificate[] = {
    {"ctyp", number, primary},
    {"issr", data, primary},
    {"slnr", data, primary},
    {"cenc", number},
    {"subj", data},
    {"skid", data},
    {"pkhh", data},
};

constexpr Attribute key[] = {
    {"kcls", number, primary},
    {"klbl", data, primary},
    {"atag", any, primary},
    {"crtr", number, primary},
    {"type", number, primary},
    {"bsiz", number, primary},
    {"esiz", number, primary},
    {"perm", flag},
    {"encr", flag},
    {"decr", flag},
    {"drve", flag},
    {"sign", flag},
    {"vrfy", flag},
    {"wrap", flag},
    {"unwp", flag},
};

// On a phone an identity is a certificate and the key that belongs to it. Here, where nobody computes with either, it
// is an item of its own with the attributes of both.
constexpr Attribute identity[] = {
    {"ctyp", number, primary},
    {"issr", data, primary},
    {"slnr", data, primary},
    {"cenc", number},
    {"subj", data},
    {"skid", data},
    {"pkhh", data},
    {"kcls", number},
    {"klbl", data},
    {"atag", any},
    {"crtr", number},
    {"type", number},
    {"bsiz", number},
    {"esiz", number},
    {"perm", flag},
    {"encr", flag},
    {"decr", flag},
    {"drve", flag},
    {"sign", flag},
    {"vrfy", flag},
    {"wrap", flag},
    {"unwp", flag},
};

constexpr ItemClass classes[] = {
    {"genp", genericPassword, true}, {"inet", internetPassword, true},
    {"cert", certificate, false},    {"keys", key, false},
    {"idnt", identity, false},
};

const Attribute* named(std::span<const Attribute> attributes, std::string_view name) {
  const auto found = std::ranges::find(attributes, name, &Attribute::key);
  return found == attributes.end() ? nullptr : &*found;
}

} // namespace

std::span<const Attribute> commonAttributes() { return common; }
std::span<const ItemClass> itemClasses() { return classes; }

const ItemClass* itemClassNamed(std::string_view name) {
  const auto* const found = std::ranges::find(classes, name, &ItemClass::name);
  return found == std::end(classes) ? nullptr : found;
}

const Attribute* attributeNamed(const ItemClass& itemClass, std::string_view name) {
  const Attribute* const own = named(itemClass.attributes, name);
  return own ? own : named(common, name);
}

} // namespace qvdevice

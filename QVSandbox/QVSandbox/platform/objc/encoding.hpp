// Type encodings, computed by the compiler from a C++ signature: what `@encode` and the Objective-C compilers write
// for the same types, offsets included. An exchange is refused unless they agree byte for byte, so a type without an
// encoding does not compile.
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

#include "object.hpp"
#include "selector.hpp"

namespace qvsb {

template <class Signature> class Block;

namespace detail {

/// A text built at compile time.
struct EncodingText {
  char data[512]{};
  std::size_t length = 0;

  constexpr void append(const char* text) {
    while (*text) {
      data[length++] = *text++;
    }
  }
  constexpr void append(const EncodingText& other) { append(other.data); }
  constexpr void appendNumber(std::size_t number) {
    char digits[20]{};
    std::size_t count = 0;
    do {
      digits[count++] = static_cast<char>('0' + number % 10);
      number /= 10;
    } while (number);
    while (count) {
      data[length++] = digits[--count];
    }
  }
};

} // namespace detail

/// A structure's encoding: specialise with `name` and the field types in order, `using Fields = FieldList<...>`.
template <class... T> struct FieldList {};
template <class T> struct StructEncoding;

template <class T> struct Encoding; // no definition: such a type cannot stand in a method's signature

// clang-format off: a table
template <> struct Encoding<void> { static constexpr const char* text = "v"; };
template <> struct Encoding<bool> { static constexpr const char* text = "B"; };
template <> struct Encoding<char> { static constexpr const char* text = "c"; };
template <> struct Encoding<signed char> { static constexpr const char* text = "c"; };
template <> struct Encoding<unsigned char> { static constexpr const char* text = "C"; };
template <> struct Encoding<short> { static constexpr const char* text = "s"; };
template <> struct Encoding<unsigned short> { static constexpr const char* text = "S"; };
template <> struct Encoding<char16_t> { static constexpr const char* text = "S"; };
template <> struct Encoding<int> { static constexpr const char* text = "i"; };
template <> struct Encoding<unsigned int> { static constexpr const char* text = "I"; };
// 64-bit targets only: `long` is encoded as what it is there.
template <> struct Encoding<long> { static constexpr const char* text = "q"; };
template <> struct Encoding<unsigned long> { static constexpr const char* text = "Q"; };
template <> struct Encoding<long long> { static constexpr const char* text = "q"; };
template <> struct Encoding<unsigned long long> { static constexpr const char* text = "Q"; };
template <> struct Encoding<float> { static constexpr const char* text = "f"; };
template <> struct Encoding<double> { static constexpr const char* text = "d"; };
template <> struct Encoding<Class> { static constexpr const char* text = "#"; };
template <> struct Encoding<SEL> { static constexpr const char* text = ":"; };
template <> struct Encoding<char*> { static constexpr const char* text = "*"; };
template <> struct Encoding<const char*> { static constexpr const char* text = "r*"; };
// Any pointer to bytes counts as a C string.
template <> struct Encoding<signed char*> : Encoding<char*> {};
template <> struct Encoding<unsigned char*> : Encoding<char*> {};
template <> struct Encoding<const signed char*> : Encoding<const char*> {};
template <> struct Encoding<const unsigned char*> : Encoding<const char*> {};
template <> struct Encoding<const void*> { static constexpr const char* text = "r^v"; };
// A method list. Behind two pointers the compilers leave a structure's fields out.
template <> struct Encoding<Method*> { static constexpr const char* text = "^^{objc_method}"; };
// clang-format on
template <class S> struct Encoding<Block<S>> {
  static constexpr const char* text = "@?";
};
template <Handle T>
  requires(!std::derived_from<T, Class>)
struct Encoding<T> {
  static constexpr const char* text = "@";
};
template <class T>
  requires std::is_enum_v<T>
struct Encoding<T> : Encoding<std::underlying_type_t<T>> {};

namespace detail {

template <class T> constexpr EncodingText encodingOf();

template <class... T> constexpr EncodingText fieldsOf(FieldList<T...>) {
  EncodingText text;
  (text.append(encodingOf<T>()), ...);
  return text;
}

template <class T> constexpr EncodingText encodingOf() {
  EncodingText text;
  if constexpr (requires { Encoding<T>::text; }) {
    text.append(Encoding<T>::text);
  } else if constexpr (requires { StructEncoding<T>::name; }) {
    text.append("{");
    text.append(StructEncoding<T>::name);
    text.append("=");
    text.append(fieldsOf(typename StructEncoding<T>::Fields{}));
    text.append("}");
  } else if constexpr (std::is_pointer_v<T>) {
    using Pointee = std::remove_pointer_t<T>;
    text.append(std::is_const_v<Pointee> ? "r^" : "^");
    text.append(encodingOf<std::remove_const_t<Pointee>>());
  } else {
    static_assert(requires { Encoding<T>::text; }, "this type has no Objective-C encoding");
  }
  return text;
}

/// The bytes an argument takes in an encoding's offsets: integers count at least as an `int`.
template <class T> consteval std::size_t frameSize() {
  if constexpr (std::is_integral_v<T> || std::is_enum_v<T>) {
    return sizeof(T) < sizeof(int) ? sizeof(int) : sizeof(T);
  } else {
    return sizeof(T);
  }
}

/// Whether Apple's x86_64 runtime, the simulator's, returns `R` through memory: a message that asks for it takes
/// another entry point, and a block says so. arm64 has only one way.
template <class R> consteval bool returnsInMemory() {
  static_assert(!std::is_same_v<R, long double>, "such a result takes yet another entry point: objc_msgSend_fpret");
  if constexpr (std::is_class_v<R> || std::is_union_v<R>) {
    static_assert(std::is_trivially_copyable_v<R>, "C++ returns it otherwise than a method does");
    return sizeof(R) > 2 * sizeof(void*);
  }
  return false;
}

/// `first` is what stands before the declared arguments: "@0:8" of a method, "@?0" of a block.
template <class R, class... A> constexpr EncodingText signatureOf(const char* first, std::size_t firstSize) {
  EncodingText text;
  text.append(encodingOf<R>());
  text.appendNumber((firstSize + ... + frameSize<A>()));
  text.append(first);
  std::size_t offset = firstSize;
  ((text.append(encodingOf<A>()), text.appendNumber(offset), offset += frameSize<A>()), ...);
  return text;
}

template <EncodingText (*Make)()> consteval auto exact() {
  constexpr EncodingText text = Make();
  std::array<char, text.length + 1> out{};
  for (std::size_t i = 0; i < text.length; ++i) {
    out[i] = text.data[i];
  }
  return out;
}

template <class R, class... A> constexpr EncodingText makeMethodSignature() {
  return signatureOf<R, A...>("@0:8", 2 * sizeof(void*));
}
template <class R, class... A> constexpr EncodingText makeBlockSignature() {
  return signatureOf<R, A...>("@?0", sizeof(void*));
}

template <class R, class... A> inline constexpr auto methodEncodingText = exact<&makeMethodSignature<R, A...>>();
template <class R, class... A> inline constexpr auto blockEncodingText = exact<&makeBlockSignature<R, A...>>();
template <class T> inline constexpr auto typeEncodingText = exact<&encodingOf<T>>();

} // namespace detail

/// A method's encoding: `methodEncoding<BOOL, NSString, BOOL>()` is "C28@0:8@16C24" with GCC's runtime.
template <class R, class... A> consteval const char* methodEncoding() {
  return detail::methodEncodingText<R, A...>.data();
}

/// One type's encoding, as `@encode` gives it.
template <class T> consteval const char* typeEncoding() { return detail::typeEncodingText<T>.data(); }

} // namespace qvsb

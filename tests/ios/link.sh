# shellcheck shell=bash
# What the linker takes and refuses.

listed_import() {
  echo 'extern "C" int open(const char*, int, ...); int use() { return open("x", 0); }' >a.cpp
  link a.cpp -o a.dylib
}

unlisted_import() {
  echo 'extern "C" int pthread_mutex_lock(void*); int use() { return pthread_mutex_lock(nullptr); }' >a.cpp
  refused "undefined symbol: pthread_mutex_lock" link a.cpp -o a.dylib
}

newer_libcxx() {
  echo 'namespace std { inline namespace __1 { [[noreturn]] void __libcpp_verbose_abort(const char*, ...); } }
        void use() { std::__libcpp_verbose_abort("x"); }' >a.cpp
  refused "undefined symbol: std::__1::__libcpp_verbose_abort" link a.cpp -o a.dylib
}

missing_export() {
  echo 'extern "C" void present() {}' >a.cpp
  echo _absent >exports
  refused "undefined symbol: absent" link a.cpp -o a.dylib -Wl,-exported_symbols_list,exports
}

# on TARGET COMMAND...: the command, linking for that target.
on() {
  local target=$1
  shift
  QV_COMPILE="$QV_COMPILE --target=$target -isysroot $QV_SOURCE_DIR/cmake/ios/iPhoneSimulator.sdk" "$@"
}

on_every_target() {
  "$@"
  on arm64-apple-ios14.0-simulator "$@"
  on x86_64-apple-ios12.0-simulator "$@"
}

encodings() {
  cat >a.mm <<'END'
#include "platform/objc/encoding.hpp"
struct CGRect { double x, y, width, height; };
template <> struct qvsb::StructEncoding<CGRect> {
  static constexpr const char* name = "CGRect";
  using Fields = FieldList<double, double, double, double>;
};
// A call that is left over when the two texts, both known to the compiler, differ: nothing defines it.
template <class T> void encodingDiffers();
template <class T> void same(const char* encoding) {
  if (__builtin_strcmp(qvsb::typeEncoding<T>(), encoding) != 0) encodingDiffers<T>();
}
extern "C" void compare() {
  same<qvsb::BOOL>(@encode(__typeof(__objc_yes)));
  same<qvsb::NSInteger>(@encode(long));
  same<qvsb::NSUInteger>(@encode(unsigned long));
  same<long long>(@encode(long long));
  same<qvsb::CGFloat>(@encode(double));
  same<CGRect>(@encode(CGRect));
  same<char>(@encode(char));
  same<const char*>(@encode(const char*));
  same<qvsb::Object>(@encode(id));
  same<qvsb::Class>(@encode(Class));
  same<qvsb::SEL>(@encode(SEL));
#ifdef DIFFERENT
  same<short>(@encode(long));
#endif
}
END
  compare() { link -O2 -I "$QV_SOURCE_DIR/QVSandbox/QVSandbox" a.mm -lobjc -Wl,-u,_compare -o a.dylib "$@"; }
  on_every_target compare
  on_every_target refused "undefined symbol: void encodingDiffers<short>()" compare -DDIFFERENT
}

struct_results() {
  cat >a.cpp <<'END'
#include "platform/objc/send.hpp"
struct Small { double x, y; };
struct Large { double x, y, z; };
template <> struct qvsb::StructEncoding<Small> {
  static constexpr const char* name = "Small";
  using Fields = FieldList<double, double>;
};
template <> struct qvsb::StructEncoding<Large> {
  static constexpr const char* name = "Large";
  using Fields = FieldList<double, double, double>;
};
using namespace qvsb;
[[gnu::visibility("default")]] Small small(Object o, SEL s) { return Message<Small()>::sendUnchecked(o, s); }
[[gnu::visibility("default")]] double number(Object o, SEL s) { return Message<double()>::sendUnchecked(o, s); }
#ifdef LARGE
[[gnu::visibility("default")]] Large large(Object o, SEL s) { return Message<Large()>::sendUnchecked(o, s); }
[[gnu::visibility("default")]] Large above(Object o, Class c, SEL s) { return Message<Large()>::sendSuper(o, c, s); }
#endif
END
  make_library() { link -I "$QV_SOURCE_DIR/QVSandbox/QVSandbox" a.cpp -lobjc -o a.dylib "$@"; }
  expect_imports() {
    local found
    found=$(llvm-nm-19 --undefined-only --just-symbol-name a.dylib | grep objc_msgSend | sort | xargs)
    if [[ $found != "$*" ]]; then
      echo "expected $*, found $found" >&2
      return 1
    fi
  }
  on x86_64-apple-ios12.0-simulator make_library
  expect_imports _objc_msgSend
  on x86_64-apple-ios12.0-simulator make_library -DLARGE
  expect_imports _objc_msgSend _objc_msgSendSuper_stret _objc_msgSend_stret
  on arm64-apple-ios14.0-simulator make_library -DLARGE
  expect_imports _objc_msgSend _objc_msgSendSuper
  make_library -DLARGE
  expect_imports _objc_msgSend _objc_msgSendSuper
}

struct_blocks() {
  cat >a.cpp <<'END'
#include "platform/objc/block.hpp"
struct Large { double x, y, z; };
template <> struct qvsb::StructEncoding<Large> {
  static constexpr const char* name = "Large";
  using Fields = FieldList<double, double, double>;
};
static_assert((qvsb::detail::blockFlags<Large>() & 1 << 29) == EXPECTED && (qvsb::detail::blockFlags<double>() & 1 << 29) == 0);
END
  blocks() { link -I "$QV_SOURCE_DIR/QVSandbox/QVSandbox" a.cpp -o a.dylib "$@"; }
  on x86_64-apple-ios12.0-simulator blocks '-DEXPECTED=(1<<29)'
  blocks -DEXPECTED=0
  on arm64-apple-ios14.0-simulator blocks -DEXPECTED=0
}

integer_types() {
  cat >a.cpp <<'END'
#include <cstddef>
#include <cstdint>
#include <type_traits>
template <class A, class B> constexpr bool same = std::is_same_v<A, B>;
static_assert(same<std::int8_t, signed char> && same<std::int16_t, short> && same<std::int32_t, int>);
static_assert(same<std::int64_t, long long> && same<std::uint64_t, unsigned long long>);
static_assert(same<std::intptr_t, long> && same<std::uintptr_t, unsigned long> && same<std::intmax_t, long>);
static_assert(same<std::size_t, unsigned long> && same<std::ptrdiff_t, long> && same<std::int_fast16_t, short>);
#ifdef __aarch64__
static_assert(sizeof(wchar_t) == 4 && sizeof(long double) == 8 && alignof(std::max_align_t) == 8);
#else
static_assert(sizeof(wchar_t) == 4 && sizeof(long double) == 16 && alignof(std::max_align_t) == 16);
#endif
END
  on_every_target link a.cpp -o a.dylib
}

error_numbers() {
  cat >a.cpp <<'END'
#include <system_error>
static_assert(static_cast<int>(std::errc::resource_unavailable_try_again) == 35);
static_assert(static_cast<int>(std::errc::filename_too_long) == 63);
static_assert(static_cast<int>(std::errc::directory_not_empty) == 66);
static_assert(static_cast<int>(std::errc::file_exists) == 17);
END
  on_every_target link a.cpp -o a.dylib
}

# What an allowed header includes in turn is within reach of every source. These declare functions that no stub lists,
# or that are the same everywhere; <fcntl.h>, <unistd.h>, <signal.h> or <sys/...> would add constants to calls that link.
borrowed_headers() {
  local reached
  "$QV_SOURCE_DIR/scripts/check-includes.sh" --allowed | sed 's/.*/#include <&>/' >a.cpp
  # shellcheck disable=SC2086 # a command line, made to be split
  $QV_COMPILE -fsyntax-only -H a.cpp 2>headers
  reached=$(sed -n 's/^\.* .*-linux-musl\/\(.*\)$/\1/p' headers | grep -v '^bits/' | sort -u | xargs)
  if [[ -z $reached ]]; then
    echo "expected some borrowed header; is the list of included headers read rightly?" >&2
    return 1
  fi
  if [[ $reached != "alloca.h ctype.h features.h limits.h math.h pthread.h sched.h stdio.h stdlib.h string.h strings.h \
time.h wchar.h wctype.h" ]]; then
    echo "the allowed headers now bring along: $reached" >&2
    return 1
  fi
}

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
static_assert(sizeof(wchar_t) == 4 && sizeof(long double) == 8 && alignof(std::max_align_t) == 8);
END
  link a.cpp -o a.dylib
}

error_numbers() {
  cat >a.cpp <<'END'
#include <system_error>
static_assert(static_cast<int>(std::errc::resource_unavailable_try_again) == 35);
static_assert(static_cast<int>(std::errc::filename_too_long) == 63);
static_assert(static_cast<int>(std::errc::directory_not_empty) == 66);
static_assert(static_cast<int>(std::errc::file_exists) == 17);
END
  link a.cpp -o a.dylib
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

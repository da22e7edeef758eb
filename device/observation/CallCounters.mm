#include "observation/CallCounters.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "container/Json.h"
#include "container/Refusal.h"

// Each counter has a stub, which
//   - adds one to the counter, atomically: calls come on any thread;
//   - notes stack pointer and return address as they are at entry, and that this was the thread's latest call;
//   - goes on to the implementation.
// The counters fill pages of their own, which are shared memory once somebody wants them.

#define QV_TEXT_(x) #x
#define QV_TEXT(x) QV_TEXT_(x)
#define QV_COUNTERS 128
#define QV_STUB_SIZE 128
#if defined(__aarch64__)
#define QV_PAGES 65536 // whatever the kernel's pages are
#else
#define QV_PAGES 4096
#endif

extern "C" {

struct QVCallMark {
  std::uint64_t stackPointer;
  std::uint64_t returnAddress;
  std::uint64_t order;
};

struct QVCallMarks {
  std::uint64_t calls;
  QVCallMark last[QV_COUNTERS];
};

// Found without a call, which would cost registers: the device is loaded with the process.
__attribute__((visibility("hidden"), tls_model("initial-exec"), used)) __thread QVCallMarks qv_call_marks;
__attribute__((visibility("hidden"), used)) IMP qv_call_targets[QV_COUNTERS];
__attribute__((visibility("hidden"))) extern std::uint64_t qv_call_counters[QV_PAGES / 8];
__attribute__((visibility("hidden"))) extern const char qv_call_stubs[QV_COUNTERS][QV_STUB_SIZE];
}

static_assert(sizeof(QVCallMark) == 24 && offsetof(QVCallMarks, last) == 8);

// clang-format off
asm(R"(
  .pushsection .bss.qv_call_counters, "aw", @nobits
  .balign )" QV_TEXT(QV_PAGES) R"(
  .hidden qv_call_counters
  .globl qv_call_counters
  .type qv_call_counters, @object
  .size qv_call_counters, )" QV_TEXT(QV_PAGES) R"(
qv_call_counters:
  .skip )" QV_TEXT(QV_PAGES) R"(
  .popsection

  .pushsection .text.qv_call_stubs, "ax", @progbits
  .balign )" QV_TEXT(QV_STUB_SIZE) R"(
  .hidden qv_call_stubs
  .globl qv_call_stubs
  .type qv_call_stubs, @function
qv_call_stubs:
  .cfi_startproc
  .set qv_n, 0
  .rept )" QV_TEXT(QV_COUNTERS) R"(
  .balign )" QV_TEXT(QV_STUB_SIZE)
#if defined(__x86_64__)
// r10 and r11 belong to nobody here; al counts the vector registers of a variadic call and stays.
R"(
  lock incq qv_call_counters + 8 * qv_n(%rip)
  movq qv_call_marks@gottpoff(%rip), %r11
  movq %fs:(%r11), %r10
  incq %r10
  movq %r10, %fs:(%r11)
  movq %r10, %fs:(8 + 24 * qv_n + 16)(%r11)
  movq %rsp, %fs:(8 + 24 * qv_n)(%r11)
  movq (%rsp), %r10
  movq %r10, %fs:(8 + 24 * qv_n + 8)(%r11)
  jmpq *(qv_call_targets + 8 * qv_n)(%rip)
)"
#elif defined(__aarch64__)
// x16 and x17 belong to the linker, x9 to nobody; x8 may say where a result goes and stays.
R"(
  adrp x16, qv_call_counters + 8 * qv_n
  add x16, x16, :lo12:(qv_call_counters + 8 * qv_n)
1:
  ldxr x17, [x16]
  add x17, x17, #1
  stxr w9, x17, [x16]
  cbnz w9, 1b
  mrs x16, tpidr_el0
  adrp x17, :gottprel:qv_call_marks
  ldr x17, [x17, :gottprel_lo12:qv_call_marks]
  add x16, x16, x17
  ldr x17, [x16]
  add x17, x17, #1
  str x17, [x16]
  str x17, [x16, #(8 + 24 * qv_n + 16)]
  mov x17, sp
  str x17, [x16, #(8 + 24 * qv_n)]
  str x30, [x16, #(8 + 24 * qv_n + 8)]
  adrp x16, qv_call_targets + 8 * qv_n
  ldr x16, [x16, :lo12:(qv_call_targets + 8 * qv_n)]
  br x16
)"
#else
#error "the device counts calls on x86-64 and on arm64"
#endif
R"(
  .set qv_n, qv_n + 1
  .endr
  .cfi_endproc
  .size qv_call_stubs, . - qv_call_stubs
  .popsection
)");
// clang-format on

namespace qvdevice {

namespace {

constexpr char kVariable[] = "QVDEVICE_COUNTERS_FD";
/// What a call has put on the stack when the method begins.
#if defined(__x86_64__)
constexpr std::uintptr_t kPushed = 8;
#else
constexpr std::uintptr_t kPushed = 0;
#endif

bool wanted = false;
int taken = 0;

/// Before any hook is there.
__attribute__((constructor(102))) void countForWhoeverStartedUs() {
  const int descriptor = descriptorFromEnvironment(kVariable);
  if (descriptor < 0) return;
  if (!countCallsIn(descriptor)) refuse(std::string(kVariable) + " is nothing to count in: " + std::strerror(errno));
  ::close(descriptor);
  // Neither is meant for the programs that this one starts.
  ::unsetenv(kVariable);
}

int indexOf(IMP implementation) {
  const auto place = reinterpret_cast<const char *>(implementation);
  const char *const first = &qv_call_stubs[0][0];
  return place >= first && place < first + sizeof qv_call_stubs ? static_cast<int>((place - first) / QV_STUB_SIZE) : -1;
}

} // namespace

bool countCallsIn(int descriptor) {
  wanted = ::mmap(qv_call_counters, sizeof qv_call_counters, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, descriptor,
                  0) != MAP_FAILED;
  return wanted;
}

bool areCallsCounted() { return wanted; }

CountedCall counted(IMP implementation) {
  if (!wanted || taken == QV_COUNTERS) return {implementation, -1};
  const int counter = taken++;
  qv_call_targets[counter] = implementation;
  return {reinterpret_cast<IMP>(const_cast<char *>(qv_call_stubs[counter])), counter};
}

IMP uncounted(IMP implementation) {
  const int index = indexOf(implementation);
  return index < 0 ? implementation : qv_call_targets[index];
}

int counterOfCall(std::uintptr_t returnAddress, std::uintptr_t stackPointer) {
  int latest = -1;
  for (int i = 0; i < taken; ++i) {
    const QVCallMark &mark = qv_call_marks.last[i];
    if (mark.returnAddress != returnAddress || mark.stackPointer + kPushed != stackPointer) continue;
    if (latest < 0 || mark.order > qv_call_marks.last[latest].order) latest = i;
  }
  return latest;
}

} // namespace qvdevice

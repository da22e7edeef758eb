#import "VImageCalls.h"

#include <dlfcn.h>

#include <array>
#include <cstdlib>

#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#include <sanitizer/allocator_interface.h>
#endif

namespace {

/// Kept also when no test looks at them, and never destroyed: memory is freed before and after all else.
VImageCalls *notes = new VImageCalls;
std::map<std::string, int> counts;
std::vector<const void *> letters;

/// Fixed, because it is looked at whenever memory is freed.
struct Watched {
  const volatile void *memory;
  bool temporary;
};
constinit std::array<Watched, 16> watched{};

void watch(const void *memory, bool temporary) {
  for (Watched &each : watched) {
    if (each.memory == memory) return;
  }
  for (Watched &each : watched) {
    if (each.memory == nullptr) {
      each = {memory, temporary};
      ++(temporary ? notes->temporariesSeen : notes->buffersMade);
      return;
    }
  }
  std::abort();
}

void freed(const volatile void *memory) {
  if (memory == nullptr || notes == nullptr) return;
  for (Watched &each : watched) {
    if (each.memory == memory) {
      ++(each.temporary ? notes->temporariesFreed : notes->buffersFreed);
      each = {};
    }
  }
}

std::string letterOf(const vImage_Buffer *buffer) {
  for (size_t index = 0; index < letters.size(); ++index) {
    if (letters[index] == buffer->data) return std::string(1, static_cast<char>('A' + index));
  }
  letters.push_back(buffer->data);
  return std::string(1, static_cast<char>('A' + letters.size() - 1));
}

/// The failure that is due, or 0.
vImage_Error due(const std::string &function) {
  const auto found = notes->failures.find({function, counts[function]++});
  return found == notes->failures.end() ? kvImageNoError : found->second;
}

template <class Function> Function real(Function, const char *name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

void note(const std::string &call) { notes->calls.push_back(call); }

std::string flagsIn(vImage_Flags flags) { return " flags " + std::to_string(flags); }

} // namespace

VImageCalls &takeNotes() {
  *notes = {};
  counts.clear();
  letters.clear();
  watched = {};
  return *notes;
}

#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
[[gnu::constructor]] static void listenToTheSanitizer() {
  __sanitizer_install_malloc_and_free_hooks([](const volatile void *, size_t) {},
                                            [](const volatile void *memory) { freed(memory); });
}
#else
extern "C" {
void __libc_free(void *memory);
void free(void *memory) {
  freed(memory);
  __libc_free(memory);
}
}
#endif

vImage_Error vImageBuffer_InitWithCGImage(vImage_Buffer *buf, vImage_CGImageFormat *format, const CGFloat *background,
                                          CGImageRef image, vImage_Flags flags) {
  const std::string call = "InitWithCGImage " + std::to_string(format->bitsPerComponent) + "/" +
                           std::to_string(format->bitsPerPixel) + " " + std::to_string(format->bitmapInfo) +
                           (format->colorSpace ? " named" : "") + flagsIn(flags);
  if (const vImage_Error error = due("InitWithCGImage")) {
    note(call);
    buf->data = reinterpret_cast<void *>(0x10); // nobody may rely on it
    return error;
  }
  const vImage_Error error =
      real(&vImageBuffer_InitWithCGImage, "vImageBuffer_InitWithCGImage")(buf, format, background, image, flags);
  if (error == kvImageNoError) watch(buf->data, false);
  note(call + " -> " + letterOf(buf));
  return error;
}

vImage_Error vImageBuffer_Init(vImage_Buffer *buf, vImagePixelCount height, vImagePixelCount width, uint32_t pixelBits,
                               vImage_Flags flags) {
  const std::string call =
      "Init " + std::to_string(width) + "x" + std::to_string(height) + " " + std::to_string(pixelBits) + flagsIn(flags);
  if (const vImage_Error error = due("Init")) {
    note(call);
    buf->data = reinterpret_cast<void *>(0x10);
    return error;
  }
  const vImage_Error error = real(&vImageBuffer_Init, "vImageBuffer_Init")(buf, height, width, pixelBits, flags);
  if (error == kvImageNoError) watch(buf->data, false);
  note(call + " -> " + letterOf(buf));
  return error;
}

vImage_Error vImageBoxConvolve_ARGB8888(const vImage_Buffer *src, const vImage_Buffer *dest, void *tempBuffer,
                                        vImagePixelCount x, vImagePixelCount y, uint32_t height, uint32_t width,
                                        const Pixel_8888 background, vImage_Flags flags) {
  note("BoxConvolve " + letterOf(src) + ">" + letterOf(dest) + (tempBuffer ? "+ " : " ") + std::to_string(width) + "x" +
       std::to_string(height) + flagsIn(flags) + (x || y ? " moved" : "") + (background ? " background" : ""));
  if (tempBuffer) watch(tempBuffer, true);
  if (const vImage_Error error = due("BoxConvolve")) return error;
  if (notes->boxesAreOnlyNoted) return (flags & kvImageGetTempBufferSize) ? 100 : kvImageNoError;
  return real(&vImageBoxConvolve_ARGB8888, "vImageBoxConvolve_ARGB8888")(src, dest, tempBuffer, x, y, height, width,
                                                                         background, flags);
}

vImage_Error vImageMatrixMultiply_ARGB8888(const vImage_Buffer *src, const vImage_Buffer *dest,
                                           const int16_t matrix[4 * 4], int32_t divisor, const int16_t *preBias,
                                           const int32_t *postBias, vImage_Flags flags) {
  note("MatrixMultiply " + letterOf(src) + ">" + letterOf(dest) + " /" + std::to_string(divisor) + flagsIn(flags) +
       (preBias || postBias ? " biased" : ""));
  notes->matrix.assign(matrix, matrix + 16);
  if (const vImage_Error error = due("MatrixMultiply")) return error;
  return real(&vImageMatrixMultiply_ARGB8888, "vImageMatrixMultiply_ARGB8888")(src, dest, matrix, divisor, preBias,
                                                                               postBias, flags);
}

CGImageRef vImageCreateCGImageFromBuffer(const vImage_Buffer *buf, const vImage_CGImageFormat *format,
                                         void (*callback)(void *userData, void *buf_data), void *userData,
                                         vImage_Flags flags, vImage_Error *error) {
  note("CreateCGImage " + letterOf(buf) + " " + std::to_string(format->bitmapInfo) + (callback ? " callback" : "") +
       flagsIn(flags));
  if (const vImage_Error failure = due("CreateCGImage")) {
    if (error) *error = failure;
    return nullptr;
  }
  return real(&vImageCreateCGImageFromBuffer, "vImageCreateCGImageFromBuffer")(buf, format, callback, userData, flags,
                                                                               error);
}

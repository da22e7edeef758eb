// What the device's vImage costs: its box blur against OpenCV's, libyuv's and plain copies of the same pixels, its
// matrix against one copy. Each blur is three passes between two buffers, as frosted glass is made.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <Accelerate/Convolution.h>
#include <Accelerate/Transform.h>
#include <hwy/targets.h>
#include <libyuv.h>
#include <opencv2/imgproc.hpp>

#include "Accelerate/Workers.h"
#include "SideBySide.hpp"

namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

template <class T> using Memory = std::unique_ptr<T[], Free>;

template <class T> Memory<T> allocated(std::size_t count) {
  constexpr std::size_t kPage = 4096;
  return Memory<T>(static_cast<T*>(std::aligned_alloc(kPage, (count * sizeof(T) + kPage - 1) / kPage * kPage)));
}

/// Two buffers of one size, whose pages are there.
struct Buffers {
  std::size_t width;
  std::size_t height;
  Memory<std::uint8_t> first = allocated<std::uint8_t>(size());
  Memory<std::uint8_t> second = allocated<std::uint8_t>(size());

  Buffers(std::size_t w, std::size_t h) : width(w), height(h) { fill(); }

  std::size_t size() const { return width * height * 4; }
  vImage_Buffer image(const Memory<std::uint8_t>& data) const { return {data.get(), height, width, width * 4}; }
  cv::Mat matrix(const Memory<std::uint8_t>& data) const {
    return {static_cast<int>(height), static_cast<int>(width), CV_8UC4, data.get()};
  }

  void fill() {
    std::minstd_rand next(1);
    std::generate_n(first.get(), size(), [&] { return static_cast<std::uint8_t>(next() >> 8); });
    std::memset(second.get(), 0, size());
  }
};

/// With the code for one kind of processor, or for the best with 0.
void useTarget(std::int64_t target) {
  hwy::SetSupportedTargetsForTest(target);
  hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

/// From the first buffer to the second, back, and to the second again.
template <class Pass> void threePasses(const Buffers& buffers, Pass pass) {
  pass(buffers.first, buffers.second);
  pass(buffers.second, buffers.first);
  pass(buffers.first, buffers.second);
}

struct Blurs {
  const Buffers& buffers;
  std::uint32_t box;
  std::size_t threads;
  Memory<std::uint8_t> temporary = allocated<std::uint8_t>(temporarySize());
  Memory<std::int32_t> sums = allocated<std::int32_t>(buffers.width * (buffers.height + 1) * 4);

  std::size_t temporarySize() const {
    const vImage_Buffer image = buffers.image(buffers.first);
    return static_cast<std::size_t>(vImageBoxConvolve_ARGB8888(&image, &image, nullptr, 0, 0, box, box, nullptr,
                                                               kvImageGetTempBufferSize | kvImageEdgeExtend));
  }

  void ours() const {
    threePasses(buffers, [&](const auto& from, const auto& to) {
      const vImage_Buffer src = buffers.image(from);
      const vImage_Buffer dest = buffers.image(to);
      vImageBoxConvolve_ARGB8888(&src, &dest, temporary.get(), 0, 0, box, box, nullptr, kvImageEdgeExtend);
    });
  }

  void openCV() const {
    threePasses(buffers, [&](const auto& from, const auto& to) {
      cv::Mat dest = buffers.matrix(to);
      const auto side = static_cast<int>(box);
      cv::blur(buffers.matrix(from), dest, cv::Size(side, side), cv::Point(-1, -1), cv::BORDER_REPLICATE);
    });
  }

  void libyuv() const {
    threePasses(buffers, [&](const auto& from, const auto& to) {
      const auto width = static_cast<int>(buffers.width);
      libyuv::ARGBBlur(from.get(), width * 4, to.get(), width * 4, sums.get(), width * 4, width,
                       static_cast<int>(buffers.height), static_cast<int>(box / 2));
    });
  }

  /// Six sweeps over the buffers, shared among as many threads.
  void copies() const {
    for (int sweep = 0; sweep < 2; ++sweep) {
      threePasses(buffers, [&](const auto& from, const auto& to) { copy(from, to); });
    }
  }

  void copy(const Memory<std::uint8_t>& from, const Memory<std::uint8_t>& to) const {
    const std::size_t part = buffers.size() / threads;
    qvdevice::shareAmongWorkers(
        threads, [&](std::size_t at) { std::memcpy(to.get() + at * part, from.get() + at * part, part); });
    benchmark::ClobberMemory();
  }

  /// Three roundings apart at most from means that are rounded once.
  bool agree() {
    ours();
    const Buffers other(buffers.width, buffers.height);
    threePasses(other, [&](const auto& from, const auto& to) {
      cv::Mat dest = other.matrix(to);
      const auto side = static_cast<int>(box);
      cv::blur(other.matrix(from), dest, cv::Size(side, side), cv::Point(-1, -1), cv::BORDER_REPLICATE);
    });
    return std::equal(buffers.second.get(), buffers.second.get() + buffers.size(), other.second.get(),
                      [](int a, int b) { return std::abs(a - b) <= 3; });
  }
};

double processorNanoseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

/// What is measured side by side, by the clock and by the processor time of all threads, which leaves out what other
/// processes take: the least of each becomes a counter.
class Comparison {
public:
  template <class Work> void add(const std::string& name, Work work) {
    double& least = processor_.try_emplace(name, std::numeric_limits<double>::infinity()).first->second;
    variants_.push_back({name, [&least, work] {
                           const double before = processorNanoseconds();
                           const double taken = bench::nanosecondsEach(1, work);
                           least = std::min(least, processorNanoseconds() - before);
                           return taken;
                         }});
  }

  void run(benchmark::State& state) const {
    bench::sideBySide(state, variants_, bench::least);
    for (const auto& [name, least] : processor_) {
      state.counters[name + "Processor"] = least;
    }
  }

private:
  std::map<std::string, double> processor_;
  std::vector<bench::Variant> variants_;
};

void Blur(benchmark::State& state) {
  const auto threads = static_cast<std::size_t>(state.range(3));
  qvdevice::setWorkerCount(threads);
  cv::setNumThreads(static_cast<int>(threads));
  const Buffers buffers(static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)));
  Blurs blurs{.buffers = buffers, .box = static_cast<std::uint32_t>(state.range(2)), .threads = threads};
  useTarget(0);
  if (!blurs.agree()) {
    state.SkipWithError("the blur is another than OpenCV's");
    return;
  }
  Comparison comparison;
  comparison.add("best", [&] { blurs.ours(); });
  comparison.add("avx2", [&] {
    useTarget(HWY_AVX2);
    blurs.ours();
    useTarget(0);
  });
  comparison.add("openCV", [&] { blurs.openCV(); });
  comparison.add("libyuv", [&] { blurs.libyuv(); });
  comparison.add("copies", [&] { blurs.copies(); });
  comparison.run(state);
  state.counters["temporary"] = static_cast<double>(blurs.temporarySize());
  state.counters["image"] = static_cast<double>(buffers.size());
}

/// A saturation of 1.8, and with alpha as it is.
constexpr std::array<std::int16_t, 16> kSaturation = {446, -15, -15, 0, -146, 314, -146, 0,
                                                      -44, -44, 417, 0, 0,    0,   0,    256};

void Matrix(benchmark::State& state) {
  const auto threads = static_cast<std::size_t>(state.range(2));
  qvdevice::setWorkerCount(threads);
  const Buffers buffers(static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)));
  const Blurs copying{.buffers = buffers, .box = 3, .threads = threads};
  const vImage_Buffer src = buffers.image(buffers.first);
  const vImage_Buffer dest = buffers.image(buffers.second);
  const auto ours = [&] {
    vImageMatrixMultiply_ARGB8888(&src, &dest, kSaturation.data(), 256, nullptr, nullptr, kvImageNoFlags);
  };
  useTarget(0);
  Comparison comparison;
  comparison.add("best", ours);
  comparison.add("avx2", [&] {
    useTarget(HWY_AVX2);
    ours();
    useTarget(0);
  });
  comparison.add("copy", [&] { copying.copy(buffers.first, buffers.second); });
  comparison.run(state);
}

} // namespace

BENCHMARK(Blur)
    ->ArgsProduct({{750}, {1334}, {3, 31, 121}, {1, 2}})
    ->ArgsProduct({{1536}, {2048}, {3, 31, 121}, {1, 2}})
    ->ArgsProduct({{3840}, {2160}, {3, 31, 121}, {1, 2}})
    ->Iterations(12);
BENCHMARK(Matrix)
    ->ArgsProduct({{750}, {1334}, {1, 2}})
    ->ArgsProduct({{1536}, {2048}, {1, 2}})
    ->ArgsProduct({{3840}, {2160}, {1, 2}})
    ->Iterations(100);

BENCHMARK_MAIN();

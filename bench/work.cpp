// Single-threaded work, the same in every host: what it costs to run beside a stop thread.

#include <benchmark/benchmark.h>
#include <launcher/service_module.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <memory>

namespace {

// Of `kSize` bytes. The C library keeps freed blocks of up to about a thousand for the thread, without a lock.
template <std::size_t kSize>
void Allocations(benchmark::State& state) {
  std::array<std::unique_ptr<std::array<char, kSize>>, 64> kept;
  std::size_t next = 0;
  for ([[maybe_unused]] auto step : state) {
    kept[next++ % kept.size()] = std::make_unique_for_overwrite<std::array<char, kSize>>();
  }
  benchmark::DoNotOptimize(kept);
}
BENCHMARK(Allocations<4>);
BENCHMARK(Allocations<2000>);

void SharedPointerCopies(benchmark::State& state) {
  const auto original = std::make_shared<int>(1);
  for ([[maybe_unused]] auto step : state) benchmark::DoNotOptimize(std::shared_ptr<int>(original));
}
BENCHMARK(SharedPointerCopies);

void PrintfToFile(benchmark::State& state) {
  std::FILE* const file = std::fopen("/dev/null", "w");
  for ([[maybe_unused]] auto step : state) benchmark::DoNotOptimize(std::fprintf(file, "tick %d\n", 1));
  static_cast<void>(std::fclose(file));
}
BENCHMARK(PrintfToFile);

void PutcToFile(benchmark::State& state) {
  std::FILE* const file = std::fopen("/dev/null", "w");
  for ([[maybe_unused]] auto step : state) benchmark::DoNotOptimize(std::putc('t', file));
  static_cast<void>(std::fclose(file));
}
BENCHMARK(PutcToFile);

}  // namespace

int Bootstrap(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
}

int StopService() { return 0; }

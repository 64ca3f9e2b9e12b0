// Single-threaded work, the same in every host: what it costs to run beside a stop thread.

#include <benchmark/benchmark.h>
#include <launcher/service_module.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <memory>

namespace {

void SmallAllocations(benchmark::State& state) {
  std::array<std::unique_ptr<int>, 64> kept;
  std::size_t next = 0;
  for ([[maybe_unused]] auto step : state) kept[next++ % kept.size()] = std::make_unique<int>(1);
  benchmark::DoNotOptimize(kept);
}
BENCHMARK(SmallAllocations);

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

}  // namespace

int Bootstrap(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
}

int StopService() { return 0; }

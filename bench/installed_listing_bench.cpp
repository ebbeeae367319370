#include <benchmark/benchmark.h>

#include <pugixml.hpp>

#include "sample_suite.h"

namespace kitbay::bench {
namespace {

using base::ComponentKind;

// Every benchmark is named kind/step/entries. The first step is the baseline for the others: only
// the XML library, parsing the same bytes.
void ParseOnly(benchmark::State& state, ComponentKind kind) {
  const std::string datastore = DatastoreOf(kind, static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    pugi::xml_document document;
    if (!document.load_buffer(datastore.data(), datastore.size())) {
      state.SkipWithError("the datastore does not parse");
    }
    benchmark::DoNotOptimize(document);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(datastore.size()));
}

void Load(benchmark::State& state, ComponentKind kind) {
  SampleSuite suite(kind, static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    suite.Load();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(suite.datastore().size()));
}

void List(benchmark::State& state, ComponentKind kind) {
  SampleSuite suite(kind, static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    suite.List();
  }
  if (suite.rows().rows() != static_cast<std::size_t>(state.iterations() * state.range(0))) {
    state.SkipWithError("not every entry became a row");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

#define KITBAY_BENCHMARKS_OF(kind, name)                                        \
  BENCHMARK_CAPTURE(ParseOnly, name, kind)->Name(#name "/parse")->Apply(Sizes); \
  BENCHMARK_CAPTURE(Load, name, kind)->Name(#name "/load")->Apply(Sizes);       \
  BENCHMARK_CAPTURE(List, name, kind)->Name(#name "/list")->Apply(Sizes)

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
}

KITBAY_BENCHMARKS_OF(ComponentKind::kAddon, addons);
KITBAY_BENCHMARKS_OF(ComponentKind::kTransport, transports);
KITBAY_BENCHMARKS_OF(ComponentKind::kChannel, channels);

}  // namespace
}  // namespace kitbay::bench

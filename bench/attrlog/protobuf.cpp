// One change as a Protobuf message: written, and read into fields, without being applied.

#include "Bench.h"

#include "peers/ProtobufChange.h"

void Bench::registerAll() {
  operation("encode", [](benchmark::State& state) {
    Bench::ProtobufChange change;
    std::uint32_t value = 0;
    for (auto _ : state) {
      benchmark::DoNotOptimize(change.encode(++value));
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
  });
  operation("decode", [](benchmark::State& state) {
    Bench::ProtobufChange change;
    change.encode(123456);
    for (auto _ : state) {
      benchmark::DoNotOptimize(change.decode());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
  });
}

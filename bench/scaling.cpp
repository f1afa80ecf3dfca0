// How the cost grows with the number of records and with the length of a payload. Benchmarks that set a number of items
// give a time per record, the others a time per byte.
#include "floor.h"
#include "library.h"
#include "measure.h"

namespace bench {
namespace {

constexpr int64_t most_records = 254;        // of a message
constexpr int64_t most_poster_records = 250; // a round number below it
constexpr int64_t shortest_payload = 16, longest_payload = 16 << 20;

size_t size_of(const benchmark::State &state) { return static_cast<size_t>(state.range(0)); }

template <class Operation> void measure_per_record(benchmark::State &state, Operation operation)
{
    measure(state, operation);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Operation> void measure_per_byte(benchmark::State &state, Operation operation)
{
    measure(state, operation);
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void parse(benchmark::State &state)
{
    const Input input(short_records_message(size_of(state)));
    measure_per_record(state, [&] { library::parse_and_release(input); });
}

void join_chunks(benchmark::State &state)
{
    const Input input(chunked_message(size_of(state)));
    measure_per_record(state, [&] { library::parse_and_release(input); });
}

void encode(benchmark::State &state)
{
    const nfc_ndef::Message message = library::parse(Input(short_records_message(size_of(state))));
    measure_per_record(state, [&] { library::encode_and_release(*message); });
}

void find_by_type(benchmark::State &state)
{
    const nfc_ndef::Message message = library::parse(Input(short_records_message(size_of(state))));
    uint8_t name[] = {'T'};
    const nfc_ndef_record_type text{.name = name, .name_length = 1, .format = NFC_NDEF_TNF_WELL_KNOWN};
    measure_per_record(state, [&] { library::find_by_type_and_release(*message, text); });
}

void extract_poster(benchmark::State &state)
{
    const Input input(mixed_poster_message(size_of(state)));
    measure_per_record(state, [&] { library::extract_poster(input); });
}

void payload_library(benchmark::State &state)
{
    const Input input(one_payload_message(size_of(state)));
    measure_per_byte(state, [&] { library::parse_and_release(input); });
}

void payload_floor(benchmark::State &state)
{
    const Input input(one_payload_message(size_of(state)));
    measure_per_byte(state, [&] { floor::parse_and_release(input); });
}

BENCHMARK(parse)->Name("scaling/parse")->RangeMultiplier(2)->Range(1, most_records);
BENCHMARK(join_chunks)->Name("scaling/join_chunks")->RangeMultiplier(2)->Range(1, most_records);
BENCHMARK(encode)->Name("scaling/encode")->RangeMultiplier(2)->Range(1, most_records);
BENCHMARK(find_by_type)->Name("scaling/find_by_type")->RangeMultiplier(2)->Range(1, most_records);
BENCHMARK(extract_poster)->Name("scaling/extract_poster")->RangeMultiplier(2)->Range(1, most_poster_records);
BENCHMARK(payload_library)->Name("scaling/payload")->RangeMultiplier(4)->Range(shortest_payload, longest_payload);
BENCHMARK(payload_floor)->Name("scaling/payload_floor")->RangeMultiplier(4)->Range(shortest_payload, longest_payload);

} // namespace
} // namespace bench

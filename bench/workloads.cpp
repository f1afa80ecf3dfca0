// What programs do with tags, by the library and at the physical limit.
#include "floor.h"
#include "in_place.h"
#include "library.h"
#include "measure.h"

#include <string>

namespace bench {
namespace {

using Run = void (*)(const Input &);

void add(const std::string &name, const Bytes &message, Run by_library, Run by_floor)
{
    const auto input = std::make_shared<Input>(message);
    for (const auto &[who, run] :
         {std::pair{"/library", by_library}, std::pair{"/floor", by_floor}, std::pair{"/in_place", &in_place::visit}})
        benchmark::RegisterBenchmark((name + who).c_str(), [input, run = run](benchmark::State &state) {
            measure(state, [&] { run(*input); });
        });
}

void add_encoding(const std::string &name, const Bytes &bytes)
{
    const auto input = std::make_shared<Input>(bytes);
    benchmark::RegisterBenchmark((name + "/library").c_str(), [input](benchmark::State &state) {
        const nfc_ndef::Message message = library::parse(*input);
        measure(state, [&] { library::encode_and_release(*message); });
    });
    benchmark::RegisterBenchmark((name + "/in_place").c_str(), [input](benchmark::State &state) {
        const nfc_ndef::Message message = library::parse(*input);
        measure(state, [&] { in_place::encode(*message); });
    });
    benchmark::RegisterBenchmark((name + "/floor").c_str(), [input](benchmark::State &state) {
        floor::Message *const message = floor::parse(*input);
        if (floor::encoded(*message) != Bytes(input->data(), input->data() + input->length()))
            state.SkipWithError("the floor does not encode what it parsed");
        measure(state, [&] { floor::encode_and_release(*message); });
        floor::release(message);
    });
}

const int registered = [] {
    add("text", text_message(), library::parse_and_release, floor::parse_and_release);
    add("poster", smart_poster_message(), library::extract_poster, floor::extract_poster);
    add("100_records", short_records_message(100), library::parse_and_release, floor::parse_and_release);
    add("64_KiB", one_payload_message(64 << 10), library::parse_and_release, floor::parse_and_release);
    add_encoding("encode_100", short_records_message(100));
    add("50_chunks", chunked_message(50), library::parse_and_release, floor::parse_and_release);
    add("handover", handover_message(), library::extract_handover, floor::extract_handover);
    return 0;
}();

} // namespace
} // namespace bench

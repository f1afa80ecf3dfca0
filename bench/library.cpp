#include "library.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

namespace bench::library {
namespace {

void expect(bool holds, const char *what)
{
    if (holds) [[likely]]
        return;
    std::fprintf(stderr, "bench: the library did not %s\n", what);
    std::exit(2);
}

using Records = nfc_ndef::Array<nfc_ndef::Record>;

void extract_carrier(const nfc_ndef_record *carrier)
{
    uint32_t power_state = 0;
    uint8_t reference_length = 0, auxiliary_count = 0;
    uint8_t *reference = nullptr, *auxiliary_lengths = nullptr, **auxiliary = nullptr;
    expect(rtdlib_alternative_carrier_record_extract(carrier, &power_state, &reference_length, &reference,
                                                     &auxiliary_count, &auxiliary_lengths, &auxiliary) == 1,
           "extract an alternative carrier");
    benchmark::DoNotOptimize(reference);
    os_block_dealloc(reference);
}

} // namespace

nfc_ndef::Message parse(const Input &input)
{
    nfc_ndef_msg *const message = nfc_ndef_msg_create_by_msg_offset(input.data(), 0, input.length());
    expect(message != nullptr, "parse a message");
    return nfc_ndef::Message(message);
}

void parse_and_release(const Input &input)
{
    const nfc_ndef::Message message = parse(input);
    benchmark::DoNotOptimize(message.get());
}

void extract_poster(const Input &input)
{
    const nfc_ndef::Message message = parse(input);
    Records titles, icons, others;
    nfc_ndef::Record uri, size, type;
    uint32_t action = 0;
    const int8_t result =
        rtdlib_smart_poster_record_extract(nfc_ndef_msg_get_record_by_index(message.get(), 0), titles.out_count(),
                                           titles.out(), nfc_ndef::out(uri), &action, icons.out_count(), icons.out(),
                                           nfc_ndef::out(size), nfc_ndef::out(type), others.out_count(), others.out());
    expect(result == 1, "extract a Smart Poster");
    benchmark::DoNotOptimize(action);
}

void extract_handover(const Input &input)
{
    const nfc_ndef::Message message = parse(input);
    nfc_ndef::Record collision;
    Records carriers;
    uint8_t version = 0;
    const int8_t result = rtdlib_handover_request_record_extract(nfc_ndef_msg_get_record_by_index(message.get(), 0),
                                                                 nfc_ndef::out(collision), carriers.out_count(),
                                                                 carriers.out(), &version);
    expect(result == 1 && carriers.size() == 2, "extract a Handover Request");
    uint16_t number = 0;
    expect(rtdlib_collision_resolution_record_extract(collision.get(), &number) == 1, "extract a collision number");
    for (const nfc_ndef_record *carrier : carriers)
        extract_carrier(carrier);
    nfc_ndef::BluetoothOob fields;
    expect(rtdlib_bt_2_1_configuration_data_record_extract(nfc_ndef_msg_get_record_by_index(message.get(), 1),
                                                           nfc_ndef::out(fields)) == 1,
           "extract a Bluetooth record");
    benchmark::DoNotOptimize(number);
}

void encode_and_release(const nfc_ndef_msg &message)
{
    nfc_ndef::Block<> bytes;
    expect(nfc_ndef_msg_to_byte_array(&message, nfc_ndef::out(bytes)) > 0, "encode a message");
    benchmark::DoNotOptimize(bytes.get());
}

void find_by_type_and_release(const nfc_ndef_msg &message, const nfc_ndef_record_type &type)
{
    uint8_t count = 0;
    const nfc_ndef_record **const found = nfc_ndef_msg_get_records_by_type(&message, &type, &count);
    expect(found != nullptr, "find records by type");
    benchmark::DoNotOptimize(found);
    os_block_dealloc(found);
}

} // namespace bench::library

// Record types whose payload is fields: what is built reads back, and what reads builds the same payload.
#include "types.h"

#include <array>

using namespace fuzz;
using nfc_ndef::Block;
using nfc_ndef::out;
using nfc_ndef::Record;

namespace {

ByteView view(const Block<> &block, size_t length) { return {block.get(), block ? length : 0}; }

struct Text {
    int8_t result;
    uint8_t utf16 = 0, language_length = 0;
    uint32_t length = 0;
    Block<> language, text;

    explicit Text(const Record &record)
    {
        result = rtdlib_text_record_extract(record.get(), &utf16, &language_length, out(language), &length, out(text));
    }
};

void text(Input &in, bool building)
{
    if (building) {
        const uint8_t utf16 = in.u8();
        const ByteView language = in.field(), words = in.rest();
        const Record record{
            rtdlib_text_record_create(utf16, length8(language), pointer(language), pointer(words), length32(words))};
        must((record != nullptr) == (!language.empty() && language.size() <= 63 && !words.empty()), "a text is built");
        if (!record)
            return;
        const Text read(record);
        must(read.result == 1 && read.utf16 == (utf16 & 1) &&
                 equal(view(read.language, read.language_length), language) &&
                 equal(view(read.text, read.length), words),
             "a text reads back");
        return;
    }
    const ByteView payload = in.rest();
    const Record record = with_payload(payload);
    const Text read = within_memory(payload, [&] { return Text(record); });
    must_be_one_of(read.result, {1, -1});
    must((read.result == 1) == (!payload.empty() && payload.size() > 1u + (payload[0] & 0x3F)), "a text is read");
    if (read.result != 1)
        return;
    const Record again{
        rtdlib_text_record_create(read.utf16, read.language_length, read.language.get(), read.text.get(), read.length)};
    must((again != nullptr) == (read.language_length != 0), "what reads builds, with a language");
    if (!again)
        return;
    Bytes expected(payload.begin(), payload.end());
    expected[0] &= 0xBF; // the reserved bit is not kept
    must(equal(payload_of(*again), expected), "a text builds the payload it was read from");
}

void uri(Input &in, bool building)
{
    const auto printable = [](ByteView bytes) {
        return std::all_of(bytes.begin(), bytes.end(), [](uint8_t byte) { return byte >= 0x20; });
    };
    const uint8_t expected_code = building ? in.u8() : uint8_t{0};
    const ByteView rest = in.rest();
    const Record record =
        building ? Record{rtdlib_uri_record_create(expected_code, length32(rest), pointer(rest))} : with_payload(rest);
    must(!building || (record != nullptr) == printable(rest), "a URI is built");
    if (!record)
        return;
    uint8_t code = 0;
    uint32_t length = 0;
    Block<> field;
    const auto read = [&] { return rtdlib_uri_record_extract(record.get(), &code, out(field), &length); };
    const int8_t result = within_memory(payload_of(*record), read);
    must_be_one_of(result, {1, -1});
    if (building)
        must(result == 1 && code == expected_code && equal(view(field, length), rest), "a URI reads back");
    else
        must((result == 1) == (!rest.empty() && printable(rest.subspan(1))), "a URI is read");
    if (result != 1)
        return;
    const Record again{rtdlib_uri_record_create(code, length, field.get())};
    must(again && equal(payload_of(*again), payload_of(*record)), "a URI builds the payload it was read from");
}

void handover_carrier(Input &in, bool building)
{
    const uint8_t expected_format = building ? in.u8() : uint8_t{0};
    const ByteView expected_type = building ? in.field() : ByteView{}, rest = building ? in.field() : in.rest();
    const uint8_t empty = 0;
    const Record record =
        building ? Record{rtdlib_handover_carrier_record_create(expected_format, length8(expected_type),
                                                                expected_type.empty() ? &empty : expected_type.data(),
                                                                length8(rest), pointer(rest))}
                 : with_payload(rest);
    must(record != nullptr, "a carrier is built");
    uint32_t format = 0;
    uint8_t type_length = 0, data_length = 0;
    Block<> type, data;
    const auto read = [&] {
        return rtdlib_handover_carrier_record_extract(record.get(), &format, &type_length, out(type), &data_length,
                                                      out(data));
    };
    const ByteView payload = payload_of(*record);
    const int8_t result = within_memory(payload, read);
    must_be_one_of(result, {1, -1});
    if (building)
        must(result == 1 && format == (expected_format & 7u) && equal(view(type, type_length), expected_type) &&
                 equal(view(data, data_length), rest),
             "a carrier reads back");
    if (result != 1)
        return;
    const Record again{rtdlib_handover_carrier_record_create(format, type_length, type.get(), data_length, data.get())};
    must(again && (payload[0] & 7) == payload_of(*again)[0] && equal(payload.subspan(1), payload_of(*again).subspan(1)),
         "a carrier builds the payload it was read from");
}

struct AlternativeCarrier {
    int8_t result;
    uint32_t power_state = 0;
    uint8_t length = 0, count = 0;
    Block<> reference, lengths;
    Block<uint8_t *> references;

    explicit AlternativeCarrier(const Record &record)
    {
        result = rtdlib_alternative_carrier_record_extract(record.get(), &power_state, &length, out(reference), &count,
                                                           out(lengths), out(references));
    }
    AlternativeCarrier(AlternativeCarrier &&) = default;
    ~AlternativeCarrier()
    {
        for (size_t i = 0; references && i < count; ++i)
            os_block_dealloc(references[i]);
    }
    Record build() const
    {
        return Record{rtdlib_alternative_carrier_record_create(power_state, length, reference.get(), count,
                                                               lengths.get(), references.get())};
    }
};

void alternative_carrier(Input &in, bool building)
{
    if (!building) {
        const ByteView payload = in.rest();
        const Record record = with_payload(payload);
        const AlternativeCarrier read = within_memory(payload, [&] { return AlternativeCarrier(record); });
        must_be_one_of(read.result, {1, -1});
        if (read.result != 1)
            return;
        const Record again = read.build();
        if (!again)
            return must(payload.size() > 255, "a carrier reference builds unless it is too long");
        const ByteView built = payload_of(*again);
        must(built.size() <= payload.size() && built[0] == (payload[0] & 3) &&
                 equal(built.subspan(1), payload.subspan(1, built.size() - 1)),
             "a carrier reference builds the payload it was read from");
        return;
    }
    // All that the extractor allows, so that the references read back.
    static constexpr char characters[] = "ABCXYZabcxyz0189:-._";
    const auto spelled = [](ByteView bytes) {
        Bytes reference;
        for (const uint8_t byte : bytes)
            reference.push_back(static_cast<uint8_t>(characters[byte % (sizeof characters - 1)]));
        return reference;
    };
    const uint8_t power_state = in.u8();
    const Bytes reference = spelled(in.take(in.u8() & 31));
    std::vector<ByteView> auxiliary(in.u8() & 15);
    Bytes lengths;
    std::vector<const uint8_t *> pointers;
    size_t length = 3 + reference.size();
    for (ByteView &bytes : auxiliary) {
        bytes = in.take(in.u8() & 31);
        lengths.push_back(length8(bytes));
        pointers.push_back(pointer(bytes));
        length += 1 + bytes.size();
    }
    const Record record{rtdlib_alternative_carrier_record_create(power_state, length8(reference), pointer(reference),
                                                                 length8(lengths), pointer(lengths), pointers.data())};
    must((record != nullptr) == (length <= 255), "a carrier reference is built");
    if (!record)
        return;
    const AlternativeCarrier read(record);
    must(read.result == 1 && read.power_state == (power_state & 3u) && read.count == auxiliary.size() &&
             equal(view(read.reference, read.length), reference),
         "a carrier reference reads back");
    for (size_t i = 0; i < auxiliary.size(); ++i)
        must(equal({read.references[i], read.lengths[i]}, auxiliary[i]), "auxiliary references read back");
}

void two_bytes(Input &in, bool building)
{
    uint16_t number = 0;
    uint8_t reason = 0, data = 0;
    if (building) {
        const uint8_t high = in.u8(), low = in.u8();
        const auto expected = static_cast<uint16_t>(high << 8 | low);
        const Record resolution{rtdlib_collision_resolution_record_create(expected)};
        const Record error{rtdlib_handover_select_error_record_create(high, low)};
        must(rtdlib_collision_resolution_record_extract(resolution.get(), &number) == 1 && number == expected,
             "a random number reads back");
        must(rtdlib_handover_select_error_record_extract(error.get(), &reason, &data) == 1 && reason == high &&
                 data == low,
             "an error reads back");
        return;
    }
    const ByteView payload = in.rest();
    const Record record = with_payload(payload);
    const bool fits = payload.size() == 2;
    must(rtdlib_collision_resolution_record_extract(record.get(), &number) == (fits ? 1 : -1),
         "a random number is read");
    must(rtdlib_handover_select_error_record_extract(record.get(), &reason, &data) == (fits ? 1 : 2),
         "an error is read");
    if (fits)
        must(number == (payload[0] << 8 | payload[1]) && reason == payload[0] && data == payload[1], "both bytes");
}

void sharing_enquiry(Input &in, bool building)
{
    const uint8_t expected_type = building ? in.u8() : uint8_t{0}, expected_version = building ? in.u8() : uint8_t{0};
    const ByteView rest = building ? in.field() : in.rest();
    const Record record = building ? Record{rtdlib_sharing_enquiry_record_create(expected_type, length8(rest),
                                                                                 pointer(rest), expected_version)}
                                   : with_payload(rest);
    must(!building || (record != nullptr) == (expected_version >> 4 == 1 || (expected_version & 15) == 0),
         "an enquiry is built");
    if (!record)
        return;
    uint8_t type = 0, version = 0, length = 0;
    Block<> data;
    const auto read = [&] {
        return rtdlib_sharing_enquiry_record_extract(record.get(), &type, &length, out(data), &version);
    };
    const int8_t result = within_memory(payload_of(*record), read);
    must_be_one_of(result, {1, -1, 2});
    if (building)
        must(result == 1 && type == expected_type && version == expected_version && equal(view(data, length), rest),
             "an enquiry reads back");
    if (result != 1)
        return;
    const Record again{rtdlib_sharing_enquiry_record_create(type, length, data.get(), version)};
    const ByteView payload = payload_of(*record), built = payload_of(*again);
    // Behind an enquiry without data the extractor accepts anything.
    must(again && built.size() <= payload.size() && equal(built, payload.first(built.size())) &&
             (length == 0 || built.size() == payload.size()),
         "an enquiry builds the payload it was read from");
}

} // namespace

void fuzz::run(ByteView input)
{
    run_type(input, {text, uri, handover_carrier, alternative_carrier, two_bytes, sharing_enquiry});
}

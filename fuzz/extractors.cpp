// The extractors, all on one payload, behind a byte of the record's flags: each accepts what reading in place accepts,
// keeps within its bound of memory, and hands out what can be freed.
#include "fuzz.h"

#include <nfc_ndef_view.h>

#include <tuple>

using namespace fuzz;

namespace {

// Frees outputs in their order. The count of an array is the last 8-bit number before it.
class Release {
public:
    void operator()(uint8_t number) { count_ = number; }
    void operator()(std::integral auto) {}
    void operator()(uint8_t *block) { os_block_dealloc(block); }
    void operator()(nfc_ndef_record *record) { nfc_ndef_record_delete(&record); }
    void operator()(nfc_ndef_bt_rtd_2_1_str *fields) { nfc_ndef_bt_rtd_2_1_str_delete(&fields); }
    void operator()(nfc_ndef_bt_rtd_2_0_str *fields) { nfc_ndef_bt_rtd_2_0_str_delete(&fields); }
    template <class T> void operator()(T **array)
    {
        for (size_t i = 0; array && i < count_; ++i)
            (*this)(array[i]);
        os_block_dealloc(array);
    }

private:
    uint8_t count_ = 0;
};

template <class... T> bool accepts(int8_t (*extract)(const nfc_ndef_record *, T *...), const nfc_ndef_record &record)
{
    std::tuple<T...> outputs{};
    const Memory memory;
    const int8_t result = std::apply([&](T &...output) { return extract(&record, &output...); }, outputs);
    must(memory.peak() <= most_memory(record.payload_length), "memory stays in proportion to the payload");
    must(result >= -1 && result <= 2, "the result is one that extractors have");
    std::apply([release = Release()](T &...output) mutable { (release(output), ...); }, outputs);
    return result == 1;
}

} // namespace

void fuzz::run(ByteView input)
{
    Input in(input);
    const uint8_t flags = in.u8();
    const nfc_ndef::Record record = make_record(NFC_NDEF_TNF_UNKNOWN, {}, {}, in.rest());
    record->mb = (flags & NFC_NDEF_FLAG_MB) != 0;
    record->me = (flags & NFC_NDEF_FLAG_ME) != 0;
    const auto agree = [&](auto extract, auto read, auto view) {
        const Memory memory;
        nfc_ndef_payload_report report;
        const bool valid = read(nfc_ndef_bytes{record->payload, record->payload_length}, &view, &report) == 1;
        must(memory.allocations() == 0, "reading in place allocates nothing");
        must(valid == (report.reason == NFC_NDEF_PAYLOAD_VALID), "a refusal has a reason");
        must(report.offset <= record->payload_length, "a report points into the payload");
        must(accepts(extract, *record) == valid, "both accept the same payloads");
    };
    const auto read_select = [&](auto payload, auto... out) {
        return nfc_ndef_handover_select_read(payload, flags, out...);
    };
    agree(rtdlib_text_record_extract, nfc_ndef_text_read, nfc_ndef_text());
    agree(rtdlib_uri_record_extract, nfc_ndef_uri_read, nfc_ndef_uri());
    agree(rtdlib_smart_poster_record_extract, nfc_ndef_smart_poster_read, nfc_ndef_smart_poster());
    agree(rtdlib_generic_control_record_extract, nfc_ndef_generic_control_read, nfc_ndef_generic_control());
    agree(rtdlib_handover_request_record_extract, nfc_ndef_handover_request_read, nfc_ndef_handover());
    agree(rtdlib_handover_select_record_extract, read_select, nfc_ndef_handover());
    agree(rtdlib_handover_carrier_record_extract, nfc_ndef_handover_carrier_read, nfc_ndef_handover_carrier());
    agree(rtdlib_alternative_carrier_record_extract, nfc_ndef_alternative_carrier_read, nfc_ndef_alternative_carrier());
    agree(rtdlib_collision_resolution_record_extract, nfc_ndef_collision_resolution_read,
          nfc_ndef_collision_resolution());
    agree(rtdlib_handover_select_error_record_extract, nfc_ndef_handover_error_read, nfc_ndef_handover_error());
    agree(rtdlib_bt_2_1_configuration_data_record_extract, nfc_ndef_bt_oob_read, nfc_ndef_bt_oob());
    agree(rtdlib_bt_configuration_data_record_extract, nfc_ndef_bt_legacy_read, nfc_ndef_bt_legacy());
    agree(rtdlib_sharing_enquiry_record_extract, nfc_ndef_sharing_enquiry_read, nfc_ndef_sharing_enquiry());
}

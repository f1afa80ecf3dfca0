// The extractors, all on one payload, behind a byte of the record's flags: each accepts what reading in place accepts,
// keeps within its bound of memory, and hands out what can be freed.
#include "fuzz.h"

#include <nfc_ndef_view.h>

#include <tuple>

using namespace fuzz;
using nfc_ndef::Record;

namespace {

// Frees outputs in their order. The count of an array is the last 8-bit number before it.
class Release {
public:
    void operator()(uint8_t number) { count_ = number; }
    void operator()(uint16_t) {}
    void operator()(uint32_t) {}
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
    must(result == 1 || result == -1 || result == 2 || result == 0, "the result is one that extractors have");
    std::apply([release = Release()](T &...output) mutable { (release(output), ...); }, outputs);
    return result == 1;
}

template <class View>
bool accepts(uint8_t (*read)(nfc_ndef_bytes, View *, nfc_ndef_payload_report *), const nfc_ndef_record &record)
{
    View view;
    nfc_ndef_payload_report report;
    const bool valid = read({record.payload, record.payload_length}, &view, &report) == 1;
    must(valid == (report.reason == NFC_NDEF_PAYLOAD_VALID), "a refusal has a reason");
    must(report.offset <= record.payload_length, "a report points into the payload");
    return valid;
}

template <auto extract, auto read> void agree(const nfc_ndef_record &record)
{
    const Memory none;
    const bool valid = accepts(read, record);
    must(none.allocations() == 0, "reading in place allocates nothing");
    must(accepts(extract, record) == valid, "an extractor accepts what reading in place accepts");
}

template <uint8_t flags>
uint8_t read_select(nfc_ndef_bytes payload, nfc_ndef_handover *select, nfc_ndef_payload_report *report)
{
    return nfc_ndef_handover_select_read(payload, flags, select, report);
}

void agree_on_select(const nfc_ndef_record &record)
{
    if (record.mb != 0 && record.me != 0)
        agree<rtdlib_handover_select_record_extract, read_select<NFC_NDEF_FLAG_MB | NFC_NDEF_FLAG_ME>>(record);
    else
        agree<rtdlib_handover_select_record_extract, read_select<NFC_NDEF_FLAG_MB>>(record);
}

constexpr void (*all[])(const nfc_ndef_record &){
    agree<rtdlib_text_record_extract, nfc_ndef_text_read>,
    agree<rtdlib_uri_record_extract, nfc_ndef_uri_read>,
    agree<rtdlib_smart_poster_record_extract, nfc_ndef_smart_poster_read>,
    agree<rtdlib_generic_control_record_extract, nfc_ndef_generic_control_read>,
    agree<rtdlib_handover_request_record_extract, nfc_ndef_handover_request_read>,
    agree_on_select,
    agree<rtdlib_handover_carrier_record_extract, nfc_ndef_handover_carrier_read>,
    agree<rtdlib_alternative_carrier_record_extract, nfc_ndef_alternative_carrier_read>,
    agree<rtdlib_collision_resolution_record_extract, nfc_ndef_collision_resolution_read>,
    agree<rtdlib_handover_select_error_record_extract, nfc_ndef_handover_error_read>,
    agree<rtdlib_bt_2_1_configuration_data_record_extract, nfc_ndef_bt_oob_read>,
    agree<rtdlib_bt_configuration_data_record_extract, nfc_ndef_bt_legacy_read>,
    agree<rtdlib_sharing_enquiry_record_extract, nfc_ndef_sharing_enquiry_read>};

} // namespace

void fuzz::run(ByteView input)
{
    Input in(input);
    const uint8_t flags = in.u8();
    const Record record = make_record(NFC_NDEF_TNF_UNKNOWN, {}, {}, in.rest());
    record->mb = flags & 1;
    record->me = flags >> 1 & 1;
    for (const auto agree_on_one : all)
        agree_on_one(*record);
}

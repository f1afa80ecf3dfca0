// Handover Select record: NFC Forum Connection Handover 1.2. Its payload is a version and a message.
#include "message/draft.h"
#include "message/nested.h"
#include "message/view.h"
#include "record/payload_report.h"
#include "rtd/handover_version.h"
#include "rtd/result.h"

using namespace ndef;

namespace {

enum Part : uint8_t { carrier, error };
constexpr KnownType parts[] = {known::alternative_carrier, known::handover_select_error};

} // namespace

nfc_ndef_record *rtdlib_handover_select_record_create(uint8_t ac_count, nfc_ndef_record *const *ac_records,
                                                      const nfc_ndef_record *err_record, uint8_t version)
{
    if (!agree(ac_count, ac_records) || (version != version_1_2 && (version != version_1_0 || err_record)))
        return nullptr;
    Draft select;
    select.add_each(ac_count, ac_records).add_if(err_record);
    return record_of(known::handover_select, select.pack({&version, 1})).release();
}

uint8_t nfc_ndef_handover_select_read(nfc_ndef_bytes payload, uint8_t flags, nfc_ndef_handover *select,
                                      nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *select = {};
    Reader in(bytes);
    select->version = in.u8();
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    const HandoverVersion version{select->version};
    if (!version.is_read())
        return verdict.refused(NFC_NDEF_PAYLOAD_VERSION_NOT_READ, size_t{0});
    if (in.left() == 0) { // nothing selected, which only a record on its own may say
        constexpr uint8_t alone = NFC_NDEF_FLAG_MB | NFC_NDEF_FLAG_ME;
        return (flags & alone) == alone ? verdict.valid() : verdict.refused(NFC_NDEF_PAYLOAD_NOTHING_SELECTED);
    }
    const ByteView message = in.rest();
    const Sorted sorted(message, parts);
    if (!sorted.valid())
        return verdict.refused(sorted.report(), 1);
    select->message = opened(message, sorted.report());
    select->carrier_count = sorted.count(carrier);
    if (version.has_1_2_records()) {
        if (sorted.count(error) > 1)
            return verdict.refused(NFC_NDEF_PAYLOAD_RECORD_REPEATED, sorted.second(error));
        select->error = sorted.record(error);
    }
    return verdict.valid();
}

uint8_t nfc_ndef_handover_next_carrier(nfc_ndef_handover *handover, nfc_ndef_record_view *record)
{
    while (nfc_ndef_msg_view_next(&handover->message, record))
        if (CandidateType(record->format, bytes_of(record->type)).matches(known::alternative_carrier))
            return 1;
    return 0;
}

int8_t rtdlib_handover_select_record_extract(const nfc_ndef_record *record, uint8_t *ac_count,
                                             nfc_ndef_record ***ac_records, nfc_ndef_record **err_record,
                                             uint8_t *version)
{
    if (!record || !ac_count || !ac_records || *ac_records || !err_record || !version)
        return failure;
    Reader payload(payload_of(record));
    const HandoverVersion read{payload.u8()};
    if (!payload.ok())
        return failure;
    *version = read.byte;
    if (!read.is_read())
        return failure;
    if (payload.left() == 0) { // nothing selected, which only a record on its own may say
        if (record->mb != 1 || record->me != 1)
            return failure;
        *ac_count = 0;
        return success;
    }
    Nested select(payload.rest(), parts);
    if (!select.valid())
        return failure;

    *ac_count = 0;
    if (!select.take_all({carrier}, ac_count, ac_records))
        return failure;

    if (read.has_1_2_records()) {
        if (select.count(error) > 1) {
            *err_record = nullptr;
            return bad_payload;
        }
        if (!select.take_first(error, err_record))
            return failure;
    }
    return success;
}

// Handover Request record: NFC Forum Connection Handover 1.2. Its payload is a version and a message.
#include "message/draft.h"
#include "message/nested.h"
#include "message/view.h"
#include "record/payload_report.h"
#include "rtd/handover_version.h"
#include "rtd/result.h"

using namespace ndef;

namespace {

enum Part : uint8_t { collision, carrier };
constexpr KnownType parts[] = {known::collision_resolution, known::alternative_carrier};

} // namespace

nfc_ndef_record *rtdlib_handover_request_record_create(const nfc_ndef_record *cr_record, uint8_t ac_count,
                                                       nfc_ndef_record *const *ac_records, uint8_t version)
{
    if (!agree(ac_count, ac_records) || version != (cr_record ? version_1_2 : version_1_0))
        return nullptr;
    Draft request;
    request.add_if(cr_record).add_each(ac_count, ac_records);
    return record_of(known::handover_request, request.pack({&version, 1})).release();
}

uint8_t nfc_ndef_handover_request_read(nfc_ndef_bytes payload, nfc_ndef_handover *request,
                                       nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *request = {};
    Reader in(bytes);
    request->version = in.u8();
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    const HandoverVersion version{request->version};
    if (!version.is_read())
        return verdict.refused(NFC_NDEF_PAYLOAD_VERSION_NOT_READ, size_t{0});
    const ByteView message = in.rest();
    const Sorted sorted(message, parts);
    if (!sorted.valid())
        return verdict.refused(sorted.report(), 1);
    request->message = opened(message, sorted.report());
    if (version.has_1_2_records()) {
        if (sorted.count(collision) != 1)
            return sorted.count(collision) == 0
                       ? verdict.refused(NFC_NDEF_PAYLOAD_RECORD_MISSING)
                       : verdict.refused(NFC_NDEF_PAYLOAD_RECORD_REPEATED, sorted.second(collision));
        request->collision = sorted.record(collision);
    }
    request->carrier_count = sorted.count(carrier);
    return verdict.valid();
}

int8_t rtdlib_handover_request_record_extract(const nfc_ndef_record *record, nfc_ndef_record **cr_record,
                                              uint8_t *ac_count, nfc_ndef_record ***ac_records, uint8_t *version)
{
    if (!record || !cr_record || !ac_count || !ac_records || *ac_records || !version)
        return failure;
    Reader payload(payload_of(record));
    const HandoverVersion read{payload.u8()};
    if (!payload.ok())
        return failure;
    *version = read.byte;
    if (!read.is_read())
        return failure;
    Nested request(payload.rest(), parts);
    if (!request.valid())
        return failure;

    if (read.has_1_2_records()) {
        if (request.count(collision) != 1)
            return bad_payload;
        if (!request.take_first(collision, cr_record))
            return failure;
    } else {
        *cr_record = nullptr;
    }

    *ac_count = 0;
    return request.take_all({carrier}, ac_count, ac_records) ? success : failure;
}

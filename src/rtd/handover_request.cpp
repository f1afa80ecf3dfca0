// Handover Request record: NFC Forum Connection Handover 1.2. Its payload is a version and a message.
#include "message/draft.h"
#include "message/nested.h"
#include "rtd/handover_version.h"
#include "rtd/result.h"

using namespace ndef;

nfc_ndef_record *rtdlib_handover_request_record_create(const nfc_ndef_record *cr_record, uint8_t ac_count,
                                                       nfc_ndef_record *const *ac_records, uint8_t version)
{
    if (!agree(ac_count, ac_records) || version != (cr_record ? version_1_2 : version_1_0))
        return nullptr;
    Draft request;
    request.add_if(cr_record).add_each(ac_count, ac_records);
    return record_of(known::handover_request, request.pack({&version, 1})).release();
}

int8_t rtdlib_handover_request_record_extract(const nfc_ndef_record *record, nfc_ndef_record **cr_record,
                                              uint8_t *ac_count, nfc_ndef_record ***ac_records, uint8_t *version)
{
    enum : Nested::Type { collision, carrier };
    if (!record || !cr_record || !ac_count || !ac_records || *ac_records || !version)
        return failure;
    Reader payload(payload_of(record));
    const HandoverVersion read{payload.u8()};
    if (!payload.ok())
        return failure;
    *version = read.byte;
    if (!read.is_read())
        return failure;
    static constexpr KnownType parts[] = {known::collision_resolution, known::alternative_carrier};
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

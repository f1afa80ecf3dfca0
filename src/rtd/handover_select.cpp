// Handover Select record: NFC Forum Connection Handover 1.2. Its payload is a version and a message.
#include "message/draft.h"
#include "message/nested.h"
#include "rtd/handover_version.h"
#include "rtd/result.h"

using namespace ndef;

nfc_ndef_record *rtdlib_handover_select_record_create(uint8_t ac_count, nfc_ndef_record *const *ac_records,
                                                      const nfc_ndef_record *err_record, uint8_t version)
{
    if (!agree(ac_count, ac_records) || (version != version_1_2 && (version != version_1_0 || err_record)))
        return nullptr;
    Draft select;
    select.add_each(ac_count, ac_records).add_if(err_record);
    return record_of(known::handover_select, select.pack({&version, 1})).release();
}

int8_t rtdlib_handover_select_record_extract(const nfc_ndef_record *record, uint8_t *ac_count,
                                             nfc_ndef_record ***ac_records, nfc_ndef_record **err_record,
                                             uint8_t *version)
{
    enum : Nested::Type { carrier, error };
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
    static constexpr KnownType parts[] = {known::alternative_carrier, known::handover_select_error};
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

// Handover Request and Select records: NFC Forum Connection Handover 1.2. Their payload is a version and a message.
#include "message/draft.h"
#include "message/nested.h"
#include "rtd/result.h"

using namespace ndef;

namespace {

// A version byte. Records of the two known versions are made; those of any minor version are read.
struct Version {
    uint8_t byte;
    unsigned major() const { return byte >> 4; }
    unsigned minor() const { return byte & 0x0F; }
    bool is_read() const { return major() == 1; }
    bool has_1_2_records() const { return minor() == 2; }
};
constexpr uint8_t version_1_0 = 0x10;
constexpr uint8_t version_1_2 = 0x12;

// A count and an array that go together.
bool agree(uint8_t count, nfc_ndef_record *const *records) { return (count != 0) == (records != nullptr); }

} // namespace

nfc_ndef_record *rtdlib_handover_request_record_create(const nfc_ndef_record *cr_record, uint8_t ac_count,
                                                       nfc_ndef_record *const *ac_records, uint8_t version)
{
    if (!agree(ac_count, ac_records) || version != (cr_record ? version_1_2 : version_1_0))
        return nullptr;
    Draft request;
    request.add_if(cr_record).add_each(ac_count, ac_records);
    Payload payload = request.pack({&version, 1});
    return record_of(well_known("Hr"), payload).release();
}

nfc_ndef_record *rtdlib_handover_select_record_create(uint8_t ac_count, nfc_ndef_record *const *ac_records,
                                                      const nfc_ndef_record *err_record, uint8_t version)
{
    if (!agree(ac_count, ac_records) || (version != version_1_2 && (version != version_1_0 || err_record)))
        return nullptr;
    Draft select;
    select.add_each(ac_count, ac_records).add_if(err_record);
    Payload payload = select.pack({&version, 1});
    return record_of(well_known("Hs"), payload).release();
}

int8_t rtdlib_handover_request_record_extract(const nfc_ndef_record *record, nfc_ndef_record **cr_record,
                                              uint8_t *ac_count, nfc_ndef_record ***ac_records, uint8_t *version)
{
    enum : Nested::Type { collision, carrier };
    if (!record || !cr_record || !ac_count || !ac_records || *ac_records || !version)
        return failure;
    Reader payload(payload_of(record));
    const Version read{payload.u8()};
    if (!payload.ok())
        return failure;
    *version = read.byte;
    if (!read.is_read())
        return failure;
    static constexpr KnownType parts[] = {well_known("cr"), well_known("ac")};
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

int8_t rtdlib_handover_select_record_extract(const nfc_ndef_record *record, uint8_t *ac_count,
                                             nfc_ndef_record ***ac_records, nfc_ndef_record **err_record,
                                             uint8_t *version)
{
    enum : Nested::Type { carrier, error };
    if (!record || !ac_count || !ac_records || *ac_records || !err_record || !version)
        return failure;
    Reader payload(payload_of(record));
    const Version read{payload.u8()};
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
    static constexpr KnownType parts[] = {well_known("ac"), well_known("err")};
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

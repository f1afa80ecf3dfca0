// Collision Resolution record: NFC Forum Connection Handover 1.2. Its payload is exactly two bytes.
#include "record/build.h"
#include "rtd/result.h"

using namespace ndef;

nfc_ndef_record *rtdlib_collision_resolution_record_create(uint16_t random_number)
{
    return record_of(known::collision_resolution, laid_out([&](auto &out) { out.be(random_number); })).release();
}

int8_t rtdlib_collision_resolution_record_extract(const nfc_ndef_record *record, uint16_t *random_number)
{
    const ByteView payload = payload_of(record);
    if (!random_number || payload.size() != 2)
        return failure;
    *random_number = Reader(payload).be<uint16_t>();
    return success;
}

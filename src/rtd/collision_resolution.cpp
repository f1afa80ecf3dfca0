// Collision Resolution record: NFC Forum Connection Handover 1.2. Its payload is exactly two bytes.
#include "record/build.h"
#include "record/payload_report.h"
#include "rtd/result.h"

using namespace ndef;

nfc_ndef_record *rtdlib_collision_resolution_record_create(uint16_t random_number)
{
    return record_of(known::collision_resolution, laid_out([&](auto &out) { out.be(random_number); })).release();
}

uint8_t nfc_ndef_collision_resolution_read(nfc_ndef_bytes payload, nfc_ndef_collision_resolution *collision,
                                           nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *collision = {};
    Reader in(bytes);
    const auto random_number = in.be<uint16_t>();
    if (!in.ok())
        return verdict.refused(bytes.empty() ? NFC_NDEF_PAYLOAD_EMPTY : NFC_NDEF_PAYLOAD_FIELD_PAST_END, size_t{0});
    collision->random_number = random_number;
    if (in.left() != 0)
        return verdict.refused(NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 2);
    return verdict.valid();
}

int8_t rtdlib_collision_resolution_record_extract(const nfc_ndef_record *record, uint16_t *random_number)
{
    nfc_ndef_collision_resolution view;
    if (!random_number || !nfc_ndef_collision_resolution_read(lent(payload_of(record)), &view, nullptr))
        return failure;
    *random_number = view.random_number;
    return success;
}

// Sharing Enquiry record, an external type of the vendor.
#include "record/build.h"
#include "record/payload_report.h"
#include "rtd/result.h"

using namespace ndef;

constexpr size_t fixed_length = 3; // up to the length of the data

static bool is_accepted(uint8_t version) { return version >> 4 == 1 || (version & 0x0F) == 0; }

nfc_ndef_record *rtdlib_sharing_enquiry_record_create(uint8_t enquiry_type, uint8_t enquiry_data_length,
                                                      const uint8_t *enquiry_data, uint8_t version)
{
    if ((enquiry_data_length != 0) != (enquiry_data != nullptr) || !is_accepted(version))
        return nullptr;
    const auto layout = [&](auto &out) {
        out.u8(version).u8(enquiry_type).u8(enquiry_data_length).bytes({enquiry_data, enquiry_data_length});
    };
    return record_of(known::sharing_enquiry, laid_out(layout)).release();
}

uint8_t nfc_ndef_sharing_enquiry_read(nfc_ndef_bytes payload, nfc_ndef_sharing_enquiry *enquiry,
                                      nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    Reader in(bytes);
    *enquiry = {.data = {}, .version = in.u8(), .type = in.u8()};
    const uint8_t length = in.u8();
    if (!in.ok())
        return verdict.refused(bytes.empty() ? NFC_NDEF_PAYLOAD_EMPTY : NFC_NDEF_PAYLOAD_FIELD_PAST_END);
    if (!is_accepted(enquiry->version))
        return verdict.refused(NFC_NDEF_PAYLOAD_VERSION_NOT_READ, size_t{0});
    if (length == 0) // whatever follows
        return verdict.valid();
    if (length != in.left())
        return length > in.left() ? verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, fixed_length)
                                  : verdict.refused(NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, fixed_length + length);
    enquiry->data = lent(in.rest());
    return verdict.valid();
}

int8_t rtdlib_sharing_enquiry_record_extract(const nfc_ndef_record *record, uint8_t *enquiry_type,
                                             uint8_t *enquiry_data_length, uint8_t **enquiry_data, uint8_t *version)
{
    if (!record || !enquiry_type || !enquiry_data_length || !enquiry_data || *enquiry_data)
        return failure;
    const ByteView payload = payload_of(record);
    nfc_ndef_sharing_enquiry view;
    nfc_ndef_payload_report report;
    nfc_ndef_sharing_enquiry_read(lent(payload), &view, &report);
    if (payload.size() < fixed_length)
        return payload.empty() ? failure : bad_payload;
    *version = view.version;
    if (report.reason == NFC_NDEF_PAYLOAD_VERSION_NOT_READ)
        return failure;
    *enquiry_type = view.type;
    *enquiry_data_length = payload[fixed_length - 1];
    if (report.reason != NFC_NDEF_PAYLOAD_VALID)
        return bad_payload;
    if (view.data.length != 0 && !copy_to(*enquiry_data, bytes_of(view.data))) {
        *enquiry_data_length = 0;
        return failure;
    }
    return success;
}

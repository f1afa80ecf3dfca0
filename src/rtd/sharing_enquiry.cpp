// Sharing Enquiry record, an external type of the vendor.
#include "record/build.h"
#include "rtd/result.h"

using namespace ndef;

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

int8_t rtdlib_sharing_enquiry_record_extract(const nfc_ndef_record *record, uint8_t *enquiry_type,
                                             uint8_t *enquiry_data_length, uint8_t **enquiry_data, uint8_t *version)
{
    if (!record || !enquiry_type || !enquiry_data_length || !enquiry_data || *enquiry_data)
        return failure;
    const ByteView payload = payload_of(record);
    if (payload.empty())
        return failure;
    Reader in(payload);
    const uint8_t version_byte = in.u8();
    const uint8_t type = in.u8();
    const uint8_t length = in.u8();
    if (!in.ok())
        return bad_payload;

    *version = version_byte;
    if (!is_accepted(version_byte))
        return failure;
    *enquiry_type = type;
    *enquiry_data_length = length;
    if (length == 0)
        return success;
    if (length != in.left())
        return bad_payload;
    if (!copy_to(*enquiry_data, in.rest())) {
        *enquiry_data_length = 0;
        return failure;
    }
    return success;
}

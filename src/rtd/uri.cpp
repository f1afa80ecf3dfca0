// URI record: NFC Forum URI RTD 1.0. Builder and extractor leave the prefixes to the caller.
#include "record/build.h"
#include "record/payload_report.h"
#include "rtd/result.h"

using namespace ndef;

static size_t clean_length(ByteView uri_field)
{
    // Eight bytes at a time while there is no control character in them: one that is less than 0x20 borrows from the
    // highest bit of its byte.
    constexpr uint64_t each = 0x0101010101010101;
    size_t whole = 0;
    for (uint64_t bytes; uri_field.size() - whole >= sizeof bytes; whole += sizeof bytes) {
        std::memcpy(&bytes, uri_field.data() + whole, sizeof bytes);
        if (((bytes - each * 0x20) & ~bytes & each * 0x80) != 0)
            break;
    }
    return whole + ndef::clean_length(uri_field.subspan(whole), [](uint8_t byte) { return byte >= 0x20; });
}

nfc_ndef_record *rtdlib_uri_record_create(uint8_t identifier_code, uint32_t uri_field_length, const uint8_t *uri_field)
{
    if ((uri_field != nullptr) != (uri_field_length != 0) || uri_field_length == UINT32_MAX)
        return nullptr;
    const ByteView field{uri_field, uri_field_length};
    if (clean_length(field) != field.size())
        return nullptr;
    return record_of(known::uri, laid_out([&](auto &out) { out.u8(identifier_code).bytes(field); })).release();
}

uint8_t nfc_ndef_uri_read(nfc_ndef_bytes payload, nfc_ndef_uri *uri, nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    Reader in(bytes);
    const uint8_t code = in.u8();
    *uri = {.prefix = nfc_ndef_uri_prefix(code), .field = {}, .identifier_code = code};
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    const ByteView field = in.rest();
    const size_t clean = clean_length(field);
    if (clean != field.size())
        return verdict.refused(NFC_NDEF_PAYLOAD_CONTROL_CHARACTER, 1 + clean);
    uri->field = lent(field);
    return verdict.valid();
}

int8_t rtdlib_uri_record_extract(const nfc_ndef_record *record, uint8_t *identifier_code, uint8_t **uri_field,
                                 uint32_t *uri_field_length)
{
    const ByteView payload = payload_of(record);
    nfc_ndef_uri view;
    const bool valid = nfc_ndef_uri_read(lent(payload), &view, nullptr);
    if (payload.empty())
        return failure;
    *identifier_code = view.identifier_code;
    *uri_field = nullptr;
    *uri_field_length = static_cast<uint32_t>(view.field.length);
    if (view.field.length != 0)
        *uri_field = copy_of(bytes_of(view.field)).release();
    return valid ? success : failure;
}

// Text record: NFC Forum Text RTD 1.0.
#include "record/build.h"
#include "record/payload_report.h"
#include "rtd/result.h"

using namespace ndef;

// The status byte holds the encoding and the length of the language code; the bit between them is reserved.
constexpr uint8_t utf16_bit = 0x80;
constexpr uint8_t language_length_bits = 0x3F;

nfc_ndef_record *rtdlib_text_record_create(uint8_t utf16, uint8_t language_code_length, const uint8_t *language_code,
                                           const uint8_t *text, uint32_t text_length)
{
    if (language_code_length == 0 || !language_code || text_length == 0 || !text ||
        language_code_length > language_length_bits)
        return nullptr;
    const auto status = static_cast<uint8_t>((utf16 & 1 ? utf16_bit : 0) | language_code_length);
    const auto layout = [&](auto &out) {
        out.u8(status).bytes({language_code, language_code_length}).bytes({text, text_length});
    };
    return record_of(known::text, laid_out(layout)).release();
}

uint8_t nfc_ndef_text_read(nfc_ndef_bytes payload, nfc_ndef_text *text, nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *text = {};
    Reader in(bytes);
    const uint8_t status = in.u8();
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    text->utf16 = (status & utf16_bit) != 0;
    const ByteView language = in.take(status & language_length_bits);
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, 1);
    text->language = lent(language);
    text->text = lent(in.rest());
    return text->text.length != 0 ? verdict.valid() : verdict.refused(NFC_NDEF_PAYLOAD_NO_TEXT);
}

int8_t rtdlib_text_record_extract(const nfc_ndef_record *record, uint8_t *utf16, uint8_t *language_code_length,
                                  uint8_t **language_code, uint32_t *text_length, uint8_t **text)
{
    const ByteView payload = payload_of(record);
    nfc_ndef_text view;
    const bool valid = nfc_ndef_text_read(lent(payload), &view, nullptr);
    if (payload.empty())
        return failure;
    *utf16 = view.utf16;
    *language_code_length = payload[0] & language_length_bits;
    if (!valid)
        return failure;
    if (view.language.length != 0)
        *language_code = copy_of(bytes_of(view.language)).release();
    *text_length = static_cast<uint32_t>(view.text.length);
    *text = copy_of(bytes_of(view.text)).release();
    return success;
}

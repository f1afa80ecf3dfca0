// Text record: NFC Forum Text RTD 1.0.
#include "record/build.h"
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

int8_t rtdlib_text_record_extract(const nfc_ndef_record *record, uint8_t *utf16, uint8_t *language_code_length,
                                  uint8_t **language_code, uint32_t *text_length, uint8_t **text)
{
    Reader payload(payload_of(record));
    const uint8_t status = payload.u8();
    if (!payload.ok())
        return failure;
    *utf16 = (status & utf16_bit) != 0;
    *language_code_length = status & language_length_bits;
    const ByteView language = payload.take(*language_code_length);
    const ByteView rest = payload.rest();
    if (rest.empty())
        return failure;
    if (!language.empty())
        *language_code = copy_of(language).release();
    *text_length = static_cast<uint32_t>(rest.size());
    *text = copy_of(rest).release();
    return success;
}

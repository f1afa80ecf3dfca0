// Signature record: NFC Forum Signature RTD 2.0. Only its fields: nothing here computes a signature.
#include "nfc_ndef_types.h"
#include "record/build.h"
#include "record/elements.h"

using namespace ndef;

namespace {

constexpr uint8_t version_2_0 = 0x20, uri_bit = 0x80;
constexpr uint8_t type_bits = 0x7F, format_bits = 0x07, count_bits = 0x0F;
constexpr int format_shift = 4;

// Whether bytes are UTF-8 (RFC 3629): no overlong forms, no surrogates, nothing above U+10FFFF.
bool is_utf8(ByteView text)
{
    for (Reader in(text); in.left() != 0;) {
        const uint8_t first = in.u8();
        if (first < 0x80)
            continue;
        const unsigned more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
        uint32_t character = first & (0x3Fu >> more);
        for (const uint8_t byte : in.take(more)) {
            if ((byte & 0xC0) != 0x80)
                return false;
            character = character << 6 | (byte & 0x3F);
        }
        constexpr uint32_t least[] = {0, 0x80, 0x800, 0x10000};
        if (!in.ok() || first < 0xC2 || first > 0xF4 || character < least[more] || character > 0x10FFFF ||
            (character >= 0xD800 && character < 0xE000))
            return false;
    }
    return true;
}

nfc_ndef_payload_reason broken_by_uri(ByteView uri)
{
    if (uri.empty())
        return NFC_NDEF_PAYLOAD_FIELD_EMPTY;
    for (const uint8_t byte : uri)
        if (byte < 0x20)
            return NFC_NDEF_PAYLOAD_CONTROL_CHARACTER;
    return is_utf8(uri) ? NFC_NDEF_PAYLOAD_VALID : NFC_NDEF_PAYLOAD_NOT_UTF8;
}

// Takes a field with its length in front, which is a URI where it says so; the reason to refuse it, if any.
nfc_ndef_payload_reason take_field(Reader &in, bool is_uri, ByteView &field)
{
    field = in.take(in.be<uint16_t>());
    if (!in.ok())
        return NFC_NDEF_PAYLOAD_FIELD_PAST_END;
    return is_uri ? broken_by_uri(field) : NFC_NDEF_PAYLOAD_VALID;
}

} // namespace

uint8_t nfc_ndef_signature_read(nfc_ndef_bytes payload, nfc_ndef_signature *signature, nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *signature = {};
    Reader in(bytes);
    const auto position = [&] { return bytes.size() - in.left(); };
    signature->version = in.u8();
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    if (signature->version != version_2_0)
        return verdict.refused(NFC_NDEF_PAYLOAD_VERSION_NOT_READ, size_t{0});
    const uint8_t type = in.u8();
    signature->is_uri = (type & uri_bit) != 0;
    signature->signature_type = type & type_bits;
    signature->hash_type = in.u8();

    size_t field_at = position();
    ByteView field;
    if (const auto reason = take_field(in, signature->is_uri, field); reason != NFC_NDEF_PAYLOAD_VALID)
        return verdict.refused(reason, field_at);
    signature->signature = lent(field);
    field_at = position();
    const uint8_t chain = in.u8();
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, field_at);
    signature->certificate_format = chain >> format_shift & format_bits;
    const uint8_t count = chain & count_bits;
    const Reader certificates = in;
    for (uint8_t i = 0; i < count; ++i) {
        field_at = position();
        if (take_field(in, false, field) != NFC_NDEF_PAYLOAD_VALID)
            return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, field_at);
    }
    signature->certificate_count = count;
    signature->certificates = lent(Reader(certificates).take(certificates.left() - in.left()));
    if ((chain & uri_bit) != 0) {
        field_at = position();
        if (const auto reason = take_field(in, true, field); reason != NFC_NDEF_PAYLOAD_VALID)
            return verdict.refused(reason, field_at);
        signature->certificate_uri = lent(field);
    }
    return in.left() == 0 ? verdict.valid() : verdict.refused(NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, position());
}

uint8_t nfc_ndef_signature_next(nfc_ndef_signature *signature, nfc_ndef_bytes *certificate)
{
    Reader in(bytes_of(signature->certificates));
    const ByteView found = in.take(in.be<uint16_t>());
    if (signature->certificate_count == 0 || !in.ok())
        return 0;
    *certificate = lent(found);
    signature->certificates = lent(in.rest());
    --signature->certificate_count;
    return 1;
}

uint32_t nfc_ndef_signature_certificate_write(nfc_ndef_bytes certificate, uint8_t *buffer, uint32_t capacity)
{
    return written([&](auto &out) { out.template sized<uint16_t>(bytes_of(certificate)); }, buffer, capacity);
}

nfc_ndef_record *nfc_ndef_signature_record_create(const nfc_ndef_signature *signature, nfc_ndef_bytes id)
{
    if (signature->signature_type > type_bits || signature->certificate_format > format_bits ||
        signature->certificate_count > count_bits)
        return nullptr;
    const ByteView uri = bytes_of(signature->certificate_uri);
    const auto layout = [&](auto &out) {
        out.u8(signature->version)
            .u8(static_cast<uint8_t>((signature->is_uri ? uri_bit : 0) | signature->signature_type))
            .u8(signature->hash_type)
            .template sized<uint16_t>(bytes_of(signature->signature))
            .u8(static_cast<uint8_t>((uri.empty() ? 0 : uri_bit) | signature->certificate_format << format_shift |
                                     signature->certificate_count));
        nfc_ndef_signature left = *signature;
        for (nfc_ndef_bytes certificate; nfc_ndef_signature_next(&left, &certificate);)
            out.template sized<uint16_t>(bytes_of(certificate));
        if (!uri.empty())
            out.template sized<uint16_t>(uri);
    };
    return readable_record_of(known::signature, layout, id, nfc_ndef_signature_read);
}

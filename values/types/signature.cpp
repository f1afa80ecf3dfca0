#include "signature.h"

#include "../c_interface.h"
#include "../printable.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

std::optional<Signature> Kind<Signature>::read(const nfc_ndef_record_view &record, const Nesting &,
                                               nfc_ndef_payload_report &report)
{
    nfc_ndef_signature read;
    if (!nfc_ndef_signature_read(record.payload, &read, &report))
        return std::nullopt;
    Signature signature;
    signature.version = read.version;
    signature.signature_type = read.signature_type;
    signature.hash_type = read.hash_type;
    if (read.is_uri)
        signature.signature_uri = string_of(read.signature);
    else
        signature.signature = bytes_of(read.signature);
    signature.certificate_format = read.certificate_format;
    signature.certificate_uri = string_of(read.certificate_uri);
    for (nfc_ndef_bytes certificate; nfc_ndef_signature_next(&read, &certificate);)
        signature.certificates.push_back(bytes_of(certificate));
    return signature;
}

nfc_ndef::Record Kind<Signature>::make(const Signature &signature)
{
    if (signature.certificates.size() > 15 || (signature.signature_uri && !signature.signature.empty()))
        return nullptr;
    Bytes certificates;
    const auto write = [](const nfc_ndef_bytes *certificate, uint8_t *buffer, uint32_t capacity) {
        return nfc_ndef_signature_certificate_write(*certificate, buffer, capacity);
    };
    for (const Bytes &certificate : signature.certificates)
        if (!append(certificates, write, bytes_view(certificate)))
            return nullptr;
    const nfc_ndef_signature lent{.signature = signature.signature_uri ? bytes_view(*signature.signature_uri)
                                                                       : bytes_view(signature.signature),
                                  .certificates = bytes_view(certificates),
                                  .certificate_uri = bytes_view(signature.certificate_uri),
                                  .version = signature.version,
                                  .is_uri = signature.signature_uri.has_value(),
                                  .signature_type = signature.signature_type,
                                  .hash_type = signature.hash_type,
                                  .certificate_format = signature.certificate_format,
                                  .certificate_count = static_cast<uint8_t>(signature.certificates.size())};
    return nfc_ndef::Record(nfc_ndef_signature_record_create(&lent, {}));
}

void Kind<Signature>::show(const Signature &signature, View &view)
{
    const auto named = [](Names names, uint8_t value) { return fmt::format("{} ({})", names.title_of(value), value); };
    view.field("signature type", named(signature_types, signature.signature_type));
    view.field("hash", named(hash_types, signature.hash_type));
    if (signature.signature_uri)
        view.text("signature at", view_of(*signature.signature_uri));
    else if (!signature.signature.empty())
        view.bytes("signature", signature.signature);
    view.field("certificate format", named(certificate_formats, signature.certificate_format));
    for (const Bytes &certificate : signature.certificates)
        view.field("certificate", count_of(certificate.size(), "byte"));
    if (!signature.certificate_uri.empty())
        view.text("next certificate at", view_of(signature.certificate_uri));
}

} // namespace nfc_ndef::values

// Android Application Record, an external type of Android's.
#include "nfc_ndef_types.h"
#include "record/build.h"
#include "record/payload_report.h"

using namespace ndef;

static size_t package_length(ByteView bytes)
{
    return clean_length(bytes, [](uint8_t c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.';
    });
}

uint8_t nfc_ndef_android_application_read(nfc_ndef_bytes payload, nfc_ndef_android_application *application,
                                          nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *application = {};
    if (bytes.empty())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    const size_t clean = package_length(bytes);
    if (clean != bytes.size())
        return verdict.refused(NFC_NDEF_PAYLOAD_CHARACTER_NOT_ALLOWED, clean);
    application->package = lent(bytes);
    return verdict.valid();
}

nfc_ndef_record *nfc_ndef_android_application_record_create(const nfc_ndef_android_application *application,
                                                            nfc_ndef_bytes id)
{
    const auto layout = [&](auto &out) { out.bytes(bytes_of(application->package)); };
    return readable_record_of(known::android_application, layout, id, nfc_ndef_android_application_read);
}

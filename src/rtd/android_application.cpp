// Android Application Record, an external type of Android's.
#include "nfc_ndef_types.h"
#include "record/build.h"
#include "record/payload_report.h"

#include <algorithm>

using namespace ndef;

static bool is_package_character(uint8_t c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.';
}

uint8_t nfc_ndef_android_application_read(nfc_ndef_bytes payload, nfc_ndef_android_application *application,
                                          nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *application = {};
    if (bytes.empty())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    const auto wrong = std::find_if_not(bytes.begin(), bytes.end(), is_package_character);
    if (wrong != bytes.end())
        return verdict.refused(NFC_NDEF_PAYLOAD_CHARACTER_NOT_ALLOWED, static_cast<size_t>(wrong - bytes.begin()));
    application->package = lent(bytes);
    return verdict.valid();
}

nfc_ndef_record *nfc_ndef_android_application_record_create(const nfc_ndef_android_application *application,
                                                            nfc_ndef_bytes id)
{
    const auto layout = [&](auto &out) { out.bytes(bytes_of(application->package)); };
    return readable_record_of(known::android_application, layout, id, nfc_ndef_android_application_read);
}

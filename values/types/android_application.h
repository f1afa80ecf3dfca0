// An Android Application Record.
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct AndroidApplication {
    std::string package; // ASCII letters, digits, '_' and '.'
    bool operator==(const AndroidApplication &) const = default;
};

template <> struct Kind<AndroidApplication> : Leaf {
    static constexpr Type type = external("android.com:pkg");
    static constexpr std::string_view json = "android_application", title = "Android application";
    static std::optional<AndroidApplication> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                  nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const AndroidApplication &application);
    static void show(const AndroidApplication &application, View &view);
    static std::string summary(const AndroidApplication &application);

    template <class Fields> static void map(Fields &fields, Value<Fields, AndroidApplication> &application)
    {
        fields.text_or_hex("package", application.package, {1}, Presence::required);
    }
};

} // namespace nfc_ndef::values

// A Handover Select Error record (NFC Forum Connection Handover 1.2).
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct HandoverSelectError {
    uint8_t error_reason = 0;
    uint8_t error_data = 0;
    bool operator==(const HandoverSelectError &) const = default;
};

template <> struct Kind<HandoverSelectError> : Leaf {
    static constexpr Type type = well_known("err");
    static constexpr std::string_view json = "handover_select_error", title = "Handover Select Error";
    static std::optional<HandoverSelectError> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                   nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const HandoverSelectError &error);
    static void show(const HandoverSelectError &error, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, HandoverSelectError> &error)
    {
        fields.number("error_reason", error.error_reason);
        fields.number("error_data", error.error_data);
    }
};

} // namespace nfc_ndef::values

// A TNEP Status record (NFC Forum TNEP 1.0).
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct TnepStatus {
    uint8_t status = 0;
    bool operator==(const TnepStatus &) const = default;
};

inline constexpr Name tnep_statuses[] = {{0, "success"}, {1, "protocol-error", "protocol error"}};

template <> struct Kind<TnepStatus> : Leaf {
    static constexpr Type type = well_known("Te");
    static constexpr std::string_view json = "tnep_status", title = "TNEP Status";
    static std::optional<TnepStatus> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                          nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const TnepStatus &status);
    static void show(const TnepStatus &status, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, TnepStatus> &status)
    {
        fields.enumeration("status", status.status, tnep_statuses);
    }
};

} // namespace nfc_ndef::values

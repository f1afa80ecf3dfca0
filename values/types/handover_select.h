// A Handover Select record (NFC Forum Connection Handover 1.2).
#pragma once

#include "../kind.h"
#include "../optional_record.h"

namespace nfc_ndef::values {

struct HandoverSelect {
    uint8_t version = 0; // major version in bits 4 to 7, minor version in bits 0 to 3
    Records ac_records;
    OptionalRecord err_record;
    Records other_records; // only in one that was read: no builder writes them
    bool operator==(const HandoverSelect &) const = default;
};

template <> struct Kind<HandoverSelect> : Nests<1> {
    static constexpr Type type = well_known("Hs");
    static constexpr std::string_view json = "handover_select", title = "Handover Select";
    static std::optional<HandoverSelect> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                              nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const HandoverSelect &select);
    static void show(const HandoverSelect &select, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, HandoverSelect> &select)
    {
        fields.version("version", select.version);
        fields.makes("version", {"1.0", "1.2"});
        fields.records("ac_records", select.ac_records, "ac");
        fields.record("err_record", select.err_record, "err");
        const bool has_err = static_cast<bool>(select.err_record);
        fields.require(select.version == 0x12 || !has_err, "err_record", "is not for version 1.0");
        fields.require(has_err || !select.ac_records.empty(), "ac_records", "must not be empty");
        fields.records_kept("other_records", select.other_records);
    }
};

} // namespace nfc_ndef::values

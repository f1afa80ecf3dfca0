// A Generic Control record (NFC Forum Generic Control RTD 1.0).
#pragma once

#include "../kind.h"
#include "../optional_record.h"

namespace nfc_ndef::values {

struct GenericControl {
    // The header flags that the action record is stored with.
    struct Flags {
        bool mb = false, me = false, cf = false;
        bool operator==(const Flags &) const = default;
    };

    uint8_t config = 0;
    OptionalRecord target_record;       // never none in one that was read
    std::optional<uint8_t> action_flag; // none: no action at all; 0: the action is a record; else a code
    uint8_t action_code = 0;
    OptionalRecord action_record;
    Flags action_record_flags;
    OptionalRecord data_record;
    Records gc_records; // in message order
    Records other_records;
    bool operator==(const GenericControl &) const = default;
};

template <> struct Kind<GenericControl> : Nests<1> {
    static constexpr Type type = well_known("Gc");
    static constexpr std::string_view json = "generic_control", title = "Generic Control";
    static std::optional<GenericControl> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                              nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const GenericControl &control);
    static void show(const GenericControl &control, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, GenericControl> &control)
    {
        fields.number("config", control.config);
        fields.record("target_record", control.target_record, "t", Presence::required);
        fields.number("action_flag", control.action_flag, Presence::required);
        fields.makes("action_flag", {0, 1});
        const bool has_code = control.action_flag.value_or(0) != 0;
        std::optional<uint8_t> code;
        if (!Fields::reads && has_code)
            code = control.action_code;
        fields.number("action_code", code);
        if constexpr (Fields::reads) {
            fields.require(has_code == code.has_value(), "action_code",
                           has_code ? "is missing" : "is not for the action_flag 0");
            control.action_code = code.value_or(0);
        }
        fields.record_with_flags("action_record", control.action_record, control.action_record_flags);
        fields.require(!has_code || !control.action_record, "action_record", "is for the action_flag 0");
        fields.record("data_record", control.data_record, "d");
        fields.records("gc_records", control.gc_records, "Gc");
        fields.records_kept("other_records", control.other_records);
    }
};

} // namespace nfc_ndef::values

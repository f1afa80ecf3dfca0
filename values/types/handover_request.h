// A Handover Request record (NFC Forum Connection Handover 1.2).
#pragma once

#include "../kind.h"
#include "../optional_record.h"

namespace nfc_ndef::values {

struct HandoverRequest {
    uint8_t version = 0; // major version in bits 4 to 7, minor version in bits 0 to 3
    OptionalRecord cr_record;
    Records ac_records;
    Records other_records; // only in one that was read: no builder writes them
    bool operator==(const HandoverRequest &) const = default;
};

template <> struct Kind<HandoverRequest> : Nests<1> {
    static constexpr Type type = well_known("Hr");
    static constexpr std::string_view json = "handover_request", title = "Handover Request";
    static std::optional<HandoverRequest> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                               nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const HandoverRequest &request);
    static void show(const HandoverRequest &request, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, HandoverRequest> &request)
    {
        fields.version("version", request.version);
        fields.makes("version", {"1.0", "1.2"});
        fields.record("cr_record", request.cr_record, "cr");
        const bool has_cr = static_cast<bool>(request.cr_record);
        fields.require((request.version == 0x12) == has_cr, "cr_record",
                       has_cr ? "is not for version 1.0" : "is needed with version 1.2");
        fields.records("ac_records", request.ac_records, "ac");
        fields.require(has_cr || !request.ac_records.empty(), "ac_records", "must not be empty");
        fields.records_kept("other_records", request.other_records);
    }
};

} // namespace nfc_ndef::values

// What Handover Mediation and Handover Initiate records hold (NFC Forum Connection Handover 1.5).
#pragma once

#include "kind.h"

namespace nfc_ndef::values {

struct HandoverCarriers {
    uint8_t version = 0x15; // major version in bits 4 to 7, minor version in bits 0 to 3
    Records ac_records;
    Records other_records;
    bool operator==(const HandoverCarriers &) const = default;

    static HandoverCarriers of(const nfc_ndef_handover &read, const Nesting &nesting);
    // What `create` makes of them.
    nfc_ndef::Record made(nfc_ndef_record *(*create)(const nfc_ndef_handover *, nfc_ndef_bytes)) const;
    void show(View &view) const;

    template <class Fields> static void map(Fields &fields, Value<Fields, HandoverCarriers> &carriers)
    {
        fields.version("version", carriers.version);
        fields.require(carriers.version >> 4 == 1, "version", "must be 1.0 to 1.15");
        fields.records("ac_records", carriers.ac_records, "ac");
        fields.records("other_records", carriers.other_records);
    }
};

} // namespace nfc_ndef::values

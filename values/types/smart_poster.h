// A Smart Poster record (NFC Forum Smart Poster RTD 1.1).
#pragma once

#include "../kind.h"
#include "../optional_record.h"

namespace nfc_ndef::values {

struct SmartPoster {
    OptionalRecord uri_record; // never none in one that was read
    Records titles;
    uint8_t action = 255; // 255: none
    Records icons;
    OptionalRecord size_record;
    OptionalRecord type_record;
    Records other_records;
    bool operator==(const SmartPoster &) const = default;
};

inline constexpr Name poster_actions[] = {
    {0, "do", "do the action"}, {1, "save", "save for later"}, {2, "open", "open for editing"}};

template <> struct Kind<SmartPoster> : Nests<0> {
    static constexpr Type type = well_known("Sp");
    static constexpr std::string_view json = "smart_poster", title = "Smart Poster";
    static std::optional<SmartPoster> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                           nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const SmartPoster &poster);
    static void show(const SmartPoster &poster, View &view);
    static std::string summary(const SmartPoster &poster);

    template <class Fields> static void map(Fields &fields, Value<Fields, SmartPoster> &poster)
    {
        fields.record("uri_record", poster.uri_record, "U", Presence::required);
        fields.records("titles", poster.titles, "T");
        fields.number("action", poster.action);
        fields.records("icons", poster.icons);
        fields.record("type_record", poster.type_record, "t");
        fields.record("size_record", poster.size_record, "s");
        fields.require(has_a_size_of_4_bytes(poster), "size_record", "must have a payload of 4 bytes");
        fields.records("other_records", poster.other_records);
    }

private:
    static bool has_a_size_of_4_bytes(const SmartPoster &poster);
};

} // namespace nfc_ndef::values

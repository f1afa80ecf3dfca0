// What a record means, as plain values: `show` prints them, `json` maps them.
#pragma once

#include "nfc_ndef.hpp"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace model {

using Bytes = std::vector<uint8_t>;
struct Record;
using Records = std::vector<Record>;
using RecordPtr = std::unique_ptr<Record>; // null: there is none

// One structure for each record type of the library. Members are named as in nfc_ndef.h, and hold what its extractors
// give and its builders take; a std::string holds bytes that are text by their standard, but need not be.

struct Text {
    bool utf16 = false;
    std::string language_code;
    Bytes text;
};

struct Uri {
    uint8_t identifier_code = 0;
    std::string uri_field; // without the prefix that the code stands for
};

struct SmartPoster {
    RecordPtr uri_record; // never null
    Records titles;
    uint8_t action = 255; // 255: none
    Records icons;
    RecordPtr size_record;
    RecordPtr type_record;
    Records other_records;
};

struct GenericControl {
    uint8_t config = 0;
    RecordPtr target_record;            // never null
    std::optional<uint8_t> action_flag; // none: no action at all; 0: the action is a record; else a code
    uint8_t action_code = 0;
    RecordPtr action_record;
    RecordPtr data_record;
    Records gc_records; // in message order
};

struct HandoverRequest {
    uint8_t version = 0; // major version in bits 4 to 7, minor version in bits 0 to 3
    RecordPtr cr_record;
    Records ac_records;
};

struct HandoverSelect {
    uint8_t version = 0;
    Records ac_records;
    RecordPtr err_record;
};

struct HandoverCarrier {
    uint8_t ctf = 0; // an NFC_NDEF_TNF_ value
    std::string carrier_type;
    Bytes carrier_data;
};

struct AlternativeCarrier {
    uint8_t cps = 0; // 0 inactive, 1 active, 2 activating, 3 unknown
    std::string carrier_data_ref;
    std::vector<std::string> aux_data_refs;
};

struct CollisionResolution {
    uint16_t random_number = 0;
};

struct HandoverSelectError {
    uint8_t error_reason = 0;
    uint8_t error_data = 0;
};

struct ManufacturerData {
    std::array<uint8_t, 2> manufacturer_id{};
    Bytes data;
};

struct BluetoothOob {
    std::array<uint8_t, 6> device_address{};
    std::array<uint8_t, 3> class_of_device{};
    uint8_t local_name_type = 9; // 8 shortened, 9 complete
    std::string local_name;
    Bytes hash_c;
    Bytes randomizer_r;
    uint8_t uuid16_list_type = 0; // 2 incomplete, 3 complete; 0: no list
    Bytes uuid16_list;
    uint8_t uuid32_list_type = 0; // 4 incomplete, 5 complete; 0: no list
    Bytes uuid32_list;
    uint8_t uuid128_list_type = 0; // 6 incomplete, 7 complete; 0: no list
    Bytes uuid128_list;
    std::vector<ManufacturerData> manufacturer_data;
};

struct BluetoothLegacy {
    std::array<uint8_t, 6> device_address{};
    std::array<uint8_t, 3> class_of_device{};
    uint8_t pairing_type = 0;
    Bytes pairing_data;
    std::string local_name;
};

struct SharingEnquiry {
    uint8_t version = 0; // as in a handover record
    uint8_t enquiry_type = 0;
    Bytes enquiry_data;
};

// Only the bytes of the record are known.
struct Generic {
    bool malformed = false; // the type has an extractor, which refuses the payload
    bool unopened = false;  // nested too deep, or behind too many others, to be looked into
};

using Content = std::variant<Generic, Text, Uri, SmartPoster, GenericControl, HandoverRequest, HandoverSelect,
                             HandoverCarrier, AlternativeCarrier, CollisionResolution, HandoverSelectError,
                             BluetoothOob, BluetoothLegacy, SharingEnquiry>;

struct Record {
    uint32_t format = NFC_NDEF_TNF_EMPTY;
    Bytes type;
    Bytes id;
    Bytes payload;
    bool mb = false, me = false, cf = false; // as decoded
    Content content;
    bool exact = false; // building the content again gives this type and this payload, byte for byte
};

constexpr unsigned max_nesting = 8;          // records around a record
constexpr size_t max_records_in_all = 16384; // with those nested in others

// Where a record is. Records nested too deep, or found after too many others, stay Generic: a few megabytes can hold
// millions. Copies share the count.
class Nesting {
public:
    Nesting inner() const
    {
        Nesting deeper = *this;
        ++deeper.depth_;
        return deeper;
    }

    // Counts a record, and tells whether to look into it for others.
    bool enter() const
    {
        if (depth_ >= max_nesting || *left_ == 0)
            return false;
        --*left_;
        return true;
    }

    // Whether there may be a record here at all.
    bool reachable() const { return depth_ <= max_nesting && *left_ > 0; }

private:
    unsigned depth_ = 0;
    std::shared_ptr<size_t> left_ = std::make_shared<size_t>(max_records_in_all);
};

// Reads a record and those nested in it.
Record decode(const nfc_ndef_record &record, const Nesting &nesting = {});
Records decode(const nfc_ndef_msg &message, const Nesting &nesting = {});

// Builds a record of this content, which is not Generic; none when its builder refuses the values.
std::optional<Record> build(Content content, Bytes id = {});

// A record's bytes in the library's form, with its own flags; null when they cannot be a record.
nfc_ndef::Record to_handle(const Record &record);

// The bytes of a message; none when a record cannot be encoded. Readers accept a message that begins with a "Gc" record
// only as a sequence of one-record messages, so each record of such a message carries both MB and ME.
std::optional<Bytes> encode(const Records &message);

// A message nested in a payload, behind its first `prefix_length` bytes; none when these bytes are not a message.
std::optional<Records> decode_nested(const Bytes &payload, size_t prefix_length, const Nesting &nesting);

// How many bytes precede the message nested in a record of this type; none for a type that nests no message.
std::optional<size_t> nested_prefix_length(const Record &record);

} // namespace model

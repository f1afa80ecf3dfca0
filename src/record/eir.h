// Extended Inquiry Response structures: Bluetooth Core, Supplement, Part A.
#pragma once

#include "base/bytes.h"

namespace ndef {

enum EirType : uint8_t {
    flags = 0x01,
    uuid16_incomplete = 0x02,
    uuid16_complete = 0x03,
    uuid32_incomplete = 0x04,
    uuid32_complete = 0x05,
    uuid128_incomplete = 0x06,
    uuid128_complete = 0x07,
    name_shortened = 0x08,
    name_complete = 0x09,
    class_of_device = 0x0D,
    hash_c = 0x0E,
    randomizer_r = 0x0F,
    security_manager_tk = 0x10,
    service_data16 = 0x16,
    appearance = 0x19,
    le_address = 0x1B,
    le_role = 0x1C,
    service_data32 = 0x20,
    service_data128 = 0x21,
    confirmation = 0x22, // of LE Secure Connections, as the random value
    random_value = 0x23,
    manufacturer = 0xFF,
};

constexpr size_t eir_header_length = 2;            // the length and the type
constexpr size_t longest_eir_data = UINT8_MAX - 1; // the length byte counts the type too
constexpr size_t key_length = 16;                  // of a hash and a randomizer
constexpr size_t company_id_length = 2;
constexpr size_t uuid16_length = 2, uuid32_length = 4, uuid128_length = 16;

// One EIR structure.
struct Eir {
    uint8_t type;
    ByteView data;
};

// Reads structures one after another, stepping over padding. Fails at one that runs past the end.
class EirReader {
public:
    explicit EirReader(ByteView bytes) : in_(bytes) {}

    bool next(Eir &eir)
    {
        uint8_t length = 0;
        while (in_.left() != 0 && length == 0)
            length = in_.u8();
        left_ = in_.left() + (length != 0);
        if (length == 0)
            return false;
        Reader structure(in_.take(length));
        eir.type = structure.u8();
        eir.data = structure.rest();
        return in_.ok();
    }
    bool ok() const { return in_.ok(); }
    // What was left before the structure that was read last.
    size_t left_before() const { return left_; }
    ByteView rest() { return in_.rest(); }

private:
    Reader in_;
    size_t left_ = 0;
};

} // namespace ndef

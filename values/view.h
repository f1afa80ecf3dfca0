// What a type shows itself to, for people to read.
#pragma once

#include "bytes.h"

#include <vector>

namespace nfc_ndef::values {

struct Record;
using Records = std::vector<Record>;

// Texts given as bytes come from a tag as they are: an implementation makes them safe to look at, and may shorten them.
// `printable` ones are safe already.
class View {
public:
    enum class Encoding { utf8, utf16 };

    virtual void field(std::string_view name, std::string_view printable) = 0;
    virtual void text(std::string_view name, ByteView text, Encoding encoding = Encoding::utf8,
                      std::string_view printable_remark = {}) = 0;
    virtual void bytes(std::string_view name, ByteView bytes) = 0;
    virtual void warning(std::string_view printable) = 0;

    // A record nested in the one that is shown. What it refers to by id is in the message around that one.
    virtual void record(std::string_view name, const Record &record) = 0;
    virtual void records(std::string_view name, const Records &records) = 0;
    // Records that refer to each other.
    virtual void message(std::string_view name, const Records &records) = 0;
    // A reference by id, with the record that it means.
    virtual void reference(std::string_view name, ByteView id) = 0;

    // The payload of the record that is shown.
    virtual ByteView payload() const = 0;

protected:
    ~View() = default;
};

} // namespace nfc_ndef::values

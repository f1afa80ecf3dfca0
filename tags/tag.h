// A tag that can hold an NDEF message.
#pragma once

#include "card.h"
#include "error.h"

#include <memory>
#include <string>
#include <string_view>

namespace nfc_ndef::tags {

// Every function but type() and serial_number() may throw Refused and Unavailable.
class Tag {
public:
    explicit Tag(Card &card) : card_(card) {}
    Tag(const Tag &) = delete;
    Tag &operator=(const Tag &) = delete;
    virtual ~Tag() = default;

    // "Type 2 tag", "MIFARE Classic card".
    virtual std::string_view type() const = 0;
    // As the reader tells it; empty when it does not.
    const Bytes &serial_number() const { return serial_number_; }

    virtual bool is_formatted() = 0;
    // Of a formatted tag: the bytes of the longest message that it can hold, and whether it may be written.
    virtual size_t size() = 0;
    virtual bool is_writable() = 0;

    // The message; empty when there is none on a formatted tag.
    virtual Bytes read() = 0;

    // Replaces the message, which is not looked at, and reads it back. An empty one erases. Whenever the tag is torn
    // away, it holds the message before, none, or the new one.
    virtual void write(ByteView message) = 0;

    // Prepares a blank tag. Nothing is written to any other.
    virtual void format() = 0;

    // Makes the tag read-only, as far as a reader's ordinary commands can. Gives a remark for people, or nothing.
    virtual std::string lock() = 0;

    // All that can be read, as it lies in the tag.
    virtual Bytes memory() = 0;

protected:
    Card &card() const { return card_; }
    [[noreturn]] void not_for_this_type(std::string_view what) const;
    // Refuses a message that is longer than size().
    void check_room(size_t length);

private:
    friend std::unique_ptr<Tag> open_tag(Card &card);

    Card &card_;
    Bytes serial_number_;
};

// Finds out what kind of tag it is. Throws Refused when it is none that can hold NDEF data. The card must outlive it.
std::unique_ptr<Tag> open_tag(Card &card);

} // namespace nfc_ndef::tags

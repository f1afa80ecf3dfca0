// What tags have in common whose memory holds TLV blocks: NFC Forum Type 2 and Type 5 Tag.
#pragma once

#include "storage.h"
#include "tag.h"

#include <optional>
#include <utility>
#include <vector>

namespace nfc_ndef::tags {

// Bytes of the memory, the end not included.
struct Area {
    size_t begin = 0, end = 0;
};

// Where lock bits are: a Lock Control TLV, or by default behind the data area.
struct LockBits {
    size_t at;
    size_t count;
};

class TlvTag : public Tag {
public:
    bool is_formatted() override { return container().has_value(); }
    size_t size() override;
    bool is_writable() override { return formatted().writable; }
    Bytes read() override;
    void write(ByteView message) override;
    Bytes memory() override { return storage_.all(); }

protected:
    TlvTag(Card &card, Storage storage) : Tag(card), storage_(std::move(storage)) {}

    struct Container {
        Area area;     // of the TLV blocks
        bool readable; // without a key
        bool writable;
        std::string why{}; // it cannot be written
    };
    // What the capability container says; nothing when it is none that we know.
    virtual std::optional<Container> container() = 0;
    // Whether control TLVs reserve bytes of the area.
    virtual bool has_control_tlvs() const { return false; }
    // Refuses to write a block that is locked.
    virtual void check_lock(size_t) {}

    Storage &storage() { return storage_; }
    Container formatted();
    // The lock bits that a Lock Control TLV names; nothing when there is no such TLV.
    std::optional<LockBits> lock_control();

private:
    // The first NDEF message TLV, or the place for one.
    struct Place {
        bool found;
        size_t tag_at;
        Bytes value{};
        std::vector<Area> reserved{};
        std::optional<LockBits> lock_bits{};
    };
    class Walk;

    Place find();
    void update(const std::vector<std::pair<size_t, uint8_t>> &bytes, size_t commit, uint8_t neutral);

    Storage storage_;
};

} // namespace nfc_ndef::tags

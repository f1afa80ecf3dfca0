// Tags as strict as real ones: they refuse what a tag would, and a test sees that they had to.
#pragma once

#include <nfc_ndef/tags/card.h>
#include <nfc_ndef/tags/error.h>

#include <memory>
#include <string>
#include <vector>

namespace test {

using nfc_ndef::tags::Bytes;
using nfc_ndef::tags::ByteView;

class VirtualTag : public nfc_ndef::tags::Card {
public:
    // Tears the tag away after so many changes: the next command finds none.
    void tear_after(size_t changes) { changes_left_ = changes; }
    void put_back() { changes_left_ = SIZE_MAX; }
    bool is_torn() const { return changes_left_ == 0; }
    size_t changes() const { return changes_; }
    // What no tag allows; empty for a program that behaves.
    const std::string &offence() const { return offence_; }

    Bytes memory; // as it lies in the tag

    // Throws Gone when torn away.
    Bytes transmit(ByteView command) final;

protected:
    static constexpr uint16_t done = 0x9000, wrong_length = 0x6700, not_found = 0x6A82, wrong_parameters = 0x6B00,
                              not_allowed = 0x6982, unknown_instruction = 0x6D00, memory_failure = 0x6581;

    virtual uint16_t answer(ByteView command, Bytes &response) = 0;
    void changed()
    {
        ++changes_;
        --changes_left_;
    }
    uint16_t offend(const std::string &what, uint16_t status)
    {
        offence_ += what + "; ";
        return status;
    }

private:
    size_t changes_ = 0, changes_left_ = SIZE_MAX;
    std::string offence_;
};

// How a reader behaves.
struct Habits {
    bool rolls_over = false;    // reads go on with the first block behind the last
    bool low_byte_only = false; // of a block's number
    bool tells_serial_number = true;
    size_t most_read = 16;
};

std::unique_ptr<VirtualTag> virtual_type2(Bytes memory, Habits habits = {});
std::unique_ptr<VirtualTag> virtual_type5(Bytes memory, size_t block_size = 4, Habits habits = {});
// Of a mapping version, with the id of its file and what it takes at a time; `memory` is the file.
std::unique_ptr<VirtualTag> virtual_type4(Bytes file, unsigned version = 2, uint16_t id = 0xE104,
                                          uint16_t most_read = 59, uint16_t most_written = 52);
std::unique_ptr<VirtualTag> virtual_classic(Bytes memory, bool is_big = false);

// Memories of tags with so many bytes of data area.
Bytes type2_memory(size_t area, ByteView tlvs, uint8_t access = 0);
Bytes type5_memory(size_t size, ByteView tlvs);

} // namespace test

// Tags below the daemon: what is read, written and refused, and what is left when a tag is torn away.
#include "virtual_tags.h"

#include <nfc_ndef/tags/tag.h>

#include <gtest/gtest.h>

#include <functional>

using namespace test;
using nfc_ndef::tags::Gone;
using nfc_ndef::tags::open_tag;
using nfc_ndef::tags::Refused;
using nfc_ndef::tags::Tag;

namespace {

using Make = std::function<std::unique_ptr<VirtualTag>()>;

Bytes message_of(size_t length, uint8_t fill) { return Bytes(length, fill); }

Bytes tlv(ByteView message)
{
    Bytes bytes{0x03};
    if (message.size() < 0xFF)
        bytes.push_back(static_cast<uint8_t>(message.size()));
    else
        bytes.insert(bytes.end(),
                     {0xFF, static_cast<uint8_t>(message.size() >> 8), static_cast<uint8_t>(message.size())});
    bytes.insert(bytes.end(), message.begin(), message.end());
    bytes.push_back(0xFE);
    return bytes;
}

Bytes operator+(Bytes a, const Bytes &b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const Bytes nothing, null_tlvs{0, 0, 0}, lock_control{0x01, 0x03, 0xA0, 0x0C, 0x34};
// A Memory Control TLV for the 4 bytes at page 10, in the midst of what is written.
const Bytes reserved{0x02, 0x03, 0x28, 0x04, 0x04};

// What an operation was refused for; nothing when it was done.
std::string refusal(const std::function<void()> &operation)
{
    try {
        operation();
        return "";
    } catch (const Refused &refused) {
        return refused.what();
    }
}

struct Kind {
    const char *name;
    std::function<std::unique_ptr<VirtualTag>(const Bytes &message)> make;
    size_t most; // bytes of a message
};

Bytes file_of(size_t size, size_t length_size, const Bytes &message)
{
    Bytes file(length_size);
    for (size_t i = 0, length = message.size(); i < length_size; ++i, length >>= 8)
        file[length_size - 1 - i] = static_cast<uint8_t>(length);
    file = file + message;
    file.resize(size);
    return file;
}

const Kind kinds[] = {
    {"small Type 2", [](const Bytes &old) { return virtual_type2(type2_memory(48, tlv(old))); }, 46},
    {"Type 2 with a lock control",
     [](const Bytes &old) { return virtual_type2(type2_memory(144, lock_control + tlv(old))); }, 137},
    {"Type 2 with reserved bytes", [](const Bytes &) { return virtual_type2(type2_memory(144, reserved)); }, 133},
    {"Type 2 with null TLVs",
     [](const Bytes &old) { return virtual_type2(type2_memory(496, null_tlvs + tlv(old)), {.rolls_over = true}); },
     489},
    {"Type 2 with two",
     [](const Bytes &old) {
         return virtual_type2(type2_memory(496, Bytes{0, 0} + tlv(old)));
     },
     490},
    {"Type 2 without a message", [](const Bytes &) { return virtual_type2(type2_memory(496, {})); }, 492},
    {"Type 2 with a terminator at the end of a page",
     [](const Bytes &) { return virtual_type2(type2_memory(496, null_tlvs + Bytes{0xFE})); }, 489},
    {"Type 2 of more than 255 pages", [](const Bytes &old) { return virtual_type2(type2_memory(1600, tlv(old))); },
     1596},
    {"Type 5", [](const Bytes &old) { return virtual_type5(type5_memory(112, tlv(old))); }, 102},
    {"Type 5 with blocks of 8 bytes", [](const Bytes &old) { return virtual_type5(type5_memory(512, tlv(old)), 8); },
     500},
    {"big Type 5", [](const Bytes &old) { return virtual_type5(type5_memory(4096, tlv(old))); }, 4084},
    {"Type 4", [](const Bytes &old) { return virtual_type4(file_of(300, 2, old)); }, 298},
    {"Type 4 of version 1", [](const Bytes &old) { return virtual_type4(file_of(300, 2, old), 1, 0x0001); }, 298},
    {"Type 4 of version 3", [](const Bytes &old) { return virtual_type4(file_of(66000, 4, old), 3, 0xE104, 255, 255); },
     65996},
};

TEST(Tags, KeepTheOldMessageNoneOrTheNewOneWhenTornAway)
{
    for (const Kind &kind : kinds) {
        for (const size_t old_size : {0u, 40u, 255u}) {
            for (const size_t new_size : {0u, 1u, 2u, 40u, 254u, 255u, 300u}) {
                if (std::max(old_size, new_size) > kind.most)
                    continue;
                const Bytes wanted = message_of(new_size, 0x4E);
                bool done = false;
                for (size_t changes = 1; !done; ++changes) {
                    const std::unique_ptr<VirtualTag> card = kind.make(message_of(old_size, 0x03));
                    const Bytes old = open_tag(*card)->read();
                    card->tear_after(changes);
                    try {
                        open_tag(*card)->write(wanted);
                        done = true;
                    } catch (const Gone &) {
                    }
                    done = done || !card->is_torn();
                    card->put_back();
                    const Bytes left = open_tag(*card)->read();
                    EXPECT_TRUE(left.empty() || left == old || left == wanted)
                        << kind.name << ": " << old_size << " to " << new_size << ", torn after " << changes;
                    EXPECT_TRUE(!done || left == wanted) << kind.name;
                    EXPECT_EQ(card->offence(), "") << kind.name;
                    ASSERT_LT(changes, 3000U);
                }
            }
        }
    }
}

TEST(Tags, HoldAMessageOfTheirSizeAndNoneLonger)
{
    for (const Kind &kind : kinds) {
        const std::unique_ptr<VirtualTag> card = kind.make({});
        const std::unique_ptr<Tag> tag = open_tag(*card);
        EXPECT_EQ(tag->size(), kind.most) << kind.name;
        const Bytes before = card->memory;
        EXPECT_EQ(refusal([&] { tag->write(message_of(kind.most + 1, 'x')); }).substr(0, 20), "too small by 1 byte:")
            << kind.name;
        EXPECT_EQ(card->memory, before) << "nothing was written";
        const Bytes longest = message_of(kind.most, 'x');
        EXPECT_EQ(refusal([&] { tag->write(longest); }), "") << kind.name;
        EXPECT_TRUE(open_tag(*card)->read() == longest) << kind.name;
        tag->write({});
        EXPECT_EQ(open_tag(*card)->read(), nothing) << kind.name;
        EXPECT_EQ(card->offence(), "") << kind.name;
    }
}

TEST(Tags, WriteNoMoreThanTheyMust)
{
    const Bytes old = message_of(20, 'a');
    Bytes changed = old;
    changed.back() = 'b';
    const std::unique_ptr<VirtualTag> card = virtual_type2(type2_memory(144, lock_control + tlv(old)));
    open_tag(*card)->write(old);
    EXPECT_EQ(card->changes(), 0U);
    open_tag(*card)->write(changed);
    EXPECT_EQ(card->changes(), 3U) << "the length, a page, the length";
    EXPECT_EQ(Bytes(card->memory.begin() + 16, card->memory.begin() + 21), lock_control);
}

TEST(Tags, SayWhatIsWrong)
{
    const Bytes one = tlv(message_of(3, 'a'));
    Bytes locked = type2_memory(144, one), other = locked, cut = type2_memory(48, Bytes{0x03, 0x30, 'a'}),
          future = locked;
    locked[10] = 0x20; // page 5
    std::fill_n(other.begin() + 12, 4, uint8_t{0xAA});
    future[13] = 0x20;
    Bytes never_written = type5_memory(112, one), with_key = never_written;
    never_written[1] = 0x43, with_key[1] = 0x48;
    const auto write = [](Tag &tag) { tag.write(message_of(8, 'b')); };
    const auto read = [](Tag &tag) { tag.read(); };
    const auto format = [](Tag &tag) { tag.format(); };
    const auto lock = [](Tag &tag) { tag.lock(); };
    const struct {
        std::unique_ptr<VirtualTag> card;
        std::function<void(Tag &)> operation;
        const char *refusal;
    } rows[] = {
        {virtual_type2(type2_memory(144, one, 0x0F)), write, "the tag is read-only"},
        {virtual_type2(type2_memory(144, one, 0x08)), write, "the tag cannot be written without a key"},
        {virtual_type2(type2_memory(144, one, 0x80)), read, "the tag cannot be read without a key"},
        {virtual_type2(locked), write, "page 5 is locked, so that the tag is read-only"},
        {virtual_type2(other), read, "the Type 2 tag is not formatted for NDEF data"},
        {virtual_type2(future), write, "the Type 2 tag is not formatted for NDEF data"},
        {virtual_type2(other), format,
         "page 3 is not blank: its bits cannot be taken back, so the tag cannot be formatted"},
        {virtual_type2(cut), read, "the data area ends within a TLV block, at byte 64"},
        {virtual_type2(type2_memory(1600, tlv(message_of(1200, 'a'))), {.low_byte_only = true}), read,
         "the reader does not take page numbers above 255"},
        {virtual_type5(never_written), write, "the tag is read-only"},
        {virtual_type5(with_key), read, "the tag cannot be read without a key"},
        {virtual_type5(Bytes(112, 0xAA)), format,
         "the capability container is not blank, so the tag cannot be formatted"},
        {virtual_type4(Bytes{0x00, 0xFF, 0x00, 0x00}), read,
         "the message is longer than the file, which holds 2 bytes"},
        {virtual_type4(Bytes(40)), format, "a Type 4 tag cannot be formatted without the commands of its maker"},
        {virtual_type4(Bytes(40)), lock, "a Type 4 tag cannot be locked without the commands of its maker"},
    };
    for (const auto &row : rows) {
        const Bytes before = row.card->memory;
        EXPECT_EQ(refusal([&] { row.operation(*open_tag(*row.card)); }), row.refusal);
        EXPECT_EQ(row.card->memory, before) << row.refusal;
        EXPECT_EQ(row.card->offence(), "") << row.refusal;
    }
    const std::unique_ptr<VirtualTag> no_application = virtual_type4(Bytes(40), 7);
    EXPECT_EQ(refusal([&] { open_tag(*no_application)->read(); }),
              "the Type 4 tag has a capability container of a version that is not known");
}

TEST(Tags, AreFormattedWhenBlank)
{
    const struct {
        std::unique_ptr<VirtualTag> card;
        Bytes head; // of the memory, from the capability container on
        size_t at;
    } rows[] = {
        {virtual_type2(Bytes(64)), {0xE1, 0x10, 0x06, 0x00, 0x03, 0x00, 0xFE, 0x00}, 12},
        {virtual_type2(Bytes(180), {.rolls_over = true}), {0xE1, 0x10, 0x12, 0x00, 0x03, 0x00, 0xFE, 0x00}, 12},
        {virtual_type2(Bytes(400)), {0xE1, 0x10, 0x2D, 0x00, 0x03, 0x00, 0xFE, 0x00}, 12},
        {virtual_type5(Bytes(112)), {0xE1, 0x40, 0x0D, 0x00, 0x03, 0x00, 0xFE, 0x00}, 0},
        {virtual_type5(Bytes(512), 8), {0xE1, 0x40, 0x3F, 0x00, 0x03, 0x00, 0xFE, 0x00}, 0},
        {virtual_type5(Bytes(1024)), {0xE1, 0x40, 0x7F, 0x00, 0x03, 0x00, 0xFE, 0x00}, 0},
    };
    for (const auto &row : rows) {
        const auto &[tag_of_row, head, at] = row;
        VirtualTag *const card = tag_of_row.get();
        const auto place = static_cast<std::ptrdiff_t>(at);
        if (at != 0) // a serial number, as every tag has one
            std::fill_n(card->memory.begin(), 4, uint8_t{0x04});
        EXPECT_FALSE(open_tag(*card)->is_formatted());
        const Bytes blank = card->memory;
        for (size_t changes = 1; card->memory == blank || !open_tag(*card)->is_formatted(); ++changes) {
            card->memory = blank;
            card->tear_after(changes);
            EXPECT_EQ(refusal([&] {
                          try {
                              open_tag(*card)->format();
                          } catch (const Gone &) {
                          }
                      }),
                      "");
            card->put_back();
            ASSERT_LT(changes, 10U);
        }
        const std::unique_ptr<Tag> tag = open_tag(*card);
        EXPECT_EQ(Bytes(card->memory.begin() + place, card->memory.begin() + place + std::ssize(head)), head);
        EXPECT_EQ(tag->read(), nothing);
        const size_t before = card->changes();
        tag->format();
        EXPECT_EQ(card->changes(), before) << "a formatted tag is left as it is";
        tag->write(message_of(tag->size(), 'x'));
        EXPECT_EQ(card->offence(), "");
    }
}

TEST(Tags, AreLocked)
{
    const Bytes one = tlv(message_of(3, 'a'));
    const std::unique_ptr<VirtualTag> small = virtual_type2(type2_memory(48, one)),
                                      usual = virtual_type2(type2_memory(144, lock_control + one)),
                                      silent = virtual_type2(type2_memory(144, one)),
                                      type5 = virtual_type5(type5_memory(112, one));
    for (VirtualTag *const card : {small.get(), usual.get(), silent.get(), type5.get()}) {
        const std::string remark = open_tag(*card)->lock();
        EXPECT_EQ(remark.empty(), card != type5.get());
        EXPECT_FALSE(open_tag(*card)->is_writable());
        EXPECT_EQ(open_tag(*card)->read(), message_of(3, 'a'));
        const size_t changes = card->changes();
        open_tag(*card)->lock();
        EXPECT_EQ(card->changes(), changes);
        EXPECT_EQ(card->offence(), "");
    }
    for (const VirtualTag *const card : {usual.get(), silent.get()}) {
        EXPECT_EQ(Bytes(card->memory.begin() + 10, card->memory.begin() + 12), (Bytes{0xFF, 0xFF}));
        EXPECT_EQ(card->memory[15], 0x0F);
        EXPECT_EQ(Bytes(card->memory.begin() + 160, card->memory.begin() + 164), (Bytes{0xFF, 0x0F, 0x00, 0x00}));
    }
    EXPECT_EQ(type5->memory[1], 0x43);
}

TEST(Tags, OfAnyContentAreReadOrRefused)
{
    uint32_t state = 1;
    const auto random = [&] { return static_cast<uint8_t>((state = state * 1664525 + 1013904223) >> 24); };
    for (int i = 0; i < 3000; ++i) {
        Bytes bytes(64 + random());
        for (uint8_t &byte : bytes)
            byte = random() % 4 != 0 ? static_cast<uint8_t>(random() % 5) : random(); // often a TLV's tag or length
        Bytes type2 = type2_memory(144, bytes), type5 = type5_memory(112, bytes);
        const std::unique_ptr<VirtualTag> cards[] = {virtual_type2(std::move(type2)), virtual_type5(std::move(type5)),
                                                     virtual_type4(bytes), virtual_type2(bytes), virtual_type5(bytes)};
        for (const std::unique_ptr<VirtualTag> &card : cards) {
            const Bytes message = message_of(random() % 40, 'a');
            const std::string why = refusal([&] {
                const std::unique_ptr<Tag> tag = open_tag(*card);
                tag->size();
                tag->read();
                tag->write(message);
            });
            EXPECT_TRUE(!why.empty() || open_tag(*card)->read() == message);
            EXPECT_EQ(card->offence(), "") << why;
        }
    }
}

TEST(Tags, AreReadWhateverTheReaderIsLike)
{
    const Bytes message = message_of(130, 'a');
    const Bytes memory = type2_memory(144, tlv(message));
    for (const Habits habits :
         {Habits{.rolls_over = true}, Habits{.tells_serial_number = false}, Habits{.most_read = 4}}) {
        const std::unique_ptr<VirtualTag> card = virtual_type2(memory, habits);
        const std::unique_ptr<Tag> tag = open_tag(*card);
        EXPECT_EQ(tag->read(), message);
        EXPECT_EQ(tag->memory(), memory);
        EXPECT_EQ(tag->serial_number().empty(), !habits.tells_serial_number);
    }
    // Sectors behind the 16th are those of a bigger card, and are found through a directory of their own.
    std::unique_ptr<VirtualTag> card = virtual_classic(Bytes(4096), true);
    for (size_t sector = 0; sector < 40; ++sector) {
        const size_t trailer = sector < 32 ? sector * 64 + 48 : 2048 + (sector - 32) * 256 + 240;
        const uint8_t directory_key[]{0xA0, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5},
            ndef_key[]{0xD3, 0xF7, 0xD3, 0xF7, 0xD3, 0xF7};
        std::copy_n(sector % 16 == 0 && sector < 32 ? directory_key : ndef_key, 6,
                    card->memory.begin() + static_cast<std::ptrdiff_t>(trailer));
    }
    card->memory[1024 + 2 + 2 * (39 - 17)] = 0x03, card->memory[1024 + 3 + 2 * (39 - 17)] = 0xE1;
    std::ranges::copy(tlv(message), card->memory.begin() + 2048 + 7 * 256);
    EXPECT_EQ(open_tag(*card)->read(), message);
    EXPECT_EQ(open_tag(*card)->size(), 15U * 16 - 2);
    // The size that some makers of Type 5 tags give counts the container in.
    Bytes counted_in = type5_memory(112, tlv(message_of(90, 'a')));
    counted_in[2] = 112 / 8;
    card = virtual_type5(counted_in);
    EXPECT_EQ(open_tag(*card)->size(), 106U);
    EXPECT_EQ(open_tag(*card)->read(), message_of(90, 'a'));
}

} // namespace

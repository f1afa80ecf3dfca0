// A data area without the memory around it.
#include "forms/all.h"
#include "forms/tlv_area.h"

namespace tool::forms {
namespace {

constexpr size_t container_length = 4;
constexpr uint8_t message_begin = 0x80; // of a record's header

// The capability container of a Type 1 or Type 2 tag, from which some read on.
bool has_container(values::ByteView area)
{
    return area.size() > container_length && area[0] == 0xE1 && area[1] >> 4 == 1 && area[2] != 0 && area[3] >> 4 == 0;
}

// Blocks that stand in front of a message, up to it.
bool leads_to_message(values::ByteView area)
{
    Blocks blocks(area);
    while (blocks.next()) {
        const bool is_control = blocks.tag() == lock_control || blocks.tag() == memory_control;
        if (blocks.tag() == ndef_message)
            return true;
        if (is_control ? blocks.value().size() != 3 : blocks.tag() != proprietary)
            return false;
    }
    return false;
}

// The first block is a message that is longer than what there is of it.
bool begins_message(values::ByteView area)
{
    constexpr uint8_t long_length = 0xFF, no_format = 7;
    const size_t at = area.size() > 1 && area[1] == long_length ? 4 : 2;
    return area.size() > at && area[0] == ndef_message && (area[at] & message_begin) != 0 &&
           (area[at] & no_format) != no_format;
}

} // namespace

Found find_tlvs(const Memory &memory, bool asked)
{
    const values::ByteView all = memory.bytes;
    // The keys of a MIFARE Classic card are no data, even where somebody takes it for another tag.
    Found sectors = find_from_sector_1(memory, false);
    const bool is_card = sectors.match == Match::whole && is_message(sectors.message);
    if (is_card)
        return asked ? sectors : Found{};
    if (asked)
        return found_in_type2(all, 0, true);
    const size_t begin = has_container(all) ? container_length : 0;
    const values::ByteView area = all.subspan(begin);
    if (!leads_to_message(area) && !begins_message(area))
        return {};
    Found found = found_in_type2(all, begin, false);
    const bool is_other = !found.message.empty() && (found.message[0] & message_begin) == 0;
    return is_other ? Found{} : found;
}

} // namespace tool::forms

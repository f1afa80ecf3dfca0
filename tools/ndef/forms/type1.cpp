// NFC Forum Type 1 Tag 1.2. The memory begins with the serial number and, at byte 8, the capability container. Bytes
// 104 to 119 are reserved or hold lock bits; a larger memory goes on behind them and says in control TLVs what else it
// reserves.
#include "forms/all.h"
#include "forms/tlv_area.h"

namespace tool::forms {
namespace {

constexpr size_t container_at = 8, data_at = 12, reserved_begin = 104, reserved_end = 120, header_rom_length = 2;

bool has_container(values::ByteView memory)
{
    return memory.size() > data_at && memory[container_at] == 0xE1 && memory[container_at + 1] >> 4 == 1 &&
           memory[container_at + 2] != 0 && memory[container_at + 3] >> 4 == 0;
}

} // namespace

Found find_type1(const Memory &memory, bool asked)
{
    const values::ByteView all = memory.bytes;
    // What a reader gets of the whole tag begins with two bytes of its header ROM.
    const bool with_header_rom = !has_container(all) && all.size() > header_rom_length && all[0] >> 4 == 1 &&
                                 has_container(all.subspan(header_rom_length));
    const size_t base = with_header_rom ? header_rom_length : 0;
    if (!has_container(all.subspan(base)))
        return asked ? find_tlvs(memory, true) : Found{};
    TlvArea area(all);
    const size_t size = (size_t{all[base + container_at + 2]} + 1) * 8;
    area.add(base + data_at, base + std::min(size, reserved_begin));
    area.add(base + reserved_end, base + size);
    const values::Bytes before_reserving = area.gathered();
    for (Blocks blocks(before_reserving); blocks.next() && blocks.tag() != ndef_message;) {
        if (blocks.tag() > memory_control || blocks.value().size() != 3)
            continue;
        const size_t page_size = size_t{1} << (blocks.value()[2] & 0x0F);
        const size_t begin = base + (blocks.value()[0] >> 4) * page_size + (blocks.value()[0] & 0x0F);
        const size_t count = blocks.value()[1] == 0 ? 256 : blocks.value()[1];
        area.reserve(begin, begin + (blocks.tag() == lock_control ? (count + 7) / 8 : count));
    }
    return area.find();
}

} // namespace tool::forms

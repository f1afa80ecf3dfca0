// NFC Forum Type 5 Tag 1.0: a capability container of four bytes, or of eight when its third is 0, then the TLVs.
#include "forms/all.h"
#include "forms/tlv_area.h"

namespace tool::forms {

Found find_type5(const Memory &memory, bool asked)
{
    const values::ByteView all = memory.bytes;
    const bool has_container =
        all.size() > 4 && (all[0] == 0xE1 || all[0] == 0xE2) && all[1] >> 6 == 1 && (all[2] != 0 || all.size() > 8);
    if (!has_container)
        return asked ? find_tlvs(memory, true) : Found{};
    const size_t length = all[2] != 0 ? 4 : 8;
    const size_t size = (all[2] != 0 ? size_t{all[2]} : size_t{all[6]} << 8 | all[7]) * 8;
    TlvArea area(all);
    area.add(length, length + size);
    return area.find();
}

} // namespace tool::forms

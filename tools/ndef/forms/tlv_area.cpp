#include "forms/tlv_area.h"

#include <fmt/format.h>
#include <nfc_ndef_view.h>

#include <algorithm>

namespace tool::forms {
namespace {

constexpr uint8_t long_length = 0xFF; // two bytes with the length follow

// What was found instead of a message, in the words of the library when nothing was to be found out.
Found not_found(uint32_t reason, size_t offset, bool asked)
{
    if (reason == NFC_NDEF_TLV_CUT_SHORT && !asked)
        return found_alike(fmt::format("the message in it is cut short at byte {}", offset));
    return found_alike(fmt::format("{}, at byte {}", nfc_ndef_tlv_reason_text(reason), offset));
}

} // namespace

bool Blocks::next()
{
    at_ += value_.size();
    value_ = {};
    while (at_ < area_.size() && area_[at_] == null_tlv)
        ++at_;
    if (at_ >= area_.size() || area_[at_] == terminator)
        return false;
    const values::ByteView rest = area_.subspan(at_);
    const bool is_long = rest.size() > 1 && rest[1] == long_length;
    const size_t header = is_long ? 4 : 2;
    const size_t length = rest.size() < header ? 0 : is_long ? size_t{rest[2]} << 8 | rest[3] : rest[1];
    cut_short_ = rest.size() < header || rest.size() - header < length;
    if (cut_short_) {
        at_ = area_.size();
        return false;
    }
    tag_ = rest[0];
    at_ += header;
    value_ = rest.subspan(header, length);
    return true;
}

Found found_in_type2(values::ByteView all, size_t begin, bool asked)
{
    const values::ByteView memory = all.subspan(begin);
    nfc_ndef_tlv tlv;
    nfc_ndef_tlv_report report;
    if (!nfc_ndef_tlv_find({memory.data(), memory.size()}, &tlv, &report))
        return not_found(report.reason, begin + report.offset, asked);
    Found found{.match = Match::whole, .message = values::Bytes(tlv.length), .at = begin + tlv.position};
    nfc_ndef_tlv_join(&tlv, found.message.data(), tlv.length);
    return found;
}

void TlvArea::add(size_t begin, size_t end)
{
    end = std::min(end, memory_.size());
    if (begin < end)
        pieces_.emplace_back(begin, end);
}

void TlvArea::reserve(size_t begin, size_t end)
{
    std::vector<std::pair<size_t, size_t>> left;
    for (const auto &[first, last] : pieces_) {
        if (first < std::min(last, begin))
            left.emplace_back(first, std::min(last, begin));
        if (std::max(first, end) < last)
            left.emplace_back(std::max(first, end), last);
    }
    pieces_ = std::move(left);
}

values::Bytes TlvArea::gathered() const
{
    values::Bytes area;
    for (const auto &[begin, end] : pieces_) {
        const values::ByteView piece = memory_.subspan(begin, end - begin);
        area.insert(area.end(), piece.begin(), piece.end());
    }
    return area;
}

size_t TlvArea::place_of(size_t offset) const
{
    for (const auto &[begin, end] : pieces_) {
        if (offset < end - begin)
            return begin + offset;
        offset -= end - begin;
    }
    return pieces_.empty() ? offset : pieces_.back().second + offset;
}

Found TlvArea::find() const
{
    const values::Bytes area = gathered();
    Blocks blocks(area);
    while (blocks.next())
        if (blocks.tag() == ndef_message)
            return {.match = Match::whole,
                    .message = {blocks.value().begin(), blocks.value().end()},
                    .at = place_of(blocks.at())};
    return not_found(blocks.is_cut_short() ? NFC_NDEF_TLV_CUT_SHORT : NFC_NDEF_TLV_NO_MESSAGE, place_of(blocks.at()),
                     false);
}

} // namespace tool::forms

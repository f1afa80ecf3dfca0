// NFC Forum Type 3 Tag 1.1: an attribute information block of 16 bytes, which ends in a sum of those before, then the
// message.
#include "forms/all.h"

#include <fmt/format.h>

#include <numeric>

namespace tool::forms {
namespace {

constexpr size_t block_size = 16, sum_at = 14;

} // namespace

Found find_type3(const Memory &memory, bool asked)
{
    const values::ByteView all = memory.bytes;
    if (all.size() < block_size || all[0] >> 4 != 1)
        return {};
    const unsigned sum = std::accumulate(all.begin(), all.begin() + sum_at, 0U);
    if (sum != (unsigned{all[sum_at]} << 8 | all[sum_at + 1]))
        return asked ? found_alike("the checksum of its first block is wrong") : Found{};
    const size_t blocks = size_t{all[3]} << 8 | all[4];
    const bool is_being_written = all[9] != 0;
    const size_t length = size_t{all[11]} << 16 | size_t{all[12]} << 8 | all[13];
    if (is_being_written)
        return found_alike("writing it was begun and not finished, as byte 9 says");
    if (length > blocks * block_size)
        return found_alike(fmt::format("the message of {} bytes is longer than its {} blocks", length, blocks));
    if (length > all.size() - block_size)
        return found_alike(fmt::format("the message in it is cut short at byte {}", all.size()));
    const values::ByteView message = all.subspan(block_size, length);
    return {.match = Match::whole, .message = {message.begin(), message.end()}, .at = block_size};
}

} // namespace tool::forms

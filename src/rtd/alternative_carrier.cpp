// Alternative Carrier record: NFC Forum Connection Handover 1.2.
#include "record/build.h"
#include "rtd/result.h"

using namespace ndef;

namespace {

constexpr uint32_t power_state_bits = 0x03;
constexpr uint64_t longest_payload = 255;

bool is_reference_character(uint8_t c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= ':') || c == '-' || c == '.' ||
           c == '_' || c == '~';
}

bool is_reference(ByteView reference)
{
    for (const uint8_t c : reference)
        if (!is_reference_character(c))
            return false;
    return reference.empty() || reference[0] != '~';
}

// The auxiliary references under construction: dropped with all their blocks unless they are released.
class References {
public:
    explicit References(uint8_t count) : lengths_(new_block<uint8_t>(count)), references_(new_block<uint8_t *>(count))
    {
    }
    References(const References &) = delete;
    References &operator=(const References &) = delete;
    ~References()
    {
        for (size_t i = 0; references_ && i < count_; ++i)
            if (references_[i])
                os_block_dealloc(references_[i]);
    }
    bool add(ByteView reference)
    {
        if (!lengths_ || !references_ || !copy_to(references_[count_], reference))
            return false;
        lengths_[count_++] = static_cast<uint8_t>(reference.size());
        return true;
    }
    void release(uint8_t **lengths, uint8_t ***references)
    {
        *lengths = lengths_.release();
        *references = references_.release();
    }

private:
    Block<uint8_t> lengths_;
    Block<uint8_t *> references_;
    size_t count_ = 0;
};

} // namespace

nfc_ndef_record *rtdlib_alternative_carrier_record_create(uint32_t cps, uint8_t carrier_data_ref_length,
                                                          const uint8_t *carrier_data_ref, uint8_t aux_data_ref_count,
                                                          const uint8_t *aux_data_ref_lengths,
                                                          const uint8_t *const *aux_data_refs)
{
    if ((carrier_data_ref_length != 0 && !carrier_data_ref) ||
        (aux_data_ref_count != 0 && (!aux_data_ref_lengths || !aux_data_refs)))
        return nullptr;
    for (uint8_t i = 0; i < aux_data_ref_count; ++i)
        if (aux_data_ref_lengths[i] != 0 && !aux_data_refs[i])
            return nullptr;

    const auto layout = [&](auto &out) {
        out.u8(static_cast<uint8_t>(cps))
            .u8(carrier_data_ref_length)
            .bytes({carrier_data_ref, carrier_data_ref_length})
            .u8(aux_data_ref_count);
        for (uint8_t i = 0; i < aux_data_ref_count; ++i)
            out.u8(aux_data_ref_lengths[i]).bytes({aux_data_refs[i], aux_data_ref_lengths[i]});
    };
    const uint64_t length = length_of(layout);
    return length > longest_payload ? nullptr
                                    : lone_record_of(known::alternative_carrier, laid_out(layout, length)).release();
}

int8_t rtdlib_alternative_carrier_record_extract(const nfc_ndef_record *record, uint32_t *cps,
                                                 uint8_t *carrier_data_ref_length, uint8_t **carrier_data_ref,
                                                 uint8_t *aux_data_ref_count, uint8_t **aux_data_ref_lengths,
                                                 uint8_t ***aux_data_refs)
{
    Reader payload(payload_of(record));
    const uint8_t flags = payload.u8();
    const uint8_t length = payload.u8();
    const ByteView reference = payload.take(length);
    const uint8_t count = payload.u8();
    const Reader auxiliary = payload;
    for (uint8_t i = 0; i < count; ++i)
        payload.take(payload.u8());
    if (!payload.ok())
        return failure;

    *cps = flags & power_state_bits;
    *carrier_data_ref_length = length;
    *carrier_data_ref = nullptr;
    if (!is_reference(reference))
        return failure;

    *aux_data_ref_count = 0;
    uint8_t *reference_copy = nullptr;
    if (!copy_to(reference_copy, reference))
        return failure;
    Block<uint8_t> reference_owner{reference_copy};
    if (count != 0) {
        *aux_data_ref_lengths = nullptr;
        *aux_data_refs = nullptr;
        References references(count);
        Reader in = auxiliary;
        for (uint8_t i = 0; i < count; ++i)
            if (!references.add(in.take(in.u8())))
                return failure;
        references.release(aux_data_ref_lengths, aux_data_refs);
    }
    *carrier_data_ref = reference_owner.release();
    *aux_data_ref_count = count;
    return success;
}

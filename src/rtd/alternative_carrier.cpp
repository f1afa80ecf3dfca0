// Alternative Carrier record: NFC Forum Connection Handover 1.2.
#include "record/build.h"
#include "record/payload_report.h"
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

// How many characters there are before the first that is not allowed where it stands.
size_t clean_length(ByteView reference)
{
    size_t length = 0;
    while (length < reference.size() && is_reference_character(reference[length]) &&
           (length != 0 || reference[length] != '~'))
        ++length;
    return length;
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

uint8_t nfc_ndef_alternative_carrier_read(nfc_ndef_bytes payload, nfc_ndef_alternative_carrier *carrier,
                                          nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *carrier = {};
    Reader in(bytes);
    const uint8_t flags = in.u8();
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    carrier->power_state = flags & power_state_bits;
    const ByteView reference = in.take(in.u8());
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, bytes.size() < 2 ? 1 : 2);
    carrier->reference = lent(reference);
    const uint8_t count = in.u8();
    const Reader auxiliary = in;
    for (uint8_t i = 0; i < count; ++i) {
        const size_t offset = bytes.size() - in.left();
        in.take(in.u8());
        if (!in.ok())
            return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, offset);
    }
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END);
    const size_t clean = clean_length(reference);
    if (clean != reference.size())
        return verdict.refused(NFC_NDEF_PAYLOAD_REFERENCE_CHARACTER, reference.data() + clean);
    carrier->auxiliary_count = count;
    carrier->auxiliary = lent(Reader(auxiliary).take(auxiliary.left() - in.left()));
    return verdict.valid();
}

uint8_t nfc_ndef_alternative_carrier_next(nfc_ndef_alternative_carrier *carrier, nfc_ndef_bytes *reference)
{
    Reader in(bytes_of(carrier->auxiliary));
    const ByteView found = in.take(in.u8());
    if (!in.ok())
        return 0;
    *reference = lent(found);
    carrier->auxiliary = lent(in.rest());
    --carrier->auxiliary_count;
    return 1;
}

int8_t rtdlib_alternative_carrier_record_extract(const nfc_ndef_record *record, uint32_t *cps,
                                                 uint8_t *carrier_data_ref_length, uint8_t **carrier_data_ref,
                                                 uint8_t *aux_data_ref_count, uint8_t **aux_data_ref_lengths,
                                                 uint8_t ***aux_data_refs)
{
    nfc_ndef_alternative_carrier view;
    nfc_ndef_payload_report report;
    const bool valid = nfc_ndef_alternative_carrier_read(lent(payload_of(record)), &view, &report);
    if (!valid && report.reason != NFC_NDEF_PAYLOAD_REFERENCE_CHARACTER)
        return failure;

    *cps = view.power_state;
    *carrier_data_ref_length = static_cast<uint8_t>(view.reference.length);
    *carrier_data_ref = nullptr;
    if (!valid)
        return failure;

    const uint8_t count = view.auxiliary_count;
    *aux_data_ref_count = 0;
    uint8_t *reference_copy = nullptr;
    if (!copy_to(reference_copy, bytes_of(view.reference)))
        return failure;
    Block<uint8_t> reference_owner{reference_copy};
    if (count != 0) {
        *aux_data_ref_lengths = nullptr;
        *aux_data_refs = nullptr;
        References references(count);
        for (nfc_ndef_bytes reference; nfc_ndef_alternative_carrier_next(&view, &reference);)
            if (!references.add(bytes_of(reference)))
                return failure;
        references.release(aux_data_ref_lengths, aux_data_refs);
    }
    *carrier_data_ref = reference_owner.release();
    *aux_data_ref_count = count;
    return success;
}

// Connection Handover.
#include "model_parts.h"

namespace model {

using nfc_ndef::Block;
using nfc_ndef::out;

namespace {

// The auxiliary references that an extractor hands back.
struct References {
    References() = default;
    References(const References &) = delete;
    References &operator=(const References &) = delete;
    ~References()
    {
        for (uint8_t i = 0; references && i < count; ++i)
            os_block_dealloc(references[i]);
        os_block_dealloc(references);
    }

    uint8_t count = 0;
    Block<> lengths;
    uint8_t **references = nullptr;
};

} // namespace

Content read_handover_request(const nfc_ndef_record &record, const Nesting &nesting)
{
    HandoverRequest request;
    nfc_ndef::Record collision;
    ExtractedRecords carriers;
    const int8_t result = rtdlib_handover_request_record_extract(&record, out(collision), &carriers.count,
                                                                 &carriers.records, &request.version);
    if (result != 1)
        return malformed;
    request.cr_record = decode_optional(collision, nesting);
    request.ac_records = carriers.decode(nesting);
    return request;
}

nfc_ndef::Record make(const HandoverRequest &request)
{
    const nfc_ndef::Record collision = to_optional_handle(request.cr_record);
    const LentRecords carriers(request.ac_records);
    if (!carriers.ok())
        return nullptr;
    return nfc_ndef::Record(
        rtdlib_handover_request_record_create(collision.get(), carriers.count(), carriers.data(), request.version));
}

Content read_handover_select(const nfc_ndef_record &record, const Nesting &nesting)
{
    HandoverSelect select;
    nfc_ndef::Record error;
    ExtractedRecords carriers;
    const int8_t result =
        rtdlib_handover_select_record_extract(&record, &carriers.count, &carriers.records, out(error), &select.version);
    if (result != 1)
        return malformed;
    select.ac_records = carriers.decode(nesting);
    select.err_record = decode_optional(error, nesting);
    return select;
}

nfc_ndef::Record make(const HandoverSelect &select)
{
    const nfc_ndef::Record error = to_optional_handle(select.err_record);
    const LentRecords carriers(select.ac_records);
    if (!carriers.ok())
        return nullptr;
    return nfc_ndef::Record(
        rtdlib_handover_select_record_create(carriers.count(), carriers.data(), error.get(), select.version));
}

Content read_handover_carrier(const nfc_ndef_record &record, const Nesting &)
{
    uint32_t ctf = 0;
    uint8_t type_length = 0, data_length = 0;
    Block<> type, data;
    const int8_t result =
        rtdlib_handover_carrier_record_extract(&record, &ctf, &type_length, out(type), &data_length, out(data));
    if (result != 1)
        return malformed;
    return HandoverCarrier{static_cast<uint8_t>(ctf), copy_of<std::string>(type, type_length),
                           copy_of(data, data_length)};
}

nfc_ndef::Record make(const HandoverCarrier &carrier)
{
    if (!fit_in_a_byte(carrier.carrier_type.size(), carrier.carrier_data.size()))
        return nullptr;
    // The builder wants a pointer to the type even when it is empty.
    return nfc_ndef::Record(rtdlib_handover_carrier_record_create(
        carrier.ctf, static_cast<uint8_t>(carrier.carrier_type.size()),
        reinterpret_cast<const uint8_t *>(carrier.carrier_type.data()),
        static_cast<uint8_t>(carrier.carrier_data.size()), pointer_to(carrier.carrier_data)));
}

Content read_alternative_carrier(const nfc_ndef_record &record, const Nesting &)
{
    uint32_t cps = 0;
    uint8_t length = 0;
    Block<> reference;
    References auxiliary;
    const int8_t result = rtdlib_alternative_carrier_record_extract(
        &record, &cps, &length, out(reference), &auxiliary.count, out(auxiliary.lengths), &auxiliary.references);
    if (result != 1)
        return malformed;
    AlternativeCarrier carrier{static_cast<uint8_t>(cps), copy_of<std::string>(reference, length), {}};
    for (uint8_t i = 0; i < auxiliary.count; ++i)
        carrier.aux_data_refs.push_back(copy_of<std::string>(auxiliary.references[i], auxiliary.lengths[i]));
    return carrier;
}

nfc_ndef::Record make(const AlternativeCarrier &carrier)
{
    if (!fit_in_a_byte(carrier.carrier_data_ref.size(), carrier.aux_data_refs.size()))
        return nullptr;
    Bytes lengths;
    std::vector<const uint8_t *> references;
    for (const std::string &reference : carrier.aux_data_refs) {
        if (!fit_in_a_byte(reference.size()))
            return nullptr;
        lengths.push_back(static_cast<uint8_t>(reference.size()));
        references.push_back(pointer_to(reference));
    }
    return nfc_ndef::Record(rtdlib_alternative_carrier_record_create(
        carrier.cps, static_cast<uint8_t>(carrier.carrier_data_ref.size()), pointer_to(carrier.carrier_data_ref),
        static_cast<uint8_t>(lengths.size()), pointer_to(lengths), references.data()));
}

Content read_collision_resolution(const nfc_ndef_record &record, const Nesting &)
{
    CollisionResolution resolution;
    if (rtdlib_collision_resolution_record_extract(&record, &resolution.random_number) != 1)
        return malformed;
    return resolution;
}

nfc_ndef::Record make(const CollisionResolution &resolution)
{
    return nfc_ndef::Record(rtdlib_collision_resolution_record_create(resolution.random_number));
}

Content read_handover_select_error(const nfc_ndef_record &record, const Nesting &)
{
    HandoverSelectError error;
    if (rtdlib_handover_select_error_record_extract(&record, &error.error_reason, &error.error_data) != 1)
        return malformed;
    return error;
}

nfc_ndef::Record make(const HandoverSelectError &error)
{
    return nfc_ndef::Record(rtdlib_handover_select_error_record_create(error.error_reason, error.error_data));
}

} // namespace model

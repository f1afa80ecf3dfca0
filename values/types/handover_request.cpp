#include "handover_request.h"

#include "../extract.h"
#include "../printable.h"

namespace nfc_ndef::values {

std::optional<HandoverRequest> Kind<HandoverRequest>::read(const nfc_ndef_record &record, const Nesting &nesting)
{
    HandoverRequest request;
    nfc_ndef::Record collision;
    Array<nfc_ndef::Record> carriers;
    const int8_t result = rtdlib_handover_request_record_extract(&record, out(collision), carriers.out_count(),
                                                                 carriers.out(), &request.version);
    if (result != 1)
        return std::nullopt;
    request.cr_record = nested(collision, nesting);
    request.ac_records = nested(carriers, nesting);
    request.other_records = collision ? others_in(record, *nested_at, {"ac", "cr"}, nesting)
                                      : others_in(record, *nested_at, {"ac"}, nesting);
    return request;
}

nfc_ndef::Record Kind<HandoverRequest>::make(const HandoverRequest &request)
{
    const nfc_ndef::Record collision = to_handle(request.cr_record);
    const LentRecords carriers(request.ac_records);
    if (!carriers.ok())
        return nullptr;
    return nfc_ndef::Record(
        rtdlib_handover_request_record_create(collision.get(), carriers.count(), carriers.data(), request.version));
}

void Kind<HandoverRequest>::show(const HandoverRequest &request, View &view)
{
    view.field("version", version_text(request.version));
    if (request.cr_record)
        view.record("collision resolution", *request.cr_record);
    view.records("carrier", request.ac_records);
    view.records("other record", request.other_records);
}

} // namespace nfc_ndef::values

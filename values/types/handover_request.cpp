#include "handover_request.h"

#include "../c_interface.h"
#include "../printable.h"

namespace nfc_ndef::values {

std::optional<HandoverRequest> Kind<HandoverRequest>::read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                           nfc_ndef_payload_report &report)
{
    nfc_ndef_handover read;
    if (!nfc_ndef_handover_request_read(record.payload, &read, &report))
        return std::nullopt;
    HandoverRequest request;
    request.version = read.version;
    const bool has_cr = read.collision.type.length != 0;
    nfc_ndef_record_view inner;
    while (nfc_ndef_msg_view_next(&read.message, &inner)) {
        Record decoded = decode(inner, nesting.inner());
        if (Kind<AlternativeCarrier>::type.matches(inner.format, text_of(decoded.type)))
            request.ac_records.push_back(std::move(decoded));
        else if (has_cr && Kind<CollisionResolution>::type.matches(inner.format, text_of(decoded.type)))
            request.cr_record = std::move(decoded);
        else
            request.other_records.push_back(std::move(decoded));
    }
    return request;
}

nfc_ndef::Record Kind<HandoverRequest>::make(const HandoverRequest &request)
{
    const LentRecord collision(request.cr_record);
    const LentRecords carriers(request.ac_records);
    if (!carriers.ok() || !collision.ok())
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

#include "handover_select.h"

#include "../c_interface.h"
#include "../printable.h"

namespace nfc_ndef::values {

std::optional<HandoverSelect> Kind<HandoverSelect>::read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                         nfc_ndef_payload_report &report)
{
    nfc_ndef_handover read;
    if (!nfc_ndef_handover_select_read(record.payload, record.flags, &read, &report))
        return std::nullopt;
    HandoverSelect select;
    select.version = read.version;
    const bool has_err = read.error.type.length != 0;
    nfc_ndef_record_view inner;
    while (nfc_ndef_msg_view_next(&read.message, &inner)) {
        Record decoded = decode(inner, nesting.inner());
        if (Kind<AlternativeCarrier>::type.matches(inner.format, text_of(decoded.type)))
            select.ac_records.push_back(std::move(decoded));
        else if (has_err && Kind<HandoverSelectError>::type.matches(inner.format, text_of(decoded.type)))
            select.err_record = std::move(decoded);
        else
            select.other_records.push_back(std::move(decoded));
    }
    return select;
}

nfc_ndef::Record Kind<HandoverSelect>::make(const HandoverSelect &select)
{
    const LentRecord error(select.err_record);
    const LentRecords carriers(select.ac_records);
    if (!carriers.ok() || !error.ok())
        return nullptr;
    return nfc_ndef::Record(
        rtdlib_handover_select_record_create(carriers.count(), carriers.data(), error.get(), select.version));
}

void Kind<HandoverSelect>::show(const HandoverSelect &select, View &view)
{
    view.field("version", version_text(select.version));
    if (select.ac_records.empty())
        view.field("carriers", "none");
    view.records("carrier", select.ac_records);
    if (select.err_record)
        view.record("error", *select.err_record);
    view.records("other record", select.other_records);
}

} // namespace nfc_ndef::values

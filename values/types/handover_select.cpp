#include "handover_select.h"

#include "../extract.h"
#include "../printable.h"

namespace nfc_ndef::values {

std::optional<HandoverSelect> Kind<HandoverSelect>::read(const nfc_ndef_record &record, const Nesting &nesting)
{
    HandoverSelect select;
    nfc_ndef::Record error;
    Array<nfc_ndef::Record> carriers;
    const int8_t result = rtdlib_handover_select_record_extract(&record, carriers.out_count(), carriers.out(),
                                                                out(error), &select.version);
    if (result != 1)
        return std::nullopt;
    select.ac_records = nested(carriers, nesting);
    select.err_record = nested(error, nesting);
    select.other_records =
        error ? others_in(record, *nested_at, {"ac", "err"}, nesting) : others_in(record, *nested_at, {"ac"}, nesting);
    return select;
}

nfc_ndef::Record Kind<HandoverSelect>::make(const HandoverSelect &select)
{
    const nfc_ndef::Record error = to_handle(select.err_record);
    const LentRecords carriers(select.ac_records);
    if (!carriers.ok())
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

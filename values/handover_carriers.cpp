#include "handover_carriers.h"

#include "c_interface.h"
#include "printable.h"

namespace nfc_ndef::values {

HandoverCarriers HandoverCarriers::of(const nfc_ndef_handover &read, const Nesting &nesting)
{
    HandoverCarriers carriers{.version = read.version, .ac_records = {}, .other_records = {}};
    for (Record &record : decode(read.message, nesting.inner())) {
        const bool offers = Kind<AlternativeCarrier>::type.matches(record.format, text_of(record.type));
        (offers ? carriers.ac_records : carriers.other_records).push_back(std::move(record));
    }
    return carriers;
}

nfc_ndef::Record HandoverCarriers::made(nfc_ndef_record *(*create)(const nfc_ndef_handover *, nfc_ndef_bytes)) const
{
    Records records = ac_records;
    records.insert(records.end(), other_records.begin(), other_records.end());
    const std::optional<Bytes> message = records.empty() ? Bytes() : encode(records);
    if (!message)
        return nullptr;
    nfc_ndef_handover lent{};
    lent.version = version;
    lent.message.rest = bytes_view(*message);
    return nfc_ndef::Record(create(&lent, {}));
}

void HandoverCarriers::show(View &view) const
{
    view.field("version", version_text(version));
    if (ac_records.empty())
        view.field("carriers", "none");
    view.records("carrier", ac_records);
    view.records("other record", other_records);
}

} // namespace nfc_ndef::values

#include "record/match.h"
#include "record/view.h"

using namespace ndef;

namespace {

struct KnownKind {
    KnownType type;
    nfc_ndef_kind kind;
};
constexpr KnownKind kinds[] = {
    {known::text, NFC_NDEF_KIND_TEXT},
    {known::uri, NFC_NDEF_KIND_URI},
    {known::smart_poster, NFC_NDEF_KIND_SMART_POSTER},
    {known::generic_control, NFC_NDEF_KIND_GENERIC_CONTROL},
    {known::handover_request, NFC_NDEF_KIND_HANDOVER_REQUEST},
    {known::handover_select, NFC_NDEF_KIND_HANDOVER_SELECT},
    {known::handover_carrier, NFC_NDEF_KIND_HANDOVER_CARRIER},
    {known::alternative_carrier, NFC_NDEF_KIND_ALTERNATIVE_CARRIER},
    {known::collision_resolution, NFC_NDEF_KIND_COLLISION_RESOLUTION},
    {known::handover_select_error, NFC_NDEF_KIND_HANDOVER_ERROR},
    {known::bluetooth_oob, NFC_NDEF_KIND_BT_OOB},
    {known::bluetooth_legacy, NFC_NDEF_KIND_BT_LEGACY},
    {known::sharing_enquiry, NFC_NDEF_KIND_SHARING_ENQUIRY},
};

} // namespace

uint32_t nfc_ndef_record_view_kind(const nfc_ndef_record_view *record)
{
    const CandidateType candidate(record->format, bytes_of(record->type));
    for (const KnownKind &known : kinds)
        if (candidate.matches(known.type))
            return known.kind;
    return NFC_NDEF_KIND_OTHER;
}

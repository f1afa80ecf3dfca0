// Reading in place against the owning calls, which keep within their bound of memory: the input as a message, each of
// its records as every type, the input as a payload, and as the data area of a tag.
#include "agreement.h"
#include "fuzz.h"

using namespace fuzz;
using nfc_ndef::Message;
using nfc_ndef::Record;

namespace {

void check_data_area(nfc_ndef_bytes memory)
{
    nfc_ndef_tlv tlv;
    nfc_ndef_tlv_report report;
    if (!nfc_ndef_tlv_find(memory, &tlv, &report)) {
        must(report.reason != NFC_NDEF_TLV_FOUND && report.offset <= memory.length, "there is a reason, and a place");
        return;
    }
    Bytes joined(tlv.length), pieces;
    must(nfc_ndef_tlv_join(&tlv, joined.data(), tlv.length) == joined.size(), "a message is as long as it says");
    const nfc_ndef_bytes whole = tlv.message;
    for (nfc_ndef_bytes piece; nfc_ndef_tlv_next_piece(&tlv, &piece);) {
        must(piece.length != 0, "no piece is empty");
        pieces.insert(pieces.end(), piece.data, piece.data + piece.length);
    }
    must(pieces == joined, "the pieces are the message");
    must(!whole.data || equal({whole.data, whole.length}, joined), "and so is the one piece");

    const uint32_t needed = nfc_ndef_tlv_wrap({joined.data(), joined.size()}, nullptr, 0);
    must(needed != 0 || joined.size() == 0xFFFF, "what was found can be wrapped");
    Bytes wrapped(needed);
    nfc_ndef_tlv again;
    must(nfc_ndef_tlv_wrap({joined.data(), joined.size()}, wrapped.data(), needed) == needed &&
             (needed == 0 || (nfc_ndef_tlv_find({wrapped.data(), needed}, &again, nullptr) &&
                              equal({again.message.data, again.message.length}, joined))),
         "what is wrapped is found");
}

} // namespace

void fuzz::run(ByteView input)
{
    const nfc_ndef_bytes bytes{pointer(input), input.size()};
    const auto agree = [](const auto &what, size_t length) {
        const Memory memory;
        const char *const broken_by = agreement::broken_by(what);
        must(!broken_by, broken_by ? broken_by : "");
        must(memory.peak() <= most_memory(length), "memory stays in proportion to the bytes");
    };
    agree(bytes, bytes.length);
    const Message message{nfc_ndef_msg_create_by_msg_offset(bytes.data, 0, length32(input))};
    for (uint8_t i = 0; i < nfc_ndef_msg_get_number_of_records(message.get()); ++i) {
        const nfc_ndef_record &record = *nfc_ndef_msg_get_record_by_index(message.get(), i);
        agree(record, record.payload_length);
    }
    for (const bool alone : {false, true}) {
        const Record record = make_record(NFC_NDEF_TNF_UNKNOWN, {}, {}, input);
        record->mb = record->me = alone;
        agree(*record, input.size());
    }
    check_data_area(bytes);
}

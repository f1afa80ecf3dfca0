#include "in_place.h"

#include "nfc_ndef_view.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

namespace bench::in_place {
namespace {

void expect(bool holds, const char *what)
{
    if (holds) [[likely]]
        return;
    std::fprintf(stderr, "bench: the library did not %s\n", what);
    std::exit(2);
}

void visit_text(const nfc_ndef_record_view &record)
{
    nfc_ndef_text text;
    expect(nfc_ndef_text_read(record.payload, &text, nullptr), "read a text");
    benchmark::DoNotOptimize(text);
}

void visit_uri(const nfc_ndef_record_view &record)
{
    nfc_ndef_uri uri;
    expect(nfc_ndef_uri_read(record.payload, &uri, nullptr), "read a URI");
    benchmark::DoNotOptimize(uri);
}

void visit_poster(const nfc_ndef_record_view &record)
{
    nfc_ndef_smart_poster poster;
    expect(nfc_ndef_smart_poster_read(record.payload, &poster, nullptr), "read a Smart Poster");
    nfc_ndef_record_view part;
    while (const uint32_t role = nfc_ndef_smart_poster_next(&poster, &part)) {
        if (role == NFC_NDEF_SMART_POSTER_URI)
            visit_uri(part);
        else if (role == NFC_NDEF_SMART_POSTER_TITLE)
            visit_text(part);
        benchmark::DoNotOptimize(part);
    }
    benchmark::DoNotOptimize(poster);
}

void visit_request(const nfc_ndef_record_view &record)
{
    nfc_ndef_handover request;
    expect(nfc_ndef_handover_request_read(record.payload, &request, nullptr), "read a Handover Request");
    nfc_ndef_collision_resolution collision;
    expect(nfc_ndef_collision_resolution_read(request.collision.payload, &collision, nullptr), "read a number");
    benchmark::DoNotOptimize(collision);
    for (nfc_ndef_record_view part; nfc_ndef_handover_next_carrier(&request, &part);) {
        nfc_ndef_alternative_carrier carrier;
        expect(nfc_ndef_alternative_carrier_read(part.payload, &carrier, nullptr), "read an alternative carrier");
        benchmark::DoNotOptimize(carrier);
    }
}

void visit_bluetooth(const nfc_ndef_record_view &record)
{
    nfc_ndef_bt_oob oob;
    expect(nfc_ndef_bt_oob_read(record.payload, &oob, nullptr), "read a Bluetooth record");
    benchmark::DoNotOptimize(oob);
}

} // namespace

void visit(const Input &input)
{
    nfc_ndef_msg_view message;
    expect(nfc_ndef_msg_view_open({input.data(), input.length()}, &message, nullptr), "open a message");
    for (nfc_ndef_record_view record; nfc_ndef_msg_view_next(&message, &record);) {
        switch (nfc_ndef_record_view_kind(&record)) {
        case NFC_NDEF_KIND_TEXT:
            visit_text(record);
            break;
        case NFC_NDEF_KIND_URI:
            visit_uri(record);
            break;
        case NFC_NDEF_KIND_SMART_POSTER:
            visit_poster(record);
            break;
        case NFC_NDEF_KIND_HANDOVER_REQUEST:
            visit_request(record);
            break;
        case NFC_NDEF_KIND_BT_OOB:
            visit_bluetooth(record);
            break;
        default: {
            uint32_t position = 0;
            for (nfc_ndef_bytes piece; nfc_ndef_record_view_next_piece(&record, &position, &piece);)
                benchmark::DoNotOptimize(piece);
        }
        }
    }
}

void encode(const nfc_ndef_msg &message)
{
    static uint8_t buffer[16384];
    expect(nfc_ndef_msg_write(&message, buffer, sizeof buffer) > 0, "write a message");
    benchmark::DoNotOptimize(buffer);
}

} // namespace bench::in_place

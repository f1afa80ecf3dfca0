/*
 * Prints the Smart Poster in the memory of a tag without a heap, or the reason why there is none.
 * Reads the file given as argument; without one, the memory below.
 */
#include <nfc_ndef_view.h>

#include <stdio.h>

static const uint8_t sample[] = "\x03\x23"       /* NDEF message TLV */
                                "\xD1\x02\x1ESp" /* a Smart Poster of */
                                "\x91\x01\x0CU\x04"
                                "example.com" /* a URI */
                                "\x51\x01\x0AT\x02"
                                "enExample" /* and a title */
                                "\xFE";

/* The bytes come from a stranger's tag: the terminal gets printable ASCII only. */
static void print_bytes(const char *label, nfc_ndef_bytes bytes)
{
    printf("%s", label);
    for (size_t i = 0; i < bytes.length; ++i)
        putchar(bytes.data[i] >= 0x20 && bytes.data[i] < 0x7F ? bytes.data[i] : '.');
}

static int refused(const char *what, const char *why, uint32_t offset)
{
    printf("%s: %s, at byte %u\n", what, why, offset);
    return 0;
}

static int print_poster(nfc_ndef_bytes payload)
{
    nfc_ndef_smart_poster poster;
    nfc_ndef_payload_report why;
    if (!nfc_ndef_smart_poster_read(payload, &poster, &why))
        return refused("Smart Poster", nfc_ndef_payload_reason_text(why.reason), why.offset);
    nfc_ndef_uri uri;
    if (!nfc_ndef_uri_read(poster.uri.payload, &uri, &why))
        return refused("URI", nfc_ndef_payload_reason_text(why.reason), why.offset);
    printf("URI: %s", uri.prefix);
    print_bytes("", uri.field);
    putchar('\n');

    nfc_ndef_record_view part;
    uint32_t role;
    while ((role = nfc_ndef_smart_poster_next(&poster, &part)) != 0) {
        nfc_ndef_text title;
        if (role == NFC_NDEF_SMART_POSTER_TITLE && nfc_ndef_text_read(part.payload, &title, NULL)) {
            print_bytes("title (", title.language);
            print_bytes("): ", title.text);
            putchar('\n');
        }
    }
    return 1;
}

static int print_memory(nfc_ndef_bytes memory)
{
    nfc_ndef_tlv tlv;
    nfc_ndef_tlv_report no_message;
    if (!nfc_ndef_tlv_find(memory, &tlv, &no_message))
        return refused("memory", nfc_ndef_tlv_reason_text(no_message.reason), no_message.offset);
    nfc_ndef_msg_view message;
    nfc_ndef_msg_report why;
    if (!nfc_ndef_msg_view_open(tlv.message, &message, &why))
        return refused("message", nfc_ndef_msg_check_text(why.reason), why.offset);
    for (nfc_ndef_record_view record; nfc_ndef_msg_view_next(&message, &record);)
        if (nfc_ndef_record_view_kind(&record) == NFC_NDEF_KIND_SMART_POSTER && !print_poster(record.payload))
            return 0;
    return 1;
}

int main(int argc, char **argv)
{
    static uint8_t memory[4096];
    nfc_ndef_bytes bytes = {sample, sizeof sample - 1};
    if (argc > 1) {
        FILE *file = fopen(argv[1], "rb");
        if (!file)
            return 2;
        bytes.data = memory;
        bytes.length = fread(memory, 1, sizeof memory, file);
        fclose(file);
    }
    return print_memory(bytes) ? 0 : 1;
}

/*
 * Prints the records of an NDEF message, or the reason why the bytes are not one.
 * Reads the file given as argument; without one, the two records below.
 */
#include <nfc_ndef.h>

#include <stdio.h>
#include <string.h>

static const uint8_t sample[] = "\x91\x01\x08T\x02"
                                "enHello"
                                "\x51\x01\x0CU\x04"
                                "example.com";

/* The bytes come from a stranger's tag: the terminal gets printable ASCII only. */
static void print_bytes(const char *label, const uint8_t *bytes, uint32_t length)
{
    printf("%s", label);
    for (uint32_t i = 0; i < length; ++i)
        putchar(bytes[i] >= 0x20 && bytes[i] < 0x7F ? bytes[i] : '.');
    putchar('\n');
}

static int has_type(const nfc_ndef_record *record, uint32_t format, const char *name)
{
    const nfc_ndef_record_type *type = nfc_ndef_record_get_record_type(record);
    uint8_t length = 0;
    const uint8_t *bytes = nfc_ndef_record_type_get_name(type, &length);
    return nfc_ndef_record_type_get_format(type) == format && length == strlen(name) &&
           memcmp(bytes, name, length) == 0;
}

static int print_text(const nfc_ndef_record *record)
{
    uint8_t utf16 = 0;
    uint8_t language_length = 0;
    uint8_t *language = NULL;
    uint32_t text_length = 0;
    uint8_t *text = NULL;
    int8_t result = rtdlib_text_record_extract(record, &utf16, &language_length, &language, &text_length, &text);
    int ok = result == NFC_NDEF_OK && text != NULL;
    if (ok) {
        print_bytes("  language: ", language, language ? language_length : 0);
        print_bytes(utf16 ? "  text (UTF-16): " : "  text: ", text, text_length);
    }
    os_block_dealloc(language);
    os_block_dealloc(text);
    return ok;
}

static int print_uri(const nfc_ndef_record *record)
{
    uint8_t code = 0;
    uint8_t *field = NULL;
    uint32_t length = 0;
    int ok = rtdlib_uri_record_extract(record, &code, &field, &length) == NFC_NDEF_OK;
    if (ok) {
        printf("  prefix code: %u\n", code);
        print_bytes("  rest of the URI: ", field, length);
    }
    os_block_dealloc(field);
    return ok;
}

static int print_record(const nfc_ndef_record *record)
{
    printf("record with %lu bytes of payload\n", (unsigned long)nfc_ndef_record_get_payload_length(record));
    if (has_type(record, NFC_NDEF_TNF_WELL_KNOWN, "T"))
        return print_text(record);
    if (has_type(record, NFC_NDEF_TNF_WELL_KNOWN, "U"))
        return print_uri(record);
    return 1;
}

static void explain(const uint8_t *bytes, uint32_t length)
{
    nfc_ndef_msg_report report = {NFC_NDEF_MSG_OUT_OF_MEMORY, 0, 0};
    if (nfc_ndef_msg_check(bytes, 0, length, &report) == 1)
        report.reason = NFC_NDEF_MSG_OUT_OF_MEMORY; /* the bytes are a message, so only memory can be the cause */
    printf("not a message: %s (record %lu, byte %lu)\n", nfc_ndef_msg_check_text(report.reason),
           (unsigned long)report.record, (unsigned long)report.offset);
}

static int print_message(const uint8_t *bytes, uint32_t length)
{
    nfc_ndef_msg *message = nfc_ndef_msg_create_by_msg_offset(bytes, 0, length);
    if (!message) {
        explain(bytes, length);
        return 0;
    }
    uint8_t count = 0;
    const nfc_ndef_record **records = nfc_ndef_msg_get_records(message, &count);
    int ok = records != NULL;
    for (uint8_t i = 0; i < count; ++i)
        ok = print_record(records[i]) && ok;
    os_block_dealloc(records); /* the array only: the records are the message's */
    nfc_ndef_msg_delete(&message);
    return ok;
}

int main(int argc, char **argv)
{
    static uint8_t bytes[65536];
    if (argc < 2)
        return print_message(sample, sizeof sample - 1) ? 0 : 1;
    FILE *file = fopen(argv[1], "rb");
    if (!file) {
        perror(argv[1]);
        return 2;
    }
    size_t length = fread(bytes, 1, sizeof bytes, file);
    int unread = ferror(file) || fgetc(file) != EOF;
    fclose(file);
    if (unread) {
        fprintf(stderr, "%s: cannot be read, or larger than %u bytes\n", argv[1], (unsigned)sizeof bytes);
        return 2;
    }
    return print_message(bytes, (uint32_t)length) ? 0 : 1;
}

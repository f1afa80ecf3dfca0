/*
 * Makes an NDEF message of a Text record and a Smart Poster.
 * Writes it to the file given as argument; without one, prints it as hex.
 */
#include <nfc_ndef.h>

#include <stdio.h>
#include <string.h>

static nfc_ndef_record *make_text(const char *language, const char *text)
{
    return rtdlib_text_record_create(0, (uint8_t)strlen(language), (const uint8_t *)language, (const uint8_t *)text,
                                     (uint32_t)strlen(text));
}

/* A poster holds copies of its parts, so the parts are freed here whatever happens. */
static nfc_ndef_record *make_poster(const char *title_text)
{
    static const char rest[] = "example.com/menu"; /* code 4 stands for "https://" */
    nfc_ndef_record *title = make_text("en", title_text);
    nfc_ndef_record *uri = rtdlib_uri_record_create(4, sizeof rest - 1, (const uint8_t *)rest);
    nfc_ndef_record *poster = NULL;
    if (title && uri)
        poster = rtdlib_smart_poster_record_create(1, &title, uri, 0, 0, NULL, NULL, NULL, 0, NULL);
    nfc_ndef_record_delete(&uri);
    nfc_ndef_record_delete(&title);
    return poster;
}

/* Moves a record to the end of a message, or frees it. A null record stands for a builder that failed. */
static int move_to(nfc_ndef_msg *message, nfc_ndef_record *record)
{
    uint8_t end = nfc_ndef_msg_get_number_of_records(message);
    if (nfc_ndef_msg_insert_record(message, end, record) == NFC_NDEF_OK)
        return 1;
    nfc_ndef_record_delete(&record);
    return 0;
}

/* Returns the number of bytes, 0 on failure; the caller frees `*bytes` with os_block_dealloc(). */
static int32_t make_tag(uint8_t **bytes)
{
    int32_t length = 0;
    nfc_ndef_msg *message = nfc_ndef_msg_create();
    if (move_to(message, make_text("en", "Table 7")) && move_to(message, make_poster("Menu")))
        length = nfc_ndef_msg_to_byte_array(message, bytes);
    nfc_ndef_msg_delete(&message);
    return length;
}

static int save(const char *path, const uint8_t *bytes, size_t length)
{
    FILE *file = fopen(path, "wb");
    if (!file)
        return 0;
    size_t written = fwrite(bytes, 1, length, file);
    return fclose(file) == 0 && written == length;
}

int main(int argc, char **argv)
{
    uint8_t *bytes = NULL;
    int32_t length = make_tag(&bytes);
    int ok = length > 0;
    if (ok && argc > 1)
        ok = save(argv[1], bytes, (size_t)length);
    for (int32_t i = 0; i < length && argc < 2; ++i)
        printf(i + 1 < length ? "%02X " : "%02X\n", bytes[i]);
    os_block_dealloc(bytes);
    if (!ok)
        fprintf(stderr, "the message could not be made or written\n");
    return ok ? 0 : 1;
}

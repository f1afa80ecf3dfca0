/*
 * What people put on tags, in a few lines each: the code of docs/recipes.md. Prints each message in hex.
 *
 * SPDX-License-Identifier: MIT
 */
#include <nfc_ndef_types.h>

#include <stdio.h>
#include <string.h>

static nfc_ndef_bytes bytes(const char *text) { return (nfc_ndef_bytes){(const uint8_t *)text, strlen(text)}; }

/* The message of one record, which is taken over; its length, or 0 when it has no room or there is no record. */
static uint32_t message_of(nfc_ndef_record *record, uint8_t *buffer, uint32_t capacity)
{
    nfc_ndef_msg_writer writer;
    const nfc_ndef_record_view view = nfc_ndef_record_view_of(record);
    nfc_ndef_msg_writer_begin(&writer, buffer, capacity);
    uint32_t length = record && nfc_ndef_msg_writer_add(&writer, &view) ? nfc_ndef_msg_writer_end(&writer) : 0;
    nfc_ndef_record_delete(&record);
    return length <= capacity ? length : 0;
}

static uint32_t link_on_a_tag(uint8_t *tag, uint32_t capacity)
{
    const nfc_ndef_bytes uri = bytes("https://example.com/menu");
    uint32_t prefix;
    const uint8_t code = nfc_ndef_uri_prefix_code(uri, &prefix);
    return message_of(rtdlib_uri_record_create(code, (uint32_t)uri.length - prefix, uri.data + prefix), tag, capacity);
}

static uint32_t network_on_a_tag(uint8_t *tag, uint32_t capacity)
{
    uint8_t credential[256];
    nfc_ndef_wifi wifi = {.credentials = {credential, 0}};
    const nfc_ndef_wifi_attributes network = {.has_network_index = 1,
                                              .network_index = 1,
                                              .ssid = bytes("Cafe"),
                                              .network_key = bytes("flat white"),
                                              .has_authentication_type = 1,
                                              .authentication_type = 0x0020, /* WPA2-Personal */
                                              .has_encryption_type = 1,
                                              .encryption_type = 0x0008, /* AES */
                                              .mac_address = bytes("\xFF\xFF\xFF\xFF\xFF\xFF")};
    wifi.credentials.length = nfc_ndef_wifi_credential_write(&network, credential, sizeof credential);
    return message_of(nfc_ndef_wifi_record_create(&wifi, bytes("")), tag, capacity);
}

static uint32_t contact_on_a_tag(uint8_t *tag, uint32_t capacity)
{
    const nfc_ndef_bytes card = bytes("BEGIN:VCARD\r\nVERSION:3.0\r\nN:Lovelace;Ada;;;\r\nFN:Ada Lovelace\r\n"
                                      "TEL:+4930123456\r\nEND:VCARD\r\n");
    nfc_ndef_record_type *type = nfc_ndef_record_type_create(NFC_NDEF_TNF_MIME, (const uint8_t *)"text/vcard", 10);
    nfc_ndef_record *record = nfc_ndef_record_create_from_param(type, NULL, 0, card.data, (uint32_t)card.length);
    nfc_ndef_record_type_delete(type);
    return message_of(record, tag, capacity);
}

static uint32_t app_on_a_tag(uint8_t *tag, uint32_t capacity)
{
    const nfc_ndef_android_application app = {bytes("com.example.app")};
    return message_of(nfc_ndef_android_application_record_create(&app, bytes("")), tag, capacity);
}

static uint32_t headset_on_a_tag(uint8_t *tag, uint32_t capacity)
{
    static uint8_t name[] = "Headset";
    const nfc_ndef_bt_rtd_2_1_str headset = {
        .device_address = {0xAB, 0x90, 0x78, 0x56, 0x34, 0x12}, /* least significant byte first, as the tag has it */
        .class_of_device = {0x04, 0x04, 0x24},
        .local_name = name,
        .local_name_length = sizeof name - 1};
    return message_of(rtdlib_bt_2_1_configuration_data_record_create(&headset, 9, 0, 0, 0, NULL, 0, 0), tag, capacity);
}

int main(void)
{
    static uint32_t (*const recipes[])(uint8_t *, uint32_t) = {link_on_a_tag, network_on_a_tag, contact_on_a_tag,
                                                               app_on_a_tag, headset_on_a_tag};
    for (size_t i = 0; i < sizeof recipes / sizeof *recipes; ++i) {
        uint8_t tag[256];
        const uint32_t length = recipes[i](tag, sizeof tag);
        for (uint32_t at = 0; at < length; ++at)
            printf("%02X", tag[at]);
        printf("\n");
    }
    return 0;
}

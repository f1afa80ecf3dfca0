/*
 * A Bluetooth handover over NFC: one device asks for a connection, the other selects a carrier.
 * Plays both sides and prints what each learns; with a file as argument, reads the handover message in it instead.
 */
#include <nfc_ndef.h>

#include <stdio.h>
#include <string.h>

#define VERSION_1_2 0x12
#define CARRIER_ACTIVE 1
#define COMPLETE_NAME 9

/* Links an alternative carrier to the record that configures it, whose id this is. */
static const uint8_t carrier_id[] = {'0'};

/* What the Bluetooth stack of a device would supply. The address is last byte first, as in the payload. */
struct device {
    const char *name;
    uint8_t address[6];
};

static const struct device phone = {"Phone", {0x01, 0x00, 0x00, 0x5E, 0x00, 0x00}};
static const struct device speaker = {"Speaker", {0x02, 0x00, 0x00, 0x5E, 0x00, 0x00}};

/* Moves a record to the end of a message, or frees it. A null record stands for a builder that failed. */
static int move_to(nfc_ndef_msg *message, nfc_ndef_record *record)
{
    uint8_t end = nfc_ndef_msg_get_number_of_records(message);
    if (nfc_ndef_msg_insert_record(message, end, record) == NFC_NDEF_OK)
        return 1;
    nfc_ndef_record_delete(&record);
    return 0;
}

static nfc_ndef_record *make_pairing_data(const struct device *device)
{
    nfc_ndef_bt_rtd_2_1_str fields;
    uint8_t name[64];
    size_t name_length = strlen(device->name);
    if (name_length == 0 || name_length > sizeof name)
        return NULL;
    memset(&fields, 0, sizeof fields);
    memcpy(fields.device_address, device->address, sizeof fields.device_address);
    memcpy(name, device->name, name_length);
    fields.local_name = name; /* borrowed by the builder, so `fields` owns nothing and is not deleted */
    fields.local_name_length = (uint8_t)name_length;
    return rtdlib_bt_2_1_configuration_data_record_create(&fields, COMPLETE_NAME, 0, 0, 0, carrier_id,
                                                          sizeof carrier_id, 1);
}

static nfc_ndef_record *make_request(uint16_t random_number)
{
    nfc_ndef_record *random = rtdlib_collision_resolution_record_create(random_number);
    nfc_ndef_record *carrier =
        rtdlib_alternative_carrier_record_create(CARRIER_ACTIVE, sizeof carrier_id, carrier_id, 0, NULL, NULL);
    nfc_ndef_record *request = NULL;
    if (random && carrier)
        request = rtdlib_handover_request_record_create(random, 1, &carrier, VERSION_1_2);
    nfc_ndef_record_delete(&carrier);
    nfc_ndef_record_delete(&random);
    return request;
}

static nfc_ndef_record *make_select(void)
{
    nfc_ndef_record *carrier =
        rtdlib_alternative_carrier_record_create(CARRIER_ACTIVE, sizeof carrier_id, carrier_id, 0, NULL, NULL);
    nfc_ndef_record *select = NULL;
    if (carrier)
        select = rtdlib_handover_select_record_create(1, &carrier, NULL, VERSION_1_2);
    nfc_ndef_record_delete(&carrier);
    return select;
}

/* A handover message is the handover record, then the record of each carrier. Takes the first record over. */
static int32_t write_handover(nfc_ndef_record *handover, const struct device *device, uint8_t **bytes)
{
    int32_t length = 0;
    nfc_ndef_msg *message = nfc_ndef_msg_create();
    if (move_to(message, handover) && move_to(message, make_pairing_data(device)))
        length = nfc_ndef_msg_to_byte_array(message, bytes);
    nfc_ndef_msg_delete(&message);
    return length;
}

static int print_pairing_data(const nfc_ndef_record *record)
{
    nfc_ndef_bt_rtd_2_1_str *fields = NULL;
    int ok = rtdlib_bt_2_1_configuration_data_record_extract(record, &fields) == NFC_NDEF_OK;
    if (ok) {
        const uint8_t *a = fields->device_address;
        printf("  Bluetooth %02X:%02X:%02X:%02X:%02X:%02X, name of %u bytes: ", a[5], a[4], a[3], a[2], a[1], a[0],
               fields->local_name_length);
        for (unsigned i = 0; i < fields->local_name_length; ++i)
            putchar(fields->local_name[i] >= 0x20 && fields->local_name[i] < 0x7F ? fields->local_name[i] : '.');
        putchar('\n');
    }
    nfc_ndef_bt_rtd_2_1_str_delete(&fields);
    return ok;
}

/* The key lives on the stack: a comparison reads it and keeps nothing. */
static int has_type(const nfc_ndef_record *record, uint32_t format, const char *name)
{
    uint8_t bytes[64];
    const size_t length = strlen(name);
    if (length > sizeof bytes)
        return 0;
    memcpy(bytes, name, length);
    const nfc_ndef_record_type key = {bytes, (uint8_t)length, format};
    return nfc_ndef_record_type_equals(&key, nfc_ndef_record_get_record_type(record));
}

static int print_carrier(const nfc_ndef_msg *message, const nfc_ndef_record *carrier)
{
    uint32_t power_state = 0;
    uint8_t id_length = 0;
    uint8_t *id = NULL;
    uint8_t aux_count = 0;
    uint8_t *aux_lengths = NULL;
    uint8_t **aux_ids = NULL;
    int ok = rtdlib_alternative_carrier_record_extract(carrier, &power_state, &id_length, &id, &aux_count, &aux_lengths,
                                                       &aux_ids) == NFC_NDEF_OK;
    if (ok) {
        const nfc_ndef_record *record = nfc_ndef_msg_get_record_by_id(message, id, id_length);
        printf("  carrier: power state %lu, %s\n", (unsigned long)power_state, record ? "configured" : "no record");
        if (record && has_type(record, NFC_NDEF_TNF_MIME, "application/vnd.bluetooth.ep.oob"))
            ok = print_pairing_data(record);
    }
    for (uint8_t i = 0; aux_ids && i < aux_count; ++i)
        os_block_dealloc(aux_ids[i]);
    os_block_dealloc(aux_ids);
    os_block_dealloc(aux_lengths);
    os_block_dealloc(id);
    return ok;
}

/* Prints the carriers and frees them with their array. */
static int print_carriers(const nfc_ndef_msg *message, nfc_ndef_record **carriers, uint8_t count)
{
    int ok = 1;
    for (uint8_t i = 0; carriers && i < count; ++i) {
        ok = print_carrier(message, carriers[i]) && ok;
        nfc_ndef_record_delete(&carriers[i]);
    }
    os_block_dealloc(carriers);
    return ok;
}

static int print_request(const nfc_ndef_msg *message, const nfc_ndef_record *request)
{
    nfc_ndef_record *random = NULL;
    uint8_t count = 0;
    nfc_ndef_record **carriers = NULL;
    uint8_t version = 0;
    uint16_t random_number = 0;
    int ok = rtdlib_handover_request_record_extract(request, &random, &count, &carriers, &version) == NFC_NDEF_OK;
    if (ok)
        printf("handover request %u.%u\n", version >> 4, version & 0x0F);
    if (rtdlib_collision_resolution_record_extract(random, &random_number) == NFC_NDEF_OK)
        printf("  random number: 0x%04X\n", random_number);
    nfc_ndef_record_delete(&random);
    return print_carriers(message, carriers, count) && ok;
}

static int print_select(const nfc_ndef_msg *message, const nfc_ndef_record *select)
{
    uint8_t count = 0;
    nfc_ndef_record **carriers = NULL;
    nfc_ndef_record *error = NULL;
    uint8_t version = 0;
    uint8_t reason = 0;
    uint8_t data = 0;
    int ok = rtdlib_handover_select_record_extract(select, &count, &carriers, &error, &version) == NFC_NDEF_OK;
    if (ok)
        printf("handover select %u.%u\n", version >> 4, version & 0x0F);
    if (rtdlib_handover_select_error_record_extract(error, &reason, &data) == NFC_NDEF_OK)
        printf("  refused: reason %u, data %u\n", reason, data);
    nfc_ndef_record_delete(&error);
    return print_carriers(message, carriers, count) && ok;
}

static int read_handover(const uint8_t *bytes, uint32_t length)
{
    nfc_ndef_msg *message = nfc_ndef_msg_create_by_msg_offset(bytes, 0, length);
    const nfc_ndef_record *first = nfc_ndef_msg_get_record_by_index(message, 0);
    int ok = 0;
    if (has_type(first, NFC_NDEF_TNF_WELL_KNOWN, "Hr"))
        ok = print_request(message, first);
    else if (has_type(first, NFC_NDEF_TNF_WELL_KNOWN, "Hs"))
        ok = print_select(message, first);
    nfc_ndef_msg_delete(&message);
    return ok;
}

/* Sends a message to the other side, which reads it. */
static int exchange(nfc_ndef_record *handover, const struct device *device)
{
    uint8_t *bytes = NULL;
    int32_t length = write_handover(handover, device, &bytes);
    int ok = length > 0 && read_handover(bytes, (uint32_t)length);
    os_block_dealloc(bytes);
    return ok;
}

int main(int argc, char **argv)
{
    static uint8_t bytes[65536];
    int ok = 0;
    if (argc < 2) {
        ok = exchange(make_request(0x1234), &phone) && exchange(make_select(), &speaker);
    } else {
        FILE *file = fopen(argv[1], "rb");
        if (!file) {
            perror(argv[1]);
            return 2;
        }
        ok = read_handover(bytes, (uint32_t)fread(bytes, 1, sizeof bytes, file));
        fclose(file);
    }
    if (!ok)
        fprintf(stderr, "the handover message could not be made or read\n");
    return ok ? 0 : 1;
}

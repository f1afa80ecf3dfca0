/*
 * The layouts that programs already compiled rely on, with 32-bit and with 64-bit pointers. A change here is a new
 * major version.
 */
#include "nfc_ndef.h"

#define AT(at32, at64) (sizeof(void *) == 4 ? (at32) : (at64))
#define SIZE(type, at32, at64) _Static_assert(sizeof(type) == AT(at32, at64), "size of " #type)
#define OFFSET(type, member, at32, at64)                                                                               \
    _Static_assert(offsetof(type, member) == AT(at32, at64), "offset of " #type "." #member)

_Static_assert(sizeof(void *) == 4 || sizeof(void *) == 8, "pointers of 32 or 64 bits");

SIZE(nfc_ndef_record_type, 12, 16);
OFFSET(nfc_ndef_record_type, name, 0, 0);
OFFSET(nfc_ndef_record_type, name_length, 4, 8);
OFFSET(nfc_ndef_record_type, format, 8, 12);

SIZE(nfc_ndef_record, 40, 56);
OFFSET(nfc_ndef_record, mb, 0, 0);
OFFSET(nfc_ndef_record, me, 1, 1);
OFFSET(nfc_ndef_record, cf, 2, 2);
OFFSET(nfc_ndef_record, sr, 3, 3);
OFFSET(nfc_ndef_record, il, 4, 4);
OFFSET(nfc_ndef_record, payload_length, 8, 8);
OFFSET(nfc_ndef_record, id_length, 12, 12);
OFFSET(nfc_ndef_record, id, 16, 16);
OFFSET(nfc_ndef_record, payload, 20, 24);
OFFSET(nfc_ndef_record, record_type, 24, 32);
OFFSET(nfc_ndef_record, parsed_length, 36, 48);

SIZE(nfc_ndef_msg, 4, 8);

SIZE(nfc_ndef_msg_report, 12, 12);
OFFSET(nfc_ndef_msg_report, reason, 0, 0);
OFFSET(nfc_ndef_msg_report, record, 4, 4);
OFFSET(nfc_ndef_msg_report, offset, 8, 8);

SIZE(nfc_ndef_bt_rtd_2_1_str, 72, 136);
OFFSET(nfc_ndef_bt_rtd_2_1_str, device_address, 0, 0);
OFFSET(nfc_ndef_bt_rtd_2_1_str, class_of_device, 6, 6);
OFFSET(nfc_ndef_bt_rtd_2_1_str, local_name_length, 9, 9);
OFFSET(nfc_ndef_bt_rtd_2_1_str, local_name, 12, 16);
OFFSET(nfc_ndef_bt_rtd_2_1_str, hash_c_length, 16, 24);
OFFSET(nfc_ndef_bt_rtd_2_1_str, hash_c, 20, 32);
OFFSET(nfc_ndef_bt_rtd_2_1_str, randomizer_r_length, 24, 40);
OFFSET(nfc_ndef_bt_rtd_2_1_str, randomizer_r, 28, 48);
OFFSET(nfc_ndef_bt_rtd_2_1_str, uuid16_list_length, 32, 56);
OFFSET(nfc_ndef_bt_rtd_2_1_str, uuid16_list, 36, 64);
OFFSET(nfc_ndef_bt_rtd_2_1_str, uuid32_list_length, 40, 72);
OFFSET(nfc_ndef_bt_rtd_2_1_str, uuid32_list, 44, 80);
OFFSET(nfc_ndef_bt_rtd_2_1_str, uuid128_list_length, 48, 88);
OFFSET(nfc_ndef_bt_rtd_2_1_str, uuid128_list, 52, 96);
OFFSET(nfc_ndef_bt_rtd_2_1_str, manufacturer_data_count, 56, 104);
OFFSET(nfc_ndef_bt_rtd_2_1_str, manufacturer_id_length, 57, 105);
OFFSET(nfc_ndef_bt_rtd_2_1_str, manufacturer_ids, 60, 112);
OFFSET(nfc_ndef_bt_rtd_2_1_str, manufacturer_data_lengths, 64, 120);
OFFSET(nfc_ndef_bt_rtd_2_1_str, manufacturer_data, 68, 128);

SIZE(nfc_ndef_bt_rtd_2_0_str, 24, 40);
OFFSET(nfc_ndef_bt_rtd_2_0_str, device_address, 0, 0);
OFFSET(nfc_ndef_bt_rtd_2_0_str, class_of_device, 6, 6);
OFFSET(nfc_ndef_bt_rtd_2_0_str, pairing_type, 9, 9);
OFFSET(nfc_ndef_bt_rtd_2_0_str, pairing_data_length, 10, 10);
OFFSET(nfc_ndef_bt_rtd_2_0_str, pairing_data, 12, 16);
OFFSET(nfc_ndef_bt_rtd_2_0_str, local_name_length, 16, 24);
OFFSET(nfc_ndef_bt_rtd_2_0_str, local_name, 20, 32);

/*
 * Ranges over messages in place for C++17 callers of nfc-ndef: nothing is copied, allocated or thrown, and nothing
 * outlives the bytes that were given.
 *
 * SPDX-License-Identifier: MIT
 */
#ifndef NFC_NDEF_VIEW_HPP
#define NFC_NDEF_VIEW_HPP

#include "nfc_ndef_types.h"
#include "nfc_ndef_view.h"

#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

namespace nfc_ndef {

/** Bytes of the C interface as characters. */
inline std::string_view text_of(nfc_ndef_bytes bytes) noexcept
{
    return {reinterpret_cast<const char *>(bytes.data), bytes.length};
}

/**
 * What a function of the C interface hands out one by one: `Next(&cursor, &item)` is 0 behind the last. Each pass
 * begins where the cursor stood that the range was made of.
 */
template <class Cursor, class Item, auto Next> class cursor_range {
public:
    class iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Item;
        using difference_type = std::ptrdiff_t;
        using pointer = const Item *;
        using reference = const Item &;

        iterator() = default;
        explicit iterator(const Cursor &cursor) : cursor_(cursor) { ++*this; }
        reference operator*() const noexcept { return item_; }
        pointer operator->() const noexcept { return &item_; }
        iterator &operator++() noexcept
        {
            there_ = Next(&cursor_, &item_) != 0;
            return *this;
        }
        void operator++(int) noexcept { ++*this; }
        /** All that are behind the last are equal, which is what a loop asks for. */
        bool operator==(const iterator &other) const noexcept { return !there_ && !other.there_; }
        bool operator!=(const iterator &other) const noexcept { return !(*this == other); }

    private:
        Cursor cursor_{};
        Item item_{};
        bool there_ = false;
    };

    explicit cursor_range(const Cursor &cursor) : cursor_(cursor) {}
    iterator begin() const { return iterator(cursor_); }
    iterator end() const { return iterator(); }

private:
    Cursor cursor_;
};

/** The auxiliary references of an Alternative Carrier record. */
using references = cursor_range<nfc_ndef_alternative_carrier, nfc_ndef_bytes, nfc_ndef_alternative_carrier_next>;
/** The Alternative Carrier records of a handover record, viewed. */
using carriers = cursor_range<nfc_ndef_handover, nfc_ndef_record_view, nfc_ndef_handover_next_carrier>;
/** The EIR structures of a Bluetooth record. */
using structures = cursor_range<nfc_ndef_bt_oob, nfc_ndef_eir, nfc_ndef_bt_oob_next>;
/** The certificates of a Signature record. */
using certificates = cursor_range<nfc_ndef_signature, nfc_ndef_bytes, nfc_ndef_signature_next>;
/** The credentials of a Wi-Fi record. */
using credentials = cursor_range<nfc_ndef_wifi, nfc_ndef_wifi_attributes, nfc_ndef_wifi_next_credential>;

/** A record where it lies. */
class record_view {
public:
    record_view() = default;
    record_view(const nfc_ndef_record_view &view) noexcept : view_(view) {} // NOLINT: either is the other

    /** What the C interface takes. */
    const nfc_ndef_record_view &view() const noexcept { return view_; }
    uint32_t kind() const noexcept { return nfc_ndef_record_view_kind(&view_); }
    uint8_t format() const noexcept { return view_.format; }
    std::string_view type() const noexcept { return text_of(view_.type); }
    std::string_view id() const noexcept { return text_of(view_.id); }
    /** Empty when it is in chunks: then join() it, and read what was joined. */
    nfc_ndef_bytes payload() const noexcept { return view_.payload; }
    uint32_t payload_length() const noexcept { return view_.payload_length; }
    /** The length of the payload, which is put into the buffer if that has room. */
    uint32_t join(uint8_t *buffer, uint32_t capacity) const noexcept
    {
        return nfc_ndef_record_view_join(&view_, buffer, capacity);
    }

    /** @name The payload as a type; none when the record is not of the type, and when the payload is refused, with the
        reason and the byte in the report, which is left alone when the type is another. @{ */
    std::optional<nfc_ndef_text> text(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_text>(NFC_NDEF_KIND_TEXT, report, nfc_ndef_text_read);
    }
    std::optional<nfc_ndef_uri> uri(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_uri>(NFC_NDEF_KIND_URI, report, nfc_ndef_uri_read);
    }
    std::optional<nfc_ndef_smart_poster> smart_poster(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_smart_poster>(NFC_NDEF_KIND_SMART_POSTER, report, nfc_ndef_smart_poster_read);
    }
    std::optional<nfc_ndef_generic_control> generic_control(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_generic_control>(NFC_NDEF_KIND_GENERIC_CONTROL, report, nfc_ndef_generic_control_read);
    }
    std::optional<nfc_ndef_handover> handover_request(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_handover>(NFC_NDEF_KIND_HANDOVER_REQUEST, report, nfc_ndef_handover_request_read);
    }
    std::optional<nfc_ndef_handover_carrier> handover_carrier(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_handover_carrier>(NFC_NDEF_KIND_HANDOVER_CARRIER, report, nfc_ndef_handover_carrier_read);
    }
    std::optional<nfc_ndef_alternative_carrier> alternative_carrier(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_alternative_carrier>(NFC_NDEF_KIND_ALTERNATIVE_CARRIER, report,
                                                  nfc_ndef_alternative_carrier_read);
    }
    std::optional<nfc_ndef_collision_resolution> collision_resolution(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_collision_resolution>(NFC_NDEF_KIND_COLLISION_RESOLUTION, report,
                                                   nfc_ndef_collision_resolution_read);
    }
    std::optional<nfc_ndef_handover_error> handover_error(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_handover_error>(NFC_NDEF_KIND_HANDOVER_ERROR, report, nfc_ndef_handover_error_read);
    }
    std::optional<nfc_ndef_bt_oob> bt_oob(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_bt_oob>(NFC_NDEF_KIND_BT_OOB, report, nfc_ndef_bt_oob_read);
    }
    std::optional<nfc_ndef_bt_legacy> bt_legacy(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_bt_legacy>(NFC_NDEF_KIND_BT_LEGACY, report, nfc_ndef_bt_legacy_read);
    }
    std::optional<nfc_ndef_sharing_enquiry> sharing_enquiry(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_sharing_enquiry>(NFC_NDEF_KIND_SHARING_ENQUIRY, report, nfc_ndef_sharing_enquiry_read);
    }
    std::optional<nfc_ndef_android_application> android_application(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_android_application>(NFC_NDEF_KIND_ANDROID_APPLICATION, report,
                                                  nfc_ndef_android_application_read);
    }
    std::optional<nfc_ndef_device_information> device_information(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_device_information>(NFC_NDEF_KIND_DEVICE_INFORMATION, report,
                                                 nfc_ndef_device_information_read);
    }
    std::optional<nfc_ndef_wifi> wifi(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_wifi>(NFC_NDEF_KIND_WIFI, report, nfc_ndef_wifi_read);
    }
    std::optional<nfc_ndef_bt_le> bt_le(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_bt_le>(NFC_NDEF_KIND_BT_LE, report, nfc_ndef_bt_le_read);
    }
    std::optional<nfc_ndef_handover> handover_mediation(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_handover>(NFC_NDEF_KIND_HANDOVER_MEDIATION, report, nfc_ndef_handover_mediation_read);
    }
    std::optional<nfc_ndef_handover> handover_initiate(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_handover>(NFC_NDEF_KIND_HANDOVER_INITIATE, report, nfc_ndef_handover_initiate_read);
    }
    std::optional<nfc_ndef_service_parameter> service_parameter(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_service_parameter>(NFC_NDEF_KIND_SERVICE_PARAMETER, report,
                                                nfc_ndef_service_parameter_read);
    }
    std::optional<nfc_ndef_service_select> service_select(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_service_select>(NFC_NDEF_KIND_SERVICE_SELECT, report, nfc_ndef_service_select_read);
    }
    std::optional<nfc_ndef_tnep_status> tnep_status(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_tnep_status>(NFC_NDEF_KIND_TNEP_STATUS, report, nfc_ndef_tnep_status_read);
    }
    std::optional<nfc_ndef_signature> signature(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_signature>(NFC_NDEF_KIND_SIGNATURE, report, nfc_ndef_signature_read);
    }
    std::optional<nfc_ndef_handover> handover_select(nfc_ndef_payload_report *report = nullptr) const
    {
        return read<nfc_ndef_handover>(NFC_NDEF_KIND_HANDOVER_SELECT, report,
                                       [this](auto payload, auto *select, auto *said) {
                                           return nfc_ndef_handover_select_read(payload, view_.flags, select, said);
                                       });
    }
    /** @} */

private:
    template <class Structure, class Read>
    std::optional<Structure> read(uint32_t wanted, nfc_ndef_payload_report *report, Read read_payload) const
    {
        Structure structure;
        if (kind() != wanted || read_payload(view_.payload, &structure, report) != 1)
            return std::nullopt;
        return structure;
    }

    nfc_ndef_record_view view_{};
};

namespace detail {
inline uint8_t next_record(nfc_ndef_msg_view *message, record_view *record) noexcept
{
    nfc_ndef_record_view view;
    const uint8_t there = nfc_ndef_msg_view_next(message, &view);
    *record = there != 0 ? record_view(view) : record_view();
    return there;
}
} // namespace detail

/** A message where it lies: a range of its records, which is empty when the bytes are refused. */
class message_view {
public:
    using iterator = cursor_range<nfc_ndef_msg_view, record_view, detail::next_record>::iterator;

    explicit message_view(nfc_ndef_bytes bytes) noexcept { nfc_ndef_msg_view_open(bytes, &view_, &report_); }
    /** Of anything with data() and size(), such as a std::vector<uint8_t>. */
    template <class Bytes> explicit message_view(const Bytes &bytes) noexcept
        : message_view(nfc_ndef_bytes{bytes.data(), bytes.size()})
    {
    }
    /** A nested message that was opened. */
    explicit message_view(const nfc_ndef_msg_view &view) noexcept : view_(view) {}

    /** Whether the bytes are a message; report() says why not. */
    explicit operator bool() const noexcept { return report_.reason == NFC_NDEF_MSG_VALID; }
    const nfc_ndef_msg_report &report() const noexcept { return report_; }
    size_t size() const noexcept { return view_.record_count; }
    iterator begin() const { return iterator(view_); }
    iterator end() const { return iterator(); }

private:
    nfc_ndef_msg_view view_{};
    nfc_ndef_msg_report report_{};
};

} // namespace nfc_ndef

#endif

// The parts of the model: how the content of each record type is read and made.
#pragma once

#include "model.h"

#include <new>

namespace model {

// What each gives for a payload that the library's extractor refuses.
constexpr Generic malformed{true};

Content read_text(const nfc_ndef_record &record, const Nesting &nesting);
Content read_uri(const nfc_ndef_record &record, const Nesting &nesting);
Content read_smart_poster(const nfc_ndef_record &record, const Nesting &nesting);
Content read_generic_control(const nfc_ndef_record &record, const Nesting &nesting);
Content read_handover_request(const nfc_ndef_record &record, const Nesting &nesting);
Content read_handover_select(const nfc_ndef_record &record, const Nesting &nesting);
Content read_handover_carrier(const nfc_ndef_record &record, const Nesting &nesting);
Content read_alternative_carrier(const nfc_ndef_record &record, const Nesting &nesting);
Content read_collision_resolution(const nfc_ndef_record &record, const Nesting &nesting);
Content read_handover_select_error(const nfc_ndef_record &record, const Nesting &nesting);
Content read_bluetooth_oob(const nfc_ndef_record &record, const Nesting &nesting);
Content read_bluetooth_legacy(const nfc_ndef_record &record, const Nesting &nesting);
Content read_sharing_enquiry(const nfc_ndef_record &record, const Nesting &nesting);

// Each gives null for values that the library's builder refuses. The record has no id.
nfc_ndef::Record make(const Generic &);
nfc_ndef::Record make(const Text &text);
nfc_ndef::Record make(const Uri &uri);
nfc_ndef::Record make(const SmartPoster &poster);
nfc_ndef::Record make(const GenericControl &control);
nfc_ndef::Record make(const HandoverRequest &request);
nfc_ndef::Record make(const HandoverSelect &select);
nfc_ndef::Record make(const HandoverCarrier &carrier);
nfc_ndef::Record make(const AlternativeCarrier &carrier);
nfc_ndef::Record make(const CollisionResolution &resolution);
nfc_ndef::Record make(const HandoverSelectError &error);
nfc_ndef::Record make(const BluetoothOob &bluetooth);
nfc_ndef::Record make(const BluetoothLegacy &bluetooth);
nfc_ndef::Record make(const SharingEnquiry &enquiry);

// A byte string that the library gave: null only when its length is 0, or else memory ran out.
template <class Container = Bytes> Container copy_of(const uint8_t *bytes, size_t length)
{
    if (!bytes && length != 0)
        throw std::bad_alloc();
    return Container(bytes, bytes + length);
}
template <class Container = Bytes> Container copy_of(const nfc_ndef::Block<> &bytes, size_t length)
{
    return copy_of<Container>(bytes.get(), length);
}

// A byte string as the library takes it: null when it is empty.
template <class Container> const uint8_t *pointer_to(const Container &bytes)
{
    return bytes.empty() ? nullptr : reinterpret_cast<const uint8_t *>(bytes.data());
}

// The same for the structures of the interface, whose pointers are not to const though nothing is written there.
template <class Container> uint8_t *field_pointer_to(const Container &bytes)
{
    return const_cast<uint8_t *>(pointer_to(bytes));
}

// Whether lengths can be said in the 8 bits that the interface has for them.
template <class... Length> bool fit_in_a_byte(Length... lengths) { return ((lengths <= UINT8_MAX) && ...); }

// An array of records that an extractor hands back.
class ExtractedRecords {
public:
    ExtractedRecords() = default;
    ExtractedRecords(const ExtractedRecords &) = delete;
    ExtractedRecords &operator=(const ExtractedRecords &) = delete;
    ~ExtractedRecords();
    Records decode(const Nesting &nesting) const;

    uint8_t count = 0;
    nfc_ndef_record **records = nullptr;
};

// Records as an array that a builder borrows.
class LentRecords {
public:
    enum class Order { given, reversed };

    explicit LentRecords(const Records &records, Order order = Order::given);
    bool ok() const; // whether all became records, and the count fits
    uint8_t count() const { return static_cast<uint8_t>(pointers_.size()); }
    nfc_ndef_record *const *data() const { return pointers_.empty() ? nullptr : pointers_.data(); }

private:
    std::vector<nfc_ndef::Record> handles_;
    std::vector<nfc_ndef_record *> pointers_;
};

// A record that a part may lack.
RecordPtr decode_optional(const nfc_ndef::Record &record, const Nesting &nesting);
nfc_ndef::Record to_optional_handle(const RecordPtr &record);

} // namespace model

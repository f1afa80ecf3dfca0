#include "message/nested.h"

#include <algorithm>

namespace ndef {

namespace {

// An array of records that are deleted with it unless it is released.
class RecordArray {
public:
    explicit RecordArray(size_t capacity) : records_(new_block<nfc_ndef_record *>(capacity)) {}
    RecordArray(const RecordArray &) = delete;
    RecordArray &operator=(const RecordArray &) = delete;
    ~RecordArray()
    {
        for (size_t i = 0; records_ && i < count_; ++i)
            nfc_ndef_record_delete(&records_[i]);
    }
    bool add(RecordPtr record)
    {
        if (!records_ || !record)
            return false;
        records_[count_++] = record.release();
        return true;
    }
    nfc_ndef_record **release() { return records_.release(); }

private:
    Block<nfc_ndef_record *> records_;
    size_t count_ = 0;
};

} // namespace

Nested::Nested(ByteView message, std::initializer_list<nfc_ndef_record_type> types) : scan_(message)
{
    if (!valid())
        return;
    std::fill_n(type_.begin(), scan_.size(), taken); // so that later chunks are never looked at
    for (const WholeRecord record : scan_) {
        const nfc_ndef_record_type type = record.borrowed_type();
        const auto *match = std::find_if(types.begin(), types.end(), [&](const nfc_ndef_record_type &key) {
            return nfc_ndef_record_type_equals(&key, &type) != 0;
        });
        type_[scan_.position(record)] = match == types.end() ? no_type : static_cast<Type>(match - types.begin());
    }
}

size_t Nested::count(Type type) const
{
    size_t count = 0;
    for (size_t position = 0; position < scan_.size(); ++position)
        count += is(position, type);
    return count;
}

size_t Nested::find(Type type) const
{
    size_t position = 0;
    while (position < scan_.size() && !is(position, type))
        ++position;
    return position;
}

bool Nested::take_first(Type type, nfc_ndef_record **record)
{
    const size_t position = find(type);
    if (position == scan_.size())
        return true;
    RecordPtr copy = scan_.at(position).make();
    if (!copy)
        return false;
    type_[position] = taken;
    *record = copy.release();
    return true;
}

bool Nested::take_all(std::initializer_list<Type> types, uint8_t *count, nfc_ndef_record ***records)
{
    size_t total = 0;
    for (const Type type : types)
        total += this->count(type);
    if (total == 0)
        return true;
    *count = 0;
    *records = nullptr;
    RecordArray array(total);
    for (const Type type : types) {
        for (size_t position = 0; position < scan_.size(); ++position) {
            if (!is(position, type))
                continue;
            if (!array.add(scan_.at(position).make()))
                return false;
            type_[position] = taken;
        }
    }
    *count = static_cast<uint8_t>(total);
    *records = array.release();
    return true;
}

} // namespace ndef

#include "message/nested.h"

#include "record/match.h"

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

// Later chunks of a run count as taken, so that they are never looked at.
void Nested::sort(std::span<const nfc_ndef_record_type> types)
{
    if (!valid())
        return;
    std::fill_n(type_.begin(), scan_.size(), taken);
    scan_.each([&](const WholeRecord &record) {
        const nfc_ndef_record_type candidate = record.borrowed_type();
        const auto match = std::find_if(types.begin(), types.end(),
                                        [&](const nfc_ndef_record_type &key) { return type_equals(key, candidate); });
        const Type type = match == types.end() ? no_type : static_cast<Type>(match - types.begin());
        type_[scan_.position(record)] = type;
        ++count_[type];
        ++count_[any];
        return true;
    });
}

size_t Nested::find(Type type) const
{
    size_t position = 0;
    while (!is(position, type))
        ++position;
    return position;
}

void Nested::mark_taken(size_t position)
{
    --count_[type_[position]];
    --count_[any];
    type_[position] = taken;
}

bool Nested::take_first(Type type, nfc_ndef_record **record)
{
    if (count(type) == 0)
        return true;
    const size_t position = find(type);
    RecordPtr copy = scan_.at(position).make();
    if (!copy)
        return false;
    mark_taken(position);
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
        for (size_t position = 0; this->count(type) != 0; ++position) {
            if (!is(position, type))
                continue;
            if (!array.add(scan_.at(position).make()))
                return false;
            mark_taken(position);
        }
    }
    *count = static_cast<uint8_t>(total);
    *records = array.release();
    return true;
}

} // namespace ndef

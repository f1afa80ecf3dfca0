#include "message/nested.h"

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
            free_record(records_[i]);
    }
    explicit operator bool() const { return records_ != nullptr; }
    bool add(RecordPtr record)
    {
        if (!record)
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

Nested::Part &Nested::find(Type type)
{
    Part *part = parts_.data();
    while (part->type != type)
        ++part;
    return *part;
}

void Nested::mark_taken(Part &part)
{
    --count_[part.type];
    --left_;
    part.type = taken;
}

bool Nested::take_first(Type type, nfc_ndef_record **record)
{
    if (count(type) == 0)
        return true;
    Part &part = find(type);
    RecordPtr copy = scan_.at(part.position).make();
    if (!copy)
        return false;
    mark_taken(part);
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
    if (!array)
        return false;
    for (const Type type : types) {
        for (Part *part = parts_.data(); this->count(type) != 0; ++part) {
            if (part->type != type)
                continue;
            if (!array.add(scan_.at(part->position).make()))
                return false;
            mark_taken(*part);
        }
    }
    *count = static_cast<uint8_t>(total);
    *records = array.release();
    return true;
}

bool Nested::take_rest(uint8_t *count, nfc_ndef_record ***records)
{
    if (left_ == 0)
        return true;
    for (Part &part : std::span(parts_).first(size_))
        if (part.type != taken)
            part.type = rest;
    count_[rest] = left_;
    return take_all({rest}, count, records);
}

} // namespace ndef

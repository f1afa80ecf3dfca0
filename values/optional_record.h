// A record that another may hold.
#pragma once

#include <memory>
#include <vector>

namespace nfc_ndef::values {

struct Record;
using Records = std::vector<Record>;

// Like std::optional<Record>, which cannot hold a type that is not complete yet.
class OptionalRecord {
public:
    OptionalRecord();
    OptionalRecord(Record record);
    OptionalRecord(const OptionalRecord &other);
    OptionalRecord(OptionalRecord &&other) noexcept;
    OptionalRecord &operator=(OptionalRecord other) noexcept;
    ~OptionalRecord();

    explicit operator bool() const { return record_ != nullptr; }
    Record &operator*() const { return *record_; }
    Record *operator->() const { return record_.get(); }
    friend bool operator==(const OptionalRecord &, const OptionalRecord &);

private:
    std::unique_ptr<Record> record_;
};

} // namespace nfc_ndef::values

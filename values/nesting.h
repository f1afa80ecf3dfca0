// How deep, and how many, records nested in records are followed.
#pragma once

#include <cstddef>
#include <memory>

namespace nfc_ndef::values {

constexpr unsigned max_nesting = 8;          // records around a record
constexpr size_t max_records_in_all = 16384; // with those nested in others

// Where a record is. Records nested too deep, or found after too many others, stay Generic: a few megabytes can hold
// millions. Copies share the count.
class Nesting {
public:
    Nesting inner() const
    {
        Nesting deeper = *this;
        ++deeper.depth_;
        return deeper;
    }

    // Counts a record, and tells whether to look into it for others.
    bool enter() const
    {
        if (depth_ >= max_nesting || *left_ == 0)
            return false;
        --*left_;
        return true;
    }

    // Whether there may be a record here at all.
    bool reachable() const { return depth_ <= max_nesting && *left_ > 0; }

private:
    unsigned depth_ = 0;
    std::shared_ptr<size_t> left_ = std::make_shared<size_t>(max_records_in_all);
};

} // namespace nfc_ndef::values

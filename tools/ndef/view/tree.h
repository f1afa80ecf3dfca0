// An indented tree of lines, in colour when wanted.
#pragma once

#include <nfc_ndef/bytes.h>

#include <string>
#include <string_view>
#include <utility>

namespace tool {

using nfc_ndef::values::ByteView;

// The text of a tree under construction. What it is given must be printable.
class Tree {
public:
    // Without `everything`, dumps and texts that are long are cut short, with a note.
    Tree(bool colored, bool everything) : colored_(colored), everything_(everything) {}

    void heading(std::string_view text);
    void field(std::string_view name, std::string_view value);
    void warning(std::string_view text);
    void line(std::string_view text);

    // Bytes as offsets, hex and ASCII.
    void dump(ByteView bytes);

    // How many bytes of a field to show, and the note on the rest; the note is empty when there is none.
    size_t shown(size_t length, size_t limit) const { return everything_ || length <= limit ? length : limit; }
    static std::string note_on_rest(size_t length, size_t shown);

    // What is added while it lives is one level deeper.
    class Deeper {
    public:
        explicit Deeper(Tree &tree) : tree_(tree) { ++tree_.level_; }
        ~Deeper() { --tree_.level_; }
        Deeper(const Deeper &) = delete;
        Deeper &operator=(const Deeper &) = delete;

    private:
        Tree &tree_;
    };

    std::string take() { return std::exchange(text_, {}); }

private:
    std::string painted(std::string_view text, std::string_view color) const;

    std::string text_;
    unsigned level_ = 0;
    bool colored_, everything_;
};

// Printable ASCII as it is, a dot for any other byte.
std::string ascii_of(ByteView bytes);

} // namespace tool

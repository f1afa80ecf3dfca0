// An indented tree of lines, in colour when wanted.
#pragma once

#include <nfc_ndef/bytes.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace tool {

using nfc_ndef::values::ByteView;

struct TreeStyle {
    bool colored = false;
    bool everything = false; // otherwise dumps and texts that are long are cut short, with a note
    size_t columns = 0;      // where lines are broken; 0 for nowhere
};

// The text of a tree under construction. What it is given must be printable.
class Tree {
public:
    explicit Tree(const TreeStyle &style) : style_(style) {}

    void heading(std::string_view text);
    void field(std::string_view name, std::string_view value);
    // One that few look for.
    void side_field(std::string_view name, std::string_view value);
    void warning(std::string_view text);
    void blank() { text_ += '\n'; }

    // Bytes as offsets, hex and ASCII.
    void dump(ByteView bytes);

    // The same for a field of a record, with what it means: bytes that begin at an offset and are so many records deep
    // in others.
    enum class Role { length, name, content };
    void bytes_of_field(ByteView bytes, size_t offset, unsigned depth, std::string_view meaning, Role role);

    // Shows no more than so many characters of what the call adds, unless everything is shown: throws away what comes
    // then, and notes it.
    template <class Call> void at_most(size_t characters, Call call)
    {
        const unsigned level = level_;
        end_ = style_.everything ? SIZE_MAX : text_.size() + characters;
        try {
            call();
        } catch (const Full &) {
            level_ = level;
            end_ = SIZE_MAX;
            warning("... there is more of this record (--all shows it)");
        }
        end_ = SIZE_MAX;
    }

    // How many bytes of a field to show, and the note on the rest; the note is empty when there is none.
    size_t shown(size_t length, size_t limit) const { return style_.everything || length <= limit ? length : limit; }
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
    struct Full {};

    void line(std::string_view text);
    std::string painted(std::string_view text, std::string_view color) const;
    std::string wrapped_here(std::string_view text, size_t column) const;
    size_t bytes_in_a_row(size_t other_columns) const;
    void rows(ByteView bytes, size_t offset, std::string_view before, Role role);

    TreeStyle style_;
    std::string text_;
    size_t end_ = SIZE_MAX; // where the text has to end
    unsigned level_ = 0;
};

} // namespace tool

#pragma once

#include <cstdarg>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace Valen {

/// A va_list and nothing else: not the 0 of ReFormat("%d", 0), which would become a null va_list where that
/// is a pointer.
template <typename List>
concept ArgumentList = !std::is_null_pointer_v<List> && requires(List list, void (*take)(va_list)) {
    take(list);
};

/// A small zero-terminated text that either owns heap memory or merely points at text that someone else
/// keeps, so that constant texts cost no copy. Formatted text is adopted without a copy; growth allocates
/// exactly what is needed. Move-only. Not thread-safe; nothing blocks.
///
/// When formatting fails or memory runs out the text is "out of memory", not owned: hasMemoryAllocated()
/// tells. A string that was moved from or freed holds a null pointer; its queries answer as for an empty
/// text. Where a text is taken, a null pointer means the empty text. No text is longer than INT_MAX - 1
/// characters.
class SimpleString {
public:
    class NoCopyBuffer;

    /// An owned empty text of one byte.
    SimpleString();
    /// An owned empty text with room for `size` bytes, the terminator among them; 0 has room for nothing more
    /// than being empty. A negative size is never available: "out of memory".
    explicit SimpleString(int size);
    /// Copies `text` into exactly as many bytes as it needs.
    SimpleString(const char* text);
    /// With `copy` copies `text`; without, points at it, and the caller keeps it alive. The string never
    /// frees it, and only erase() and clear() write into it.
    SimpleString(const char* text, bool copy);
    /// Adopts the buffer's memory, which holds a zero-terminated text, and empties the buffer; an empty
    /// buffer gives "out of memory".
    SimpleString(NoCopyBuffer&& buffer);
    SimpleString(SimpleString&& other) noexcept;
    ~SimpleString();

    SimpleString& operator=(SimpleString&& other) noexcept;
    SimpleString& operator=(const char* text);
    /// Copies `text`, which may be a part of this very string: in place when it fits, else into a new block.
    /// @return the new text, which may be written to while hasMemoryAllocated().
    char* assign(const char* text);
    /// Appends `text`, which may be a part of this very string: in place when it fits, else in a new block.
    SimpleString& operator+=(const char* text);
    /// Appends `text`, which may be a part of this very string, always in a new block. @return the new text.
    char* append(const char* text);
    /// Replaces the text by printf's, whose arguments may be parts of this very string. @return the new text.
    [[gnu::format(printf, 2, 3)]] char* ReFormat(const char* format, ...);
    /// The same with a va_list.
    template <ArgumentList Arguments>
    [[gnu::format(printf, 2, 0)]] char* ReFormat(const char* format, Arguments arguments) {
        return reformat(format, arguments);
    }

    [[gnu::format(printf, 1, 2)]] static SimpleString FormatWithParams(const char* format, ...);
    [[gnu::format(printf, 1, 0)]] static SimpleString FormatWith_va_list(const char* format,
                                                                         va_list arguments);
    /// Joins the texts up to a null pointer in one allocation.
    [[gnu::sentinel]] static SimpleString concatStrings(const char* first, ...);
    /// Joins the texts up to a null pointer in one allocation, each followed by `delimiter` ('\0': by
    /// nothing), the last one only when `trailingDelimiter`. Without texts the result is empty.
    [[gnu::sentinel]] static SimpleString concatStringsWithDelim(bool trailingDelimiter, char delimiter,
                                                                 const char* first, ...);

    /// Null after the string was moved from or freed.
    const char* c_str() const { return str_; }
    std::size_t length() const;
    bool empty() const { return *text() == '\0'; }
    /// The character at `index`, from 0 (no bounds check) to length(), where the terminator is.
    char operator[](int index) const { return text()[index]; }

    /// The first or last place of a character or text; -1 when there is none. The terminator counts as a
    /// character of the text, as in strchr(3).
    int find(char character) const;
    int rfind(char character) const;
    int find(const char* part) const;
    bool endsWith(const char* tail) const;

    /// All comparisons are strcmp(3)'s.
    bool operator==(const SimpleString& other) const { return compare(other.str_) == 0; }
    bool operator==(const char* other) const { return compare(other) == 0; }
    bool operator<(const SimpleString& other) const { return compare(other.str_) < 0; }
    bool operator<(const char* other) const { return compare(other) < 0; }
    bool operator>(const char* other) const { return compare(other) > 0; }

    /// False for a text that is not owned, and so after any failure.
    bool hasMemoryAllocated() const { return capacity_ != kNotOwned; }

    /// Cuts the text at `position`, at most length() (no bounds check). A text that the string merely points
    /// at is written to, so it must be writable unless it already ends there; "out of memory" stays what it
    /// is.
    void erase(std::size_t position);
    void clear() { erase(0); }

    /// Frees the text if it is owned; nothing but assignment and queries make sense afterwards. @return -1.
    int freeme();

private:
    static constexpr int kNotOwned = -1;

    static const char* orEmpty(const char* text) { return text != nullptr ? text : ""; }
    const char* text() const { return orEmpty(str_); }
    [[gnu::format(printf, 2, 0)]] char* reformat(const char* format, va_list arguments);
    int compare(const char* other) const;
    int indexOf(const char* place) const;
    /// Frees the old text and becomes the owner of `block`; a null block means that memory ran out.
    void own(char* block, std::size_t capacity);
    void fail();

    char* str_ = nullptr;
    int capacity_ = kNotOwned;  // bytes, or one less for adopted text: its growth always takes a new block
};

static_assert(sizeof(SimpleString) == 2 * sizeof(char*));

/// Heap memory for a text that a SimpleString is to adopt. Empty when memory ran out or formatting failed.
/// Move-only. Not thread-safe.
class SimpleString::NoCopyBuffer {
public:
    /// Room for `size` bytes of undefined contents; empty when `size` is negative.
    explicit NoCopyBuffer(int size);
    /// Formats as vprintf(3) does.
    [[gnu::format(printf, 2, 0)]] NoCopyBuffer(const char* format, va_list arguments);

    /// The memory, which the buffer keeps; null when it is empty.
    char* get() const { return block_.get(); }
    /// The memory, which the caller frees with free(3); leaves the buffer empty.
    char* release() { return block_.release(); }
    bool isValid() const { return block_ != nullptr; }

private:
    struct Free {
        void operator()(char* block) const;
    };
    std::unique_ptr<char, Free> block_;
};

static_assert(sizeof(SimpleString::NoCopyBuffer) == sizeof(char*));

}  // namespace Valen

// As common as a built-in type, it is known without its namespace too.
using Valen::SimpleString;

#pragma once

#include <memory>

namespace Valen {

/// The result of an operation that can fail: success, or an error text that it owns. Move-only; a result
/// that was moved from is a success. Not thread-safe.
class ErrorResult {
public:
    /// Success.
    ErrorResult() = default;
    /// An error with printf's text, "out of memory" when formatting fails. A null format is a success.
    [[gnu::format(printf, 2, 3)]] explicit ErrorResult(const char* format, ...);

    /// The error text, which lives as long as this result; null for success.
    const char* error() const { return text_.get(); }

private:
    struct Free {
        void operator()(char* text) const;
    };
    std::unique_ptr<char, Free> text_;
};

}  // namespace Valen

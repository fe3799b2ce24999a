#pragma once

#include <exception>
#include <string>

namespace Valen {

/// Says why there is no temporary file.
class TemporaryFileException : public std::exception {
public:
    TemporaryFileException(const std::string& message, int error) : message_(message), error_(error) {}

    const char* what() const noexcept override { return message_.c_str(); }
    /// The error number, as in errno.
    int error() const { return error_; }

private:
    std::string message_;
    int error_;
};

/// Creates an empty file, readable and writable for its owner only, whose name nothing else has: mkstemp(3).
/// The caller removes it. Any thread may call it.
///
/// @param directory stands before the name as it is: to create the file in it, end it with '/'.
/// @return the path of the file.
/// @throws TemporaryFileException naming the template and the reason.
std::string CreateTemporaryFile(const std::string& directory);

}  // namespace Valen

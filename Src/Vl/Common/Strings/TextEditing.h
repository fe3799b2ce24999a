#pragma once

#include <string>

namespace Valen {

// Pointers are never null. Case and white space are those of the current locale (tolower(3), isspace(3)). Any
// thread may use these on its own text.

/// Makes every character lower case, in place. @return `text`.
std::string& ToLower(std::string& text);
std::string ToLower(const char* text);

/// Removes the white space at both ends.
void TrimWhiteSpaces(std::string& text);

/// Replaces every occurrence of `from`, left to right, going on behind each replacement. Nothing happens when
/// `from` is empty.
void ReplaceAllSubstrings(std::string& text, const std::string& from, const std::string& to);

/// Reverses the characters from `first` to `last` (inclusive) in place; with `last` before `first` there are
/// none.
void str_rev(char* first, char* last);

}  // namespace Valen

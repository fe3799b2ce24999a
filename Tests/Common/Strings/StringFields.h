#pragma once

#include <cstring>

#include "Vl/Common/Strings/SimpleString.h"

/// The two fields of a string, in the order in which they lie in memory.
struct StringFields {
    const char* str;
    int capacity;
};

inline StringFields fieldsOf(const Valen::SimpleString& string) {
    static_assert(sizeof(string) == sizeof(StringFields));
    StringFields fields;
    std::memcpy(&fields, static_cast<const void*>(&string), sizeof(fields));
    return fields;
}

inline int capacityOf(const Valen::SimpleString& string) {
    return fieldsOf(string).capacity;
}

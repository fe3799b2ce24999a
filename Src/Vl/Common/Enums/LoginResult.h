#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The answer to a user's login.
namespace Enums::LoginResult {

enum Type : int {
    Ok = 0,
    UnknownUser = 1,
    WrongPassword = 2,
    TooManyUsers = 3,
    NoRights = 4,
    VersionMismatch = 5,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Ok, "Ok"},
    {UnknownUser, "Unknown user"},
    {WrongPassword, "Wrong password"},
    {TooManyUsers, "Too many users"},
    {NoRights, "No rights"},
    {VersionMismatch, "Version mismatch"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::LoginResult

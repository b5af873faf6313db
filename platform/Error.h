#pragma once

#include <cstdint>
#include <expected>

namespace platform {

/// Why a call of the system failed: its error number (the numbers of winerror.h, on every platform).
struct Error {
    std::uint32_t code{};
    friend bool operator==(Error, Error) = default;
};

/// The outcome of a call of the system. Nothing in `platform` throws for a failure of the system.
template <class T = void>
using Result = std::expected<T, Error>;

namespace error {
inline constexpr Error FileNotFound{2};
inline constexpr Error PathNotFound{3};
inline constexpr Error AccessDenied{5};
inline constexpr Error OutOfMemory{8};
inline constexpr Error NotSameDevice{17};
inline constexpr Error NotReady{21};
inline constexpr Error GeneralFailure{31};
inline constexpr Error SharingViolation{32};
inline constexpr Error NotSupported{50};
inline constexpr Error FileExists{80};
inline constexpr Error InvalidParameter{87};
inline constexpr Error DiskFull{112};
inline constexpr Error InvalidName{123};
inline constexpr Error ModuleNotFound{126};
inline constexpr Error DirectoryNotEmpty{145};
inline constexpr Error AlreadyExists{183};
inline constexpr Error MoreData{234};
inline constexpr Error ElevationRequired{740};
inline constexpr Error Declined{1223};  ///< by the user, whom the system asked
inline constexpr Error Cancelled{1223}; ///< nobody waits for it any more
inline constexpr Error Timeout{1460};
inline constexpr Error InvalidFolder{267}; ///< the name is not a folder's
inline constexpr Error FileTooLarge{223};
inline constexpr Error CannotConnect{12029};                 ///< no server, or no way to it
inline constexpr Error CannotCreateObject{429};              ///< automation: no such class
inline constexpr Error AutomationModuleNotFound{0x8007007E}; ///< automation: the class's module is missing
} // namespace error

/// Whether the failure tells that a file, folder, key or value is surely not there. A drive or share out of reach, or a
/// name that none can have, is another matter.
constexpr bool IsNotThere(Error failure)
{
    return failure == error::FileNotFound || failure == error::PathNotFound;
}

} // namespace platform

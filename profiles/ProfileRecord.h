#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace profiles {

/// The texts of a profile, in the order in which they are read.
enum class Field : std::size_t {
    // clang-format off
    FirstName, LastName, Title, CompanyName, AddressLine1, AddressLine2, City, State, ZipCode, Country, PhoneOffice,
    PhoneHome, PhoneFax, PhoneCell, PhoneTollFree, Pager, EmailAddress, Website, DisclaimerLine1, DisclaimerLine2
    // clang-format on
};
inline constexpr std::size_t FieldCount = 20;

enum class ImageKind : std::size_t { Logo, Portrait, Signature };
inline constexpr std::size_t ImageCount = 3;
inline constexpr std::array<ImageKind, ImageCount> AllImages{ImageKind::Logo, ImageKind::Portrait,
                                                             ImageKind::Signature};

/// The value's name in the profile's registry key, which the suite's templates read.
std::string_view ValueName(Field field);
std::string_view ValueName(ImageKind kind);
/// Whether a value of this name is one of those.
bool IsImageValue(std::string_view name);
/// "Logo", "Portrait", "Signature": how the files in a profile's image folder begin.
std::string_view KindWord(ImageKind kind);

/// One sender profile in memory.
struct ProfileRecord {
    std::array<std::string, FieldCount> texts;
    std::array<std::string, ImageCount> images; ///< full paths
    /// Stored values that could not be read: as long as they are empty here a save leaves them alone.
    std::array<bool, FieldCount> unread{};
    std::array<bool, ImageCount> unreadImages{};
    bool failed{}; ///< whether one of these was refused; a value of a foreign type never can be read

    std::string& operator[](Field field) { return texts[static_cast<std::size_t>(field)]; }
    const std::string& operator[](Field field) const { return texts[static_cast<std::size_t>(field)]; }
    std::string& operator[](ImageKind kind) { return images[static_cast<std::size_t>(kind)]; }
    const std::string& operator[](ImageKind kind) const { return images[static_cast<std::size_t>(kind)]; }
};

} // namespace profiles

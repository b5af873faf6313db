#pragma once

#include "app/base/StringId.h"

#include <cstdint>

/// Names for the string numbers that the profiles ask for, in the order of the numbers. Captions stand as plain numbers
/// where a control is declared.
namespace profiles::str {

// What other parts of the program say as well.
using namespace app::str;

inline constexpr std::uint16_t None = 0; ///< an unknown number: nothing to say

inline constexpr std::uint16_t StateNotAlphabetical = 107;
inline constexpr std::uint16_t ImportFolderPrompt = 111;
inline constexpr std::uint16_t ExportFolderPrompt = 112;
inline constexpr std::uint16_t ZipWithSpecialCharacters = 131;
inline constexpr std::uint16_t InvalidProfileName = 134;
inline constexpr std::uint16_t ProfileNameStart = 135;
inline constexpr std::uint16_t ProfileNameTaken = 136;
inline constexpr std::uint16_t LastProfileStays = 214;
inline constexpr std::uint16_t DeleteProfileQuestion = 215;
inline constexpr std::uint16_t InvalidPath = 222;
inline constexpr std::uint16_t EmptyDefaultStart = 233;
inline constexpr std::uint16_t EmptyDefaultEnd = 234;
inline constexpr std::uint16_t EmptyDefaultReason = 235;
inline constexpr std::uint16_t EmptyDefaultQuestion = 236;
inline constexpr std::uint16_t PictureNotFound = 237;
inline constexpr std::uint16_t LogoMissing = 239;
inline constexpr std::uint16_t PortraitMissing = 240;
inline constexpr std::uint16_t SignatureMissing = 241;
inline constexpr std::uint16_t BlankProfile = 395;
inline constexpr std::uint16_t SelectExportFolder = 406;
inline constexpr std::uint16_t ExportPathUnreadable = 407;
inline constexpr std::uint16_t RetypeExportPath = 408;
inline constexpr std::uint16_t ExportFolderMissing = 409;
inline constexpr std::uint16_t Exported = 410;
inline constexpr std::uint16_t NoProfileData = 411;
inline constexpr std::uint16_t SelectCorrectFolder = 412;
inline constexpr std::uint16_t InvalidRegistryFile = 413;
inline constexpr std::uint16_t NoProfilesInFile = 414;
inline constexpr std::uint16_t NoProfilesInFolder = 415;
inline constexpr std::uint16_t Imported = 416;
inline constexpr std::uint16_t ProfileImagesTitle = 456;
inline constexpr std::uint16_t LeftOut = 560;
inline constexpr std::uint16_t SelectImageTitle = 572;
inline constexpr std::uint16_t ImageFilter = 573;
inline constexpr std::uint16_t SaveChanges = 581;
inline constexpr std::uint16_t PictureKind = 584;
inline constexpr std::uint16_t ReplaceExport = 585;
inline constexpr std::uint16_t OverwriteProfiles = 586;
inline constexpr std::uint16_t ProfileNameCharacters = 587;
inline constexpr std::uint16_t NoPicture = 588;
inline constexpr std::uint16_t NothingToPaste = 721;

} // namespace profiles::str

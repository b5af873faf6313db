#pragma once

#include "app/base/StringId.h"

#include <cstdint>

/// Names for the string numbers that the profiles ask for. Captions stand as plain numbers where a control is declared.
namespace profiles::str {

// What other parts of the program say as well.
using namespace app::str;

inline constexpr std::uint16_t None = 0, // an unknown number: nothing to say
    StateNotAlphabetical = 107, ImportFolderPrompt = 111, ExportFolderPrompt = 112, ZipWithSpecialCharacters = 131,
                               InvalidProfileName = 134, ProfileNameStart = 135, ProfileNameTaken = 136,
                               LastProfileStays = 214, DeleteProfileQuestion = 215, InvalidPath = 222,
                               EmptyDefaultStart = 233, EmptyDefaultEnd = 234, EmptyDefaultReason = 235,
                               EmptyDefaultQuestion = 236, PictureNotFound = 237, LogoMissing = 239,
                               PortraitMissing = 240, SignatureMissing = 241, FileUnreadable = 281, BlankProfile = 395,
                               SelectExportFolder = 406, ExportPathUnreadable = 407, RetypeExportPath = 408,
                               ExportFolderMissing = 409, Exported = 410, NoProfileData = 411,
                               SelectCorrectFolder = 412, InvalidRegistryFile = 413, NoProfilesInFile = 414,
                               NoProfilesInFolder = 415, Imported = 416, LeftOut = 560, ProfileImagesTitle = 456,
                               SelectImageTitle = 572, ImageFilter = 573, SaveChanges = 581, PictureKind = 584,
                               ReplaceExport = 585, OverwriteProfiles = 586, ProfileNameCharacters = 587,
                               NoPicture = 588, NothingToPaste = 721;

} // namespace profiles::str

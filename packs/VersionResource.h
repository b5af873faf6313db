#pragma once

#include "platform/ByteSource.h"

#include <expected>
#include <string>

namespace packs {

/// Why a file's version is not known.
enum class VersionFailure {
    NoInformation, ///< no executable with a version resource, or a file that cannot be read
    Unreadable,    ///< the executable names a version resource that is not there
    NoValue        ///< the resource does not hold the text
};

/// The "ProductVersion" of an executable's version resource, at most 255 characters: that of the first language that
/// the resource names and has a text for. The file is bytes here: nothing in it is run, and no number in it is
/// believed.
std::expected<std::string, VersionFailure> ProductVersionOf(platform::ByteSource& file);

} // namespace packs

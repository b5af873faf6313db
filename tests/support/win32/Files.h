#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace support {

/// A name in the temporary folder that no other file has.
std::filesystem::path TemporaryFile(const std::wstring& ending);

/// Makes or replaces the file, with its folders.
void WriteFile(const std::filesystem::path& file, const std::string& bytes = "template");
/// "" when it cannot be read.
std::string ReadFile(const std::filesystem::path& file);

/// Everything below the folder by its path from there: files with what is in them, folders with "".
std::map<std::filesystem::path, std::string> FilesBelow(const std::filesystem::path& folder);

} // namespace support

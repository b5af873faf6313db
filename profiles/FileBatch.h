#pragma once

#include "app/base/PatientFiles.h"
#include "platform/Clock.h"

#include <string>
#include <string_view>
#include <vector>

namespace profiles {

/// Puts a set of files into their places together, or none of them. New files are made complete under temporary names
/// and read back first; what they replace is kept until Finish. At every moment each place holds its old or its new
/// file, so that a process that dies loses none. What was not finished is undone by the destructor. The files are our
/// own: write protection does not keep them. A file that another program holds is tried again, for up to a second in
/// all, and for another one when the batch is undone.
class FileBatch {
public:
    FileBatch(app::PatientFiles& files, platform::Clock& clock) : files{files}, clock{clock} {}
    FileBatch(const FileBatch&) = delete;
    FileBatch& operator=(const FileBatch&) = delete;
    ~FileBatch();

    /// Makes a folder unless it is there; Undo removes it again. Its parent must be there.
    platform::Result<> MakeFolder(std::string_view folder);
    /// The same with the folders above it that are missing.
    platform::Result<> MakeFolderAndAbove(std::string_view folder);
    /// Deletes the temporary files that a process which died has left in a folder.
    void Sweep(std::string_view folder);
    /// Bytes that a file may have.
    static constexpr std::uint64_t LargestFile = 64u << 20;
    /// A file of up to LargestFile bytes.
    platform::Result<std::string> Read(std::string_view file);
    /// A copy of `source`, which may be `target` itself. Both are full paths.
    platform::Result<> Copy(std::string_view source, std::string_view target);
    platform::Result<> Write(std::string_view bytes, std::string_view target);
    /// The temporary name that the next file for `target` gets, for a program that writes it itself; Adopt then takes
    /// the file over.
    std::string NextTemporary(std::string_view target) const;
    void Adopt(std::string_view target);
    /// Whether a file's name is one of those that batches work with.
    static bool IsTemporary(std::string_view name);
    /// `path` goes in Finish.
    void DeleteAtEnd(std::string_view path);

    /// Moves the new files into their places. After a failure everything is as it was.
    platform::Result<> Commit();
    void Undo();
    /// Nothing can be undone any more: the replaced files go. The first failure of a deletion, which is no loss.
    platform::Result<> Finish();

    /// Deletes a file of our own, if it is there, at once.
    platform::Result<> Discard(const std::string& path);

private:
    struct Item {
        std::string target;
        std::string temporary;
        std::string backup; ///< of what was there; "" when nothing was
        bool placed{};
    };
    app::PatientFiles& files;
    platform::Clock& clock;
    std::vector<Item> items;
    std::vector<std::string> madeFolders;
    std::vector<std::string> deletions;
    std::uint32_t waited{}; ///< milliseconds
    bool finished{};

    platform::Result<> Place(Item& item, std::size_t number);
    template <class Act>
    auto Patiently(const Act& act, platform::Error alsoHeld = platform::error::SharingViolation);
    platform::Result<> PatientlyReplace(const std::string& from, const std::string& to);
};

} // namespace profiles

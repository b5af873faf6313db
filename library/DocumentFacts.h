#pragma once

#include "documents/Facts.h"
#include "platform/FileSystem.h"
#include "platform/Jobs.h"
#include "platform/Locale.h"

#include <functional>
#include <memory>
#include <string>

namespace library {

/// A file, and what it says of itself.
struct DescribedFile {
    platform::FileEntry entry;
    documents::Facts facts;
};

/// What the library's files say of themselves. Each is read once: the answer is kept until the file's size or time is
/// another one.
class DocumentFacts {
public:
    DocumentFacts(platform::FileSystem& files, platform::Locale& locale, platform::Jobs& jobs);

    using Told = std::function<void(const platform::Result<DescribedFile>& described)>;
    /// Looks at the file off the window's thread, and tells the window's thread; an error when the file cannot be
    /// looked at at all. Never tells before it returns.
    platform::Ticket Ask(std::string path, Told told);

    /// For jobs that go through many files: any thread may call it, and keep it longer than this object.
    class Reader {
    public:
        virtual ~Reader() = default;
        /// Of a file whose entry the caller has just listed. Empty for one that cannot be read.
        virtual documents::Facts Read(const std::string& path, const platform::FileEntry& entry) = 0;
    };
    std::shared_ptr<Reader> ForJobs() const;

private:
    class Kept;

    platform::FileSystem& files;
    platform::Jobs& jobs;
    std::shared_ptr<Kept> kept;
};

} // namespace library

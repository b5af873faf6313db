#include "profiles/ProfileTransfer.h"

#include "platform/CommandLine.h"
#include "platform/Path.h"
#include "profiles/StringId.h"

// What an export and an import share; they stand in ProfileExport.cpp and ProfileImport.cpp.

namespace profiles {

namespace path = platform::path;
using platform::command_line::Quoted;

bool ProfileTransfer::CheckForValidRegFile(std::string_view bytes)
{
    return bytes.contains("REGEDIT4");
}

void ProfileTransfer::RunEditor(const std::string& arguments)
{
    const auto windows = system.shell.FolderPath(platform::KnownFolder::Windows);
    if (!windows)
        return;
    const std::string editor = path::Join(*windows, "regedit.exe");
    (void)files.Change(editor, [&shell = system.shell, editor, line = Quoted(editor) + " " + arguments,
                                time = editorTime](platform::FileSystem&) {
        return shell.RunAndWait(editor, line, platform::WindowStyle::MinimizedFocus, time);
    });
}

std::string ProfileTransfer::WithLeftOut(std::string message, const LeftOut& leftOut) const
{
    if (leftOut.IsEmpty())
        return message;
    return message + "\r\n\r\n" + strings.LoadString(str::LeftOut) + leftOut.Text();
}

} // namespace profiles

#include "tests/automation/Harness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

/// The libraries that an image names in its import table, in upper case.
std::set<std::string> ImportsOf(HMODULE mapped)
{
    // The low bits of such a handle tell how the file was mapped.
    const auto* const base = reinterpret_cast<const BYTE*>(reinterpret_cast<UINT_PTR>(mapped) & ~UINT_PTR{3});
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    std::set<std::string> names;
    const auto* entry = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; entry->Name != 0; ++entry) {
        std::string name = reinterpret_cast<const char*>(base + entry->Name);
        std::ranges::transform(name, name.begin(), [](char c) { return static_cast<char>(std::toupper(c)); });
        names.insert(name);
    }
    return names;
}

/// A library that is not one of these is looked for beside the program first, where anybody may have put a copy.
TEST(ImportTableTest, NamesOnlyLibrariesOfTheSystem)
{
    const std::set<std::string> allowed{
        "ADVAPI32.DLL", "COMCTL32.DLL", "COMDLG32.DLL", "GDI32.DLL",   "KERNEL32.DLL", "MSVCRT.DLL",
        "OLE32.DLL",    "OLEAUT32.DLL", "SHELL32.DLL",  "SHLWAPI.DLL", "USER32.DLL",
    };
    const std::wstring program = harness::OwnFolder() + L"..\\..\\TSBrowser.exe";
    const HMODULE mapped = LoadLibraryExW(program.c_str(), nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    ASSERT_TRUE(mapped) << "TSBrowser.exe is not built";
    const std::set<std::string> imports = ImportsOf(mapped);
    FreeLibrary(mapped);

    EXPECT_TRUE(imports.contains("KERNEL32.DLL"));
    for (const std::string& name : imports)
        EXPECT_TRUE(allowed.contains(name)) << name;
}

} // namespace

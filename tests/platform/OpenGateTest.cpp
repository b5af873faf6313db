#include "platform/OpenGate.h"

#include "platform/memory/System.h"

#include <gtest/gtest.h>

using namespace platform;

TEST(OpenGateTest, PassesWebAddressesAndDocumentsAndNothingElse)
{
    memory::System system;
    for (const char* file :
         {"C:\\T\\a.swt", "C:\\T\\a.mst", "C:\\T\\evil.exe", "C:\\T\\evil.js", "C:\\T\\evil.prg", "C:\\T\\evil",
          "C:\\T\\a.url", "C:\\T\\b.final.pdf", "C:\\T\\Ü.htm", "C:\\a.swt", "\\\\srv\\lib\\T\\a.swt",
          "\\\\srv\\library\\a.swt", "\\\\srv\\other\\a.hta", "\\\\srv\\other\\a.swt", "\\\\srv\\lib\\T\\a.exe"})
        system.files.AddFile(file);
    system.files.AddFolder("C:\\T\\folder.swt");
    constexpr std::string_view own[] = {".swt", ".mst"};
    const OpenGate gate{system.shell, system.files, own};
    const std::string folders[] = {"", "\\\\srv\\lib\\\\"};

    const std::string host = "http://a.example/";
    // clang-format off
    const std::pair<OpenGate::Verdict, std::vector<std::string>> rows[] = {
        {OpenGate::Verdict::Opens,
         {"http://tessaly.example/packs?a=b#c", "HTTPS://ü.example", host + std::string(2048 - host.size(), 'x'),
          "C:\\T\\a.swt", "c:/t\\\\A.SWT", "C:\\a.swt", "C:\\T\\b.final.pdf", "C:\\T\\Ü.htm",
          "C:\\T\\a.mst", // ours, although the system's list has it
          "\\\\srv\\lib\\T\\a.swt", "//SRV/Lib/T/a.swt"}},
        {OpenGate::Verdict::NotThere, {"C:\\T\\gone.swt"}},
        {OpenGate::Verdict::Refused,
         {host + std::string(2049 - host.size(), 'x'), "http://", "http:///etc", "http:a", "https:", "http://a\" --run \"b",
          "http://a b", "http://a\nb", "http://a\\b", "javascript:alert(1)//", "file:///C:/T/evil.exe",
          "file:///C:/T/a.swt", "ftp://a.example/x", "mailto:a@b", "www.tessaly.example", "",
          "C:\\T\\folder.swt", "C:\\T", "a.swt", "C:a.swt", "\\T\\a.swt", "C:\\T\\evil.exe", "C:\\T\\evil.EXE",
          "C:\\T\\evil.exe.", "C:\\T\\evil.exe ", "C:\\T\\gone.exe", "C:\\T\\evil.js",
          "C:\\T\\evil.prg", // in the system's list alone
          "C:\\T\\a.url",    // in ours alone
          "C:\\T\\evil", "C:\\T\\a.swt\" /run \"C:\\b.swt", "C:\\T\\a.swt:x.swt", "C:\\T\\..\\T\\a.swt",
          "C:\\T\\con.swt", "\\\\?\\C:\\T\\a.swt", "\\\\.\\C:\\T\\a.swt", "\\\\srv\\lib\\..\\other\\a.swt",
          "\\\\srv\\library\\a.swt", "\\\\srv\\other\\a.swt", "\\\\srv\\other\\a.hta", "\\\\srv\\lib\\T\\a.exe"}},
    };
    // clang-format on
    for (const auto& [expected, targets] : rows)
        for (const std::string& target : targets)
            EXPECT_EQ(gate.Judge(target, folders), expected) << target;
    for (const std::string& call : system.faults.Log())
        EXPECT_FALSE(call.contains("\\\\srv\\other")) << "the server of a refused share is not asked";
}

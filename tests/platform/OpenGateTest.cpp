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

    constexpr auto opens = OpenGate::Verdict::Opens;
    constexpr auto refused = OpenGate::Verdict::Refused;
    constexpr auto notThere = OpenGate::Verdict::NotThere;
    const std::string host = "http://a.example/";
    const struct {
        std::string target;
        OpenGate::Verdict expected;
    } rows[] = {
        {"http://tessaly.example/packs?a=b#c", opens},
        {"HTTPS://ü.example", opens},
        {host + std::string(2048 - host.size(), 'x'), opens},
        {host + std::string(2049 - host.size(), 'x'), refused},
        {"http://", refused},
        {"http:///etc", refused},
        {"http:a", refused},
        {"http://a\" --run \"b", refused},
        {"http://a b", refused},
        {"http://a\nb", refused},
        {"http://a\\b", refused},
        {"javascript:alert(1)//", refused},
        {"file:///C:/T/evil.exe", refused},
        {"file:///C:/T/a.swt", refused},
        {"ftp://a.example/x", refused},
        {"mailto:a@b", refused},
        {"www.tessaly.example", refused},
        {"", refused},
        {"C:\\T\\a.swt", opens},
        {"c:/t\\\\A.SWT", opens},
        {"C:\\a.swt", opens},
        {"C:\\T\\b.final.pdf", opens},
        {"C:\\T\\Ü.htm", opens},
        {"C:\\T\\a.mst", opens}, // ours, although the system's list has it
        {"C:\\T\\gone.swt", notThere},
        {"C:\\T\\folder.swt", refused},
        {"C:\\T", refused},
        {"a.swt", refused},
        {"C:a.swt", refused},
        {"\\T\\a.swt", refused},
        {"C:\\T\\evil.exe", refused},
        {"C:\\T\\evil.EXE", refused},
        {"C:\\T\\evil.exe.", refused},
        {"C:\\T\\evil.exe ", refused},
        {"C:\\T\\gone.exe", refused},
        {"C:\\T\\evil.js", refused},
        {"C:\\T\\evil.prg", refused}, // in the system's list alone
        {"C:\\T\\a.url", refused},    // in ours alone
        {"C:\\T\\evil", refused},
        {"C:\\T\\a.swt\" /run \"C:\\b.swt", refused},
        {"C:\\T\\a.swt:x.swt", refused},
        {"C:\\T\\..\\T\\a.swt", refused},
        {"C:\\T\\con.swt", refused},
        {"\\\\?\\C:\\T\\a.swt", refused},
        {"\\\\.\\C:\\T\\a.swt", refused},
        {"\\\\srv\\lib\\T\\a.swt", opens},
        {"//SRV/Lib/T/a.swt", opens},
        {"\\\\srv\\lib\\..\\other\\a.swt", refused},
        {"\\\\srv\\library\\a.swt", refused},
        {"\\\\srv\\other\\a.swt", refused},
        {"\\\\srv\\other\\a.hta", refused},
        {"\\\\srv\\lib\\T\\a.exe", refused},
    };
    for (const auto& row : rows)
        EXPECT_EQ(gate.Judge(row.target, folders), row.expected) << row.target;
    for (const std::string& call : system.faults.Log())
        EXPECT_FALSE(call.contains("\\\\srv\\other")) << "the server of a refused share is not asked";
}

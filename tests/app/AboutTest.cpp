#include "tests/support/TestMachine.h"

#include "app/shell/frmAbout.h"

namespace tests {
namespace {

class AboutTest : public BrowserTest {};

TEST_F(AboutTest, TellsTheComponentsThatAreThereAndOpensLinksAndHelp)
{
    PutSetting("Edition", "Edition", "Professional");
    PutSetting("Edition", "Build", "3.0.1205");
    PutSetting("Options", "WebLink", "http://one.example/|http://two.example/");
    PutSetting("Help", "About HTML", "C:\\Help\\about.htm");
    for (const char* file : {"C:\\Program Files\\Template Browser\\TSBrowser.exe",
                             "C:\\Windows\\System32\\comctl32.dll", "C:\\Help\\about.htm", "C:\\Suite\\clc.exe"})
        system.files.AddFile(file, "no program");
    system.registry.PutString(Hive::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\CLC.EXE",
                              "", "\"C:\\Suite\\clc.exe\"");
    system.registry.PutString(Hive::ClassesRoot, "CDIntf.CDIntf\\CLSID", "", "{1}");
    system.registry.PutString(Hive::ClassesRoot, "CLSID\\{1}\\InprocServer32", "", "C:\\Gone\\converter.dll");
    Start();
    toolkit.OnModal<app::frmAbout>("frmAbout", [&](app::frmAbout& form) {
        EXPECT_EQ(form.lvComponents.Rows(), 0); // until they have been looked at
        system.jobs.FinishAll();
        EXPECT_EQ(ListTexts(form.lvComponents), (Texts{"TSBrowser.exe", "comctl32.dll", "Spreadsheet"}));
        form.cmdCopy.UserClicks();
        EXPECT_EQ(toolkit.Copied, "Tessaly Professional 3.0\r\nVersion 2.2\r\nProfessional, 3.0.1205\r\n"
                                  "TSBrowser.exe\tNo Version Info available!\r\n"
                                  "comctl32.dll\tNo Version Info available!\r\n"
                                  "Spreadsheet\tNo Version Info available!\r\n");
        form.lstLinks.UserActivates(1);
        form.cmdHelp.UserClicks();
        EXPECT_EQ(system.shell.Opened(), (Texts{"http://two.example/", "C:\\Help\\about.htm"}));
        form.cmdOK.UserClicks();
    });
    Main().Commands().Run("mnuHelpAbout");
}

} // namespace
} // namespace tests

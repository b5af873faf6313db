#include "tests/support/TestMachine.h"

#include "browser/DocumentPropertiesForm.h"

#include <functional>

namespace tests {
namespace {

using browser::DocumentPropertiesForm;
using platform::LocalTime;
using platform::memory::MemoryClock;

class PropertiesTest : public BrowserTest {
protected:
    const std::string path = InLibrary("Letters\\Memo.swt");
    const LocalTime written{2004, 3, 17, 12, 30, 0};

    void Write(const std::string& title, LocalTime modified)
    {
        system.files.AddFile(path,
                             "{\\rtf1{\\info{\\title " + title +
                                 "}{\\author Ann}{\\doccomm a\\line b}{\\creatim\\yr2004\\mo3\\dy7\\hr17\\min7}}}",
                             MemoryClock::At(modified));
    }
    void Select()
    {
        Start();
        Main().tvTreeView.UserSelects("Letters");
        Main().lvListView.UserSelects(0);
    }
    /// Opens the window for the selected template; the user does this in it.
    void Open(const std::function<void(DocumentPropertiesForm&)>& act)
    {
        toolkit.OnModal<DocumentPropertiesForm>("DocumentPropertiesForm", act);
        Main().Commands().Run("mnuFileProperties");
    }
    std::string ShownTitle()
    {
        std::string title;
        Open([&](DocumentPropertiesForm& form) {
            system.jobs.FinishAll();
            title = form.txtTitle.Text();
            form.cmdClose.UserClicks();
        });
        return title;
    }
};

TEST_F(PropertiesTest, ShowsTheFileAtOnceAndWhatItSaysWhenItIsRead)
{
    Write("Gr\\'f6\\'dfe", written);
    system.files.SetAttributes(path, platform::attribute::ReadOnly | platform::attribute::Archive);
    Select();
    Open([&](DocumentPropertiesForm& form) {
        EXPECT_EQ(form.txtName.Text() + form.txtFolder.Text() + form.txtTitle.Text(),
                  "Memo.swt" + InLibrary("Letters"));
        system.jobs.FinishAll();
        const std::pair<ui::TextBox*, std::string> shown[] = {
            {&form.txtTitle, "Größe"},
            {&form.txtAuthor, "Ann"},
            {&form.txtComments, "a\r\nb"},
            {&form.txtCreationDate, "3/7/2004 05:07 PM"}, // as the document has it, whatever the zone
            {&form.txtPages, ""},
            {&form.txtModified, "3/17/2004 12:30 PM"},
            {&form.txtAttributes, "Read-only, Archive"},
        };
        for (const auto& [box, expected] : shown) {
            EXPECT_EQ(box->Text(), expected);
            EXPECT_TRUE(box->ReadOnly());
        }
        EXPECT_TRUE(form.txtSize.Text().starts_with("0KB (") && form.txtSize.Text().ends_with(" bytes)"));
        form.cmdCopy.UserClicks();
        EXPECT_TRUE(toolkit.Copied.starts_with("Title:\tGröße\r\nAuthor:\tAnn\r\nComments:\ta\r\nb\r\n"))
            << toolkit.Copied;
        form.cmdTemplate.UserClicks();
    });
    EXPECT_EQ(system.shell.Opened().back(), path);
}

TEST_F(PropertiesTest, AFileIsReadAgainOnlyWhenItIsAnotherOne)
{
    Write("one", written);
    Select();
    EXPECT_EQ(ShownTitle(), "one");
    Write("two", written);
    EXPECT_EQ(ShownTitle(), "one");
    Write("two", {2004, 3, 17, 12, 31, 0});
    EXPECT_EQ(ShownTitle(), "two");
    Write("three", {2004, 3, 17, 12, 31, 0});
    EXPECT_EQ(ShownTitle(), "three");
}

TEST_F(PropertiesTest, AFileThatIsGoneIsToldAndClosesTheWindow)
{
    Select();
    system.files.Remove(path);
    toolkit.ExpectMessage("Could not access properties of this file.\r\n"
                          "Please confirm that the required template exists in the specified path.",
                          Icon::Information);
    Open([&](DocumentPropertiesForm& form) {
        system.jobs.FinishAll();
        EXPECT_FALSE(form.IsOpen());
    });
    // Closed before the answer comes, it hears of nothing.
    Open([&](DocumentPropertiesForm& form) { form.Close(); });
    system.jobs.FinishAll();
}

} // namespace
} // namespace tests

#include "tests/support/ScriptedToolkit.h"

#include "ui/Button.h"
#include "ui/Label.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

struct DialogForm : ui::Form {
    explicit DialogForm(ui::Toolkit& toolkit) : Form{toolkit, "dialog", Style::Dialog}
    {
        label.SetCaption(std::string(100, 'x')); // 9000 twips in one line
        ok.SetCaption("OK");
        longer.SetCaption("A longer caption than the other");
        Layout(ui::Column(label, ui::Row(name, ui::Fill(field)), ui::Buttons(ok, longer)), 6000);
    }
    ui::Label label{*this};
    ui::Label name{*this};
    ui::Button field{*this};
    ui::Button ok{*this};
    ui::Button longer{*this};
};

TEST(LayoutTest, GivesEveryControlTheRoomItNeedsWithoutOverlap)
{
    ScriptedToolkit toolkit;
    DialogForm form{toolkit};
    form.name.SetCaption("Name:");
    form.Realize();

    const int right = form.ClientSize().width - ui::LayoutMargin;
    EXPECT_GT(form.ClientSize().width, 6000) << "the buttons need more than the wanted width";
    EXPECT_GE(form.ok.Bounds().left, ui::LayoutMargin);
    EXPECT_EQ(form.label.Bounds().height, 2 * 195) << "the text wraps";
    EXPECT_EQ(form.ok.Bounds().width, form.longer.Bounds().width);
    EXPECT_EQ(form.longer.Bounds().Right(), right);
    EXPECT_EQ(form.field.Bounds().Right(), right);
    EXPECT_EQ(form.field.Bounds().left, form.name.Bounds().Right() + ui::LayoutGap);
    EXPECT_EQ(form.longer.Bounds().Bottom(), form.ClientSize().height - ui::LayoutMargin);

    const auto& controls = form.Controls();
    for (std::size_t i = 0; i < controls.size(); ++i)
        for (std::size_t j = i + 1; j < controls.size(); ++j) {
            const ui::Rect& a = controls[i]->Bounds();
            const ui::Rect& b = controls[j]->Bounds();
            EXPECT_TRUE(a.Right() <= b.left || b.Right() <= a.left || a.Bottom() <= b.top || b.Bottom() <= a.top)
                << i << " and " << j << " overlap";
        }
}

TEST(LayoutTest, AHiddenControlLeavesNoHole)
{
    ScriptedToolkit toolkit;
    DialogForm form{toolkit};
    form.label.SetVisible(false);
    form.Realize();
    EXPECT_EQ(form.field.Bounds().top, ui::LayoutMargin);
}

} // namespace
} // namespace tests

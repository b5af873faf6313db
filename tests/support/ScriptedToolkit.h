#pragma once

#include "ui/headless/HeadlessToolkit.h"

#include <gtest/gtest.h>

namespace tests {

/// The toolkit of every test without windows. The test that ends with it fails for whatever came without a script, and
/// for whatever was scripted and did not come: a lost message is as bad as a wrong one.
class ScriptedToolkit final : public ui::HeadlessToolkit {
public:
    ScriptedToolkit() = default;
    ScriptedToolkit(const ScriptedToolkit&) = delete;
    ScriptedToolkit& operator=(const ScriptedToolkit&) = delete;
    using HeadlessToolkit::OnModal;
    /// What the user does in a dialog of that class.
    template <class Dialog>
    void OnModal(std::string formName, const std::function<void(Dialog&)>& act)
    {
        OnModal(std::move(formName), [act](ui::Form& form) { act(dynamic_cast<Dialog&>(form)); });
    }
    void RunModal(ui::Form& form) override
    {
        ExpectNames(form);
        HeadlessToolkit::RunModal(form);
    }
    ui::Answer ShowMessage(const ui::MessageBox& message) override
    {
        EXPECT_EQ(Find("frmWaiting"), nullptr) << "it is the user who is waited for";
        return HeadlessToolkit::ShowMessage(message);
    }
    /// Whatever Tab goes to has a name for screen readers: its own text, one given to it, or the label before it.
    static void ExpectNames(const ui::Form& form)
    {
        const ui::Control* before = nullptr;
        for (const ui::Control* control : form.Controls()) {
            const bool isLabelled = before != nullptr && before->TypeName() == "Label" && !before->Caption().empty();
            EXPECT_TRUE(!control->IsTabStop() || !control->Visible() || isLabelled || !control->Caption().empty() ||
                        !control->Name.empty() || !control->ToolTipText.empty())
                << form.Name() << ": " << control->TypeName() << " behind "
                << (before != nullptr ? before->Caption() : "");
            before = control;
        }
    }
    ~ScriptedToolkit() override { EXPECT_EQ(NotAsScripted(), std::vector<std::string>{}); }
};

} // namespace tests

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
    ~ScriptedToolkit() override { EXPECT_EQ(NotAsScripted(), std::vector<std::string>{}); }
};

} // namespace tests

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
    ~ScriptedToolkit() override { EXPECT_EQ(NotAsScripted(), std::vector<std::string>{}); }
};

} // namespace tests

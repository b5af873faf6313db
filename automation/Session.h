#pragma once

#include "automation/Application.h"
#include "automation/Lifetime.h"

#include <optional>
#include <string>

namespace automation {

/// The program and the reasons it has to stay. An open browser is one of them, whoever opened it.
class Session {
public:
    explicit Session(Application& application);

    std::string Start(std::string hostKind, std::string arg2, std::string arg3, std::string arg4, std::string caption);

    Application& application;
    Lifetime lifetime;

private:
    void FollowBrowser();

    std::optional<Lifetime::Holder> openBrowser;
};

} // namespace automation

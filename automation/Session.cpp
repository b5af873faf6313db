#include "automation/Session.h"

#include <utility>

namespace automation {

Session::Session(Application& owner) : application{owner}, lifetime{[&owner] { owner.Quit(); }}
{
    application.Closed = [this] { FollowBrowser(); };
}

std::string Session::Start(std::string hostKind, std::string arg2, std::string arg3, std::string arg4,
                           std::string caption)
{
    // Ends a program that started alone and was refused; a host may also let go of the object in the middle.
    const Lifetime::Holder whileStarting{lifetime};
    std::string result =
        application.Start(std::move(hostKind), std::move(arg2), std::move(arg3), std::move(arg4), std::move(caption));
    FollowBrowser();
    return result;
}

void Session::FollowBrowser()
{
    // Asks instead of counting: a close may be reported late, when the next browser is open already.
    if (!application.IsRunning())
        openBrowser.reset();
    else if (!openBrowser)
        openBrowser.emplace(lifetime);
}

} // namespace automation

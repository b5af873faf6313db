#include "platform/memory/Delays.h"

#include "platform/Scoped.h"
#include "platform/Text.h"

#include <algorithm>

namespace platform::memory {

void Delays::Set(std::string_view path, Time delay)
{
    rules.emplace(rules.begin(), text::Folded(path), delay);
}

void Delays::Call(std::string_view name, std::string_view subject)
{
    if (rules.empty())
        return;
    const auto rule = std::ranges::find_if(
        rules, [folded = text::Folded(subject)](const auto& entry) { return folded.starts_with(entry.first); });
    if (rule == rules.end())
        return;
    const Time delay = rule->second;
    if (work == nullptr)
        Stand(delay, std::string{name}.append(" ").append(subject));
    else if (delay == Never)
        throw NeverAnswers{};
    else
        *work += delay;
}

Delays::Time Delays::OnThread(const std::function<void()>& job, std::size_t threads)
{
    threadsFree.resize(threads);
    const auto thread = std::ranges::min_element(threadsFree);
    if (*thread == Never)
        return Never;
    Time taken{};
    try {
        const Scoped running{work, &taken};
        job();
        *thread = std::max(*thread, now) + taken;
    } catch (const NeverAnswers&) {
        *thread = Never;
    }
    return *thread;
}

bool Delays::StandStill(Time moment, Time atMost)
{
    const Time time = std::clamp(moment == Never ? Never : moment - now, Time{}, atMost);
    Stand(time, "a wait for another thread");
    return moment <= now;
}

bool Delays::Live(Time atMost)
{
    stretch = {};
    std::erase_if(expected, [](const auto& entry) { return entry.expired(); });
    Time next = Never;
    for (const auto& entry : expected)
        if (const auto moment = entry.lock(); *moment > now)
            next = std::min(next, *moment);
    const bool comes = next != Never && next - now <= atMost;
    if (comes)
        now = next;
    else if (atMost != Never)
        now += atMost;
    return comes;
}

std::shared_ptr<void> Delays::Expect(Time moment)
{
    const auto kept = std::make_shared<Time>(moment);
    expected.push_back(kept);
    return kept;
}

void Delays::Stand(Time time, std::string_view call)
{
    if (time != Never)
        now += time;
    stretch = time == Never || stretch == Never ? Never : stretch + time;
    if (stretch > longest) {
        longest = stretch;
        longestCall = call;
    }
}

} // namespace platform::memory

#include "online/StartCounter.h"

namespace online {
namespace {

constexpr int LastOfCycle = 9;
constexpr int LastOfLongCycle = 49;
constexpr int QuietEvery = 5;

} // namespace

StartCount CountStart(int count, bool notifyDisabled)
{
    if (count == 0)
        return {.count = 1, .asks = true};
    if (count >= (notifyDisabled ? LastOfLongCycle : LastOfCycle))
        return {.count = 0};
    return {.count = count + 1, .notifyAllowed = !notifyDisabled || count % QuietEvery != 0};
}

} // namespace online

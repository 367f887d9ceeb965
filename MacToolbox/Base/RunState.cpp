#include "MacToolbox/Base/RunState.h"

#include <vector>

namespace MacToolbox {

namespace {

std::vector<std::function<void()>>& resets()
{
    static auto& all = *new std::vector<std::function<void()>>; // leaked: statics may outlive any order of their end
    return all;
}

} // namespace

AtRunStart::AtRunStart(std::function<void()> reset) { resets().push_back(std::move(reset)); }

void startRunAfresh()
{
    for (const auto& reset : resets())
        reset();
}

} // namespace MacToolbox
